#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/TemporaryFolder.h"
#include "tests/support/LoopbackServer.h"

namespace {

constexpr char kAnswer[] =
    "<q:quakeml xmlns:q='http://quakeml.org/xmlns/quakeml/1.2' xmlns='http://quakeml.org/xmlns/bed/1.2'>"
    "<eventParameters><event><origin><time><value>2016-11-14T00:02:56+13:00</value></time>"
    "<latitude><value>-42.69</value></latitude><longitude><value>173.02</value></longitude>"
    "<depth><value>15000</value></depth></origin><magnitude><mag><value>7.8</value></mag></magnitude>"
    "<type>earthquake</type></event></eventParameters></q:quakeml>";
constexpr char kListed[] = " 1       7.80    15.00 km    -42.690    173.020  2016-11-13T11:02:56 +0000\n";

class ServiceTest : public testing::Test {
  protected:
    // Prints the list into a file of that name.
    pid_t start(const std::string& output, const std::vector<std::string>& options = {}) const {
        std::string command =
            "exec env -i PATH=/usr/bin no_proxy='*' XDG_CACHE_HOME=" + folder.path("cache") +
            " " TELLMAR_PROGRAM " --list --service " + server.url();
        for (const std::string& option : options) command += " " + option;
        command += " > " + folder.path(output) + " 2>&1";
        const pid_t child = fork();
        if (child == 0) {
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        return child;
    }

    // What a process printed, once it has ended well.
    std::string printed(pid_t child, const std::string& output) const {
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
        std::ifstream file(folder.path(output));
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TemporaryFolder folder;
    LoopbackServer server;
};

TEST_F(ServiceTest, ProcessesStartedTogetherMakeOneRequest) {
    server.serve(kAnswer);
    std::vector<pid_t> children;
    for (int i = 0; i < 4; ++i) children.push_back(start(std::to_string(i)));
    for (int i = 0; i < 4; ++i) {
        const std::string list = printed(children[static_cast<std::size_t>(i)], std::to_string(i));
        EXPECT_NE(list.find(kListed), list.npos) << list;
    }
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(ServiceTest, WithoutTheCacheEveryProcessAsks) {
    server.serve(kAnswer);
    for (int i = 0; i < 2; ++i) {
        const std::string list = printed(start("list", {"--no-cache"}), "list");
        EXPECT_NE(list.find(kListed), list.npos) << list;
    }
    EXPECT_EQ(server.requestCount(), 2);
    EXPECT_FALSE(std::filesystem::exists(folder.path("cache")));
}

TEST_F(ServiceTest, AServiceThatCannotAnswerLeavesTheListEmpty) {
    server.serveStatus(400, "no such parameter\n");
    const std::string list = printed(start("list", {"--verbose"}), "list");
    EXPECT_NE(list.find("the service says: no such parameter\n"), list.npos) << list;
    EXPECT_NE(list.find("There are no earthquakes to show.\n"), list.npos) << list;
}

}  // namespace

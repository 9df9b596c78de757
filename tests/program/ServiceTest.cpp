#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <future>

#include "tests/program/Program.h"
#include "tests/program/Waiting.h"
#include "tests/support/LoopbackServer.h"

using testing::HasSubstr;

namespace {

constexpr char kAnswer[] =
    "<q:quakeml xmlns:q='http://quakeml.org/xmlns/quakeml/1.2' xmlns='http://quakeml.org/xmlns/bed/1.2'>"
    "<eventParameters><event><origin><time><value>2016-11-14T00:02:56+13:00</value></time>"
    "<latitude><value>-42.69</value></latitude><longitude><value>173.02</value></longitude>"
    "<depth><value>15000</value></depth></origin><magnitude><mag><value>7.8</value></mag></magnitude>"
    "<type>earthquake</type></event></eventParameters></q:quakeml>";
constexpr char kNothing[] = "There are no earthquakes to show.\n";
constexpr char kListed[] = " 1       7.80    15.00 km    -42.690    173.020  2016-11-13T11:02:56 +0000\n";

bool hasOpen(pid_t process, const std::string& file) {
    for (const auto& entry :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd")) {
        std::error_code closedMeanwhile;
        if (std::filesystem::read_symlink(entry, closedMeanwhile) == file) return true;
    }
    return false;
}

class Service : public testing::Test {
  protected:
    Service() { server.serve(kAnswer); }

    LoopbackServer server;
    Program program;
};

TEST_F(Service, ProcessesStartedTogetherMakeOneRequestAlsoInVain) {
    for (const bool isHad : {true, false}) {
        std::array<Program, 4> programs;
        const std::string cache = programs[0].path("cache");
        const auto waitsForItsTurn = [&](const Program& each) {
            return hasOpen(each.id(), cache + "/tellmar/lock");
        };
        std::promise<void> allStarted;
        server.answerWith([&, started = allStarted.get_future().share()](const auto&, auto& response) {
            started.wait();
            waitUntil([&] { return std::all_of(programs.begin(), programs.end(), waitsForItsTurn); });
            response.set_content(kAnswer, "application/xml");
            response.status = isHad ? 200 : 404;
        });
        const int before = server.requestCount();
        for (Program& each : programs) {
            each.environment["XDG_CACHE_HOME"] = cache;
            each.start({"--list", "--service", server.url()});
        }
        allStarted.set_value();
        for (Program& each : programs) {
            EXPECT_EQ(0, each.waitForStatus());
            EXPECT_THAT(each.output(), HasSubstr(isHad ? kListed : kNothing));
        }
        EXPECT_EQ(server.requestCount() - before, 1);
    }
}

TEST_F(Service, AnAnswerIsKeptInTheUsersCacheUnlessThatIsOff) {
    const auto cache = program.path("home/.cache/tellmar");
    const auto list = [&](const char* option) {
        return *program.run({"--list", option, "--service", server.url()});
    };
    EXPECT_EQ(0, list("--no-cache"));
    EXPECT_FALSE(std::filesystem::exists(cache));
    EXPECT_EQ(0, list("--verbose"));
    EXPECT_TRUE(std::filesystem::exists(cache));
    EXPECT_EQ(0, list("--no-cache"));
    EXPECT_EQ(server.requestCount(), 3);
    server.serveStatus(404);
    EXPECT_EQ(0, list("--verbose"));
    EXPECT_EQ(4, countOf(program.output(), kListed));
    EXPECT_EQ(server.requestCount(), 3);
}

}  // namespace

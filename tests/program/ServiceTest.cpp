#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "tests/program/Program.h"
#include "tests/support/LoopbackServer.h"

using testing::HasSubstr;

namespace {

constexpr char kAnswer[] =
    "<q:quakeml xmlns:q='http://quakeml.org/xmlns/quakeml/1.2' xmlns='http://quakeml.org/xmlns/bed/1.2'>"
    "<eventParameters><event><origin><time><value>2016-11-14T00:02:56+13:00</value></time>"
    "<latitude><value>-42.69</value></latitude><longitude><value>173.02</value></longitude>"
    "<depth><value>15000</value></depth></origin><magnitude><mag><value>7.8</value></mag></magnitude>"
    "<type>earthquake</type></event></eventParameters></q:quakeml>";
constexpr char kListed[] = " 1       7.80    15.00 km    -42.690    173.020  2016-11-13T11:02:56 +0000\n";

class Service : public testing::Test {
  protected:
    LoopbackServer server;
};

TEST_F(Service, ProcessesStartedTogetherMakeOneRequest) {
    server.serve(kAnswer);
    std::array<Program, 4> programs;
    for (Program& program : programs) {
        program.environment["XDG_CACHE_HOME"] = programs[0].path("cache");
        program.start({"--list", "--service", server.url()});
    }
    for (Program& program : programs) {
        EXPECT_EQ(0, program.waitForStatus());
        EXPECT_THAT(program.output(), HasSubstr(kListed));
    }
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(Service, WithoutTheCacheEveryProcessAsks) {
    server.serve(kAnswer);
    for (int requests = 1; requests <= 2; ++requests) {
        Program program;
        EXPECT_EQ(0, program.run({"--list", "--no-cache", "--service", server.url()}));
        EXPECT_THAT(program.output(), HasSubstr(kListed));
        EXPECT_EQ(server.requestCount(), requests);
        EXPECT_FALSE(std::filesystem::exists(program.path("home") + "/.cache"));
    }
}

TEST_F(Service, AnAnswerIsKeptInTheUsersCache) {
    Program program;
    server.serve(kAnswer);
    program.run({"--list", "--service", server.url()});
    EXPECT_TRUE(std::filesystem::exists(program.path("home") + "/.cache/tellmar"));
    server.serveStatus(404);
    EXPECT_EQ(0, program.run({"--list", "--service", server.url()}));
    EXPECT_THAT(program.output(), HasSubstr(kListed));
}

TEST_F(Service, ARefusalIsToldOnRequestAndLeavesTheListEmpty) {
    server.serveStatus(400, "no such parameter\nmore\n");
    Program program;
    EXPECT_EQ(0, program.run({"--list", "--verbose", "--service", server.url()}));
    EXPECT_THAT(program.errors(), HasSubstr("tellmar: the service says: no such parameter\n"));
    EXPECT_THAT(program.output(), HasSubstr("There are no earthquakes to show.\n"));
}

TEST_F(Service, AServiceThatIsNoURLIsAComplaint) {
    for (const char* address : {"quakes", "ftp://127.0.0.1/", "https://"}) {
        Program program;
        EXPECT_EQ(2, program.run({"--list", "--service", address}));
        EXPECT_THAT(program.errors(), HasSubstr(std::string("not ") + address + "\n"));
    }
}

}  // namespace

#include <csignal>
#include <functional>
#include <ostream>

#include "tests/program/ProgramTest.h"
#include "tests/support/Feed.h"
#include "tests/support/LoopbackServer.h"

namespace {

// One answer, and whether there is a quake in it.
struct BadFeed {
    std::string name;
    std::function<void(LoopbackServer&)> prepare;
    bool hasQuake = false;
    std::string address = "";  // the server's where it is empty
};

std::ostream& operator<<(std::ostream& stream, const BadFeed& feed) { return stream << feed.name; }

BadFeed document(const std::string& name, const std::string& text, bool hasQuake = false) {
    return {name, [=](LoopbackServer& server) { server.serve(text); }, hasQuake};
}

BadFeed address(const std::string& name, const std::string& text) {
    return {name, [](LoopbackServer&) {}, false, text};
}

const std::string kGoodFeed = feedOf(FeedEvent().xml());

BadFeed status(int number) {
    return {"Status" + std::to_string(number), [=](LoopbackServer& server) {
                server.serveStatus(number, number == 204 ? "" : kGoodFeed, "application/xml");
            }};
}

std::vector<BadFeed> badFeeds() {
    const FeedEvent without{.time = valueOf("yesterday"),
                            .latitude = valueOf("north"),
                            .depth = valueOf("deep"),
                            .mag = valueOf("nan")};
    const FeedEvent beyond{.time = valueOf("0000-99-99T99:99:99Z"),
                           .latitude = valueOf("1e999"),
                           .depth = valueOf("-inf"),
                           .mag = valueOf("1e300")};
    return {
        address("MissingFile", "missing.xml"),
        address("Device", "/dev/zero"),
        address("Folder", "/tmp"),
        address("AnotherScheme", "gopher://127.0.0.1/"),
        address("RefusedPort", "http://127.0.0.1:1/"),
        document("Empty", ""),
        document("Html", "<!DOCTYPE html><html><body><p>Down for maintenance<br></body></html>"),
        status(204),
        status(404),
        status(500),
        {"CutOff", [](LoopbackServer& server) { server.cutOff(kGoodFeed); }},
        {"Circle", [](LoopbackServer& server) { server.redirectTo("/round"); }},
        {"DamagedGzip", [](LoopbackServer& server) { server.serveAsGzip(kGoodFeed); }},
        {"WithoutEnd", [](LoopbackServer& server) { server.trickle(); }},
        document("AnotherRoot", "<feed><eventParameters>" + FeedEvent().xml() + "</eventParameters></feed>"),
        document("EntityBomb", entities("quakeml", 30, 10) + "<quakeml>&e29;</quakeml>"),
        document("DeepNesting", feedOf(repeated("<a>", 100000) + repeated("</a>", 100000))),
        document("InvalidUtf8", feedOf(FeedEvent{.time = "2016\xff\xfe\xc0"}.xml())),
        document("EventsWithoutContents", feedOf(repeated("<event/>", 20))),
        document("NumbersThatAreNone", feedOf(without.xml()), true),
        document("NumbersWithoutBounds", feedOf(beyond.xml()), true),
        document("LongTexts", feedOf(FeedEvent{.time = valueOf(repeated("9", 5000))}.xml()), true),
        document("ScriptAsTime", feedOf(FeedEvent{.time = valueOf("');document.body.remove();('\"")}.xml()),
                 true),
    };
}

class BadFeedTest : public ProgramTest, public testing::WithParamInterface<BadFeed> {};

}  // namespace

TEST_P(BadFeedTest, LeavesTheSplashOrAMapOnTheScreen) {
    const auto& [name, prepare, hasQuake, address] = GetParam();
    LoopbackServer server;
    prepare(server);
    const std::string feed = address.empty() ? server.url() : address;
    program.start({"--fullscreen", "--verbose", "--speed", "50", "--feed", feed});
    ASSERT_TRUE(program.waitForLines("fetch ")) << program.errors();
    ASSERT_TRUE(program.waitForLines(hasQuake ? "fade: " : "tick ", 4)) << program.errors();
    EXPECT_TRUE(waitForCorners(hasQuake ? isMap : isSplash));
    EXPECT_EQ(hasQuake, program.countLines("page: loaded") > 0);
    EXPECT_EQ(1, program.countLines("fetch "));
    program.signal(SIGTERM);
    EXPECT_EQ(0, program.waitForStatus()) << program.errors();
}

INSTANTIATE_TEST_SUITE_P(Answer, BadFeedTest, testing::ValuesIn(badFeeds()),
                         [](const auto& row) { return row.param.name; });

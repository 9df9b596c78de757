#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <ostream>

#include "tests/program/Colors.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"
#include "tests/support/LoopbackServer.h"

namespace {

std::string feedOf(const std::string& events) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><quakeml><eventParameters>" + events +
           "</eventParameters></quakeml>";
}

std::string event(const std::string& latitude, const std::string& depth, const std::string& magnitude,
                  const std::string& time) {
    const auto value = [](const std::string& name, const std::string& text) {
        return "<" + name + "><value>" + text + "</value></" + name + ">";
    };
    return "<event><type>earthquake</type><origin>" + value("time", time) + value("latitude", latitude) +
           value("longitude", "172.5") + value("depth", depth) + "</origin><magnitude>" +
           value("mag", magnitude) + "</magnitude></event>";
}

std::string goodEvent() { return event("-42.7", "15", "7.8", "2016-11-13T11:02:56.000Z"); }

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

std::string entityBomb() {
    std::string document = "<?xml version=\"1.0\"?><!DOCTYPE quakeml [<!ENTITY e0 \"boom\">";
    for (int i = 1; i < 30; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        document += "<!ENTITY e" + std::to_string(i) + " \"" + repeated(inner, 10) + "\">";
    }
    return document + "]><quakeml>&e29;</quakeml>";
}

// One answer, and whether there is a quake in it.
struct BadFeed {
    std::string name;
    std::function<void(LoopbackServer&)> prepare;
    bool hasQuake = false;
};

std::ostream& operator<<(std::ostream& stream, const BadFeed& feed) { return stream << feed.name; }

BadFeed document(const std::string& name, const std::string& text, bool hasQuake = false) {
    return {name, [=](LoopbackServer& server) { server.serve(text); }, hasQuake};
}

BadFeed status(int number) {
    return {"Status" + std::to_string(number), [=](LoopbackServer& server) {
                server.serveStatus(number, number == 204 ? "" : feedOf(goodEvent()), "application/xml");
            }};
}

const std::vector<BadFeed>& badFeeds() {
    static const std::vector<BadFeed> feeds = {
        document("Empty", ""),
        document("Html", "<!DOCTYPE html><html><body><p>Down for maintenance<br></body></html>"),
        status(204),
        status(404),
        status(500),
        {"CutOff", [](LoopbackServer& server) { server.cutOff(feedOf(goodEvent())); }},
        {"Circle", [](LoopbackServer& server) { server.redirectTo("/round"); }},
        {"DamagedGzip", [](LoopbackServer& server) { server.serveAsGzip(feedOf(goodEvent())); }},
        document("AnotherRoot", "<feed><eventParameters>" + goodEvent() + "</eventParameters></feed>"),
        document("EntityBomb", entityBomb()),
        document("DeepNesting", feedOf(repeated("<a>", 100000) + repeated("</a>", 100000))),
        document("InvalidUtf8", feedOf(event("-42.7", "15", "7.8", "2016\xff\xfe\xc0"))),
        document("EventsWithoutContents", feedOf(repeated("<event/>", 20))),
        document("NumbersThatAreNone", feedOf(event("north", "deep", "nan", "yesterday")), true),
        document("NumbersWithoutBounds", feedOf(event("1e999", "-inf", "1e300", "0000-99-99T99:99:99Z")),
                 true),
        document("LongTexts", feedOf(event("-42.7", "15", "7.8", std::string(5000, '9'))), true),
        document("ScriptAsTime", feedOf(event("1", "1", "7", "');document.body.remove();('\"")), true),
    };
    return feeds;
}

bool showsOnly(const Picture& picture, bool (*condition)(const Color&)) {
    const int right = picture.width - 1, bottom = picture.height - 1;
    return condition(picture.at(0, 0)) && condition(picture.at(right, 0)) &&
           condition(picture.at(0, bottom)) && condition(picture.at(right, bottom));
}

class BadFeedTest : public testing::TestWithParam<BadFeed> {};

std::string nameOf(const testing::TestParamInfo<BadFeed>& info) { return info.param.name; }

}  // namespace

TEST_P(BadFeedTest, LeavesTheSplashOrAMapOnTheScreen) {
    TestDisplay display(1280, 720);
    LoopbackServer server;
    GetParam().prepare(server);
    Program program(display);
    program.start({"--fullscreen", "--verbose", "--speed", "50", "--feed", server.url("/feed")});
    if (GetParam().hasQuake)
        ASSERT_TRUE(program.waitForLines("fade: ", 2)) << program.errors();
    else
        ASSERT_TRUE(program.waitForLines("tick ", 5)) << program.errors();
    EXPECT_TRUE(
        waitUntil([&] { return showsOnly(display.picture(), GetParam().hasQuake ? isMap : isSplash); }));
    EXPECT_EQ(GetParam().hasQuake ? 1 : 0, program.countLines("page: loaded") > 0);
    EXPECT_EQ(1, program.countLines("fetch "));
    program.signal(SIGTERM);
    EXPECT_EQ(0, program.waitForStatus()) << program.errors();
}

INSTANTIATE_TEST_SUITE_P(Answer, BadFeedTest, testing::ValuesIn(badFeeds()), nameOf);

TEST(BadFeed, ARefusedPortLeavesTheSplash) {
    TestDisplay display(1280, 720);
    Program program(display);
    std::string url;
    { url = LoopbackServer().url(); }  // nobody listens there any more
    program.start({"--fullscreen", "--verbose", "--speed", "50", "--feed", url});
    EXPECT_TRUE(program.waitForLines("tick ", 3));
    EXPECT_TRUE(waitUntil([&] { return showsOnly(display.picture(), isSplash); }));
}

TEST(BadFeed, AFileThatIsMissingOrNoFileLeavesTheSplash) {
    for (const char* path : {"missing.xml", "/dev/zero", "/tmp", "gopher://127.0.0.1/"}) {
        TestDisplay display(1280, 720);
        Program program(display);
        program.start({"--fullscreen", "--verbose", "--speed", "50", "--feed", path});
        EXPECT_TRUE(program.waitForLines("tick ", 3)) << path;
        EXPECT_TRUE(waitUntil([&] { return showsOnly(display.picture(), isSplash); })) << path;
    }
}

TEST(BadFeed, AnAnswerWithoutEndIsGivenUp) {
    TestDisplay display(1280, 720);
    LoopbackServer server;
    server.trickle();
    Program program(display);
    program.start({"--fullscreen", "--verbose", "--speed", "50", "--feed", server.url()});
    ASSERT_TRUE(program.waitForLines("fetch "));
    EXPECT_TRUE(program.waitForLines("tick ", 3));
    EXPECT_TRUE(waitUntil([&] { return showsOnly(display.picture(), isSplash); }));
}

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <string>

#include "mappages/MapsPageWriter.h"
#include "quakes/CQuakeEvent.h"
#include "tests/TemporaryFolder.h"
#include "tests/map/MapPage.h"

using testing::HasSubstr;
using testing::Not;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr char kTime[] = "2016-11-13T11:02:56.346Z";

constexpr char kSeen[] =
    "[...document.querySelectorAll('#panel p')].map(part => part.innerText).filter(Boolean).join('|')";

class OddValuesTest : public testing::Test {
  protected:
    // What the panel says of such a quake.
    std::string seen(const CQuakeEvent& quake) {
        EXPECT_TRUE(mPage.show(quake));
        return checked();
    }

    // The same with that date in the page's call.
    std::string seenWithDate(const std::string& date) {
        MapsPageWriter writer;
        std::string page = writer.insertMapsFunctionCall(
            writer.loadTemplatePage(), CQuakeEvent(kTime, 6.2, -42.69, 173.02, 15), {1290, 730});
        const std::string usual = "Sun, 13. November 2016 11:02:56";
        page.replace(page.find(usual), usual.size(), date);
        std::ofstream(mFolder.path("page.html")) << page;
        EXPECT_TRUE(mPage.load(mFolder.path("page.html")));
        return checked();
    }

    MapPage mPage{{1280, 720}};

  private:
    std::string checked() {
        EXPECT_EQ(mPage.evaluate("tellmarLayout.missing"), "0");
        const std::string text = mPage.evaluate(kSeen);
        for (const char* word : {"NaN", "nan", "undefined", "null", "Infinity", "inf"})
            EXPECT_THAT(text, Not(HasSubstr(word)));
        return text;
    }

    TemporaryFolder mFolder;
};

TEST_F(OddValuesTest, NumbersThatAreNoneLeaveTheRest) {
    EXPECT_THAT(seen(CQuakeEvent(kTime, kNan, kNan, kNan, kNan)), HasSubstr("13. November 2016"));
    EXPECT_THAT(seen(CQuakeEvent(kTime, kInf, -kInf, 173, -kInf)), HasSubstr("Place not known"));
    EXPECT_THAT(seen(CQuakeEvent(kTime, -kNan, -42.69, 173.02, kInf)), HasSubstr("Culverden"));
    EXPECT_THAT(seen(CQuakeEvent(kTime, 6.2, -42.69, kInf, 15)), HasSubstr("Strong earthquake"));
    EXPECT_THAT(seen(CQuakeEvent(kTime, 6.2, 1e300, 173, 1e300)), HasSubstr("6.2"));
}

TEST_F(OddValuesTest, UnlikelyNumbersAreSaidAsTheyAre) {
    EXPECT_THAT(seen(CQuakeEvent(kTime, -1, -42.69, 173.02, -3)), HasSubstr("3 km above sea level"));
    EXPECT_THAT(seen(CQuakeEvent(kTime, 12, -42.69, 173.02, 700)), HasSubstr("Depth 700 km · deep"));
    EXPECT_THAT(seen(CQuakeEvent(kTime, 5, 89.9, 10, 10)), HasSubstr("89.90° N, 10.00° E"));
    EXPECT_THAT(seen(CQuakeEvent(kTime, 5, -90, -720, 10)), HasSubstr("90.00° S, 0.00°"));
}

TEST_F(OddValuesTest, AnyDateLeavesTheNumbers) {
    for (const char* date : {"", "o'clock", "''", "\\", "half\"past", "<b>&amp;\n", "nan"}) {
        SCOPED_TRACE(date);
        const std::string text = seenWithDate(date);
        EXPECT_THAT(text, HasSubstr("6.2"));
        EXPECT_THAT(text, HasSubstr("15 km north-east of Culverden"));
    }
    EXPECT_THAT(seenWithDate("\"><script>window.stranger = 1</script>"), HasSubstr("6.2"));
    EXPECT_EQ(mPage.evaluate("typeof stranger"), "\"undefined\"");
    EXPECT_THAT(seenWithDate("four o'clock sharp"), HasSubstr("four o'clock sharp"));
    EXPECT_THAT(seenWithDate(std::string(255, 'W')), HasSubstr("WWWWWWWW"));
}

}  // namespace

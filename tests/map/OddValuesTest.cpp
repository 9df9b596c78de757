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
    std::string seen(double magnitude, double latitude, double longitude, double depth) {
        EXPECT_TRUE(mPage.show({kTime, magnitude, latitude, longitude, depth}));
        return checked();
    }

    // The same with that date in the page's call.
    std::string seenWithDate(const std::string& date) {
        MapsPageWriter writer;
        std::string page = writer.insertMapsFunctionCall(
            writer.loadTemplatePage(), CQuakeEvent(kTime, 6.2, -42.69, 173.02, 15), {1290, 730});
        const std::string usual = "Sun, 13. November 2016 11:02:56";
        page.replace(page.find(usual), usual.size(), date);
        std::ofstream("page.html") << page;
        EXPECT_TRUE(mPage.load(mCurrentFolder.path("page.html")));
        return checked();
    }

    const TemporaryFolder mCurrentFolder;
    MapPage mPage{{1280, 720}};

  private:
    std::string checked() {
        EXPECT_EQ(mPage.evaluate("tellmarLayout.missing"), "0");
        const std::string text = mPage.evaluate(kSeen);
        for (const char* word : {"NaN", "nan", "undefined", "null", "Infinity", "inf"})
            EXPECT_THAT(text, Not(HasSubstr(word)));
        return text;
    }
};

TEST_F(OddValuesTest, NumbersThatAreNoneLeaveTheRestAndUnlikelyOnesAreSaidAsTheyAre) {
    EXPECT_THAT(seen(kNan, kNan, kNan, kNan), HasSubstr("13. November 2016"));
    EXPECT_THAT(seen(kInf, -kInf, 173, -kInf), HasSubstr("Place not known"));
    EXPECT_THAT(seen(-kNan, -42.69, 173.02, kInf), HasSubstr("Culverden"));
    EXPECT_THAT(seen(6.2, -42.69, kInf, 15), HasSubstr("Strong earthquake"));
    EXPECT_THAT(seen(6.2, 1e300, 173, 1e300), HasSubstr("6.2"));
    EXPECT_THAT(seen(-1, -42.69, 173.02, -3), HasSubstr("3 km above sea level"));
    EXPECT_THAT(seen(12, -42.69, 173.02, 700), HasSubstr("Depth 700 km · deep"));
    EXPECT_THAT(seen(5, 89.9, 10, 10), HasSubstr("89.90° N, 10.00° E"));
    EXPECT_THAT(seen(5, -90, -720, 10), HasSubstr("90.00° S, 0.00°"));
}

TEST_F(OddValuesTest, AnyDateLeavesTheNumbers) {
    for (const char* date : {"", "o'clock", "''", "\\", "half\"past", "<b>&amp;\n", "nan",
                             "\"><script>window.stranger = 1</script>"}) {
        SCOPED_TRACE(date);
        const std::string text = seenWithDate(date);
        EXPECT_THAT(text, HasSubstr("6.2"));
        EXPECT_EQ(mPage.evaluate("typeof stranger"), "\"undefined\"");
    }
    for (const std::string& date : {std::string("four o'clock sharp"), std::string(255, 'W')})
        EXPECT_THAT(seenWithDate(date), HasSubstr(date.substr(0, 18)));
}

}  // namespace

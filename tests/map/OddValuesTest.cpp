#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <string>

#include "mappages/MapsPageWriter.h"
#include "quakes/CQuakeEvent.h"
#include "tests/TemporaryFolder.h"
#include "tests/map/MapPage.h"

using testing::HasSubstr;

namespace {

constexpr double kNan = NAN, kInf = INFINITY;
constexpr char kTime[] = "2016-11-13T11:02:56.346Z";

class OddValuesTest : public testing::Test {
  protected:
    // What the panel says of such a quake.
    std::string seen(double magnitude, double latitude, double longitude, double depth) {
        EXPECT_TRUE(mPage.show({kTime, magnitude, latitude, longitude, depth}));
        EXPECT_EQ(mPage.evaluate("tellmarLayout.missing"), "0");
        const std::string text = mPage.evaluate("document.getElementById('panel').innerText");
        for (const char* word : {"NaN", "nan", "undefined", "null", "Infinity", "inf"})
            EXPECT_THAT(text, testing::Not(HasSubstr(word)));
        return text;
    }

    MapPage mPage{{1280, 720}};
};

TEST_F(OddValuesTest, ANumberThatIsNotFiniteLeavesTheRestAndAnUnlikelyOneIsSaidAsItIs) {
    EXPECT_THAT(seen(kNan, kNan, kNan, kNan), HasSubstr("November 2016"));
    EXPECT_THAT(seen(kInf, -kInf, 173, -kInf), HasSubstr("Place not known"));
    EXPECT_THAT(seen(-kNan, -42.69, 173.02, kInf), HasSubstr("Culverden"));
    EXPECT_THAT(seen(6.2, 1e300, kInf, 1e300), HasSubstr("130 a year"));
    EXPECT_THAT(seen(-1, -42.69, 173.02, -3), HasSubstr("3 km above sea level"));
    EXPECT_THAT(seen(5, -90, -720, 10), HasSubstr("90.00° S, 0.00°"));
}

TEST_F(OddValuesTest, AnyDateLeavesTheNumbersAndIsSaidAsItIs) {
    const TemporaryFolder folder;
    MapsPageWriter writer;
    const std::string page = writer.insertMapsFunctionCall(
        writer.loadTemplatePage(), CQuakeEvent(kTime, 6.2, -42.69, 173.02, 15), {1290, 730});
    const std::size_t start = page.find(" 'Sun, ") + 2, length = page.find('\'', start) - start;
    const auto seenWith = [&](const std::string& date) {
        std::ofstream("page.html") << std::string(page).replace(start, length, date);
        EXPECT_TRUE(mPage.load(folder.path("page.html")));
        return mPage.evaluate("document.getElementById('panel').innerText + typeof stranger");
    };
    for (const char* date : {"", "''", "\\", "<b>&amp;\n", "nan", "\"><script>window.stranger = 1</script>"})
        EXPECT_THAT(seenWith(date), testing::AllOf(HasSubstr("6.2"), testing::EndsWith("undefined\"")));
    EXPECT_THAT(seenWith("four o'clock sharp"), HasSubstr("four o'clock sharp"));
}

}  // namespace

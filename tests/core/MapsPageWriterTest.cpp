#include "mappages/MapsPageWriter.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include "platform/Files.h"
#include "quakes/CQuakeEvent.h"
#include "tests/standins/Alert.h"
#include "tests/standins/Bundle.h"
#include "tests/standins/Clock.h"
#include "tests/standins/StandIns.h"

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kNow[] = "Tue, 03. March 2009 14:05:09";

class MapsPageWriterTest : public standins::Test {
  protected:
    MapsPageWriterTest() { std::remove(mWriter.locationOfTempPage().c_str()); }

    std::string local(const char* zulu) { return mWriter.localDateStringFromZulu(zulu); }

    std::string inserted(const std::string& page, const CQuakeEvent& event) {
        return mWriter.insertMapsFunctionCall(page, event, {1023.9, 767.5});
    }

    std::string writtenPage() {
        std::string page;
        platform::readFile(mWriter.locationOfTempPage(), page);
        return page;
    }

    static std::vector<std::string>& logLines() { return standins::alertRecord().logLines; }

    MapsPageWriter mWriter;
    const CQuakeEvent mQuake{"2009-03-03T01:05:09.04Z", 4.5, -41.123, 174.567, 33};
};

TEST_F(MapsPageWriterTest, ShowsTimesInTheLocalZone) {
    const std::pair<const char*, const char*> cases[] = {
        {"2009-03-03T01:05:09 +0000", kNow},
        {"2009-07-15T09:22:29 +0000", "Wed, 15. July 2009 21:22:29"},
        {"2009-03-03T01:05:09 +0130", "Tue, 03. March 2009 12:35:09"},
        {"2008-02-29T23:59:59 -0500", "Sat, 01. March 2008 17:59:59"},
        {"1969-12-31T10:59:59 +0000", "Wed, 31. December 1969 23:59:59"},
    };
    for (const auto& [zulu, text] : cases) EXPECT_EQ(local(zulu), text);
    standins::clock().zone = "EST5";
    EXPECT_EQ(local("2009-03-03T01:05:09 +0000"), "Mon, 02. March 2009 20:05:09");
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(MapsPageWriterTest, WritesEnglishNamesWhateverTheLocale) {
    if (!std::setlocale(LC_TIME, "de_DE.UTF-8")) GTEST_SKIP() << "This machine has no German locale";
    EXPECT_EQ(local("2009-12-01T01:00:00 +0000"), "Tue, 01. December 2009 14:00:00");
    std::setlocale(LC_TIME, "C");
}

TEST_F(MapsPageWriterTest, TakesTheCurrentTimeForATextThatIsNone) {
    for (const char* text :
         {"", "2009-03-03T01:05:09Z", "2009-03-03 01:05:09 +0000", "2009-02-29T01:05:09 +0000",
          "2009-13-01T01:05:09 +0000", "2009-00-01T01:05:09 +0000", "2009-03-03T24:05:09 +0000",
          "2009-03-03T01:60:09 +0000", "2009-03-03T01:05:09 +000", "2009-03-03T01:05:09 +00000",
          "2009-03-03T01:05:09 00000", "2009-03-+3T01:05:09 +0000"}) {
        logLines().clear();
        EXPECT_EQ(local(text), kNow) << text;
        EXPECT_THAT(logLines(), ElementsAre("Error formatting date (" + std::string(text) + ")"));
    }
    logLines().clear();
    EXPECT_EQ(local(nullptr), "2009-03-03 14:05:09 +1300");
    EXPECT_THAT(logLines(), ElementsAre("Error getting date"));
}

TEST_F(MapsPageWriterTest, PutsTheCallAndTheSizeInPlaceOfEveryMarkerAndOfNothingElse) {
    const std::string call =
        "onload=\"initializeMap(-41.123, 174.567, 4.50, '33.00km', '" + std::string(kNow) + "', 8)\"";
    EXPECT_EQ(inserted("<body onload=\"\"><div id=\"map_canvas\"></div>", mQuake),
              "<body " + call + "><div id=\"map_canvas\" style=\"width: 1023px; height: 767px\"></div>");
    EXPECT_EQ(inserted("onload=\"\"onload=\"\" \nonload=\"\"", mQuake), call + call + " \n" + call);
    const std::string page = "ONLOAD=\"\" onload='' onload=\" \" <div id=\"map_canvas\" class=\"x\">";
    EXPECT_EQ(inserted(page, mQuake), page);
}

TEST_F(MapsPageWriterTest, WritesNumbersOfAnySizeAndTimesOfAnyForm) {
    constexpr double big = std::numeric_limits<double>::max();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(inserted("onload=\"\"", CQuakeEvent("", 4.005, -0.0004, 179.9996, -0.4)),
                HasSubstr("(-0.000, 180.000, 4.00, '-0.40km', "));
    EXPECT_THAT(inserted("onload=\"\"", CQuakeEvent("no 'time' \"", none, big, -big, 1 / 0.0)),
                HasSubstr(".000, nan, 'infkm', '" + std::string(kNow)));
}

TEST_F(MapsPageWriterTest, NamesThePageAfterTheBundle) {
    const std::string folder = platform::temporaryDirectory();
    EXPECT_EQ(mWriter.locationOfTempPage(), folder + "/Tellmar.html");
    standins::bundle().path = "/some.where/Other.v2.saver";
    EXPECT_EQ(mWriter.locationOfTempPage(), folder + "/Other.v2.html");
}

TEST_F(MapsPageWriterTest, WritesTheTemplateWithItsInsertionsForAnEventAlone) {
    mWriter.writeForEvent(nullptr, {800, 600});
    EXPECT_THAT(writtenPage(), IsEmpty());
    mWriter.writeForEvent(&mQuake, {800, 600});
    EXPECT_EQ(writtenPage(), mWriter.insertMapsFunctionCall(mWriter.loadTemplatePage(), mQuake, {800, 600}));
    EXPECT_THAT(writtenPage(), HasSubstr("<title>Erdbeben – rū whenua</title>"));
    EXPECT_THAT(writtenPage(), HasSubstr("style=\"width: 800px; height: 600px\">"));
    EXPECT_THAT(writtenPage(), HasSubstr("onload=\"initializeMap("));
}

using MapsPageWriterDeathTest = MapsPageWriterTest;

TEST_F(MapsPageWriterDeathTest, EndsTheProcessWithoutATemplate) {
    const auto writeAndTell = [this] {
        std::filesystem::current_path(platform::temporaryDirectory());  // the error log lands here
        std::atexit([] {
            for (const auto& alert : standins::alertRecord().alerts)
                std::fprintf(stderr, "%s\n%s\n", alert.text.c_str(), alert.explanation.c_str());
        });
        mWriter.writeForEvent(&mQuake, {800, 600});
    };
    const char kReport[] = "MapsPageWriter::loadTemplatePage(.|\n)*map.html";
    standins::bundle().resources.erase("map.html");
    EXPECT_EXIT(writeAndTell(), ExitedWithCode(0), kReport);
    standins::bundle() = {.path = "/nowhere/Tellmar.saver"};
    EXPECT_EXIT(writeAndTell(), ExitedWithCode(0), kReport);
}

}  // namespace

#include "mappages/MapsPageWriter.h"

#include <filesystem>

#include "platform/Files.h"
#include "quakes/CQuakeEvent.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"

namespace {

using standins::desktop;
using testing::ElementsAre, testing::HasSubstr, testing::IsEmpty;

const std::string kNow = "Tue, 03. March 2009 14:05:09";

class MapsPageWriterTest : public standins::Test {
  protected:
    MapsPageWriterTest() { std::filesystem::remove(mWriter.locationOfTempPage()); }

    std::string local(const char* zulu) { return mWriter.localDateStringFromZulu(zulu); }
    std::string inserted(const std::string& page, const CQuakeEvent& event) {
        return mWriter.insertMapsFunctionCall(page, event, {1023.9, 767.5});
    }

    MapsPageWriter mWriter;
    const CQuakeEvent mQuake{"2009-03-03T01:05:09.04Z", 4.5, -41.123, 174.567, 33};
};

TEST_F(MapsPageWriterTest, ShowsTimesInTheLocalZone) {
    EXPECT_EQ(local("2009-07-15T07:52:29 -0130"), "Wed, 15. July 2009 21:22:29");
    EXPECT_EQ(local("1970-01-01T01:29:59 +0230"), "Thu, 01. January 1970 11:59:59");
    desktop.zone = "EST5";
    EXPECT_EQ(local("1600-07-01T00:00:00 +0000"), "Fri, 30. June 1600 19:00:00");
    EXPECT_EQ(local("9998-07-01T00:00:00 +0000"), "Tue, 30. June 9998 19:00:00");
    EXPECT_THAT(desktop.logLines, IsEmpty());
}

TEST_F(MapsPageWriterTest, TakesTheCurrentTimeForATextOfAnotherForm) {
    for (const char* text :
         {"", "2009-03-03T01:05:09Z", "2009-02-29T01:05:09 +0000", "2009-03-03T24:05:09 +0000",
          "2009-03-03T01:05:09 +000", "2009-03-03T01:05:09 00000", "2009-03-+3T01:05:09 +0000"}) {
        EXPECT_EQ(local(text), kNow) << text;
        EXPECT_EQ(desktop.logLines.back(), "Error formatting date (" + std::string(text) + ")");
    }
}

TEST_F(MapsPageWriterTest, PutsTheEventIntoEveryMarkerOfTheTemplate) {
    mWriter.writeForEvent(nullptr, {800, 600});
    EXPECT_FALSE(std::filesystem::exists(mWriter.locationOfTempPage()));
    const std::string call = "onload=\"initializeMap(-41.123, 174.567, 4.50, '33.00km', '" + kNow + "', 8)\"";
    EXPECT_EQ(inserted("onload=\"\"onload=\"\"><div id=\"map_canvas\"></div>", mQuake),
              call + call + "><div id=\"map_canvas\" style=\"width: 1023px; height: 767px\"></div>");
    mWriter.writeForEvent(&mQuake, {1023.9, 767.5});
    const std::string page = contentsOf(mWriter.locationOfTempPage());
    EXPECT_EQ(page, inserted(mWriter.loadTemplatePage(), mQuake));
    EXPECT_THAT(page, HasSubstr(call));
    desktop.bundle = "/some.where/Other.v2.saver";
    EXPECT_EQ(mWriter.locationOfTempPage(), platform::temporaryDirectory() + "/Other.v2.html");
}

TEST_F(MapsPageWriterTest, LogsOnceThatThePageCannotBeWritten) {
    const TemporaryFolder folder;
    desktop.bundle = folder.path(std::string(249, 'x') + ".saver");  // a draft's name would be too long
    std::filesystem::create_directories(desktop.bundle + "/resources");
    std::ofstream(desktop.bundle + "/resources/map.html") << "page";
    for (int i = 0; i < 2; ++i) mWriter.writeForEvent(&mQuake, {800, 600});
    EXPECT_THAT(desktop.logLines, ElementsAre(HasSubstr("cannot write the map page")));
    EXPECT_FALSE(std::filesystem::exists(mWriter.locationOfTempPage()));
}

}  // namespace

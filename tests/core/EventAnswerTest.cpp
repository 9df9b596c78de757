#include "service/EventAnswer.h"

#include <regex>

#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using testing::ElementsAre, testing::HasSubstr, testing::IsEmpty, testing::SizeIs;

constexpr char kHead[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<q:quakeml xmlns:q=\"http://quakeml.org/xmlns/quakeml/1.2\" xmlns=\"http://quakeml.org/xmlns/bed/1.2\">"
    "<eventParameters publicID=\"smi:example/NA\">";

std::string documentOf(const std::string& content) {
    return kHead + content + "</eventParameters></q:quakeml>";
}
std::string event(const std::string& content) { return "<event publicID='smi:e'>" + content + "</event>"; }

std::string originOf(const std::string& publicID, const std::string& latitude, const std::string& depth) {
    return "<origin publicID='" + publicID +
           "'><time><value>2016-11-13T11:02:56.3459Z</value></time><latitude>" + valueOf(latitude) +
           "<uncertainty>0.1</uncertainty></latitude><longitude><value>173.02</value><value>1</value>" +
           "</longitude>" + depth + "</origin>";
}
std::string magnitudeOf(const std::string& publicID, const std::string& value) {
    return "<magnitude publicID='" + publicID + "'><mag>" + valueOf(value) + "</mag></magnitude>";
}

const std::string kType = "<type>earthquake</type>";
const std::string kOrigin = originOf("smi:o1", "-42.69", "<depth><value>15115.5</value></depth>");
const std::string kMagnitude = magnitudeOf("smi:m1", "7.8");
const std::string kWhole = documentOf(event(kType + kOrigin + kMagnitude));

// Origin and magnitude of an event with so many phases, this review and so many stations.
std::string rated(const std::string& phases, const std::string& review, const std::string& stations) {
    std::string origin = kOrigin, magnitude = kMagnitude;
    const std::string quality = "<quality><usedPhaseCount>" + phases + "</usedPhaseCount></quality>";
    origin.insert(origin.rfind("</origin>"), (phases.empty() ? "" : quality) + review);
    const std::string count = "<stationCount>" + stations + "</stationCount>";
    return origin + magnitude.insert(magnitude.rfind("</magnitude>"), stations.empty() ? "" : count);
}

struct Translation {
    bool isGood;
    std::string document;
};

Translation translate(const std::string& bytes, std::size_t piece = 7) {
    EventAnswer answer;
    for (std::size_t at = 0; at < bytes.size(); at += piece) answer.take(bytes.substr(at, piece));
    answer.finish();
    return {answer.isGood(), std::move(answer).document()};
}

class EventAnswerTest : public standins::Test {
  protected:
    // What the list's parser makes of the translated document.
    static std::vector<std::string> quakes(const std::string& content) {
        return quakesIn(translate(documentOf(content)).document);
    }
    static std::string quake(const std::string& content) { return quakes(event(content)).at(0); }
};

constexpr char kTold[] = "2016-11-13T11:02:56 +0000 M7.8 at -42.69, 173.02, 15.1155 km";

TEST_F(EventAnswerTest, AnEventReachesTheParserInItsOwnUnitsWithoutItsPicks) {
    EXPECT_EQ(quake("<pick publicID='p'><time>" + valueOf("2000-01-01T00:00:00Z") +
                    "</time><type>other</type></pick><amplitude><type>AML</type></amplitude>" + kMagnitude +
                    kOrigin + kType),
              kTold);
}

TEST_F(EventAnswerTest, PrefixesGoAndNamesOfOthersAreLeftOut) {
    const std::string prefixed =
        std::regex_replace(kType + kOrigin + kMagnitude, std::regex("<(/?)"), "<$1b:");
    const std::string document =
        "<a:quakeml xmlns:a='https://quakeml.org/xmlns/quakeml/1.2' "  // some write it so
        "xmlns:b='http://quakeml.org/xmlns/bed/1.2' xmlns:x='urn:other'><b:eventParameters><b:event>"
        "<x:type>explosion</x:type><x:origin/>" +
        prefixed + "</b:event></b:eventParameters></a:quakeml>";
    EXPECT_THAT(quakesIn(translate(document).document), ElementsAre(kTold));
}

TEST_F(EventAnswerTest, ThePreferredOriginAndMagnitudeAreShownWhereverTheyStandAndElseTheFirst) {
    const std::string depth = "<depth><value>0</value></depth>";
    const std::string origins = originOf("o1", "1", depth) + originOf("o2", "2", depth);
    const std::string magnitudes = magnitudeOf("m1", "5") + magnitudeOf("m2", "6");
    const auto naming = [](const std::string& origin, const std::string& magnitude) {
        return "<preferredOriginID>" + origin + "</preferredOriginID><preferredMagnitudeID> " + magnitude +
               "\n</preferredMagnitudeID>";
    };
    const std::string all = kType + origins + magnitudes;
    EXPECT_THAT(quake(all + naming("o2", "m2")), HasSubstr(" M6 at 2, "));
    EXPECT_THAT(quake(naming("o2", "m2") + all), HasSubstr(" M6 at 2, "));
    for (const std::string& content : {all + naming("o4", "m4"), all + naming("", ""), all})
        EXPECT_THAT(quake(content), HasSubstr(" M5 at 1, "));
}

TEST_F(EventAnswerTest, EventsOfOtherTypesAndRejectedOnesAreDropped) {
    const std::string rest = kOrigin + kMagnitude,
                      rejected = rated("", "<evaluationStatus>rejected</evaluationStatus>", "");
    for (const std::string type : {"explosion", "not existing", "duplicate", "Earthquake", "earthquake "})
        EXPECT_THAT(quakes(event("<type>" + type + "</type>" + rest)), IsEmpty()) << type;
    EXPECT_THAT(quakes(event("<type>other</type>" + kType + rest)), IsEmpty());
    EXPECT_THAT(quakes(event(kType + rejected) + event(rejected)), IsEmpty());
    EXPECT_EQ(quake("<type>earth<!-- c --><![CDATA[quake]]></type>" + rest), kTold);
}

TEST_F(EventAnswerTest, AnEventWithoutATypeIsKeptWhenItIsReviewedOrWellRecorded) {
    const auto isKept = [](const std::string& phases, const std::string& review,
                           const std::string& stations) {
        return quakes(event("<type> </type>" + rated(phases, review, stations))).size() == 1;
    };
    const std::string automatic = "<evaluationMode>automatic</evaluationMode>";
    EXPECT_TRUE(isKept("", "", ""));  // there is nothing to judge it by
    EXPECT_TRUE(isKept("5", "<evaluationMode> manual\n</evaluationMode>", ""));
    EXPECT_TRUE(isKept("5", automatic + "<evaluationStatus>confirmed</evaluationStatus>", ""));
    EXPECT_TRUE(isKept("20", automatic, "10"));
    EXPECT_FALSE(isKept("19", automatic, "10"));
    EXPECT_FALSE(isKept("20", automatic, "9"));
    EXPECT_FALSE(isKept("20", automatic, ""));
    EXPECT_FALSE(isKept("", automatic, ""));
    EXPECT_FALSE(isKept("", "", "9"));
}

TEST_F(EventAnswerTest, AnEventIsJudgedByItsPreferredOriginAndMagnitude) {
    const std::string poor = rated("5", "", "5"), good = rated("22", "", "12");
    const std::string preferred =
        "<preferredOriginID>smi:o2</preferredOriginID><preferredMagnitudeID>smi:m2</preferredMagnitudeID>";
    const auto second = [](const std::string& content) {
        return std::regex_replace(content, std::regex("smi:(.)1"), "smi:$012");
    };
    EXPECT_THAT(quakes(event(preferred + poor + second(good))), SizeIs(1));
    EXPECT_THAT(quakes(event(preferred + good + second(poor))), IsEmpty());
}

TEST_F(EventAnswerTest, DepthBecomesKilometresWhereItIsANumber) {
    const auto inKilometres = [](const std::string& depth) {
        const std::string all =
            quake(kType + originOf("o", "1", "<depth>" + valueOf(depth) + "</depth>") + kMagnitude);
        return all.substr(all.rfind(", ") + 2);
    };
    EXPECT_EQ(inKilometres("-8164.0625"), "-8.1640625 km");
    EXPECT_EQ(inKilometres(" +5.0E3\n"), "5 km");
    for (const char* none : {"0", "", "deep", "12 km", "NaN", "1e999"})
        EXPECT_EQ(inKilometres(none), "0 km") << none;
}

TEST_F(EventAnswerTest, WhatTheParserWouldDeclineIsDropped) {
    const auto without = [](const std::string& name) {
        std::string origin = kOrigin;
        const std::size_t start = origin.find("<" + name + ">"), end = origin.find("</" + name + ">");
        return event(kType + origin.erase(start, end + name.size() + 3 - start) + kMagnitude);
    };
    EXPECT_THAT(quakes(event(kType + kOrigin) + event(kType + kMagnitude) + without("time") +
                       without("latitude") + without("longitude") + without("depth") + "<event/>" +
                       event(kType + kOrigin + "<magnitude/>") + event(kType + kOrigin + kMagnitude)),
                ElementsAre(kTold));
    // A number without a value is 0 to the parser.
    EXPECT_EQ(quakes(without("value")).size(), 0u);  // of the time
    EXPECT_THAT(quake(kType + originOf("o", "1", "<depth/>") + kMagnitude), HasSubstr(", 0 km"));
}

TEST_F(EventAnswerTest, EncodingsAndEntitiesBecomeUTF8) {
    const auto timeIn = [](const std::string& encoding, const std::string& text) {
        std::string bytes = kWhole;
        bytes.replace(bytes.find("2016-11-13T11:02:56.3459Z"), 25, text);
        return translate(bytes.replace(bytes.find("UTF-8"), 5, encoding)).document;
    };
    EXPECT_THAT(timeIn("windows-1252", "\x80\xe9"), HasSubstr("<value>\xe2\x82\xac\xc3\xa9</value>"));
    EXPECT_THAT(timeIn("UTF-8", "M&#257;ori&unknown; &lt; b"),
                HasSubstr("<value>M\xc4\x81ori &lt; b</value>"));
    const std::string cut = timeIn("UTF-8", repeated("\xe6\xbc\xa2", 1000));  // at a whole character
    EXPECT_TRUE(translate(cut).isGood);
    EXPECT_FALSE(translate(documentOf("\xff\xfe")).isGood);
}

TEST_F(EventAnswerTest, ThousandsOfEventsPassWithTheirQuotedNames) {
    const std::string events =
        repeated("<event publicID='a\"b'>" + kType + kOrigin + kMagnitude + "</event>", 2000);
    const std::string document = translate(documentOf(events)).document;
    EXPECT_THAT(document, HasSubstr("<event publicID=\"a&quot;b\">"));
    EXPECT_THAT(quakesIn(document), SizeIs(2000));
}

TEST_F(EventAnswerTest, HostileDocumentsAreRefused) {
    EXPECT_FALSE(translate(documentOf(repeated("<a>", 100'000)), 4096).isGood);
    EXPECT_FALSE(
        translate(entities("q", 12, 10) +
                      "<quakeml xmlns='http://quakeml.org/xmlns/quakeml/1.2'>"
                      "<eventParameters><event><type>&e11;</type></event></eventParameters></quakeml>",
                  4096)
            .isGood);
    const std::string uri(50'000, 'u');
    EXPECT_FALSE(translate(documentOf("<a xmlns:p='" + uri + "'><b p:c=''/></a>"), 4096).isGood);
    std::string prefixed = "<a xmlns:p='" + uri + "'";
    for (int i = 0; i < 1000; ++i) prefixed += " p:a" + std::to_string(i) + "=''";
    EXPECT_FALSE(translate(documentOf(prefixed + "/>"), 4096).isGood);
    EXPECT_FALSE(translate(kHead + ("<event publicID='" + std::string(3 << 20, 'x')), 1 << 14).isGood);
    EXPECT_TRUE(translate(documentOf("<!--" + std::string(900 << 10, 'x') + "-->"), 1 << 14).isGood);
}

}  // namespace

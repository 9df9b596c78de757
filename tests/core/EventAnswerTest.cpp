#include "service/EventAnswer.h"

#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using testing::ElementsAre, testing::HasSubstr;

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

TEST_F(EventAnswerTest, TheDocumentIsTheSameHoweverItsBytesComeAndNothingWhereTheyEndEarly) {
    EXPECT_EQ(translate(kWhole, 1).document, translate(kWhole, kWhole.size()).document);
    for (const std::size_t size : {kWhole.size() - 1, kWhole.find("</event>") + 8, kWhole.size() / 2})
        EXPECT_EQ(translate(kWhole.substr(0, size)).document, "") << size;
}

TEST_F(EventAnswerTest, PrefixesGoAndNamesOfOthersAreLeftOut) {
    const std::string document =
        "<a:quakeml xmlns:a='http://quakeml.org/xmlns/quakeml/1.2' "
        "xmlns:b='http://quakeml.org/xmlns/bed/1.2'>"
        "<b:eventParameters><b:event "
        "xmlns:x='urn:other'><x:type>explosion</x:type><b:type>earthquake</b:type>"
        "<x:origin/><b:preferredOriginID>o</b:preferredOriginID></b:event></b:eventParameters></a:quakeml>";
    EXPECT_THAT(translate(document).document, HasSubstr("<event><type>earthquake</type></event>"));
}

TEST_F(EventAnswerTest, TheSecureSpellingOfANamespaceIsQuakeMLToo) {
    std::string secure = kWhole;
    for (std::size_t at = 0; (at = secure.find("http:", at)) != secure.npos; at += 6)
        secure.insert(at + 4, "s");
    EXPECT_EQ(translate(secure).document, translate(kWhole).document);
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

TEST_F(EventAnswerTest, TheTypeIsPassedOnAsItIs) {
    for (const std::string& type : {std::string("<type>earthquake </type>"), "<type>other</type>" + kType})
        EXPECT_EQ(quake(type + kOrigin + kMagnitude), "none");
    EXPECT_EQ(quake("<type>earth<!-- c --><![CDATA[quake]]></type>" + kOrigin + kMagnitude), kTold);
    EXPECT_THAT(translate(documentOf(event("<type>a &lt; b &amp; c</type>"))).document,
                HasSubstr("<type>a &lt; b &amp; c</type>"));
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

TEST_F(EventAnswerTest, WhatAnEventLacksStaysMissing) {
    EXPECT_THAT(quakes(event(kType + kOrigin) + event(kType + kMagnitude) +
                       event(kType + originOf("o", "1", "") + kMagnitude) + "<event/>" +
                       event(kType + kOrigin + kMagnitude)),
                ElementsAre("none", "none", "none", "none", kTold));
}

TEST_F(EventAnswerTest, OtherDocumentsStayAsTheyAre) {
    const std::string earlier =
        "<?xml version='1.0'?>\n<quakeml xmlns='http://quakeml.org/xmlns/quakeml/1.0.1'>\r\n<x/></quakeml>\n";
    EXPECT_EQ(translate(earlier).document, earlier);
    EXPECT_FALSE(translate(earlier.substr(0, 70)).isGood);
    for (const std::string text : {"<quakeml xmlns='urn:other'/>", "", "Bad request", "<!doctype html><br>"})
        EXPECT_FALSE(translate(text).isGood) << text;
}

TEST_F(EventAnswerTest, EncodingsAndEntitiesBecomeUTF8) {
    const auto typeIn = [](const std::string& encoding, const std::string& text) {
        std::string bytes = documentOf(event("<type>" + text + "</type>"));
        return translate(bytes.replace(bytes.find("UTF-8"), 5, encoding)).document;
    };
    EXPECT_THAT(typeIn("windows-1252", "\x80\xe9"), HasSubstr("<type>\xe2\x82\xac\xc3\xa9</type>"));
    EXPECT_THAT(typeIn("UTF-8", "M&#257;ori&unknown;"), HasSubstr("<type>M\xc4\x81ori</type>"));
    EXPECT_FALSE(translate(documentOf("\xff\xfe")).isGood);
}

TEST_F(EventAnswerTest, ThousandsOfEventsPassWithTheirQuotedNames) {
    const std::string events = repeated("<event publicID='a\"b'></event>", 2000);
    EXPECT_THAT(translate(documentOf(events)).document,
                HasSubstr(repeated("<event publicID=\"a&quot;b\"></event>\n", 2000)));
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

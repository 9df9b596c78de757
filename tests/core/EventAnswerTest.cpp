#include "service/EventAnswer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeMLParser.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::Not;
using ::testing::NotNull;
using Shape = EventAnswer::Shape;

constexpr char kHead[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<q:quakeml xmlns:q=\"http://quakeml.org/xmlns/quakeml/1.2\" xmlns=\"http://quakeml.org/xmlns/bed/1.2\">"
    "<eventParameters publicID=\"smi:example/NA\">";
constexpr char kTail[] = "</eventParameters></q:quakeml>";

constexpr char kOrigin[] =
    "<origin publicID='smi:o1'><time><value>2016-11-13T11:02:56.3459Z</value></time>"
    "<latitude><value>-42.69</value><uncertainty>0.1</uncertainty></latitude>"
    "<longitude><value>173.02</value></longitude><depth><value>15115.5</value></depth></origin>";
constexpr char kMagnitude[] = "<magnitude publicID='smi:m1'><mag><value>7.8</value></mag></magnitude>";
constexpr char kType[] = "<type>earthquake</type>";

std::string documentOf(const std::string& content) { return kHead + content + kTail; }
std::string event(const std::string& content) { return "<event publicID='smi:e'>" + content + "</event>"; }

std::string originAt(const std::string& publicID, const std::string& latitude) {
    return "<origin publicID='" + publicID +
           "'><time><value>2016-11-13T11:02:56Z</value></time><latitude><value>" + latitude +
           "</value></latitude><longitude><value>1</value></longitude><depth><value>0</value></depth></"
           "origin>";
}
std::string magnitudeOf(const std::string& publicID, const std::string& value) {
    return "<magnitude publicID='" + publicID + "'><mag><value>" + value + "</value></mag></magnitude>";
}

struct Translation {
    Shape shape;
    bool isGood;
    std::string document;
};

Translation translate(const std::string& bytes, std::size_t piece = 7) {
    EventAnswer answer;
    for (std::size_t at = 0; at < bytes.size(); at += piece) answer.take(bytes.substr(at, piece));
    answer.finish();
    return {answer.shape(), answer.isGood(), std::move(answer).document()};
}

class EventAnswerTest : public standins::Test {
  protected:
    // What the list's parser makes of the translated document.
    static std::vector<CQuakeEvent*> quakes(const std::string& content) {
        const Translation translation = translate(documentOf(content));
        EXPECT_TRUE(translation.isGood);
        standins::urlLoading().answerToAll = translation.document;
        return CQuakeMLParser().GetEvents();
    }
    static CQuakeEvent* quake(const std::string& content) {
        const auto all = quakes(event(content));
        return all.size() == 1 ? all.front() : nullptr;
    }
};

TEST_F(EventAnswerTest, AnEventReachesTheParserInItsOwnUnits) {
    const CQuakeEvent* const result = quake(
        "<pick publicID='p'><time><value>2000-01-01T00:00:00Z</value></time><type>other</type></pick>"
        "<amplitude><type>AML</type></amplitude>" +
        std::string(kMagnitude) + kOrigin + kType);
    ASSERT_THAT(result, NotNull());
    EXPECT_STREQ(result->mTime, "2016-11-13T11:02:56 +0000");
    EXPECT_EQ(result->mMagnitude, 7.8);
    EXPECT_EQ(result->mLatitude, -42.69);
    EXPECT_EQ(result->mLongitude, 173.02);
    EXPECT_EQ(result->mDepth, 15.1155);
}

TEST_F(EventAnswerTest, TheDocumentIsTheSameHoweverItsBytesCome) {
    const std::string bytes = documentOf(event(kType + std::string(kOrigin) + kMagnitude));
    const std::string expected =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<quakeml xmlns=\"http://quakeml.org/xmlns/quakeml/1.0\"><eventParameters>\n"
        "<event publicID=\"smi:e\"><type>earthquake</type><origin publicID=\"smi:o1\">"
        "<time><value>2016-11-13T11:02:56.345Z</value></time><latitude><value>-42.69</value></latitude>"
        "<longitude><value>173.02</value></longitude><depth><value>15.1155</value></depth></origin>"
        "<magnitude publicID=\"smi:m1\"><mag><value>7.8</value></mag></magnitude></event>\n"
        "</eventParameters></quakeml>\n";
    EXPECT_EQ(translate(bytes, 1).document, expected);
    EXPECT_EQ(translate(bytes, bytes.size()).document, expected);
}

TEST_F(EventAnswerTest, PrefixesGoAndNamesOfOthersAreLeftOut) {
    const std::string content =
        "<b:eventParameters><b:event "
        "xmlns:x='urn:other'><x:type>explosion</x:type><b:type>earthquake</b:type>"
        "<x:origin/><b:preferredOriginID>o</b:preferredOriginID></b:event></b:eventParameters>";
    const std::string document = translate(
                                     "<a:quakeml xmlns:a='http://quakeml.org/xmlns/quakeml/1.2' "
                                     "xmlns:b='http://quakeml.org/xmlns/bed/1.2'>" +
                                     content + "</a:quakeml>")
                                     .document;
    EXPECT_THAT(document, HasSubstr("<event><type>earthquake</type></event>"));
}

TEST_F(EventAnswerTest, ThePreferredOriginAndMagnitudeAreShownWhereverTheyStand) {
    const std::string origins = originAt("o1", "1") + originAt("o2", "2") + originAt("o3", "3");
    const std::string magnitudes = magnitudeOf("m1", "5") + magnitudeOf("m2", "6");
    const auto naming = [](const std::string& origin, const std::string& magnitude) {
        return "<preferredOriginID>" + origin + "</preferredOriginID><preferredMagnitudeID> " + magnitude +
               "\n</preferredMagnitudeID>";
    };
    for (const std::string& content : {kType + origins + magnitudes + naming("o2", "m2"),
                                       naming("o2", "m2") + magnitudes + origins + kType}) {
        const CQuakeEvent* const result = quake(content);
        ASSERT_THAT(result, NotNull());
        EXPECT_EQ(result->mLatitude, 2);
        EXPECT_EQ(result->mMagnitude, 6);
    }
    for (const std::string& names : {naming("o4", "m4"), naming("", ""), std::string()}) {
        const CQuakeEvent* const result = quake(kType + origins + magnitudes + names);
        ASSERT_THAT(result, NotNull());
        EXPECT_EQ(result->mLatitude, 1);
        EXPECT_EQ(result->mMagnitude, 5);
    }
}

TEST_F(EventAnswerTest, TheTypeIsPassedOnAsItIs) {
    const std::string rest = std::string(kOrigin) + kMagnitude;
    EXPECT_THAT(quake(rest), IsNull());
    EXPECT_THAT(quake("<type>earthquake </type>" + rest), IsNull());
    EXPECT_THAT(quake("<type>" + std::string(5000, 'x') + "</type>" + rest), IsNull());
    EXPECT_THAT(quake("<type>other event</type><type>earthquake</type>" + rest), IsNull());
    EXPECT_THAT(quake("<type>earth<!-- c --><![CDATA[quake]]></type>" + rest), NotNull());
    EXPECT_THAT(translate(documentOf(event("<type>a &lt; b &amp; c</type>"))).document,
                HasSubstr("<type>a &lt; b &amp; c</type>"));
}

TEST_F(EventAnswerTest, DepthBecomesKilometresWhereItIsANumber) {
    const auto depthOf = [](const std::string& text) {
        const std::string origin = kOrigin;
        return quake(kType + std::string(origin).replace(origin.find("15115.5"), 7, text) + kMagnitude)
            ->mDepth;
    };
    EXPECT_EQ(depthOf("8164.0625"), 8.1640625);
    EXPECT_EQ(depthOf("-1500"), -1.5);
    EXPECT_EQ(depthOf(" +5.0E3\n"), 5);
    EXPECT_EQ(depthOf("0"), 0);
    for (const char* none : {"", "deep", "12 km", "1,5", "NaN", "INF", "1e999", "0x10"})
        EXPECT_EQ(depthOf(none), 0) << none;
}

TEST_F(EventAnswerTest, WhatAnEventLacksStaysMissing) {
    const std::string origin = kOrigin;
    const std::string withoutDepth = origin.substr(0, origin.find("<depth>")) + "</origin>";
    EXPECT_THAT(
        quakes(event(kType + origin) + event(std::string(kType) + kMagnitude) +
               event(kType + withoutDepth + kMagnitude) + "<event/>" + event(kType + origin + kMagnitude)),
        ElementsAre(IsNull(), IsNull(), IsNull(), IsNull(), NotNull()));
    EXPECT_THAT(quakes(kOrigin + std::string(kMagnitude) + "<comment>" + event(kType) + "</comment>"),
                IsEmpty());
    EXPECT_THAT(quakes(""), IsEmpty());
    EXPECT_EQ(translate("<q:quakeml xmlns:q='http://quakeml.org/xmlns/quakeml/1.2'/>").document,
              EventAnswer::withoutEvents());
}

TEST_F(EventAnswerTest, AnAnswerCutAnywhereIsNothing) {
    const std::string bytes = documentOf(event(kType + std::string(kOrigin) + kMagnitude));
    for (const std::size_t size :
         {bytes.size() - 1, bytes.size() - 12, bytes.find("</event>") + 8, bytes.size() / 2}) {
        const Translation cut = translate(bytes.substr(0, size));
        EXPECT_FALSE(cut.isGood) << size;
        EXPECT_EQ(cut.document, "") << size;
    }
}

TEST_F(EventAnswerTest, OtherDocumentsStayAsTheyAre) {
    const std::string earlier =
        "<?xml version='1.0'?>\n<quakeml xmlns=\"http://quakeml.org/xmlns/quakeml/1.0\">\r\n<x/></quakeml>\n";
    const Translation kept = translate(earlier);
    EXPECT_EQ(kept.shape, Shape::Earlier);
    EXPECT_TRUE(kept.isGood);
    EXPECT_EQ(kept.document, earlier);
    EXPECT_FALSE(translate(earlier.substr(0, 70)).isGood);

    for (const std::string text :
         {"<html xmlns='http://www.w3.org/1999/xhtml'><p>Busy</p></html>", "<quakeml xmlns='urn:other'/>", "",
          "Bad request", "<!doctype html><html><br>"}) {
        const Translation other = translate(text);
        EXPECT_FALSE(other.isGood) << text;
        EXPECT_EQ(other.document, text);
    }
}

TEST_F(EventAnswerTest, EncodingsAndEntitiesBecomeUTF8) {
    const auto typeIn = [](const std::string& encoding, const std::string& text) {
        std::string bytes = documentOf(event("<type>" + text + "</type>"));
        return translate(bytes.replace(bytes.find("UTF-8"), 5, encoding)).document;
    };
    EXPECT_THAT(typeIn("windows-1252", "\x80\xe9"), HasSubstr("<type>\xe2\x82\xac\xc3\xa9</type>"));
    EXPECT_THAT(typeIn("ISO-8859-1", "\xe9"), HasSubstr("<type>\xc3\xa9</type>"));
    EXPECT_THAT(typeIn("UTF-8", "M&#257;ori&unknown;"), HasSubstr("<type>M\xc4\x81ori</type>"));
    EXPECT_FALSE(translate(documentOf("\xff\xfe")).isGood);
    EXPECT_EQ(typeIn("no-such-encoding", "a"),
              documentOf(event("<type>a</type>")).replace(30, 5, "no-such-encoding"));
}

TEST_F(EventAnswerTest, HostileDocumentsAreRefused) {
    std::string nested;
    for (int i = 0; i < 100'000; ++i) nested += "<a>";
    EXPECT_FALSE(translate(documentOf(nested), 4096).isGood);

    std::string bomb = "<?xml version='1.0'?><!DOCTYPE q [<!ENTITY e0 'xxxxxxxxxx'>";
    for (int i = 1; i < 12; ++i) {
        const std::string one = "&e" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(i) + " '" + one + one + one + one + one + one + one + one +
                one + one + "'>";
    }
    bomb +=
        "]><quakeml xmlns='http://quakeml.org/xmlns/quakeml/1.2'><eventParameters><event><type>&e11;</type>"
        "</event></eventParameters></quakeml>";
    EXPECT_FALSE(translate(bomb, 4096).isGood);

    const std::string endless = "<event publicID='" + std::string(3 << 20, 'x');
    EXPECT_FALSE(translate(kHead + endless, 1 << 14).isGood);
    EXPECT_EQ(translate(documentOf("<!--" + std::string(900 << 10, 'x') + "-->"), 1 << 14).isGood, true);
}

}  // namespace

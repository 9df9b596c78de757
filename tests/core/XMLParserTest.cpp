#include "platform/XMLParser.h"

#include <gtest/gtest.h>

#include "platform/TextEncoding.h"
#include "tests/support/Feed.h"
#include "xml/XMLSerializer.h"

using namespace platform;
using namespace std::string_literals;

namespace {

constexpr char kNone[] = "(none)";

// The document read and written again; kNone when it cannot be parsed or written.
std::string rewritten(const std::string& document) {
    const CFXMLTreeRef tree = parseXML(document);
    return tree ? serializeXML(tree.get()).value_or(kNone) : kNone;
}

// The nodes under tree on one line, a kind and a string each.
std::string outline(const CFXMLTree* tree) {
    std::string text;
    for (const CFXMLTree* child = tree->GetFirstChild(); child; child = child->GetNextSibling()) {
        text += std::to_string(child->GetNode()->GetTypeCode()) + ':' + child->GetNode()->GetString();
        text += child->GetChildCount() > 0 ? '(' + outline(child) + ')' : " ";
    }
    return text;
}

std::string outlineOf(const std::string& document) {
    const CFXMLTreeRef tree = parseXML(document);
    return tree ? outline(tree.get()) : kNone;
}

std::string nested(int depth) { return repeated("<a>", depth) + repeated("</a>", depth); }

TEST(XMLParserTest, WritingGivesTheDocumentBack) {
    for (const std::string document : {
             "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?><q:a xmlns:q='urn:x'>text</q:a>",
             "<a b=\"1\"  c='2 &lt; \"3\" &#233; &undeclared;'><d e=\"\xC3\xA9 > f\"/>tail<d></d><d/></a>",
             "<a>one<!-- two - wo --><b/>three<![CDATA[<four> & ]]>five<?six seven?></a>",
             "<!--before--><?style sheet?><a>AT&amp;T &#38;, &undeclared; > y</a><!--after--><?last?>",
             "<!DOCTYPE a SYSTEM \"<!DOCTYPE.dtd\" [<!ENTITY e \"expanded\"><!--in--><?pi in?>\n"
             "<!ATTLIST a b CDATA \"default\">]><a>&e;</a>",
             "\xEF\xBB\xBF<a>with a mark</a>",
             "<?xml version='1.0' encoding='ISO-8859-1'?><\xE9>\xE8</\xE9>",
         })
        EXPECT_EQ(rewritten(document), document);
}

TEST(XMLParserTest, UTF16IsReadInEitherByteOrder) {
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\xE2\x82\xAC</a>";
    for (const char* encoding : {"UTF-16LE", "UTF-16BE"})
        for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
            const std::string utf16 = *convertText(mark + text, "UTF-8", encoding);
            EXPECT_EQ(rewritten(utf16), utf16) << encoding;
        }
}

TEST(XMLParserTest, AnElementReadAsOneTagIsWrittenWithItsNewChildren) {
    const auto node = CFXMLNodeCreate(kCFXMLNodeTypeElement, "a", CFXMLNodeInfo{.text = {}, .isEmpty = true});
    const CFXMLTreeRef document = CFXMLTreeCreateWithNode(CFXMLNodeCreate(kCFXMLNodeTypeDocument, ""));
    const CFXMLTreeRef element = CFXMLTreeCreateWithNode(node);
    document->AppendChild(element.get());
    EXPECT_EQ(serializeXML(document.get()), "<a/>");
    element->AppendChild(CFXMLTreeCreateWithNode(CFXMLNodeCreate(kCFXMLNodeTypeText, "b")).get());
    EXPECT_EQ(serializeXML(document.get()), "<a>b</a>");
}

TEST(XMLParserTest, EncodingsThatContradictEachOtherAreRefused) {
    const std::string mark = "\xEF\xBB\xBF", name = repeated("\xE6\xBC\xA2", 60);
    for (const char* encoding : {"UTF-16LE", "UTF-16BE"}) {
        const auto inUTF16 = [&](const std::string& text) { return *convertText(text, "UTF-8", encoding); };
        EXPECT_EQ(outlineOf(mark + inUTF16("<" + name + "/>")), kNone);
        EXPECT_EQ(outlineOf(mark + inUTF16(mark + "<a/>")), kNone);
        EXPECT_EQ(outlineOf(mark + inUTF16("\n<" + name + "/>")), kNone);
        EXPECT_EQ(outlineOf(inUTF16("\n<" + name + "/>")), kNone);
        EXPECT_EQ(outlineOf(inUTF16(mark + mark + "<a/>")), kNone);
        EXPECT_EQ(outlineOf(inUTF16("<?xml version='1.0' encoding='utf-8'?><a/>")), kNone);
        EXPECT_EQ(outlineOf(inUTF16(mark + "<?xml version='1.0' encoding='utf-8'?><a/>")), kNone);
    }
    EXPECT_EQ(outlineOf(mark + mark + "<a/>"), kNone);
}

TEST(XMLParserTest, TextsEndWhereAReferenceBegins) {
    const std::pair<const char*, const char*> cases[] = {
        {"<a>x&amp;y&#65;&#x42;&e; z</a>", "2:a(6:x 10:amp 6:y 10:#65 10:#x42 10:e 6: z )"},
        {"\n<a>\r\n <b> text </b>\t<c> </c><!--x--> </a>\n", "2:a(2:b(6: text  )2:c 5:x )"},
        {"<a> &amp; <b/>\n&#43;4 </a>", "2:a(10:amp 2:b 10:#43 6:4  )"},
        {"<a><![CDATA[&b; ]]><![CDATA[]]></a>", "2:a(7:&b;  7: )"},
        {"<?xml version='1.0' encoding=\"windows-1252\"?><a>\x80</a>", "4:xml 2:a(6:\xE2\x82\xAC )"},
        {"<?xml version='1.0' encoding='windows-1252' standalone='yes'?><a>\x80</a>",
         "4:xml 2:a(6:\xE2\x82\xAC )"},
    };
    for (const auto& [document, nodes] : cases) EXPECT_EQ(outlineOf(document), nodes);
}

TEST(XMLParserTest, WhatIsNotWellFormedOrTooDeepHasNoTree) {
    for (const std::string& document : {"<a/>x"s, "<a>\xED\xA0\x80</a>"s, nested(kMaxXMLDepth + 1),
                                        "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>"s,
                                        "<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a>\xE9</a>"s})
        EXPECT_EQ(rewritten(document), kNone) << document;
    EXPECT_EQ(rewritten(nested(kMaxXMLDepth)), nested(kMaxXMLDepth));
}

TEST(XMLParserTest, EntityBombsAreInert) {
    EXPECT_TRUE(outlineOf(entities("a", 100, 10) + "<a>&e99;</a>").ends_with("2:a(10:e99 )"));
    EXPECT_EQ(outlineOf(entities("a", 100, 10) + "<a b=\"&e99;\"/>"), kNone);
    EXPECT_EQ(outlineOf(entities("a", 200'000, 1) + "<a b=\"&e199999;\"/>"), kNone);
    const std::string declaration = "<!DOCTYPE a [<!ENTITY e \"" + std::string(20'000, 'x') + "\">]>";
    const auto withReferences = [&](int count) {
        return outlineOf(declaration + "<a b=\"" + repeated("&e;", count) + "\"/>");
    };
    EXPECT_NE(withReferences(20), kNone);
    EXPECT_EQ(withReferences(200), kNone);
}

}  // namespace

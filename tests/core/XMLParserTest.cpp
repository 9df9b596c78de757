#include "platform/XMLParser.h"

#include <gtest/gtest.h>

#include "platform/TextEncoding.h"
#include "tests/support/Feed.h"
#include "xml/XMLSerializer.h"

using namespace platform;

namespace {

// The document read and written again; "(none)" when it cannot be parsed or written.
std::string rewritten(const std::string& document) {
    const CFXMLTreeRef tree = parseXML(document);
    return tree ? serializeXML(tree.get()).value_or("(none)") : "(none)";
}

bool isParsed(const std::string& document) { return static_cast<bool>(parseXML(document)); }

std::string nested(int depth) { return repeated("<a>", depth) + repeated("</a>", depth); }

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
    return tree ? outline(tree.get()) : "(none)";
}

TEST(XMLParserTest, WritingGivesTheDocumentBack) {
    for (const std::string document : {
             "<a/>",
             "<a></a>",
             "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><q:a xmlns:q='urn:x'>text</q:a>",
             "<a b=\"1\"  c='2 &lt; \"3\" &#233; &undeclared;'><d e=\"\xC3\xA9 > f\"/>tail</a>",
             "<a>one<!-- two - wo --><b/>three<![CDATA[<four> & ]]>five<?six seven?></a>",
             "<!--before--><?style sheet?><a>AT&amp;T &#38;, &undeclared; > y</a><!--after--><?last?>",
             "<!DOCTYPE a SYSTEM \"<!DOCTYPE.dtd\" [<!ENTITY e \"expanded\"><!--in--><?pi in?>\n"
             "<!ATTLIST a b CDATA \"default\">]><a>&e;</a>",
             "\xEF\xBB\xBF<a>with a mark</a>",
             "<?xml version='1.0' encoding='ISO-8859-1'?><\xE9>\xE8</\xE9>",
         })
        EXPECT_EQ(rewritten(document), document);
}

TEST(XMLParserTest, DocumentsAreReadInTheEncodingTheyDeclareAndWrittenBackInIt) {
    const std::string windows = "<?xml version=\"1.0\" encoding=\"windows-1252\"?><a b=\"\xE9\">\x80</a>";
    EXPECT_EQ(outlineOf(windows), "4:xml 2:a(6:\xE2\x82\xAC )");
    EXPECT_EQ(rewritten(windows), windows);
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\xE2\x82\xAC</a>";
    for (const char* encoding : {"UTF-16LE", "UTF-16BE"}) {
        const std::string utf16 = *convertText(text, "UTF-8", encoding);
        const std::string mark = *convertText("\xEF\xBB\xBF", "UTF-8", encoding);
        EXPECT_EQ(outlineOf(mark + utf16), "4:xml 2:a(6:\xE2\x82\xAC )");
        EXPECT_EQ(rewritten(mark + utf16), mark + utf16);
        EXPECT_EQ(rewritten(utf16), utf16);
    }
}

TEST(XMLParserTest, EncodingsThatContradictEachOtherAreRefused) {
    const std::string mark = "\xEF\xBB\xBF", name = repeated("\xE6\xBC\xA2", 60);
    for (const char* encoding : {"UTF-16LE", "UTF-16BE"}) {
        const auto inUTF16 = [&](const std::string& text) { return *convertText(text, "UTF-8", encoding); };
        EXPECT_FALSE(isParsed(mark + inUTF16("<" + name + "/>")));
        EXPECT_FALSE(isParsed(mark + inUTF16(mark + "<a/>")));
        EXPECT_FALSE(isParsed(mark + inUTF16("\n<" + name + "/>")));
        EXPECT_FALSE(isParsed(inUTF16("\n<" + name + "/>")));
        EXPECT_FALSE(isParsed(inUTF16(mark + mark + "<a/>")));
        EXPECT_FALSE(isParsed(inUTF16("<?xml version='1.0' encoding='utf-8'?><a/>")));
        EXPECT_FALSE(isParsed(inUTF16(mark + "<?xml version='1.0' encoding='utf-8'?><a/>")));
    }
    EXPECT_FALSE(isParsed(mark + mark + "<a/>"));
}

TEST(XMLParserTest, EveryReferenceIsANodeOfItsOwnAndWhiteSpaceAloneIsDropped) {
    const std::pair<const char*, const char*> cases[] = {
        {"<a>x&amp;y&#65;&#x42;&e; z</a>", "2:a(6:x 10:amp 6:y 10:#65 10:#x42 10:e 6: z )"},
        {"<!DOCTYPE a [<!ENTITY e '<b>in</b>'>]><a>&e;</a>", "14:a [<!ENTITY e '<b>in</b>'>] 2:a(10:e )"},
        {"\n<a>\r\n <b> text </b>\t<c> </c><!--x--> </a>\n", "2:a(2:b(6: text  )2:c 5:x )"},
        {"<a> &amp; <b/>\n&#43;4 </a>", "2:a(10:amp 2:b 10:#43 6:4  )"},
        {"<a>one\r\ntwo\rthree</a>", "2:a(6:one\ntwo\nthree )"},
        {"<a><![CDATA[ & ]]><![CDATA[]]></a>", "2:a(7: &  7: )"},
    };
    for (const auto& [document, nodes] : cases) EXPECT_EQ(outlineOf(document), nodes);
}

TEST(XMLParserTest, WhatIsNotWellFormedHasNoTree) {
    for (const std::string document :
         {" ", "text", "<a>", "<a></b>", "<a/>x", "<a/><b/>", "<a b=1/>", "<a b='1' b='2'/>", "<a>&amp</a>",
          "<a>\xC3</a>", "<a>\xED\xA0\x80</a>", "<a>\xC0\xAF</a>", "<a b='\xFF'/>", "<\xFF/>", "<a>]]></a>",
          "<!DOCTYPE html><html><body><br></body></html>", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>",
          "<?xml version=\"1.0\" encoding=\"no-such-encoding\"?><a/>",
          "<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a>\xE9</a>"})
        EXPECT_FALSE(isParsed(document)) << document;
    EXPECT_FALSE(isParsed(std::string("<a>\0</a>", 8)));
    const std::string whole = "<?xml version=\"1.0\"?><a b=\"1\">x&amp;<!--c--><d/></a>";
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(isParsed(whole.substr(0, length))) << length;
}

TEST(XMLParserTest, NestingHasALimit) {
    EXPECT_TRUE(isParsed(nested(kMaxXMLDepth)));
    for (const int depth : {kMaxXMLDepth + 1, 100'000}) EXPECT_FALSE(isParsed(nested(depth)));
}

TEST(XMLParserTest, EntityBombsAreInertAndEntitiesWithinEntitiesDoNotDriveTheStack) {
    EXPECT_TRUE(outlineOf(entities("a", 100, 10) + "<a>&e99;</a>").ends_with("2:a(10:e99 )"));
    EXPECT_FALSE(isParsed(entities("a", 100, 10) + "<a b=\"&e99;\"/>"));
    EXPECT_FALSE(isParsed(entities("a", 200'000, 1) + "<a b=\"&e199999;\"/>"));
    const std::string declaration = "<!DOCTYPE a [<!ENTITY e \"" + std::string(20'000, 'x') + "\">]>";
    const auto withReferences = [&](int count) {
        return isParsed(declaration + "<a b=\"" + repeated("&e;", count) + "\"/>");
    };
    EXPECT_TRUE(withReferences(20));
    EXPECT_FALSE(withReferences(200));
}

TEST(XMLParserTest, ATreeKeepsItsChildrenHoweverDeepItIs) {
    const CFXMLTreeRef root = CFXMLTreeCreateWithNode(CFXMLNodeCreate(kCFXMLNodeTypeDocument, ""));
    CFXMLTree* last = root.get();
    for (int depth = 0; depth < 100'000; ++depth) {
        const CFXMLTreeRef child = CFXMLTreeCreateWithNode(CFXMLNodeCreate(kCFXMLNodeTypeElement, "a"));
        last->AppendChild(child.get());
        last = child.get();
    }
    EXPECT_EQ(serializeXML(root.get()), nested(100'000));
}

}  // namespace

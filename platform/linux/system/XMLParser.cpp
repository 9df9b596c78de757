#include "platform/XMLParser.h"

#include <climits>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/TextEncoding.h"
#include "platform/linux/system/ExpatParser.h"
#include "platform/portable/XMLEncoding.h"

namespace platform {

namespace {

constexpr std::string_view kDocumentType = "<!DOCTYPE";

std::string_view withoutOuterBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool extendsASCII(const std::string& encodingName) { return convertText("<", encodingName, "UTF-8") == "<"; }

// Builds the tree of one document. Its source is UTF-8, so expat's positions are positions in it.
class TreeBuilder {
  public:
    explicit TreeBuilder(std::string_view source);

    // Null if the source is not well formed.
    CFXMLTreeRef build(CFXMLNodeInfo info);

  private:
    static TreeBuilder& self(void* data) { return *static_cast<TreeBuilder*>(data); }

    void startElement(std::string_view name);
    void endElement();
    void characters(std::string_view text);
    void other(std::string_view text);
    void instruction(const char* target, const char* data);
    void comment(const char* text);
    void declaration();
    void startCdata();
    void endCdata();
    void endDocumentType();
    void declared();

    std::string_view eventSource() const;
    CFXMLNodeRef elementNode(std::string_view name);
    CFXMLNodeRef plainElementNode(std::string_view name, bool isEmpty);
    void reference();
    void flushText();
    CFXMLTree* append(CFXMLNodeRef node);
    void fail() { XML_StopParser(mParser.get(), XML_FALSE); }

    ExpatParser mParser;
    std::string_view mSource;
    CFXMLTreeRef mDocument;
    std::vector<CFXMLTree*> mOpen;  // the document and the open elements
    // All elements of a name without attributes share one node, and those written as one tag another.
    std::unordered_map<std::string, CFXMLNodeRef> mPlainElements[2];
    std::string mName;
    std::string mText;  // read, not yet a node
    bool mInCdata = false;
    std::optional<std::size_t> mDocumentTypeStart;
    int mDeclarationCount = 0;
};

TreeBuilder::TreeBuilder(std::string_view source) : mParser(makeExpatParser()), mSource(source) {
    XML_Parser parser = mParser.get();
    if (!parser) return;
    XML_SetUserData(parser, this);
    // Accept references to undeclared entities.
    XML_UseForeignDTD(parser, XML_TRUE);
    XML_SetElementHandler(
        parser, [](void* data, const char* name, const char**) { self(data).startElement(name); },
        [](void* data, const char*) { self(data).endElement(); });
    XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int size) {
        self(data).characters({text, static_cast<std::size_t>(size)});
    });
    // Receives references too, and keeps expat from replacing them.
    XML_SetDefaultHandler(parser, [](void* data, const char* text, int size) {
        self(data).other({text, static_cast<std::size_t>(size)});
    });
    XML_SetProcessingInstructionHandler(parser, [](void* data, const char* target, const char* text) {
        self(data).instruction(target, text);
    });
    XML_SetCommentHandler(parser, [](void* data, const char* text) { self(data).comment(text); });
    XML_SetXmlDeclHandler(parser,
                          [](void* data, const char*, const char*, int) { self(data).declaration(); });
    XML_SetCdataSectionHandler(
        parser, [](void* data) { self(data).startCdata(); }, [](void* data) { self(data).endCdata(); });
    XML_SetEndDoctypeDeclHandler(parser, [](void* data) { self(data).endDocumentType(); });
    XML_SetEntityDeclHandler(parser, [](void* data, const char*, int, const char*, int, const char*,
                                        const char*, const char*, const char*) { self(data).declared(); });
    XML_SetAttlistDeclHandler(parser, [](void* data, const char*, const char*, const char*, const char*,
                                         int) { self(data).declared(); });
}

CFXMLTreeRef TreeBuilder::build(CFXMLNodeInfo info) {
    if (!mParser || mSource.size() > INT_MAX) return {};
    mDocument = CFXMLTreeCreateWithNode(CFXMLNodeCreate(kCFXMLNodeTypeDocument, {}, std::move(info)));
    if (!mDocument) return {};
    mOpen.push_back(mDocument.get());
    const XML_Status status =
        XML_Parse(mParser.get(), mSource.data(), static_cast<int>(mSource.size()), XML_TRUE);
    return status == XML_STATUS_OK ? mDocument : CFXMLTreeRef();
}

void TreeBuilder::startElement(std::string_view name) {
    flushText();
    if (mOpen.size() > kMaxXMLDepth) return fail();
    if (CFXMLTree* element = append(elementNode(name))) mOpen.push_back(element);
}

void TreeBuilder::endElement() {
    flushText();
    if (mOpen.size() > 1) mOpen.pop_back();
}

void TreeBuilder::characters(std::string_view text) {
    if (!mInCdata && eventSource().starts_with('&')) return reference();
    mText += text;
}

void TreeBuilder::other(std::string_view text) {
    const bool inContent = mOpen.size() > 1;
    if (inContent && text.starts_with('&')) return reference();
    if (!inContent && text == kDocumentType) {
        mDocumentTypeStart = static_cast<std::size_t>(XML_GetCurrentByteIndex(mParser.get()));
    }
}

void TreeBuilder::instruction(const char* target, const char* data) {
    if (mDocumentTypeStart) return;
    flushText();
    append(CFXMLNodeCreate(kCFXMLNodeTypeProcessingInstruction, target, CFXMLNodeInfo{.text = data}));
}

void TreeBuilder::comment(const char* text) {
    if (mDocumentTypeStart) return;
    flushText();
    append(CFXMLNodeCreate(kCFXMLNodeTypeComment, text));
}

void TreeBuilder::declaration() {
    std::string_view data = eventSource();
    data.remove_prefix(std::string_view("<?xml").size());
    data.remove_suffix(std::string_view("?>").size());
    append(CFXMLNodeCreate(kCFXMLNodeTypeProcessingInstruction, "xml",
                           CFXMLNodeInfo{.text = std::string(withoutOuterBlanks(data))}));
}

void TreeBuilder::startCdata() {
    flushText();
    mInCdata = true;
}

void TreeBuilder::endCdata() {
    mInCdata = false;
    append(CFXMLNodeCreate(kCFXMLNodeTypeCDATASection, mText));
    mText.clear();
}

void TreeBuilder::endDocumentType() {
    if (!mDocumentTypeStart) return;
    const std::size_t start = *mDocumentTypeStart + kDocumentType.size();
    const auto end = static_cast<std::size_t>(XML_GetCurrentByteIndex(mParser.get()));
    append(CFXMLNodeCreate(kCFXMLNodeTypeDocumentType,
                           std::string(withoutOuterBlanks(mSource.substr(start, end - start)))));
    mDocumentTypeStart.reset();
}

void TreeBuilder::declared() {
    if (++mDeclarationCount > kMaxDeclarations) fail();
}

std::string_view TreeBuilder::eventSource() const {
    return mSource.substr(static_cast<std::size_t>(XML_GetCurrentByteIndex(mParser.get())),
                          static_cast<std::size_t>(XML_GetCurrentByteCount(mParser.get())));
}

CFXMLNodeRef TreeBuilder::elementNode(std::string_view name) {
    std::string_view tag = eventSource();
    tag.remove_prefix(1 + name.size());
    tag.remove_suffix(1);
    const bool isEmpty = tag.ends_with('/');
    if (isEmpty) tag.remove_suffix(1);
    const std::string_view attributes = withoutOuterBlanks(tag);
    if (attributes.empty()) return plainElementNode(name, isEmpty);
    return CFXMLNodeCreate(kCFXMLNodeTypeElement, std::string(name),
                           CFXMLNodeInfo{.text = std::string(attributes), .isEmpty = isEmpty});
}

CFXMLNodeRef TreeBuilder::plainElementNode(std::string_view name, bool isEmpty) {
    mName = name;
    CFXMLNodeRef& node = mPlainElements[isEmpty][mName];
    if (node) return node;
    node = isEmpty ? CFXMLNodeCreate(kCFXMLNodeTypeElement, mName, CFXMLNodeInfo{.text = {}, .isEmpty = true})
                   : CFXMLNodeCreate(kCFXMLNodeTypeElement, mName);
    return node;
}

void TreeBuilder::reference() {
    flushText();
    std::string_view name = eventSource();
    name.remove_prefix(1);
    name.remove_suffix(1);
    append(CFXMLNodeCreate(kCFXMLNodeTypeEntityReference, std::string(name)));
}

void TreeBuilder::flushText() {
    if (!withoutOuterBlanks(mText).empty()) append(CFXMLNodeCreate(kCFXMLNodeTypeText, mText));
    mText.clear();
}

// Returns null and stops the parser if there is no memory.
CFXMLTree* TreeBuilder::append(CFXMLNodeRef node) {
    CFXMLTreeRef tree = node ? CFXMLTreeCreateWithNode(std::move(node)) : CFXMLTreeRef();
    if (!tree) {
        fail();
        return nullptr;
    }
    mOpen.back()->AppendChild(tree.get());
    return tree.get();
}

}  // namespace

CFXMLTreeRef parseXML(const std::string& bytes) {
    const XMLEncoding encoding = detectXMLEncoding(bytes);
    std::string_view text = std::string_view(bytes).substr(encoding.markLength);
    std::optional<std::string> converted;
    if (!isUTF8Name(encoding.name)) {
        converted = convertText(text, encoding.name, "UTF-8");
        if (!converted) return {};
        text = *converted;
    }
    if (looksLikeAnotherXMLEncoding(text)) return {};
    if (encoding.name.starts_with("UTF-16") && extendsASCII(declaredXMLEncoding(text))) return {};
    return TreeBuilder(text).build({.text = encoding.name, .hasByteOrderMark = encoding.markLength > 0});
}

}  // namespace platform

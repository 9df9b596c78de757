#include "platform/XMLStream.h"

#include <algorithm>
#include <optional>
#include <string>

#include "platform/TextEncoding.h"
#include "platform/XMLParser.h"
#include "platform/linux/system/ExpatParser.h"

namespace platform {

namespace {

constexpr char kSeparator = '\n';  // between namespace and name
constexpr std::size_t kPieceBytes = 64 << 10;
// Expat keeps unfinished markup, and scans all of it again with every piece.
constexpr long long kMostPendingBytes = 1 << 20;
// Expat copies the namespace for every attribute with a prefix.
constexpr std::size_t kMostNamespaceBytes = 256;

// Describes a single-byte encoding to expat; -1 marks an invalid byte.
int fillEncoding(void*, const XML_Char* name, XML_Encoding* encoding) {
    bool isKnown = false;
    for (int byte = 0; byte < 256; ++byte) {
        const char text = static_cast<char>(byte);
        const auto wide = convertText({&text, 1}, name, "UTF-32LE");
        const bool isOne = wide && wide->size() == 4;
        const auto at = [&](std::size_t i) {
            return static_cast<int>(static_cast<unsigned char>((*wide)[i]));
        };
        encoding->map[byte] = isOne ? at(0) | at(1) << 8 | at(2) << 16 : -1;
        isKnown = isKnown || isOne;
    }
    return isKnown ? XML_STATUS_OK : XML_STATUS_ERROR;
}

}  // namespace

std::string_view XMLStartTag::attribute(std::string_view attributeName) const {
    for (const char* const* pair = attributes; pair[0]; pair += 2)
        if (attributeName == pair[0]) return pair[1];
    return {};
}

class XMLStream::Parser {
  public:
    explicit Parser(XMLStreamHandler& handler) : mHandler(handler), mParser(makeNamespaceParser(kSeparator)) {
        if (mParser) configure(mParser.get());
    }

    bool parse(std::string_view bytes, bool isLast) {
        if (!mIsGood) return false;
        mTaken += static_cast<long long>(bytes.size());
        mIsGood = mParser && XML_Parse(mParser.get(), bytes.data(), static_cast<int>(bytes.size()), isLast) ==
                                 XML_STATUS_OK;
        mIsGood = mIsGood && mTaken - XML_GetCurrentByteIndex(mParser.get()) <= kMostPendingBytes;
        if (!mIsGood) noteFailure();
        return mIsGood;
    }

    bool hasDeclarations() const { return mDeclarations > 0; }
    const std::string& failure() const { return mFailure; }

  private:
    static Parser& self(void* data) { return *static_cast<Parser*>(data); }

    void configure(XML_Parser parser) {
        XML_SetUserData(parser, this);
        XML_SetUnknownEncodingHandler(parser, fillEncoding, nullptr);
        XML_UseForeignDTD(parser, XML_TRUE);  // accept references to undeclared entities
        XML_SetElementHandler(
            parser,
            [](void* data, const char* name, const char** attributes) { self(data).start(name, attributes); },
            [](void* data, const char*) { self(data).end(); });
        XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int size) {
            self(data).mHandler.characters({text, static_cast<std::size_t>(size)});
        });
        XML_SetEntityDeclHandler(
            parser, [](void* data, const char*, int, const char*, int, const char*, const char*, const char*,
                       const char*) { self(data).declared(); });
        XML_SetAttlistDeclHandler(parser, [](void* data, const char*, const char*, const char*, const char*,
                                             int) { self(data).declared(); });
        XML_SetStartNamespaceDeclHandler(parser, [](void* data, const char*, const char* uri) {
            self(data).namespaceDeclared(uri ? uri : "");
        });
    }

    void start(std::string_view name, const char* const* attributes) {
        if (++mLevels > kMaxXMLDepth) return fail();
        const std::size_t separator = name.rfind(kSeparator);
        if (separator == name.npos) return mHandler.startElement({name, {}, attributes});
        mHandler.startElement({name.substr(separator + 1), name.substr(0, separator), attributes});
    }
    void end() {
        --mLevels;
        mHandler.endElement();
    }
    void declared() {
        if (++mDeclarations > kMaxDeclarations) fail();
    }
    void namespaceDeclared(std::string_view uri) {
        if (uri.size() > kMostNamespaceBytes) fail();
    }
    void noteFailure() {
        if (!mParser) return void(mFailure = "there is no memory");
        const XML_Error error = XML_GetErrorCode(mParser.get());
        const bool isOfXML = error != XML_ERROR_NONE && error != XML_ERROR_ABORTED;
        mFailure = "line " + std::to_string(XML_GetCurrentLineNumber(mParser.get())) + ": " +
                   (isOfXML ? XML_ErrorString(error) : "beyond the limits");
    }
    void fail() { XML_StopParser(mParser.get(), XML_FALSE); }

    XMLStreamHandler& mHandler;
    ExpatParser mParser;
    bool mIsGood = true;
    std::string mFailure;
    int mLevels = 0;
    int mDeclarations = 0;  // of attributes and entities
    long long mTaken = 0;
};

XMLStream::XMLStream(XMLStreamHandler& handler) : mParser(std::make_unique<Parser>(handler)) {}
XMLStream::~XMLStream() = default;

bool XMLStream::take(std::string_view bytes) {
    bool isGood = true;
    for (; isGood && !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), kPieceBytes)))
        isGood = mParser->parse(bytes.substr(0, kPieceBytes), false);
    return isGood;
}

bool XMLStream::hasDeclarations() const { return mParser->hasDeclarations(); }

const std::string& XMLStream::failure() const { return mParser->failure(); }

bool XMLStream::finish() { return mParser->parse({}, true); }

}  // namespace platform

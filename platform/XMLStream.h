#pragma once

#include <memory>
#include <string_view>

namespace platform {

// A start tag while it is reported. Names come without their prefix.
struct XMLStartTag {
    std::string_view name;
    std::string_view namespaceURI;  // empty where none is declared
    const char* const* attributes;  // names and values in turn, ended by a null

    // The value of an attribute without a prefix; empty where there is none.
    std::string_view attribute(std::string_view attributeName) const;
};

// Hears of a document's markup in its order. One text may come in several pieces.
class XMLStreamHandler {
  public:
    virtual ~XMLStreamHandler() = default;
    virtual void startElement(const XMLStartTag& tag) = 0;
    virtual void endElement() = 0;
    virtual void characters(std::string_view text) = 0;
};

// Reads a document piece by piece and holds none of it, whatever its size. Entities of the document are
// replaced within bounds, unknown ones and external ones left out.
class XMLStream {
  public:
    // The handler has to outlive the stream.
    explicit XMLStream(XMLStreamHandler& handler);
    ~XMLStream();
    XMLStream(const XMLStream&) = delete;
    XMLStream& operator=(const XMLStream&) = delete;

    // Returns false once the document is not well formed, is nested more than 1,000 levels deep, has markup
    // of more than 1 MiB in one piece or a namespace of more than 256 bytes.
    bool take(std::string_view bytes);
    // To be called once all bytes are taken. Returns false when the document is not whole.
    bool finish();

    // Whether the document type so far declares attributes or entities.
    bool hasDeclarations() const;

  private:
    class Parser;
    std::unique_ptr<Parser> mParser;
};

}  // namespace platform

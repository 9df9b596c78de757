#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

// A start tag, valid while it is being reported. Names come without their prefix.
struct XMLStartTag {
    std::string_view name;
    std::string_view namespaceURI;  // empty when none is declared
    const char* const* attributes;  // alternating names and values, terminated by a null

    // The value of an attribute without a prefix; empty when there is no such attribute.
    std::string_view attribute(std::string_view attributeName) const;
};

// Receives a document's markup in document order. One text may come in several pieces.
class XMLStreamHandler {
  public:
    virtual ~XMLStreamHandler() = default;
    virtual void startElement(const XMLStartTag& tag) = 0;
    virtual void endElement() = 0;
    virtual void characters(std::string_view text) = 0;
};

// Parses a document of any size piece by piece and keeps none of it. The document's own entities are expanded
// within limits; unknown and external ones are left out.
class XMLStream {
  public:
    // The handler must outlive the stream.
    explicit XMLStream(XMLStreamHandler& handler);
    ~XMLStream();
    XMLStream(const XMLStream&) = delete;
    XMLStream& operator=(const XMLStream&) = delete;

    // Returns false once the document proves to be malformed, nested more than 1,000 levels deep, or to have
    // a tag or comment of more than 1 MiB, a namespace of more than 256 bytes or more than 1,000
    // declarations.
    bool take(std::string_view bytes);
    // Call it after the last bytes. Returns false when the document is incomplete.
    bool finish();

    // Whether the document type so far declares attributes or entities.
    bool hasDeclarations() const;

    // Where and why the document was refused, human-readable.
    const std::string& failure() const;

  private:
    class Parser;
    std::unique_ptr<Parser> mParser;
};

}  // namespace platform

#pragma once

#include <memory>
#include <string_view>

namespace platform {

// A start tag, valid while it is reported. Names have no prefix.
struct XMLStartTag {
    std::string_view name;
    std::string_view namespaceURI;  // empty if none is declared
    const char* const* attributes;  // alternating names and values, null-terminated

    // The value of an attribute without a prefix; empty if there is no such attribute.
    std::string_view attribute(std::string_view attributeName) const;
};

// Receives a document's markup in order. A text may come in several pieces.
class XMLStreamHandler {
  public:
    virtual ~XMLStreamHandler() = default;
    virtual void startElement(const XMLStartTag& tag) = 0;
    virtual void endElement() = 0;
    virtual void characters(std::string_view text) = 0;
};

// Reads a document piece by piece and keeps none of it, whatever its size. Replaces the document's own
// entities within bounds, and leaves out unknown and external ones.
class XMLStream {
  public:
    // The handler must outlive the stream.
    explicit XMLStream(XMLStreamHandler& handler);
    ~XMLStream();
    XMLStream(const XMLStream&) = delete;
    XMLStream& operator=(const XMLStream&) = delete;

    // Returns false once the document is not well formed, is nested more than 1,000 levels deep, or has a
    // tag or comment of more than 1 MiB, a namespace of more than 256 bytes or more than 1,000 declarations.
    bool take(std::string_view bytes);
    // Call this after the last bytes. Returns false if the document is incomplete.
    bool finish();

    // Whether the document type so far declares attributes or entities.
    bool hasDeclarations() const;

  private:
    class Parser;
    std::unique_ptr<Parser> mParser;
};

}  // namespace platform

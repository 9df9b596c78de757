#pragma once

#include <optional>
#include <string>

#include "platform/TextEncoding.h"
#include "platform/portable/CFXMLTree.h"

// A node of the document model, around one parser node and the parser tree of it. Its key is the parser
// node's string: an element's name, a text's own text. Whoever made a node owns it until it is added to a
// document.
class CXMLNode {
  public:
    // Keys and values are read through buffers of this size, terminator included.
    static constexpr int kTextBufferSize = 256;

    CXMLNode() = default;
    virtual ~CXMLNode() = default;
    CXMLNode(const CXMLNode&) = delete;
    CXMLNode& operator=(const CXMLNode&) = delete;

    bool HasKey() const { return mNode && !mNode->GetString().empty(); }

    // Writes the key, or the whole characters of it that fit. Returns buffer, untouched when there is no key
    // or no room for a terminator.
    char* GetKey(char* buffer, int size) const;

    // Whether key is this node's, byte for byte. A key that does not fit kTextBufferSize matches nothing.
    bool VerifyKey(const char* key) const;

    bool operator==(const CXMLNode& other) const;

    // Null in a node that could not be made.
    platform::CFXMLTree* GetTree() const { return mTree.get(); }

  protected:
    // Takes the node and makes its tree. A null one ends the process, location telling where.
    void SetNode(platform::CFXMLNodeRef node, const char* location);

    // Null when there is no node.
    const std::string* GetString() const { return mNode ? &mNode->GetString() : nullptr; }

    // Nothing for a null text, for one that is not of that encoding and for an unknown encoding.
    static std::optional<std::string> CreateString(const char* text, platform::CFStringEncoding encoding);

  private:
    platform::CFXMLNodeRef mNode;
    platform::CFXMLTreeRef mTree;
};

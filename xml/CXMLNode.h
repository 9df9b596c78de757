#pragma once

#include <optional>
#include <string>

#include "platform/TextEncoding.h"
#include "platform/portable/CFXMLTree.h"

// A node of the document model. Wraps one parser node and its parser tree. Its key is the parser node's
// string: an element's name, a text's own text. Whoever creates a node owns it until a document takes it.
class CXMLNode {
  public:
    // Keys and values are read through buffers of this size, terminator included.
    static constexpr int kTextBufferSize = 256;

    CXMLNode() = default;
    virtual ~CXMLNode() = default;
    CXMLNode(const CXMLNode&) = delete;
    CXMLNode& operator=(const CXMLNode&) = delete;

    bool HasKey() const { return mNode && !mNode->GetString().empty(); }

    // Writes the key, cut between characters if it does not fit. Returns buffer, untouched if there is no
    // key or no room for a terminator.
    char* GetKey(char* buffer, int size) const;

    // Whether key equals this node's key byte for byte. A key that does not fit kTextBufferSize never
    // matches.
    bool VerifyKey(const char* key) const;

    bool operator==(const CXMLNode& other) const;

    // Null if the node could not be made.
    platform::CFXMLTree* GetTree() const { return mTree.get(); }

  protected:
    // Takes the node and makes its tree. A null node ends the process; location goes into the report.
    void SetNode(platform::CFXMLNodeRef node, const char* location);

    // Null when there is no node.
    const std::string* GetString() const { return mNode ? &mNode->GetString() : nullptr; }

    // Empty for a null text, a text that is not valid in that encoding, and an unknown encoding.
    static std::optional<std::string> CreateString(const char* text, platform::CFStringEncoding encoding);

  private:
    platform::CFXMLNodeRef mNode;
    platform::CFXMLTreeRef mTree;
};

#include "xml/CXMLNode.h"

#include <cstring>
#include <string_view>

#include "support/CErr.h"
#include "support/Text.h"

using namespace platform;

namespace {

// The first room bytes of a UTF-8 text, cut between characters.
std::string_view WholeCharacters(std::string_view text, std::size_t room) {
    if (text.size() <= room) return text;
    while (room > 0 && (text[room] & 0xC0) == 0x80) --room;
    return text.substr(0, room);
}

}  // namespace

char* CXMLNode::GetKey(char* buffer, int size) const {
    if (!mNode || size <= 0) return buffer;
    const std::string_view key = WholeCharacters(mNode->GetString(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, key.data(), key.size());
    buffer[key.size()] = '\0';
    return buffer;
}

bool CXMLNode::VerifyKey(const char* key) const {
    return mNode && mNode->GetString().size() < kTextBufferSize && mNode->GetString() == key;
}

bool CXMLNode::operator==(const CXMLNode& other) const {
    return mNode && other.mNode && mNode->GetString() == other.mNode->GetString();
}

void CXMLNode::SetNode(CFXMLNodeRef node, const char* location) {
    Err.CheckNull(node.get(), location, "CFXMLNodeCreate() failed");
    mNode = std::move(node);
    mTree = CFXMLTreeCreateWithNode(mNode);
    Err.CheckNull(mTree.get(), location, "CFXMLTreeCreateWithNode() failed");
}

std::optional<std::string> CXMLNode::CreateString(const char* text, CFStringEncoding encoding) {
    if (!text) return std::nullopt;
    const bool extendsASCII = encoding == kCFStringEncodingMacRoman || encoding == kCFStringEncodingUTF8;
    if (extendsASCII && isASCII(text)) return text;
    return convertText(text, encoding, kCFStringEncodingUTF8);
}

#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <string>

#include "platform/portable/CFStringEncoding.h"
#include "platform/portable/Pool.h"
#include "platform/portable/Shared.h"

namespace platform {

// The kinds in use, with their published values.
enum CFXMLNodeTypeCode : std::uint8_t {
    kCFXMLNodeTypeDocument = 1,
    kCFXMLNodeTypeElement = 2,
    kCFXMLNodeTypeProcessingInstruction = 4,
    kCFXMLNodeTypeComment = 5,
    kCFXMLNodeTypeText = 6,
    kCFXMLNodeTypeCDATASection = 7,
    kCFXMLNodeTypeEntityReference = 10,
    kCFXMLNodeTypeDocumentType = 14,
};

// What a node holds besides its kind and string.
struct CFXMLNodeInfo {
    // An element's attributes as its start tag spells them, a processing instruction's data, or the name of
    // the encoding in which a parsed document arrived.
    std::string text;
    bool isEmpty = false;  // an element's: written as a single tag
    bool hasByteOrderMark = false;
    CFStringEncoding encoding = kCFStringEncodingUTF8;  // a document's
};

class CFXMLNode;
using CFXMLNodeRef = Shared<const CFXMLNode>;

// One piece of a document; never changes. The string is an element's name, a reference's name, an
// instruction's target, a document type's source after "<!DOCTYPE ", or else the text between the delimiters.
// A text is written out unchanged.
class CFXMLNode : public Pooled<CFXMLNode> {
  public:
    CFXMLNode(CFXMLNodeTypeCode typeCode, std::string string)
        : mTypeCode(typeCode), mString(std::move(string)) {}
    CFXMLNode(CFXMLNodeTypeCode typeCode, std::string string, CFXMLNodeInfo info)
        : mTypeCode(typeCode),
          mString(std::move(string)),
          mInfo(std::make_unique<const CFXMLNodeInfo>(std::move(info))) {}
    CFXMLNode(const CFXMLNode&) = delete;
    CFXMLNode& operator=(const CFXMLNode&) = delete;

    CFXMLNodeTypeCode GetTypeCode() const { return mTypeCode; }
    const std::string& GetString() const { return mString; }
    bool HasInfo() const { return mInfo != nullptr; }
    const CFXMLNodeInfo& GetInfo() const { return mInfo ? *mInfo : kNoInfo; }

    void AddShare() const { ++mShares; }
    void DropShare() const {
        if (--mShares == 0) delete this;
    }

  private:
    ~CFXMLNode() = default;

    inline static const CFXMLNodeInfo kNoInfo;

    mutable std::uint32_t mShares = 0;
    CFXMLNodeTypeCode mTypeCode;
    std::string mString;
    std::unique_ptr<const CFXMLNodeInfo> mInfo;  // most nodes have none
};

// Null when out of memory.
template <typename... Info>
CFXMLNodeRef CFXMLNodeCreate(CFXMLNodeTypeCode typeCode, std::string string, Info&&... info) {
    return CFXMLNodeRef(new (std::nothrow)
                            CFXMLNode(typeCode, std::move(string), std::forward<Info>(info)...));
}

}  // namespace platform

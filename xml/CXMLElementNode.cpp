#include "xml/CXMLElementNode.h"

#include "support/CErr.h"

using namespace platform;

namespace {

constexpr char kLocation[] = "CXMLElementNode::CXMLElementNode(const char*, CFStringEncoding)";

}  // namespace

CXMLElementNode::CXMLElementNode(const CFXMLNode* element) {
    SetNode(element->HasInfo() ? CFXMLNodeCreate(kCFXMLNodeTypeElement, element->GetString())
                               : CFXMLNodeRef(element),
            kLocation);
}

CXMLElementNode::CXMLElementNode(const char* name, CFStringEncoding encoding) {
    std::optional<std::string> string = CreateString(name, encoding);
    Err.CheckNull(string ? &*string : nullptr, kLocation, "CFStringCreateWithCString() failed");
    SetNode(CFXMLNodeCreate(kCFXMLNodeTypeElement, std::move(*string)), kLocation);
}

#include "xml/CXMLElementNode.h"

#include "support/CErr.h"

CXMLElementNode::CXMLElementNode(const char* name, CFStringEncoding encoding) {
    static constexpr char kLocation[] = "CXMLElementNode::CXMLElementNode(const char*, CFStringEncoding)";
    std::optional<std::string> string = CreateString(name, encoding);
    Err.CheckNull(string ? &*string : nullptr, kLocation, "CFStringCreateWithCString() failed");
    SetNode(CFXMLNodeCreate(kCFXMLNodeTypeElement, std::move(*string)), kLocation);
}

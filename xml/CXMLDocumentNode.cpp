#include "xml/CXMLDocumentNode.h"

using namespace platform;

CXMLDocumentNode::CXMLDocumentNode(CFStringEncoding encoding) {
    std::optional<std::string> key = CreateString(kKey, kCFStringEncodingUTF8);
    if (!key) return;
    SetNode(CFXMLNodeCreate(kCFXMLNodeTypeDocument, std::move(*key),
                            CFXMLNodeInfo{.text = {}, .encoding = encoding}),
            "CXMLDocumentNode::CXMLDocumentNode(CFStringEncoding)");
}

#include "xml/CXMLProcInstNode.h"

using namespace platform;

CXMLProcInstNode::CXMLProcInstNode() {
    SetNode(
        CFXMLNodeCreate(kCFXMLNodeTypeProcessingInstruction, kKey, CFXMLNodeInfo{.text = R"(version="1.0")"}),
        "CXMLProcInstNode::CXMLProcInstNode()");
}

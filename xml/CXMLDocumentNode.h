#pragma once

#include "xml/CXMLTreeNode.h"

// The root of a document.
class CXMLDocumentNode : public CXMLTreeNode {
  public:
    static constexpr char kKey[] = "XML_DOCUMENT";

    explicit CXMLDocumentNode(platform::CFStringEncoding encoding);
};

#pragma once

#include "xml/CXMLTreeNode.h"

// An element, always without attributes.
class CXMLElementNode : public CXMLTreeNode {
  public:
    // Shares the parser node unless it has attributes.
    explicit CXMLElementNode(const platform::CFXMLNode* element);
    // A name that is not valid in that encoding ends the process.
    CXMLElementNode(const char* name, platform::CFStringEncoding encoding);
};

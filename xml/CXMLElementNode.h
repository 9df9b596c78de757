#pragma once

#include "xml/CXMLTreeNode.h"

// An element. It has no attributes.
class CXMLElementNode : public CXMLTreeNode {
  public:
    // Shares the parser node of an element unless that has attributes.
    explicit CXMLElementNode(const platform::CFXMLNode* element);
    // A name that is not of that encoding ends the process.
    CXMLElementNode(const char* name, platform::CFStringEncoding encoding);
};

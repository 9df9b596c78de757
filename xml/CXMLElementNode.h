#pragma once

#include "xml/CXMLTreeNode.h"

// An element. It has no attributes.
class CXMLElementNode : public CXMLTreeNode {
  public:
    // A name that is not of that encoding ends the process.
    CXMLElementNode(const char* name, CFStringEncoding encoding);
};

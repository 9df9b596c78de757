#pragma once

#include "xml/CXMLNode.h"

// A node without children.
class CXMLLeafNode : public CXMLNode {
  public:
    virtual int GetValueAsInteger() = 0;
    virtual void GetValueAsString(char* buffer, int size) = 0;
};

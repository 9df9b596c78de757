#pragma once

#include "xml/CXMLLeafNode.h"

// The XML declaration. It has no value.
class CXMLProcInstNode : public CXMLLeafNode {
  public:
    static constexpr char kKey[] = "xml";

    CXMLProcInstNode();

    int GetValueAsInteger() override { return 0; }
    void GetValueAsString(char*, int) override {}
};

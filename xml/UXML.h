#pragma once

#include "platform/portable/CFXMLNode.h"

class CXMLDocument;
class CXMLElementNode;
class CXMLNode;
class CXMLTextNode;
class CXMLTreeNode;

// Makes model nodes and reads values out of elements that hold one text. What is missing or of another kind
// answers null, 0, 0.0 or false.
class UXML {
  public:
    // The model node of a parser node that is an element or a text; the caller owns it. Null for every other
    // kind.
    static CXMLNode* CreateCXMLNodeFromCFXMLNode(const platform::CFXMLNode* node);
    static CXMLElementNode* CreateCXMLElementNodeFromCFXMLNode(const platform::CFXMLNode* node);
    static CXMLTextNode* CreateCXMLTextNodeFromCFXMLNode(const platform::CFXMLNode* node);

    // A new element of the document, which parent owns.
    static CXMLElementNode* CreateCXMLElementNodeForParentNode(CXMLDocument& document, CXMLTreeNode* parent,
                                                               const char* name);

    static CXMLNode* GetChildNodeWithKey(CXMLTreeNode* parent, const char* key);

    // The element's first child, if that is a text.
    static CXMLTextNode* GetTextChildNodeOfElement(CXMLElementNode* element);

    // The value of an element's text child, as it stands escaped in the model. True says only that there is
    // such a child: the buffer is untouched when its text does not fit, so it must start empty.
    static double GetValueAsDoubleFromTextChildNode(CXMLElementNode* element);
    static int GetValueAsIntegerFromTextChildNode(CXMLElementNode* element);
    static bool GetValueAsStringFromTextChildNode(CXMLElementNode* element, char* buffer, int size);

    // The same for the first child of parent with that key, which must be an element.
    static double GetValueAsDoubleForElementChildNode(CXMLTreeNode* parent, const char* key);
    static int GetValueAsIntegerForElementChildNode(CXMLTreeNode* parent, const char* key);
    static bool GetValueAsStringForElementChildNode(CXMLTreeNode* parent, const char* key, char* buffer,
                                                    int size);
};

#pragma once

#include "platform/portable/CFXMLNode.h"

class CXMLDocument;
class CXMLElementNode;
class CXMLNode;
class CXMLTextNode;
class CXMLTreeNode;

// Creates model nodes and reads values from elements that hold one text. Anything missing or of another kind
// gives null, 0, 0.0 or false.
class UXML {
  public:
    // The model node of a parser node that is an element or a text; the caller owns it. Null for every other
    // kind.
    static CXMLNode* CreateCXMLNodeFromCFXMLNode(const platform::CFXMLNode* node);
    static CXMLElementNode* CreateCXMLElementNodeFromCFXMLNode(const platform::CFXMLNode* node);
    static CXMLTextNode* CreateCXMLTextNodeFromCFXMLNode(const platform::CFXMLNode* node);

    // A new element in the document. parent owns it.
    static CXMLElementNode* CreateCXMLElementNodeForParentNode(CXMLDocument& document, CXMLTreeNode* parent,
                                                               const char* name);

    static CXMLNode* GetChildNodeWithKey(CXMLTreeNode* parent, const char* key);

    // The element's first child if it is a text, else null.
    static CXMLTextNode* GetTextChildNodeOfElement(CXMLElementNode* element);

    // The value of an element's text child, still escaped. True only means that there is such a child: the
    // buffer stays untouched if the text does not fit, so it must start empty.
    static double GetValueAsDoubleFromTextChildNode(CXMLElementNode* element);
    static int GetValueAsIntegerFromTextChildNode(CXMLElementNode* element);
    static bool GetValueAsStringFromTextChildNode(CXMLElementNode* element, char* buffer, int size);

    // The same for the first child of parent with that key, which must be an element.
    static double GetValueAsDoubleForElementChildNode(CXMLTreeNode* parent, const char* key);
    static int GetValueAsIntegerForElementChildNode(CXMLTreeNode* parent, const char* key);
    static bool GetValueAsStringForElementChildNode(CXMLTreeNode* parent, const char* key, char* buffer,
                                                    int size);
};

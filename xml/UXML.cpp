#include "xml/UXML.h"

#include <new>

#include "support/CErr.h"
#include "xml/CXMLDocument.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"

using namespace platform;

namespace {

bool IsOfKind(const CFXMLNode* node, CFXMLNodeTypeCode kind) { return node && node->GetTypeCode() == kind; }

CXMLElementNode* ElementChild(CXMLTreeNode* parent, const char* key) {
    return dynamic_cast<CXMLElementNode*>(UXML::GetChildNodeWithKey(parent, key));
}

}  // namespace

CXMLNode* UXML::CreateCXMLNodeFromCFXMLNode(const CFXMLNode* node) {
    if (IsOfKind(node, kCFXMLNodeTypeElement)) return CreateCXMLElementNodeFromCFXMLNode(node);
    return CreateCXMLTextNodeFromCFXMLNode(node);
}

CXMLElementNode* UXML::CreateCXMLElementNodeFromCFXMLNode(const CFXMLNode* node) {
    return IsOfKind(node, kCFXMLNodeTypeElement) ? new (std::nothrow) CXMLElementNode(node) : nullptr;
}

CXMLTextNode* UXML::CreateCXMLTextNodeFromCFXMLNode(const CFXMLNode* node) {
    return IsOfKind(node, kCFXMLNodeTypeText) ? new (std::nothrow) CXMLTextNode(node) : nullptr;
}

CXMLElementNode* UXML::CreateCXMLElementNodeForParentNode(CXMLDocument& document, CXMLTreeNode* parent,
                                                          const char* name) {
    auto* element = new (std::nothrow) CXMLElementNode(name, kCFStringEncodingMacRoman);
    Err.CheckNull(element,
                  "static CXMLElementNode* UXML::CreateCXMLElementNodeForParentNode(CXMLDocument&, "
                  "CXMLTreeNode*, const char*)",
                  "Failed to create CXMLElementNode instance");
    document.AddNode(parent, element);
    return element;
}

CXMLNode* UXML::GetChildNodeWithKey(CXMLTreeNode* parent, const char* key) {
    return parent ? parent->GetChildForKey(key) : nullptr;
}

CXMLTextNode* UXML::GetTextChildNodeOfElement(CXMLElementNode* element) {
    return element ? dynamic_cast<CXMLTextNode*>(element->GetFirstChild()) : nullptr;
}

double UXML::GetValueAsDoubleFromTextChildNode(CXMLElementNode* element) {
    CXMLTextNode* text = GetTextChildNodeOfElement(element);
    return text ? text->GetValueAsDouble() : 0.0;
}

int UXML::GetValueAsIntegerFromTextChildNode(CXMLElementNode* element) {
    CXMLTextNode* text = GetTextChildNodeOfElement(element);
    return text ? text->GetValueAsInteger() : 0;
}

bool UXML::GetValueAsStringFromTextChildNode(CXMLElementNode* element, char* buffer, int size) {
    CXMLTextNode* text = GetTextChildNodeOfElement(element);
    if (text) text->GetValueAsString(buffer, size);
    return text != nullptr;
}

double UXML::GetValueAsDoubleForElementChildNode(CXMLTreeNode* parent, const char* key) {
    return GetValueAsDoubleFromTextChildNode(ElementChild(parent, key));
}

int UXML::GetValueAsIntegerForElementChildNode(CXMLTreeNode* parent, const char* key) {
    return GetValueAsIntegerFromTextChildNode(ElementChild(parent, key));
}

bool UXML::GetValueAsStringForElementChildNode(CXMLTreeNode* parent, const char* key, char* buffer,
                                               int size) {
    return GetValueAsStringFromTextChildNode(ElementChild(parent, key), buffer, size);
}

#include "xml/XMLSerializer.h"

#include <vector>

#include "platform/TextEncoding.h"
#include "platform/portable/XMLEncoding.h"

using namespace platform;

namespace {

bool isEmptyTag(const CFXMLTree* tree) {
    return tree->GetNode()->GetInfo().isEmpty && tree->GetChildCount() == 0;
}

void writeStartTag(const CFXMLTree* tree, std::string& out) {
    const CFXMLNode* node = tree->GetNode();
    out += '<' + node->GetString();
    if (!node->GetInfo().text.empty()) out += ' ' + node->GetInfo().text;
    out += isEmptyTag(tree) ? "/>" : ">";
}

void writeInstruction(const CFXMLNode* node, std::string& out) {
    out += "<?" + node->GetString();
    if (!node->GetInfo().text.empty()) out += ' ' + node->GetInfo().text;
    out += "?>";
}

void writeBeginning(const CFXMLTree* tree, std::string& out) {
    const CFXMLNode* node = tree->GetNode();
    switch (node->GetTypeCode()) {
        case kCFXMLNodeTypeDocument:
            break;
        case kCFXMLNodeTypeElement:
            writeStartTag(tree, out);
            break;
        case kCFXMLNodeTypeProcessingInstruction:
            writeInstruction(node, out);
            break;
        case kCFXMLNodeTypeComment:
            out += "<!--" + node->GetString() + "-->";
            break;
        case kCFXMLNodeTypeText:
            out += node->GetString();
            break;
        case kCFXMLNodeTypeCDATASection:
            out += "<![CDATA[" + node->GetString() + "]]>";
            break;
        case kCFXMLNodeTypeEntityReference:
            out += '&' + node->GetString() + ';';
            break;
        case kCFXMLNodeTypeDocumentType:
            out += "<!DOCTYPE " + node->GetString() + '>';
            break;
    }
}

void writeEnd(const CFXMLTree* tree, std::string& out) {
    if (tree->GetNode()->GetTypeCode() != kCFXMLNodeTypeElement || isEmptyTag(tree)) return;
    out += "</" + tree->GetNode()->GetString() + '>';
}

// Keeps the open elements in a list, so a deep tree does not exhaust the stack.
void writeChildren(const CFXMLTree* root, std::string& out) {
    std::vector<const CFXMLTree*> open;
    const CFXMLTree* tree = root->GetFirstChild();
    while (tree) {
        writeBeginning(tree, out);
        if (tree->GetFirstChild()) {
            open.push_back(tree);
            tree = tree->GetFirstChild();
            continue;
        }
        writeEnd(tree, out);
        while (!tree->GetNextSibling() && !open.empty()) {
            tree = open.back();
            open.pop_back();
            writeEnd(tree, out);
        }
        tree = tree->GetNextSibling();
    }
}

}  // namespace

std::optional<std::string> serializeXML(const CFXMLTree* tree) {
    const CFXMLNodeInfo& document = tree->GetNode()->GetInfo();
    std::string text;
    if (document.hasByteOrderMark) text = "\xEF\xBB\xBF";
    writeChildren(tree, text);
    if (document.text.empty() || isUTF8Name(document.text)) return text;
    return convertText(text, "UTF-8", document.text);
}

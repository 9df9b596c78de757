#include <cmath>

#include "tests/fuzz/Fuzz.h"
#include "xml/CXMLDocument.h"
#include "xml/CXMLTextNode.h"
#include "xml/CXMLTreeNode.h"

namespace {

struct Result {
    std::string model, written;

    bool operator==(const Result&) const = default;
};

std::string describe(CXMLDocument& document, CXMLNode* node) {
    char key[CXMLNode::kTextBufferSize] = "";
    REQUIRE(document.GetNodeByKey(node->GetKey(key, sizeof key)));
    if (auto* const text = dynamic_cast<CXMLTextNode*>(node); text && text->VerifyKey(key)) {
        const double value = text->GetValueAsDouble(), expected = std::atof(key);
        REQUIRE(value == expected || (std::isnan(value) && std::isnan(expected)));
    }
    std::vector<CXMLNode*> children;
    if (const auto* parent = dynamic_cast<CXMLTreeNode*>(node)) parent->GetChildren(children);
    std::string description = "<" + std::string(key);
    for (CXMLNode* child : children) description += describe(document, child);
    return description + ">";
}

Result readAndWrite(std::string_view bytes) {
    const platform::HTTPResponse response{.status = 200, .body = std::string(bytes)};
    standins::desktop.service = [=](const auto&) { return response; };
    const platform::CFURL url{"http://feed.example/"};
    CXMLDocument document;
    document.Read(&url);
    Result result{describe(document, document.GetNodeByKey("XML_DOCUMENT")), ""};
    if (document.Write("written.xml")) result.written = contentsOf("written.xml");
    document.DeleteTree();
    return result;
}

}  // namespace

// What is written is read as the same model and written as the same bytes.
void fuzz(std::string_view input) {
    const Result first = readAndWrite(input);
    if (!first.written.empty()) REQUIRE(readAndWrite(first.written) == first);
}

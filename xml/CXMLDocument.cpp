#include "xml/CXMLDocument.h"

#include <new>
#include <optional>

#include "platform/URLLoading.h"
#include "platform/XMLParser.h"
#include "support/CErr.h"
#include "support/FSRef.h"
#include "support/OrvFiles.h"
#include "xml/CXMLDocumentNode.h"
#include "xml/CXMLProcInstNode.h"
#include "xml/UXML.h"
#include "xml/XMLSerializer.h"

using namespace platform;

namespace {

constexpr std::uint32_t kUnknownCreator = 0x3F3F3F3F;  // '????'
constexpr std::uint32_t kTextType = 0x54455854;        // 'TEXT'

}  // namespace

CXMLDocument::CXMLDocument() {
    static constexpr char kLocation[] = "CXMLDocument::CXMLDocument()";
    auto* documentNode = new (std::nothrow) CXMLDocumentNode(kCFStringEncodingUTF8);
    Err.CheckNull(documentNode, kLocation, "Failed to create CXMLDocumentNode instance.");
    mKeyIndex.emplace(CXMLDocumentNode::kKey, documentNode);
    mDocumentTree = CFXMLTreeRef(documentNode->GetTree());
    auto* declaration = new (std::nothrow) CXMLProcInstNode;
    Err.CheckNull(declaration, kLocation, "Failed to create CXMLProcInstNode instance.");
    AddNode(documentNode, declaration);
}

void CXMLDocument::AddNode(CXMLNode* parent, CXMLNode* node) {
    auto* treeNode = dynamic_cast<CXMLTreeNode*>(parent);
    Err.CheckNull(treeNode, "void CXMLDocument::AddNode(CXMLNode*, CXMLNode*)",
                  "Parent node not a CXMLTreeNode");
    if (!node->HasKey()) return;
    treeNode->GetTree()->AppendChild(node->GetTree());
    treeNode->AddChild(node);
    mPendingNodes.push_back(node);
}

void CXMLDocument::AddNode(const char* parentKey, CXMLNode* node) {
    std::vector<CXMLNode*> parents;
    GetNodesWithKey(parentKey, parents);
    if (parents.size() == 1) AddNode(parents.front(), node);
}

CXMLNode* CXMLDocument::GetNodeByKey(const char* key) {
    auto found = mKeyIndex.lower_bound(key);
    if (found != mKeyIndex.end() && found->first == key) return found->second;
    while (!mPendingNodes.empty()) {
        found = EnterNextNode();
        if (found->first == key) return found->second;
    }
    return nullptr;
}

void CXMLDocument::GetNodesWithKey(const char* key, std::vector<CXMLNode*>& out) {
    while (!mPendingNodes.empty()) EnterNextNode();
    const auto [first, last] = mKeyIndex.equal_range(key);
    for (auto entry = first; entry != last; ++entry) out.push_back(entry->second);
}

CXMLDocument::KeyIndex::iterator CXMLDocument::EnterNextNode() {
    CXMLNode* node = mPendingNodes.front();
    mPendingNodes.pop_front();
    char key[CXMLNode::kTextBufferSize] = "";
    return mKeyIndex.emplace(node->GetKey(key, sizeof key), node);
}

void CXMLDocument::Read(const CFURL* url) {
    std::string data;
    int errorCode = coreFoundationUnknownErr;
    if (!url || !loadResource(url->text, data, errorCode)) return;
    mDocumentTree = parseXML(data);
    if (mDocumentTree) ProcessSubTree(mDocumentTree.get(), GetNodeByKey(CXMLDocumentNode::kKey));
}

void CXMLDocument::Read(const FSRef* file) {
    if (file) Read(file->path.c_str());
}

void CXMLDocument::Read(const char* path) {
    if (!path || *path == '\0') return;
    const CFURL url{fileURLWithPath(path)};
    Read(&url);
}

void CXMLDocument::ProcessSubTree(const CFXMLTree* tree, CXMLNode* parent) {
    const CFXMLTree* child = tree->GetFirstChild();
    for (std::size_t index = 0; index < tree->GetChildCount(); ++index, child = child->GetNextSibling()) {
        Err.CheckNull(child, "void CXMLDocument::ProcessSubTree(__CFTree*, CXMLNode*)",
                      "CFTreeGetChildAtIndex() failed");
        CXMLNode* node = UXML::CreateCXMLNodeFromCFXMLNode(child->GetNode());
        if (!node) continue;
        AddNode(parent, node);
        ProcessSubTree(child, node);
    }
}

bool CXMLDocument::Write(const CFURL* url) const {
    if (!url || !mDocumentTree) return false;
    const std::optional<std::string> data = serializeXML(mDocumentTree.get());
    int errorCode = coreFoundationUnknownErr;
    if (!data || !writeResource(url->text, *data, errorCode)) return false;
    const FSRef file{pathOfFileURL(url->text)};
    if (!file.path.empty()) OrvFiles::SetFileCreatorType(file, kUnknownCreator, kTextType);
    return true;
}

bool CXMLDocument::Write(const char* path) const {
    if (!path || *path == '\0') return false;
    const CFURL url{fileURLWithPath(path)};
    return Write(&url);
}

void CXMLDocument::DeleteTree() {
    delete GetNodeByKey(CXMLDocumentNode::kKey);
    mPendingNodes.clear();
    mDocumentTree = {};
}

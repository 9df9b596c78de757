#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "bench/FeedPipelines.h"
#include "quakes/CQuakeEvent.h"

namespace {

struct DocumentDeleter {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;

bool isElement(const xmlNode* node, const char* name) {
    return node->type == XML_ELEMENT_NODE &&
           std::strcmp(reinterpret_cast<const char*>(node->name), name) == 0;
}

// Null when parent is null, too.
const xmlNode* child(const xmlNode* parent, const char* name) {
    const xmlNode* node = parent ? parent->children : nullptr;
    while (node && !isElement(node, name)) node = node->next;
    return node;
}

const char* text(const xmlNode* parent, const char* name) {
    const xmlNode* element = child(parent, name);
    const xmlNode* content = element ? element->children : nullptr;
    return content && content->type == XML_TEXT_NODE ? reinterpret_cast<const char*>(content->content) : "";
}

double value(const xmlNode* parent, const char* quantity) {
    return std::atof(text(child(parent, quantity), "value"));
}

CQuakeEvent* makeQuake(const xmlNode* event) {
    if (std::strcmp(text(event, "type"), "earthquake") != 0) return nullptr;
    const xmlNode* origin = child(event, "origin");
    return new CQuakeEvent(text(child(origin, "time"), "value"), value(child(event, "magnitude"), "mag"),
                           value(origin, "latitude"), value(origin, "longitude"), value(origin, "depth"));
}

Document parse(const std::string& bytes) {
    return Document(xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                                  XML_PARSE_HUGE | XML_PARSE_NOBLANKS));
}

}  // namespace

std::vector<CQuakeEvent*> quakesFromLibxml2Pipeline(std::string document) {
    const Document tree = parse(document);
    std::string().swap(document);
    std::vector<CQuakeEvent*> quakes;
    const xmlNode* parameters = child(xmlDocGetRootElement(tree.get()), "eventParameters");
    for (const xmlNode* node = parameters ? parameters->children : nullptr; node; node = node->next) {
        if (isElement(node, "event")) quakes.push_back(makeQuake(node));
    }
    return quakes;
}

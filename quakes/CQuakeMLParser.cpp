#include "quakes/CQuakeMLParser.h"

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "platform/Clock.h"
#include "platform/portable/CFURL.h"
#include "quakes/CQuakeEvent.h"
#include "xml/CXMLDocument.h"
#include "xml/CXMLTreeNode.h"
#include "xml/UXML.h"

namespace {

constexpr std::size_t kTextSize = 256;
constexpr char kQueryBase[] = "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?";
constexpr int kDaysBack = 8;
constexpr int kMagnitudeLower = 4;
constexpr int kMagnitudeUpper = 10;

std::chrono::sys_days today() {
    using namespace std::chrono;
    const std::tm now = platform::localTime(platform::currentTime());
    return sys_days(year(now.tm_year + 1900) / (now.tm_mon + 1) / now.tm_mday);
}

// The first child of that name; null when there is none or it is not an element.
CXMLTreeNode* findElement(CXMLTreeNode* parent, const char* name) {
    return dynamic_cast<CXMLTreeNode*>(parent->GetChildForKey(name));
}

double readValue(CXMLTreeNode* quantity) {
    return UXML::GetValueAsDoubleForElementChildNode(quantity, "value");
}

bool isEarthquake(CXMLTreeNode* event) {
    char type[kTextSize] = "";
    return UXML::GetValueAsStringForElementChildNode(event, "type", type, sizeof type) &&
           std::strcmp(type, "earthquake") == 0;
}

}  // namespace

CQuakeMLParser::CQuakeMLParser() { RetrieveLatestQuakeEvents(); }

std::string CQuakeMLParser::GetQueryString() const {
    char dates[kTextSize];
    GetDateRange(kDaysBack, dates);
    return std::string(kQueryBase) + dates + "&magnitudeLower=" + std::to_string(kMagnitudeLower) +
           "&magnitudeUpper=" + std::to_string(kMagnitudeUpper) + "&outputFormat=quakeml1.0";
}

void CQuakeMLParser::GetDateRange(int days, char* buffer) const {
    using namespace std::chrono;
    const year_month_day start = today() - std::chrono::days(days);
    const year_month_day end = today();
    std::snprintf(buffer, kTextSize, "startDate=%d-%02u-%02u&endDate=%d-%02u-%02u", int(start.year()),
                  unsigned(start.month()), unsigned(start.day()), int(end.year()), unsigned(end.month()),
                  unsigned(end.day()));
}

void CQuakeMLParser::RetrieveLatestQuakeEvents() {
    const platform::CFURL url{GetQueryString()};
    CXMLDocument document;
    document.Read(&url);
    CXMLTreeNode* const root = dynamic_cast<CXMLTreeNode*>(document.GetNodeByKey("quakeml"));
    CXMLTreeNode* const eventParameters = root ? findElement(root, "eventParameters") : nullptr;
    if (eventParameters) CollectEvents(eventParameters);
    document.DeleteTree();
}

void CQuakeMLParser::CollectEvents(CXMLTreeNode* eventParameters) {
    std::vector<CXMLNode*> children;
    eventParameters->GetChildren(children);
    for (CXMLNode* child : children) {
        auto* const element = dynamic_cast<CXMLTreeNode*>(child);
        if (element && element->VerifyKey("event")) mEvents.push_back(CreateNewQuakeEvent(element));
    }
}

CQuakeEvent* CQuakeMLParser::CreateNewQuakeEvent(CXMLTreeNode* event) const {
    if (!isEarthquake(event)) return nullptr;

    CXMLTreeNode* const magnitude = findElement(event, "magnitude");
    CXMLTreeNode* const origin = findElement(event, "origin");
    if (!magnitude || !origin) return nullptr;

    char timeText[kTextSize] = "";
    CXMLTreeNode* const time = findElement(origin, "time");
    if (!time) return nullptr;
    if (!UXML::GetValueAsStringForElementChildNode(time, "value", timeText, sizeof timeText)) return nullptr;

    CXMLTreeNode* const mag = findElement(magnitude, "mag");
    CXMLTreeNode* const latitude = findElement(origin, "latitude");
    CXMLTreeNode* const longitude = findElement(origin, "longitude");
    CXMLTreeNode* const depth = findElement(origin, "depth");
    if (!mag || !latitude || !longitude || !depth) return nullptr;

    return new CQuakeEvent(timeText, readValue(mag), readValue(latitude), readValue(longitude),
                           readValue(depth));
}

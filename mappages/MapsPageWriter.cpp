#include "mappages/MapsPageWriter.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "quakes/CQuakeEvent.h"
#include "support/CErr.h"
#include "support/ISOTime.h"

namespace {

constexpr char kTemplateName[] = "map.html";
constexpr char kOnloadMarker[] = "onload=\"\"";
constexpr char kCanvasMarker[] = "id=\"map_canvas\">";
constexpr char kZoomLevel[] = "8";

constexpr const char* kDayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr const char* kMonthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                       "July",    "August",   "September", "October", "November", "December"};

std::string fixed(double value, int decimals) {
    char digits[400];  // the largest double has 309 digits before the point
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    return std::string(digits, end.ptr);
}

std::string pixels(double points) { return fixed(std::trunc(points), 0) + "px"; }

std::string replaceAll(std::string text, std::string_view marker, const std::string& replacement) {
    for (std::size_t at = text.find(marker); at != std::string::npos;
         at = text.find(marker, at + replacement.size()))
        text.replace(at, marker.size(), replacement);
    return text;
}

// Reads 2009-03-03T01:05:09 +0000.
std::optional<std::time_t> parseTime(std::string_view text) {
    constexpr std::size_t kZone = std::string_view("2009-03-03T01:05:09").size();
    constexpr std::size_t kZoneLength = std::string_view(" +0000").size();
    if (text.size() != kZone + kZoneLength || text[kZone] != ' ') return std::nullopt;
    const auto time = readISOTime(std::string(text.substr(0, kZone)).append(text.substr(kZone + 1)));
    if (!time) return std::nullopt;
    return std::chrono::floor<std::chrono::seconds>(*time).time_since_epoch().count();
}

std::string formatted(const std::tm& time, const char* format) {
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, format, &time));
}

// The names are English whatever the locale, so strftime writes the numbers only.
std::string dateText(const std::tm& time) {
    return std::string(kDayNames[time.tm_wday]) + formatted(time, ", %d. ") + kMonthNames[time.tm_mon] +
           formatted(time, " %Y %H:%M:%S");
}

std::string pageName() { return std::filesystem::path(platform::bundlePath()).stem().string() + ".html"; }

// The first time only: the next quake would fail in the same way.
void reportFailedWrite() {
    static bool isReported = false;
    if (!isReported)
        platform::log("cannot write the map page: no folder for temporary files can be written to");
    isReported = true;
}

}  // namespace

void MapsPageWriter::writeForEvent(const CQuakeEvent* event, const platform::Size& frameSize) {
    const std::string page = loadTemplatePage();
    if (!event) return;
    if (!platform::writeTemporaryFile(pageName(), insertMapsFunctionCall(page, *event, frameSize)))
        reportFailedWrite();
}

std::string MapsPageWriter::locationOfTempPage() const {
    const std::string folder = platform::temporaryDirectory();
    return folder.empty() ? "" : folder + "/" + pageName();
}

std::string MapsPageWriter::loadTemplatePage() const {
    std::string page;
    const bool isRead = platform::readFile(platform::pathForResource(kTemplateName), page);
    Err.CheckNull(isRead ? &page : nullptr, "std::string MapsPageWriter::loadTemplatePage() const",
                  "Failed to read map.html");
    return page;
}

std::string MapsPageWriter::localDateStringFromZulu(const char* zulu) const {
    if (!zulu) {
        platform::log("Error getting date");
        return formatted(platform::localTime(platform::currentTime()), "%Y-%m-%d %H:%M:%S %z");
    }
    const std::optional<std::time_t> time = parseTime(zulu);
    if (!time) platform::log("Error formatting date (" + std::string(zulu) + ")");
    return dateText(platform::localTime(time ? *time : platform::currentTime()));
}

std::string MapsPageWriter::insertMapsFunctionCall(const std::string& page, const CQuakeEvent& event,
                                                   const platform::Size& frameSize) const {
    const std::string call = "onload=\"initializeMap(" + fixed(event.mLatitude, 3) + ", " +
                             fixed(event.mLongitude, 3) + ", " + fixed(event.mMagnitude, 2) + ", '" +
                             fixed(event.mDepth, 2) + "km', '" + localDateStringFromZulu(event.mTime) +
                             "', " + kZoomLevel + ")\"";
    const std::string canvas = "id=\"map_canvas\" style=\"width: " + pixels(frameSize.width) +
                               "; height: " + pixels(frameSize.height) + "\">";
    return replaceAll(replaceAll(page, kOnloadMarker, call), kCanvasMarker, canvas);
}

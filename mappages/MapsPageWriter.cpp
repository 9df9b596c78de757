#include "mappages/MapsPageWriter.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/Alert.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "quakes/CQuakeEvent.h"
#include "support/CErr.h"

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

// True for a text of the shape 2009-03-03T01:05:09 +0000.
bool looksLikeTime(std::string_view text) {
    constexpr std::string_view shape = "0000-00-00T00:00:00 +0000";
    if (text.size() != shape.size()) return false;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        const bool isSign = text[i] == '+' || text[i] == '-';
        const bool fits = shape[i] == '0' ? isDigit : shape[i] == '+' ? isSign : text[i] == shape[i];
        if (!fits) return false;
    }
    return true;
}

int number(std::string_view digits) {
    int number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

std::optional<std::time_t> parseTime(std::string_view text) {
    using namespace std::chrono;
    if (!looksLikeTime(text)) return std::nullopt;

    const year_month_day date{year(number(text.substr(0, 4))),
                              month(static_cast<unsigned>(number(text.substr(5, 2)))),
                              day(static_cast<unsigned>(number(text.substr(8, 2))))};
    const hours hour(number(text.substr(11, 2)));
    const minutes minute(number(text.substr(14, 2)));
    const seconds second(number(text.substr(17, 2)));
    const hours zoneHour(number(text.substr(21, 2)));
    const minutes zoneMinute(number(text.substr(23, 2)));
    const bool isTime = hour < 24h && minute < 60min && second < 60s && zoneHour < 24h && zoneMinute < 60min;
    if (!date.ok() || !isTime) return std::nullopt;

    const minutes zone = (zoneHour + zoneMinute) * (text[20] == '-' ? -1 : 1);
    return system_clock::to_time_t(sys_days(date) + hour + minute + second - zone);
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

}  // namespace

void MapsPageWriter::writeForEvent(const CQuakeEvent* event, const platform::Size& frameSize) {
    const std::string page = loadTemplatePage();
    if (!event) return;
    platform::writeFileAtomically(locationOfTempPage(), insertMapsFunctionCall(page, *event, frameSize));
}

std::string MapsPageWriter::locationOfTempPage() const {
    const std::string folder = platform::temporaryDirectory();
    if (folder.empty()) return "";
    return folder + "/" + std::filesystem::path(platform::bundlePath()).stem().string() + ".html";
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

#include "service/EventElement.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "support/ISOTime.h"
#include "support/Text.h"

namespace {

constexpr double kMetresPerKilometre = 1000;

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

std::string element(const std::string& name, std::string_view text) {
    return "<" + name + ">" + escaped(text) + "</" + name + ">";
}

std::string startTag(const std::string& name, const std::string& publicID) {
    return publicID.empty() ? "<" + name + ">" : "<" + name + " publicID=\"" + escaped(publicID) + "\">";
}

std::string quantity(const std::string& name, const EventElement::Text& text) {
    if (!text) return {};
    const std::string_view value = trimmed(*text);
    return "<" + name + ">" + (value.empty() ? "" : element("value", value)) + "</" + name + ">";
}

// The feed's format: UTC with milliseconds and Z. A text that is not a time stays as it is.
std::string inUTC(std::string_view text) {
    using namespace std::chrono;
    const auto time = readISOTime(text);
    if (!time) return std::string(text);
    const sys_seconds second = floor<seconds>(*time);
    char fraction[16];
    std::snprintf(fraction, sizeof fraction, ".%03dZ", int((*time - second).count()));
    return isoTime(second) + fraction;
}

EventElement::Text inUTC(const EventElement::Text& time) {
    return time ? EventElement::Text(inUTC(trimmed(*time))) : std::nullopt;
}

std::string kilometres(std::string_view metres) {
    metres = trimmed(metres);
    if (metres.starts_with('+')) metres.remove_prefix(1);
    double value = 0;
    const char* const end = metres.data() + metres.size();
    const auto [rest, error] = std::from_chars(metres.data(), end, value);
    if (error != std::errc() || rest != end || !std::isfinite(value)) return {};
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, value / kMetresPerKilometre);
    return std::string(text, written.ptr);
}

EventElement::Text inKilometres(const EventElement::Text& metres) {
    return metres ? EventElement::Text(kilometres(*metres)) : std::nullopt;
}

// Null if there are no candidates.
template <typename Candidate>
const Candidate* preferred(const std::vector<Candidate>& candidates, const EventElement::Text& publicID) {
    const std::string_view wanted = publicID ? trimmed(*publicID) : std::string_view();
    for (const Candidate& candidate : candidates)
        if (!wanted.empty() && trimmed(candidate.publicID) == wanted) return &candidate;
    return candidates.empty() ? nullptr : &candidates.front();
}

std::string write(const EventElement::Origin& origin) {
    return startTag("origin", origin.publicID) + quantity("time", inUTC(origin.time)) +
           quantity("latitude", origin.latitude) + quantity("longitude", origin.longitude) +
           quantity("depth", inKilometres(origin.depth)) + "</origin>";
}

std::string write(const EventElement::Magnitude& magnitude) {
    return startTag("magnitude", magnitude.publicID) + quantity("mag", magnitude.mag) + "</magnitude>";
}

}  // namespace

const EventElement::Origin* EventElement::origin() const { return preferred(origins, preferredOriginID); }

const EventElement::Magnitude* EventElement::magnitude() const {
    return preferred(magnitudes, preferredMagnitudeID);
}

std::string asQuakeML101(const EventElement& event) {
    std::string result = startTag("event", event.publicID) + element("type", "earthquake");
    if (const auto* origin = event.origin()) result += write(*origin);
    if (const auto* magnitude = event.magnitude()) result += write(*magnitude);
    return result + "</event>\n";
}

#include "service/EventQuery.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <optional>

#include "platform/Clock.h"
#include "support/ISOTime.h"

const char kDefaultEventService[] = "https://service.geonet.org.nz/fdsnws/event/1/query";

namespace {

using namespace std::chrono;

constexpr std::string_view kFeedQueryPath = "/services/quake/quakeml/1.0.1/query?";
constexpr std::string_view kServicePath = "/fdsnws/event/1";
constexpr std::string_view kQueryMethod = "/query";
// GeoNet's bound excludes the magnitude itself, the standard's does not. A bound lower by this much makes
// both include it, and nothing that would be shown as less.
constexpr double kMagnitudeStep = 1e-6;

// What follows "scheme://"; empty for another scheme.
std::string_view behindScheme(std::string_view url) {
    for (const std::string_view scheme : {"http://", "https://", "HTTP://", "HTTPS://"})
        if (url.starts_with(scheme)) return url.substr(scheme.size());
    return {};
}

// In lower case, without a user's name and without the port.
std::string hostOf(std::string_view url) {
    std::string_view host = behindScheme(url);
    host = host.substr(0, host.find_first_of("/?#"));
    host.remove_prefix(std::min(host.rfind('@') + 1, host.size()));
    const std::size_t port = host.find(':', host.starts_with('[') ? host.find(']') : 0);
    std::string name(host.substr(0, port));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return name;
}

// The value of a parameter in "...?name=value&name=value", if it is there.
std::optional<std::string_view> parameter(std::string_view url, std::string_view name) {
    std::size_t at = url.find('?');
    while (at != url.npos) {
        const std::size_t next = url.find('&', at + 1);
        const std::string_view pair = url.substr(at + 1, next == url.npos ? url.npos : next - at - 1);
        if (pair.substr(0, pair.find('=')) == name && pair.size() > name.size())
            return pair.substr(name.size() + 1);
        at = next;
    }
    return std::nullopt;
}

std::optional<double> readNumber(std::string_view text) {
    double value = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && rest == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

// A date in the query's format, 2009-07-15.
std::optional<sys_days> readDate(std::string_view text) {
    const auto midnight = readISOTime(std::string(text) + "T00:00:00");
    return midnight ? std::optional(floor<days>(*midnight)) : std::nullopt;
}

// The local time at a moment, taken as if it were UTC.
sys_seconds shownAt(sys_seconds time) {
    const std::tm local = platform::localTime(time.time_since_epoch().count());
    return sys_days(year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday) + hours(local.tm_hour) +
           minutes(local.tm_min) + seconds(local.tm_sec);
}

// When a local calendar day starts. The second step matters if the clocks changed in between.
sys_seconds startOfLocalDay(sys_days day) {
    const sys_seconds midnight = day;
    sys_seconds start = midnight;
    for (int step = 0; step < 2; ++step) start = midnight - (shownAt(start) - start);
    return start;
}

std::string decimal(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6f", value);
    return text;
}

// An address that takes only parameters it does not have yet.
class Address {
  public:
    explicit Address(std::string address) : mAddress(std::move(address)) {}

    void add(std::string_view name, std::string_view value) {
        if (parameter(mAddress, name)) return;
        const std::size_t question = mAddress.find('?');
        const bool isJoined = question + 1 == mAddress.size() || mAddress.ends_with('&');
        if (question == mAddress.npos)
            mAddress += '?';
        else if (!isJoined)
            mAddress += '&';
        mAddress.append(name).append("=").append(value);
    }
    const std::string& text() const { return mAddress; }

  private:
    std::string mAddress;
};

}  // namespace

bool isEventServiceAddress(std::string_view text) {
    const std::string_view rest = behindScheme(text);
    const bool hasHost = !rest.empty() && std::string_view("/?#:@").find(rest.front()) == rest.npos;
    for (const unsigned char character : text)
        if (character <= ' ' || character == 0x7f) return false;
    return hasHost;
}

std::string eventServiceName(const std::string& service) {
    const std::string host = hostOf(service);
    return host == hostOf(kDefaultEventService) ? "GeoNet" : host;
}

std::string eventServiceQueryAddress(const std::string& service) {
    const std::string whole = service.substr(0, service.find('#'));
    const std::size_t question = std::min(whole.find('?'), whole.size());
    std::string address = whole.substr(0, question);
    while (address.ends_with('/')) address.pop_back();
    const bool isHostAlone = behindScheme(address).find('/') == std::string_view::npos;
    if (isHostAlone) address += kServicePath;
    if (address.ends_with(kServicePath)) address += kQueryMethod;
    return address + whole.substr(question);
}

bool isFeedQuery(std::string_view url) {
    const std::string_view rest = behindScheme(url);
    return rest.substr(std::min(rest.find('/'), rest.size())).starts_with(kFeedQueryPath);
}

std::string eventServiceURL(std::string_view feedQuery, const std::string& service) {
    const auto start = readDate(parameter(feedQuery, "startDate").value_or(""));
    const auto end = readDate(parameter(feedQuery, "endDate").value_or(""));
    const auto lower = readNumber(parameter(feedQuery, "magnitudeLower").value_or(""));
    const auto upper = parameter(feedQuery, "magnitudeUpper");
    if (!start || !end || !lower || !upper) return {};

    Address address(eventServiceQueryAddress(service));
    address.add("starttime", isoTime(startOfLocalDay(*start)));
    address.add("endtime", isoTime(startOfLocalDay(*end + days(1))));
    address.add("minmagnitude", decimal(*lower - kMagnitudeStep));
    address.add("maxmagnitude", *upper);
    address.add("format", "xml");
    address.add("nodata", "204");
    return address.text();
}

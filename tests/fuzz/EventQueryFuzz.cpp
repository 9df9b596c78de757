#include "service/EventQuery.h"
#include "support/ISOTime.h"
#include "tests/fuzz/Fuzz.h"

namespace {

using namespace std::chrono;

constexpr char kFeed[] = "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?";

void checkTime(const std::string& text) {
    const auto time = readISOTime(text);
    if (!time || *time < sys_days(0000y / 1 / 1) || *time >= sys_days(9999y / 12 / 31)) return;
    const sys_seconds second = floor<seconds>(*time);
    REQUIRE(isoTime(second).size() == 19 && readISOTime(isoTime(second)) == second);
}

int timesNamed(const std::string& parameter, const std::string& url) {
    int count = 0;
    for (std::size_t at = url.find('?'); at != url.npos; at = url.find('&', at + 1))
        count += url.compare(at + 1, parameter.size(), parameter) == 0;
    return count;
}

}  // namespace

// Lines: a time, the parameters of the list's query, a service's address. A time is read back; the request
// begins with the address and names each parameter once.
void fuzz(std::string_view input) {
    checkTime(takeLine(input));
    const std::string query = kFeed + takeLine(input), service(input);
    REQUIRE(isFeedQuery(query));
    if (!isEventServiceAddress(service)) return;
    const std::string address = eventServiceQueryAddress(service);
    REQUIRE(isEventServiceAddress(address) && eventServiceQueryAddress(address) == address);
    const std::string url = eventServiceURL(query, service);
    if (url.empty()) return;
    REQUIRE(url.starts_with(address) && (hasControls(query) || !hasControls(url)));
    for (const std::string name : {"starttime=", "endtime=", "minmagnitude=", "maxmagnitude=", "format="})
        REQUIRE(timesNamed(name, url) == std::max(timesNamed(name, address), 1));
}

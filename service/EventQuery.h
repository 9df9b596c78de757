#pragma once

#include <string>
#include <string_view>

// The address of GeoNet's event service.
extern const char kDefaultEventService[];

// Whether a text can be the address of an event service: http or https, and a host.
bool isEventServiceAddress(std::string_view text);

// The query of an event service: a bare host has the path that the standard names, and so has
// ".../fdsnws/event/1". Parameters of its own are kept.
std::string eventServiceQueryAddress(const std::string& service);

// Whether a URL is the quake list's query, which the service of 2009 answered.
bool isFeedQuery(std::string_view url);

// The same question as an FDSN event service of today takes it: earthquakes alone, the dates of the query as
// whole days of the machine's calendar, the lower magnitude included. A parameter that the service's address
// has already is left as it is there. Empty when the query has no dates or no magnitudes.
std::string eventServiceURL(std::string_view feedQuery, const std::string& service);

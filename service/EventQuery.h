#pragma once

#include <string>
#include <string_view>

// The address of GeoNet's event service.
extern const char kDefaultEventService[];

// Whether a text can be the address of an event service: http or https, and a host.
bool isEventServiceAddress(std::string_view text);

// Who answers there, for a reader: GeoNet, or the service's host.
std::string eventServiceName(const std::string& service);

// The query address of an event service: completes a bare host or ".../fdsnws/event/1" with the standard
// path. Keeps the address's own parameters.
std::string eventServiceQueryAddress(const std::string& service);

// Whether a URL is the quake list's query, which the service of 2009 answered.
bool isFeedQuery(std::string_view url);

// The same query for one of today's FDSN event services: events of any type, whole days of the machine's
// calendar, lower magnitude included. Parameters in the service's address take precedence. Empty if the query
// has no dates or no magnitudes.
std::string eventServiceURL(std::string_view feedQuery, const std::string& service);

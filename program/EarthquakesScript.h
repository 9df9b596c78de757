#pragma once

#include <string>

class EventFeed;

// A script that tells a page what is shown and where it comes from:
//
//     window.TELLMAR_EARTHQUAKES = {"shown": [{"time": "2026-11-18T14:04:05Z", "magnitude": 5.1,
//       "latitude": -41.5, "longitude": 174.2, "depth": 33}, ...], "answerTime": "2026-11-20T07:02:00Z",
//       "isKept": false, "source": "GeoNet", "kind": "service"};
//
// The quakes come in the order shown; a number that is not finite and a time that cannot be read are null.
// answerTime, when the service gave its answer, is null for a document; isKept says that the answer is from
// the cache; kind is "service", "document" or "sample". Creates no quake list and does not move on its cycle.
std::string earthquakesScript(const EventFeed& feed);

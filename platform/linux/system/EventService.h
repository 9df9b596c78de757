#pragma once

#include <ctime>
#include <optional>
#include <string>

#include "platform/linux/system/LoadOutcome.h"

namespace platform {

// The event service that is asked; GeoNet's until told another.
void setEventService(const std::string& address);
// Whether answers are kept between runs and used again; they are until told not to.
void setAnswersKept(bool kept);

// Answers the quake list's query, blocking, with a QuakeML 1.0.1 document of the event service. With answers
// kept: one of the last five minutes saves the request, processes that ask at the same time make one request
// between them, and a request that fails is answered by the newest answer that the service gave in the last
// 30 days.
LoadOutcome loadEvents(const std::string& feedQuery, std::string& document);

// When the latest answer was had, where a failed request left it to an earlier one; nothing otherwise.
std::optional<std::time_t> answerIsAsOf();

}  // namespace platform

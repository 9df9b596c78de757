#pragma once

#include <string>

namespace platform {

// Lines on stderr for whoever asked for them: one for each fetch, tick, fade and page.
void setVerbose(bool verbose);
void trace(const std::string& line);

}  // namespace platform

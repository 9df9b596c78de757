#pragma once

#include <string>

namespace platform {

// The text for a terminal or a log, in one line: control characters, invisible format characters (those that
// reverse the direction of text are among them) and bytes that are not UTF-8 are replaced.
std::string printable(const std::string& text);

}  // namespace platform

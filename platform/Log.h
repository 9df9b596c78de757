#pragma once

#include <string>

namespace platform {

// Writes one line to stderr, made printable, after the program's name.
void log(const std::string& line);

// The same, but only when verbose: a line for each fetch, tick, fade and page.
void trace(const std::string& line);
void setVerbose(bool verbose);

}  // namespace platform

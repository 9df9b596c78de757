#pragma once

#include <string>

// Writes one line to stderr, after the program's name.
void report(const std::string& line);

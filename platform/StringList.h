#pragma once

#include <string>

namespace platform {

// Entry index (from 1) of string list listID; empty when there is no such entry.
std::string stringFromList(short listID, short index);

}  // namespace platform

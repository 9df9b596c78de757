#pragma once

#include <string>

namespace platform {

// Entry index (from 1) of string list listID; an empty string where there is none.
std::string stringFromList(short listID, short index);

}  // namespace platform

#pragma once

#include <cstdint>

struct FSRef;

// File utilities.
class OrvFiles {
  public:
    // Sets the four-letter codes of a file ('TEXT' is 0x54455854); 0 keeps the existing one. Leaves
    // folders alone. Returns false if nothing was set.
    static bool SetFileCreatorType(const FSRef& file, std::uint32_t creator, std::uint32_t type);
};

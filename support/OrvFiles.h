#pragma once

#include <cstdint>

struct FSRef;

// File utilities.
class OrvFiles {
  public:
    // Sets the four-letter codes of a file ('TEXT' is 0x54455854); 0 leaves the one there is. Folders are
    // left alone. Returns false when nothing was set.
    static bool SetFileCreatorType(const FSRef& file, std::uint32_t creator, std::uint32_t type);
};

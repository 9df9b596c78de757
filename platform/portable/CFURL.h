#pragma once

#include <string>

namespace platform {

// A resource's address. It has a type of its own so that it is never mistaken for a path.
struct CFURL {
    std::string text;
};

}  // namespace platform

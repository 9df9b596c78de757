#pragma once

#include <string>

namespace platform {

// A resource's address as text, a type of its own so that it is never taken for a path.
struct CFURL {
    std::string text;
};

}  // namespace platform

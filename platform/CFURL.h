#pragma once

#include <string>

// A resource's address as text, a type of its own so that it is never taken for a path.
struct CFURL {
    std::string text;
};

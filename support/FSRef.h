#pragma once

#include <string>

// Stands for a file or folder by its path.
struct FSRef {
    std::string path;
};

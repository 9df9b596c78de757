#pragma once

#include <string>

// What --help prints.
std::string helpText();

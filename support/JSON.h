#pragma once

#include <string>
#include <string_view>

// A UTF-8 text as JSON that is also safe within a script of a page, and a number; null if it is not finite.
std::string jsonText(std::string_view text);
std::string jsonNumber(double number);

#pragma once

#include <string_view>

// Without the blanks at its start and its end.
std::string_view trimmed(std::string_view text, std::string_view blanks = " \t\r\n");

bool isASCII(std::string_view text);

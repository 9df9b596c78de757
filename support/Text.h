#pragma once

#include <string_view>

// The text without leading and trailing blanks.
std::string_view trimmed(std::string_view text, std::string_view blanks = " \t\r\n");

bool isASCII(std::string_view text);

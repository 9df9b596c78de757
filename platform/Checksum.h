#pragma once

#include <string>
#include <string_view>

namespace platform {

// The SHA-256 of the bytes, in hexadecimal.
std::string sha256(std::string_view bytes);

}  // namespace platform

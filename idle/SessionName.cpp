#include "idle/SessionName.h"

#include <cctype>
#include <cstdlib>
#include <string_view>

namespace {

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// wayland-0 for /run/user/1000/wayland-0, and :0 for :0.0.
std::string_view displayName() {
    if (const std::string_view path = variable("WAYLAND_DISPLAY"); !path.empty())
        return path.substr(path.rfind('/') + 1);
    const std::string_view display = variable("DISPLAY");
    return display.substr(0, display.find('.', display.rfind(':') + 1));
}

}  // namespace

std::string sessionName() {
    std::string name = "org.tellmar.Idle.on_";
    for (const char c : displayName()) name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

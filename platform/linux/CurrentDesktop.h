#pragma once

#include <cstdlib>
#include <string_view>

namespace platform {

// Whether the session is that of a desktop, by a name such as GNOME or KDE; its variants name it beside
// themselves.
inline bool currentDesktopIs(std::string_view name) {
    const char* const names = std::getenv("XDG_CURRENT_DESKTOP");
    return names && std::string_view(names).find(name) != std::string_view::npos;
}

}  // namespace platform

#include "idle/X11Screen.h"

#include <X11/Xatom.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

// The windows or atoms in the window's property; empty if it has no such property.
std::vector<XID> listIn(Display* display, Window window, const char* property, Atom type) {
    constexpr long kMaxLength = 64;
    Atom actualType;
    int format;
    unsigned long count = 0, rest;
    unsigned char* data = nullptr;
    XGetWindowProperty(display, window, XInternAtom(display, property, False), 0, kMaxLength, False, type,
                       &actualType, &format, &count, &rest, &data);
    std::vector<XID> list(format == 32 ? count : 0);
    if (!list.empty()) std::memcpy(list.data(), data, list.size() * sizeof(XID));
    if (data) XFree(data);
    return list;
}

}  // namespace

bool fullScreenWindowIsActive(Display* display) {
    const auto active = listIn(display, DefaultRootWindow(display), "_NET_ACTIVE_WINDOW", XA_WINDOW);
    if (active.empty() || active.front() == None) return false;
    const auto states = listIn(display, active.front(), "_NET_WM_STATE", XA_ATOM);
    const Atom fullScreen = XInternAtom(display, "_NET_WM_STATE_FULLSCREEN", False);
    return std::find(states.begin(), states.end(), fullScreen) != states.end();
}

#include "tests/hosts/Monitors.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <memory>

namespace {

using Resources = std::unique_ptr<XRRScreenResources, decltype(&XRRFreeScreenResources)>;

Resources resourcesOf(::Display* connection) {
    return {XRRGetScreenResources(connection, DefaultRootWindow(connection)), XRRFreeScreenResources};
}

RRMode modeNamed(const XRRScreenResources& resources, const std::string& name) {
    for (int i = 0; i < resources.nmode; ++i)
        if (resources.modes[i].name == name) return resources.modes[i].id;
    return None;
}

}  // namespace

void setScreenSize(::Display* connection, int width, int height) {
    constexpr double kMillimetresAPixel = 25.4 / 96;
    XRRSetScreenSize(connection, DefaultRootWindow(connection), width, height,
                     static_cast<int>(width * kMillimetresAPixel),
                     static_cast<int>(height * kMillimetresAPixel));
    XSync(connection, False);
}

void setMonitor(::Display* connection, int monitor, int left, const std::string& name) {
    const Resources resources = resourcesOf(connection);
    const RRMode mode = modeNamed(*resources, name);
    RROutput output = resources->outputs[monitor];
    XRRAddOutputMode(connection, output, mode);
    XRRSetCrtcConfig(connection, resources.get(), resources->crtcs[monitor], CurrentTime, left, 0, mode,
                     RR_Rotate_0, &output, 1);
    resourcesOf(connection);  // lets the server see that something is connected now
    XSync(connection, False);
}

void removeMonitor(::Display* connection, int monitor) {
    const Resources resources = resourcesOf(connection);
    XRRSetCrtcConfig(connection, resources.get(), resources->crtcs[monitor], CurrentTime, 0, 0, None,
                     RR_Rotate_0, nullptr, 0);
    XSync(connection, False);
}

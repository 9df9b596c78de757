#include "platform/linux/desktop/GraphicsDrivers.h"

#include <epoxy/egl.h>
#include <glib.h>

#include "platform/linux/Handles.h"

namespace platform {

namespace {

// EGL looks for its drivers once in a process, where this variable says.
void letEGLFindNoDriver() {
    constexpr char kDrivers[] = "__EGL_VENDOR_LIBRARY_FILENAMES";
    const GText set(g_strdup(g_getenv(kDrivers)));
    g_setenv(kDrivers, "/dev/null", TRUE);
    eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    if (set)
        g_setenv(kDrivers, set.get(), TRUE);
    else
        g_unsetenv(kDrivers);
}

}  // namespace

void keepGraphicsDriversOut() {
    g_setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", FALSE);
    g_setenv("GDK_GL", "disable", FALSE);
    letEGLFindNoDriver();
}

}  // namespace platform

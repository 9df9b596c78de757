#pragma once

#include <gio/gio.h>

#include "platform/linux/Handles.h"

namespace platform {

// The user's session bus; null if no bus runs. Never starts one.
ObjectRef<GDBusConnection> sessionBus();

// Calls a method of a running service and waits for its reply, at most a second. Takes the parameters. Null
// on failure.
using Reply = Handle<GVariant, g_variant_unref>;
Reply callService(const char* name, const char* path, const char* interface, const char* method,
                  GVariant* parameters);

// Closes GNOME's overview, in which a new window would be a thumbnail.
void closeOverview();

}  // namespace platform

#pragma once

#include <webkit2/webkit2.h>

namespace platform {

// The one context of all web views: nothing kept on disk, the scheme bundle: for the module's resources, and
// the sandbox where this system lets it run. Belongs to the process.
WebKitWebContext* webContext();

}  // namespace platform

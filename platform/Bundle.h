#pragma once

#include <string>

namespace platform {

// The folder Tellmar.saver that holds the module's resources.
std::string bundlePath();
std::string bundleIdentifier();

// The full path of a resource, or an empty string when the bundle has none of that name.
std::string pathForResource(const std::string& name);

}  // namespace platform

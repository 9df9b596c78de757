#pragma once

#include <functional>
#include <string>

namespace platform {

// The folder Tellmar.saver, which holds the module's resources.
std::string bundlePath();
std::string bundleIdentifier();

// The full path of a resource, or an empty string when the bundle has none of that name.
std::string pathForResource(const std::string& name);

// From now on, writer makes the content of this resource each time a page asks for it. An empty writer ends
// that.
void setGeneratedResource(const std::string& name, std::function<std::string()> writer);

// Reads a resource as a page would, generated ones included. Returns false when there is no such resource;
// data is then empty.
bool readResource(const std::string& name, std::string& data);

}  // namespace platform

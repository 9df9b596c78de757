#include "tests/standins/Bundle.h"

#include "platform/Bundle.h"

namespace platform {

std::string bundlePath() { return standins::bundle().path; }

std::string bundleIdentifier() { return "org.tellmar.TellmarScreenSaver"; }

std::string pathForResource(const std::string& name) {
    return standins::bundle().resources.contains(name) ? bundlePath() + "/resources/" + name : "";
}

}  // namespace platform

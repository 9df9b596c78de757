#include "platform/Bundle.h"

#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

#include "platform/Files.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kBundleName[] = "Tellmar.saver";

std::map<std::string, std::function<std::string()>> generatedResources;

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

// In the build tree the bundle is next to the program. Once installed, the program is in
// PREFIX/libexec/xscreensaver, whatever link started it, and the bundle is in the shared data of that prefix
// or of the one that the program was built for.
std::string findBundle() {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    const fs::path prefix = folder.parent_path().parent_path();
    for (const fs::path& place : {folder, prefix / "share" / "tellmar", fs::path(TELLMAR_DATA_DIR)}) {
        if (isFolder(place / kBundleName)) return place / kBundleName;
    }
    return "";
}

}  // namespace

std::string bundlePath() {
    static const std::string path = findBundle();
    return path;
}

std::string bundleIdentifier() { return "org.tellmar.TellmarScreenSaver"; }

std::string pathForResource(const std::string& name) {
    if (bundlePath().empty() || name.find("..") != std::string::npos) return "";
    const std::string path = bundlePath() + "/resources/" + name;
    std::error_code error;
    return fs::is_regular_file(path, error) ? path : "";
}

void setGeneratedResource(const std::string& name, std::function<std::string()> writer) {
    if (writer)
        generatedResources[name] = std::move(writer);
    else
        generatedResources.erase(name);
}

bool readResource(const std::string& name, std::string& data) {
    data.clear();
    if (const auto found = generatedResources.find(name); found != generatedResources.end()) {
        data = found->second();
        return true;
    }
    const std::string path = pathForResource(name);
    return !path.empty() && readFile(path, data);
}

}  // namespace platform

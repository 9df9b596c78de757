#include "platform/Bundle.h"

#include <filesystem>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kBundleName[] = "Tellmar.saver";

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

// Beside the program in the build tree, among the shared data once installed.
std::string findBundle() {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (const fs::path& place :
         {folder, fs::path(TELLMAR_DATA_DIR), folder.parent_path() / "share" / "tellmar"}) {
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

}  // namespace platform

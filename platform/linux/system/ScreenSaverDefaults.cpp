#include "platform/ScreenSaverDefaults.h"

#include <glib.h>

#include <filesystem>
#include <map>

#include "platform/AdvisoryLock.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/linux/Handles.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kGroup[] = "Settings";

// A missing file is good and empty. Damaged: readable, but not a key file. Unusable: not readable, so it must
// not be replaced.
enum class FileState { Good, Damaged, Unusable };

class KeyFile {
  public:
    FileState load(const std::string& path) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (status.type() == fs::file_type::not_found) return FileState::Good;
        std::string text;
        if (!fs::is_regular_file(status) || !readFile(path, text)) return FileState::Unusable;
        const auto flags =
            static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
        const bool good = g_key_file_load_from_data(mKeys.get(), text.data(), text.size(), flags, nullptr);
        if (good) return FileState::Good;
        mKeys.reset(g_key_file_new());  // it keeps what stands before the damage
        return FileState::Damaged;
    }
    int integer(const std::string& key) const {
        return g_key_file_get_integer(mKeys.get(), kGroup, key.c_str(), nullptr);
    }
    void setInteger(const std::string& key, int value) {
        g_key_file_set_integer(mKeys.get(), kGroup, key.c_str(), value);
    }
    std::string text() const {
        gsize length = 0;
        const GText data(g_key_file_to_data(mKeys.get(), &length, nullptr));
        return std::string(data.get(), length);
    }

  private:
    KeyFileRef mKeys{g_key_file_new()};
};

bool isTaken(const std::string& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

bool setAside(const std::string& path) {
    std::string aside = path + ".damaged";
    for (int number = 1; isTaken(aside); ++number) aside = path + ".damaged." + std::to_string(number);
    std::error_code error;
    fs::rename(path, aside, error);
    return !error;
}

}  // namespace

struct ScreenSaverDefaults::Store {
    std::string folder, path;
    std::map<std::string, int> changes;  // not yet written

    // Merges the changes into the file as it is now: another process may have written to it.
    bool write() const {
        if (!makePrivateFolder(folder)) return false;
        AdvisoryLock lock(folder);
        lock.waitAndLock();
        KeyFile file;
        const FileState state = file.load(path);
        if (state == FileState::Unusable) return false;
        if (state == FileState::Damaged && !setAside(path)) return false;
        for (const auto& [key, value] : changes) file.setInteger(key, value);
        return writeFileAtomically(path, file.text());
    }
};

ScreenSaverDefaults::ScreenSaverDefaults(std::unique_ptr<Store> store) : mStore(std::move(store)) {}
ScreenSaverDefaults::~ScreenSaverDefaults() = default;
ScreenSaverDefaults::ScreenSaverDefaults(ScreenSaverDefaults&&) noexcept = default;

ScreenSaverDefaults ScreenSaverDefaults::defaultsForModuleWithName(const std::string& name) {
    auto store = std::make_unique<Store>();
    store->folder = std::string(g_get_user_config_dir()) + "/tellmar";
    store->path = store->folder + "/" + name + ".ini";
    return ScreenSaverDefaults(std::move(store));
}

int ScreenSaverDefaults::integerForKey(const std::string& key) const {
    const auto change = mStore->changes.find(key);
    if (change != mStore->changes.end()) return change->second;
    KeyFile file;
    return file.load(mStore->path) == FileState::Good ? file.integer(key) : 0;
}

void ScreenSaverDefaults::setInteger(int value, const std::string& key) { mStore->changes[key] = value; }

bool ScreenSaverDefaults::synchronize() {
    if (mStore->changes.empty()) return true;
    if (!mStore->write()) {
        log("cannot write the settings to " + mStore->path);
        return false;
    }
    mStore->changes.clear();
    return true;
}

}  // namespace platform

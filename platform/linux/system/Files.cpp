#include "platform/Files.h"

#include <fcntl.h>
#include <glib.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <system_error>

#include "platform/linux/Handles.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kFinderInfoAttribute[] = "user.FinderInfo";

// As read and write, but tried again after a signal.
ssize_t readSome(const FileDescriptor& file, char* buffer, std::size_t size) {
    ssize_t count;
    do count = ::read(file.number(), buffer, size);
    while (count < 0 && errno == EINTR);
    return count;
}

ssize_t writeSome(const FileDescriptor& file, const char* bytes, std::size_t size) {
    ssize_t count;
    do count = ::write(file.number(), bytes, size);
    while (count < 0 && errno == EINTR);
    return count;
}

bool writeAll(const FileDescriptor& file, const std::string& data) {
    std::size_t done = 0;
    while (done < data.size()) {
        const ssize_t count = writeSome(file, data.data() + done, data.size() - done);
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

// What a path leads to in the end, so that a link stays a link when the file is replaced.
std::string resolved(const std::string& path) {
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    return error ? path : target.string();
}

// A new file of that name has the rights of the one it replaces.
void copyMode(const std::string& path, const FileDescriptor& file) {
    struct stat old;
    if (stat(path.c_str(), &old) == 0) fchmod(file.number(), old.st_mode & 07777);
}

// The path of a new folder that only this user may enter; empty when it cannot be made there.
std::string makePrivateFolder(const char* parent) {
    if (parent == nullptr || parent[0] != '/') return "";
    std::string path = std::string(parent) + "/tellmar-XXXXXX";
    return mkdtemp(path.data()) == nullptr ? "" : path;
}

// Removes its folder at the end of the process that made it, not at the end of one forked off.
class TemporaryFolder {
  public:
    ~TemporaryFolder() {
        if (mPath.empty() || mOwner != getpid()) return;
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }

    // A folder that somebody tidied away is made again.
    const std::string& path() {
        if (mPath.empty() || !isDirectory(mPath)) make();
        return mPath;
    }

  private:
    void make() {
        mOwner = getpid();
        const std::initializer_list<const char*> parents = {getenv("XDG_RUNTIME_DIR"), getenv("TMPDIR"),
                                                            "/tmp"};
        for (const char* parent : parents) {
            mPath = makePrivateFolder(parent);
            if (!mPath.empty()) return;
        }
    }

    std::string mPath;
    pid_t mOwner = 0;
};

}  // namespace

bool readFile(const std::string& path, std::string& data) {
    data.clear();
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) return false;
    char buffer[65536];
    ssize_t count;
    while ((count = readSome(file, buffer, sizeof buffer)) > 0) {
        data.append(buffer, static_cast<std::size_t>(count));
    }
    if (count < 0) data.clear();
    return count == 0;
}

bool writeFileAtomically(const std::string& path, const std::string& data) {
    static int written = 0;
    const std::string target = resolved(path);
    const std::string draft = target + "." + std::to_string(getpid()) + "-" + std::to_string(++written);
    FileDescriptor file(open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file.isOpen()) return false;
    copyMode(target, file);
    if (writeAll(file, data) && file.close() && std::rename(draft.c_str(), target.c_str()) == 0) return true;
    unlink(draft.c_str());
    return false;
}

bool isDirectory(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

bool makePrivateFolder(const std::string& path) {
    constexpr int kPrivate = 0700;
    return g_mkdir_with_parents(path.c_str(), kPrivate) == 0;
}

std::string temporaryDirectory() {
    static TemporaryFolder folder;
    return folder.path();
}

std::string userCacheDirectory() {
    const char* const named = g_getenv("XDG_CACHE_HOME");
    return named && g_path_is_absolute(named) ? named : std::string(g_get_home_dir()) + "/.cache";
}

FinderInfo finderInfo(const std::string& path) {
    FinderInfo info{};
    const ssize_t size = getxattr(path.c_str(), kFinderInfoAttribute, info.data(), info.size());
    return size == static_cast<ssize_t>(info.size()) ? info : FinderInfo{};
}

bool setFinderInfo(const std::string& path, const FinderInfo& info) {
    return setxattr(path.c_str(), kFinderInfoAttribute, info.data(), info.size(), 0) == 0;
}

}  // namespace platform

#include "platform/Files.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/linux/Handles.h"
#include "platform/linux/system/ProcessFolder.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kFinderInfoAttribute[] = "user.FinderInfo";
constexpr mode_t kUsualMode = 0666;  // less what umask takes away
constexpr mode_t kPrivateMode = 0600;

// As read and write, but try again after a signal.
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

bool readAll(const FileDescriptor& file, std::string& data) {
    data.clear();
    if (!file.isOpen()) return false;
    char buffer[65536];
    ssize_t count;
    while ((count = readSome(file, buffer, sizeof buffer)) > 0) {
        data.append(buffer, static_cast<std::size_t>(count));
    }
    if (count < 0) data.clear();
    return count == 0;
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

std::optional<mode_t> modeOf(const std::string& path) {
    struct stat file;
    return stat(path.c_str(), &file) == 0 ? std::optional<mode_t>(file.st_mode & 07777) : std::nullopt;
}

// The file has the mode that it is made with until it is given its final one, if that is another.
bool replaceFile(const std::string& path, const std::string& data, mode_t mode,
                 std::optional<mode_t> finalMode = std::nullopt) {
    static int written = 0;
    const std::string draft = path + "." + std::to_string(getpid()) + "-" + std::to_string(++written);
    FileDescriptor file(open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.isOpen()) return false;
    if (finalMode) fchmod(file.number(), *finalMode);
    if (writeAll(file, data) && file.close() && std::rename(draft.c_str(), path.c_str()) == 0) return true;
    unlink(draft.c_str());
    return false;
}

bool liesInPrivateFolder(const std::string& path) {
    return isPrivateFolder(fs::path(path).parent_path().string());
}

ProcessFolder& processFolder() {
    static ProcessFolder folder;
    return folder;
}

}  // namespace

bool readFile(const std::string& path, std::string& data) {
    return readAll(FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)), data);
}

// A replaced file keeps its mode, and nobody can read the new one who could not read the old.
bool writeFileAtomically(const std::string& path, const std::string& data) {
    const std::string target = resolved(path);
    const std::optional<mode_t> oldMode = modeOf(target);
    return replaceFile(target, data, oldMode ? kPrivateMode : kUsualMode, oldMode);
}

bool readPrivateFile(const std::string& path, std::string& data) {
    data.clear();
    return liesInPrivateFolder(path) &&
           readAll(FileDescriptor(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC)), data);
}

bool writePrivateFile(const std::string& path, const std::string& data) {
    return liesInPrivateFolder(path) && replaceFile(path, data, kPrivateMode);
}

bool isDirectory(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

bool isPrivateFolder(const std::string& path) {
    struct stat folder;
    return lstat(path.c_str(), &folder) == 0 && S_ISDIR(folder.st_mode) && folder.st_uid == geteuid() &&
           (folder.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool makePrivateFolder(const std::string& path) {
    constexpr int kPrivate = 0700;
    return g_mkdir_with_parents(path.c_str(), kPrivate) == 0;
}

std::string temporaryDirectory() { return processFolder().path(); }

bool writeTemporaryFile(const std::string& name, const std::string& data) {
    return processFolder().write(name, data);
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

#include "platform/linux/system/ProcessFolder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/Files.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kPrefix[] = "tellmar-";
constexpr char kLockName[] = "/.tellmar-lock";

// Where a folder may lie, the best place first.
std::vector<std::string> parents() {
    std::vector<std::string> folders;
    for (const char* folder : {static_cast<const char*>(getenv("XDG_RUNTIME_DIR")),
                               static_cast<const char*>(getenv("TMPDIR")), "/tmp"})
        if (folder && folder[0] == '/') folders.push_back(folder);
    return folders;
}

std::unique_ptr<FileDescriptor> openLock(const std::string& folder, int flags) {
    const std::string path = folder + kLockName;
    return std::make_unique<FileDescriptor>(
        open(path.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | flags, 0600));
}

bool lock(const FileDescriptor& file) { return flock(file.number(), LOCK_EX | LOCK_NB) == 0; }

// Where files cannot be locked nobody else removes the folder either.
bool lockNewFolder(const FileDescriptor& file) {
    if (!file.isOpen() || (!lock(file) && errno == EWOULDBLOCK)) return false;
    struct stat status;
    return fstat(file.number(), &status) == 0 && status.st_nlink > 0;
}

void removeFolder(const std::string& path) {
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

// Holds the lock meanwhile, so that a process that has just made the folder notices.
void removeIfLeftBehind(const std::string& folder) {
    if (!isPrivateFolder(folder)) return;
    const auto file = openLock(folder, 0);
    if (file->isOpen() && lock(*file)) removeFolder(folder);
}

void removeLeftFolders(const std::string& parent) {
    std::error_code error;
    for (auto entry = fs::directory_iterator(parent, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        if (entry->path().filename().string().starts_with(kPrefix)) removeIfLeftBehind(entry->path());
}

}  // namespace

ProcessFolder::ProcessFolder() {
    for (const std::string& parent : parents()) removeLeftFolders(parent);
}

const std::string& ProcessFolder::path() {
    if (!mPath.empty() && isDirectory(mPath)) return mPath;
    for (const std::string& parent : parents())
        if (make(parent)) break;
    return mPath;
}

bool ProcessFolder::write(const std::string& name, const std::string& data) {
    const auto writeHere = [&] { return !mPath.empty() && writePrivateFile(mPath + "/" + name, data); };
    path();
    if (writeHere()) return true;
    for (const std::string& parent : parents())
        if (make(parent) && writeHere()) return true;
    return false;
}

// A process that looks for leftovers may take the folder before it is locked.
bool ProcessFolder::make(const std::string& parent) {
    remove();
    std::string path = parent + "/" + kPrefix + "XXXXXX";
    if (mkdtemp(path.data()) == nullptr) return false;
    mPath = path;
    mOwner = getpid();
    mLock = openLock(path, O_CREAT | O_EXCL);
    if (lockNewFolder(*mLock)) return true;
    remove();
    return false;
}

void ProcessFolder::remove() {
    if (!mPath.empty() && mOwner == getpid()) removeFolder(mPath);
    mPath.clear();
    mLock.reset();
}

}  // namespace platform

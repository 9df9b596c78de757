#pragma once

#include <array>
#include <string>

namespace platform {

// Both return false on failure. data is then empty; the file to be written is unchanged.
bool readFile(const std::string& path, std::string& data);
bool writeFileAtomically(const std::string& path, const std::string& data);

// The same for the program's own files, which only this user may read. Links are not followed, and both fail
// in a folder that is not private.
bool readPrivateFile(const std::string& path, std::string& data);
bool writePrivateFile(const std::string& path, const std::string& data);

bool isDirectory(const std::string& path);

// Whether it is a folder, not a link to one, that belongs to this user and that nobody else may write to.
bool isPrivateFolder(const std::string& path);

// Creates the folder and any missing parents, for this user alone. Returns false on failure.
bool makePrivateFolder(const std::string& path);

// The folder for this process's own temporary files, without a trailing slash: created on first use, private
// to the process and removed when it ends. Empty when it cannot be created.
std::string temporaryDirectory();

// Writes a private file into temporaryDirectory, which moves elsewhere if its place is full or read-only.
// Returns false when no place takes the file.
bool writeTemporaryFile(const std::string& name, const std::string& data);

// $XDG_CACHE_HOME, or else ~/.cache. It need not exist.
std::string userCacheDirectory();

// A file's 32 bytes of Finder information: type in the first four, creator in the next four.
using FinderInfo = std::array<char, 32>;
// All zeros when the file has none yet.
FinderInfo finderInfo(const std::string& path);
// Returns false when the file system cannot store it.
bool setFinderInfo(const std::string& path, const FinderInfo& info);

}  // namespace platform

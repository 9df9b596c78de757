#include "support/OrvFiles.h"

#include "platform/Files.h"
#include "support/FSRef.h"

namespace {

constexpr int kTypeOffset = 0;
constexpr int kCreatorOffset = 4;

// Codes are stored first letter first, whatever the machine's byte order.
void setCode(platform::FinderInfo& info, int offset, std::uint32_t code) {
    if (code == 0) return;
    for (int i = 0; i < 4; ++i) info[offset + i] = static_cast<char>(code >> (24 - 8 * i));
}

}  // namespace

bool OrvFiles::SetFileCreatorType(const FSRef& file, std::uint32_t creator, std::uint32_t type) {
    if (platform::isDirectory(file.path)) return false;
    platform::FinderInfo info = platform::finderInfo(file.path);
    setCode(info, kTypeOffset, type);
    setCode(info, kCreatorOffset, creator);
    return platform::setFinderInfo(file.path, info);
}

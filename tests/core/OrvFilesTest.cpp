#include "support/OrvFiles.h"

#include <gtest/gtest.h>

#include "platform/Files.h"
#include "support/FSRef.h"
#include "tests/TemporaryFolder.h"

namespace {

std::string codes(const FSRef& file) { return {platform::finderInfo(file.path).data(), 8}; }

TEST(OrvFilesTest, ZeroLeavesACodeAlone) {
    const TemporaryFolder folder;
    const FSRef file{folder.path("file")};
    for (const FSRef& each : {FSRef{folder.path()}, file})  // a folder, and nothing
        EXPECT_FALSE(OrvFiles::SetFileCreatorType(each, 0x3F3F3F3F, 0x54455854));
    ASSERT_TRUE(platform::writeFileAtomically(file.path, "text"));
    if (!platform::setFinderInfo(file.path, {})) GTEST_SKIP() << "no extended attributes here";
    EXPECT_TRUE(OrvFiles::SetFileCreatorType(file, 0x61626364, 0x54455854));
    EXPECT_EQ(codes(file), "TEXTabcd");
    EXPECT_TRUE(OrvFiles::SetFileCreatorType(file, 0, 0x41424344));
    EXPECT_TRUE(OrvFiles::SetFileCreatorType(file, 0x65666768, 0));
    EXPECT_EQ(codes(file), "ABCDefgh");
}

}  // namespace

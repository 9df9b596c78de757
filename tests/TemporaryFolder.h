#pragma once

#include <cstdlib>
#include <filesystem>
#include <system_error>

// A new folder that is the current one, and is gone, with all in it, at the end of the test.
class TemporaryFolder {
  public:
    TemporaryFolder() : mPrevious(std::filesystem::current_path()) {
        std::string name = (std::filesystem::temp_directory_path() / "test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) std::abort();
        mPath = name;
        std::filesystem::current_path(mPath);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::current_path(mPrevious, ignored);
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(const std::string& name = "") const { return (mPath / name).string(); }

  private:
    std::filesystem::path mPrevious, mPath;
};

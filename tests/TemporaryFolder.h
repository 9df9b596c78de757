#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
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

// All of a file; empty where there is none.
inline std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// How many there are, folders counted.
inline int filesIn(const std::string& folder = ".") {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

#include <cstdint>

#include "tests/TemporaryFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Stands in for libFuzzer in ordinary builds: gives the target each file of the folders named.
int main(int count, char** folders) {
    static int inputs = 0;
    static bool isDone = false;
    std::atexit([] { std::_Exit(!isDone || inputs == 0); });  // Err ends the process with status 0
    for (int i = 1; i < count; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(folders[i])) {
            if (!entry.is_regular_file()) continue;
            const std::string input = contentsOf(entry.path());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
            ++inputs;
        }
    isDone = true;
}

#include <cstdint>

#include "tests/TemporaryFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool isDone = false;

}  // namespace

// Stands in for libFuzzer where there is none: gives the target each file of the folders named.
int main(int count, char** folders) {
    // Err ends the process with status 0.
    std::atexit([] {
        if (!isDone) std::_Exit(1);
    });
    int inputs = 0;
    for (int i = 1; i < count; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(folders[i])) {
            if (!entry.is_regular_file()) continue;
            const std::string input = contentsOf(entry.path());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
            ++inputs;
        }
    isDone = true;
    return inputs > 0 ? 0 : 1;
}

// Runs a fuzz target once over every file named on the command line, and over every file of a folder named
// there, so that seeds and past crashes are tested wherever the tests run.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count);

namespace {

void runFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::size_t count = 0;
    for (int index = 1; index < argumentCount; ++index) {
        const std::filesystem::path path = arguments[index];
        if (!std::filesystem::is_directory(path)) {
            runFile(path);
            ++count;
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
            if (entry.is_regular_file()) {
                runFile(entry.path());
                ++count;
            }
        }
    }
    std::printf("%zu inputs\n", count);
    return count > 0 ? 0 : 1; // Without an input nothing was tested.
}

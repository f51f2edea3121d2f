// The kept inputs of a fuzz target as a test: every file of a folder once.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Usage: fuzz_NAME FOLDER. What breaks the target ends the program; its name is then the last line.
int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::fprintf(stderr, "%s\n", entry.path().filename().c_str());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++files;
    }
    return files > 0 ? 0 : 1;
}

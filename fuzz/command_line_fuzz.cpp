// Lines as the arguments of a command line, and those after an empty line as its configuration.
// Both are read as the program reads them; nothing is done, no file is written, no process started.
#include "reference_host/app/command_line.h"
#include "reference_host/system/memory_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

using namespace reference_host;

namespace
{

// The lines of a text up to an empty one; the text then begins behind that. What follows a NUL in a
// line is not part of an argument.
std::vector<std::string> take_lines(std::string& text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string line = text.substr(0, end).c_str();
        text.erase(0, end == std::string::npos ? end : end + 1);
        if (line.empty())
            break;
        lines.push_back(line);
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> arguments = take_lines(text);
    const Memory_file configuration(text);
    setenv("TOVIRAEXPORT_CONFIG", configuration.path().c_str(), 1);
    std::vector<const char*> words = {"shader-export"};
    for (const std::string& argument : arguments)
        words.push_back(argument.c_str());
    check_command_line(static_cast<int>(words.size()), words.data());
    return 0;
}

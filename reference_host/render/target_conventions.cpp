#include "reference_host/render/target_conventions.h"

#include <algorithm>

namespace reference_host
{

Target_conventions conventions_of(const std::string& shader_text)
{
    constexpr char mark[] = "// Conventions: ";
    std::size_t at = shader_text.find(mark);
    while (at != std::string::npos && at > 0 && shader_text[at - 1] != '\n')
        at = shader_text.find(mark, at + 1);
    if (at == std::string::npos)
        return {};
    const std::size_t end = std::min(shader_text.find('\n', at), shader_text.size());
    const std::string line = shader_text.substr(at, end - at);
    const auto says = [&line](const char* words) { return line.find(words) != std::string::npos; };
    return {says("flipped textures"), says("flipped mesh"), says("rotated cube maps")};
}

} // namespace reference_host

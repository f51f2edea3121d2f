#include "reference_host/render/render.h"

#include "reference_host/render/loaded_shader.h"
#include "reference_host/system/file_access.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <unistd.h>

namespace reference_host
{

namespace
{

constexpr std::uintmax_t max_text = std::uintmax_t{16} << 20;

bool is_executable(const std::string& file)
{
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) && access(file.c_str(), X_OK) == 0;
}

// Nothing with the reason when a file cannot be read.
std::optional<std::vector<Shader_source>> read_texts(const std::vector<std::string>& files,
                                                     std::string& error)
{
    std::vector<Shader_source> texts;
    for (const std::string& file : files) {
        std::string reason;
        auto text = read_whole_file(file, max_text, reason);
        if (!text) {
            error = file + ": cannot be read: " + reason + "\n";
            return std::nullopt;
        }
        texts.push_back({file, std::move(*text)});
    }
    return texts;
}

} // namespace

Render_result render(const Render_request& request)
{
    Render_result result;
    result.error = wrong_measure(request);
    if (!result.error.empty())
        return result;
    const auto texts = read_texts(request.shader_files, result.error);
    if (!texts)
        return result;
    result = Loaded_shader(*texts, request).draw(request);
    std::string reason;
    if (result.drawn && !request.picture_file.empty() &&
        !write_png(encode(result.picture, request.encoding), request.picture_file, reason)) {
        result.drawn = false;
        result.error = request.picture_file + ": cannot be written: " + reason + "\n";
    }
    return result;
}

std::string find_cg_compiler()
{
    std::vector<std::filesystem::path> candidates;
    if (const char* folder = std::getenv("TOVIRAEXPORT_VALIDATORS")) {
        candidates.push_back(std::filesystem::path(folder) / "bin");
    } else {
#ifdef TOVIRAEXPORT_VALIDATORS_FOLDER
        candidates.emplace_back(TOVIRAEXPORT_VALIDATORS_FOLDER "/bin");
#endif
        const char* const path = std::getenv("PATH");
        std::istringstream folders(path ? path : "");
        for (std::string entry; std::getline(folders, entry, ':');)
            candidates.emplace_back(entry);
    }
    for (const auto& candidate : candidates)
        if (std::string file = (candidate / "cgc").string(); is_executable(file))
            return file;
    return "";
}

} // namespace reference_host

#include "reference_host/render/render.h"

#include "reference_host/render/backdrop.h"
#include "reference_host/render/effect_text.h"
#include "reference_host/render/effect_translation.h"
#include "reference_host/render/shader_tokens.h"
#include "reference_host/system/file_access.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <unistd.h>

namespace reference_host
{

namespace
{

constexpr int max_size = 4096; // of a picture's sides, in pixels
constexpr std::uintmax_t max_text = std::uintmax_t{16} << 20;
constexpr int max_samples = 4;
constexpr double min_field_of_view = 5; // degrees
constexpr double max_field_of_view = 120;

// A drawing, and the files of its textures by uniform.
using Prepared = Translated_effect;

bool is_executable(const std::string& file)
{
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) && access(file.c_str(), X_OK) == 0;
}

Vertex_space glsl_vertex_space(const std::string& vertex_text)
{
    std::vector<std::string> words;
    for (const Token& token : tokens_of(vertex_text))
        words.emplace_back(token.text);
    return vertex_space(words);
}

bool is_sampler(const std::string& type)
{
    return type.compare(0, 7, "sampler") == 0;
}

// Uniforms that are zero because nobody gives them a value.
void note_empty_uniforms(const std::string& file, const std::string& text, Render_result& result)
{
    for (const Glsl_uniform& uniform : glsl_uniforms(text))
        if (!uniform.has_value && !is_sampler(uniform.type) && !is_scene_matrix(uniform.name))
            result.notes.push_back(file + ": the uniform " + uniform.name + " has no value");
}

std::optional<Prepared> prepare_glsl(const Render_request& request,
                                     const std::vector<std::string>& texts, Render_result& result)
{
    Prepared prepared;
    prepared.drawing.vertex = {request.shader_files[0], texts[0]};
    prepared.drawing.fragment = {request.shader_files[1], texts[1]};
    prepared.drawing.space = glsl_vertex_space(texts[0]);
    prepared.texture_files = texture_comments(texts[1]);
    for (const Glsl_uniform& uniform : glsl_uniforms(texts[1]))
        if (auto file = prepared.texture_files.extract(uniform.name);
            file && uniform.type == "samplerCube")
            prepared.cube_files.insert(std::move(file));
        else
            prepared.texture_files.insert(std::move(file));
    for (std::size_t i = 0; i < texts.size(); ++i)
        note_empty_uniforms(request.shader_files[i], texts[i], result);
    return prepared;
}

std::optional<Prepared> prepare_effect(const Render_request& request, const std::string& text,
                                       Render_result& result)
{
    const std::string compiler =
        request.cg_compiler.empty() ? find_cg_compiler() : request.cg_compiler;
    if (compiler.empty()) {
        result.error = request.shader_files[0] +
                       ": effects are drawn through the Cg compiler cgc, which is absent; "
                       "scripts/fetch-validators.sh brings it\n";
        return std::nullopt;
    }
    return translate_effect(request.shader_files[0], text, compiler, request.view.camera,
                            result.error);
}

std::optional<Prepared> prepare(const Render_request& request, Render_result& result)
{
    std::vector<std::string> texts;
    for (const std::string& file : request.shader_files) {
        std::string reason;
        auto text = read_whole_file(file, max_text, reason);
        if (!text) {
            result.error = file + ": cannot be read: " + reason + "\n";
            return std::nullopt;
        }
        texts.push_back(std::move(*text));
    }
    if (texts.empty() || texts.size() > 2) {
        result.error = "one effect, or a vertex and a fragment shader are needed\n";
        return std::nullopt;
    }
    auto prepared = texts.size() == 1 ? prepare_effect(request, texts[0], result)
                                      : prepare_glsl(request, texts, result);
    if (prepared)
        prepared->drawing.conventions = conventions_of(texts.back());
    return prepared;
}

// Where a file may lie: beside the shader and in the search paths.
std::vector<std::filesystem::path> folders_of(const Render_request& request)
{
    std::vector<std::filesystem::path> folders = {
        std::filesystem::path(request.shader_files.back()).parent_path()};
    folders.insert(folders.end(), request.search_paths.begin(), request.search_paths.end());
    return folders;
}

std::string nowhere(const std::filesystem::path& file, const Render_request& request)
{
    std::string reason = "no such PNG or JPEG image";
    if (file.is_absolute())
        return reason;
    std::string separator = " in ";
    for (const auto& folder : folders_of(request)) {
        reason += separator + "'" + (folder.empty() ? "." : folder.string()) + "'";
        separator = ", ";
    }
    return reason;
}

// Looks for the image beside the shader and in the search paths. Null with the reason when none can
// be used.
std::shared_ptr<const Image> find_image(const std::string& name, const Render_request& request,
                                        std::string& reason)
{
    const std::filesystem::path file(name);
    reason = nowhere(file, request);
    for (const auto& folder : folders_of(request)) {
        const std::string path = (folder / file).string();
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored))
            continue;
        if (auto image = read_image(path, reason))
            return std::make_shared<Image>(std::move(*image));
    }
    return nullptr;
}

void load_textures(Prepared& prepared, const Render_request& request, Render_result& result)
{
    std::map<std::string, std::shared_ptr<const Image>> images; // each file is read once
    for (const auto& [uniform, file] : prepared.texture_files) {
        const auto [image, is_new] = images.try_emplace(file);
        std::string reason;
        const auto given = request.images.find(std::filesystem::path(file).filename().string());
        if (is_new)
            image->second =
                given == request.images.end() ? find_image(file, request, reason) : given->second;
        if (is_new && !image->second)
            result.notes.push_back(file + ": " + reason + "; a checker stands in");
        if (image->second)
            prepared.drawing.textures.emplace(uniform, image->second);
    }
}

// Why a picture of such measures cannot be drawn, in a line; empty when it can.
std::string wrong_measure(const Render_request& request)
{
    if (request.size < 1 || request.size > max_size)
        return "a picture has 1 to " + std::to_string(max_size) + " pixels a side\n";
    if (request.view.samples < 1 || request.view.samples > max_samples)
        return "a pixel has 1 to " + std::to_string(max_samples) + " samples a side\n";
    const double angle = request.view.camera.field_of_view;
    if (!(angle >= min_field_of_view && angle <= max_field_of_view))
        return "the camera sees 5 to 120 degrees\n";
    return "";
}

// The cube maps of the shader; the first one also surrounds the object.
void load_cube_maps(Prepared& prepared, const Render_request& request)
{
    for (const auto& [uniform, file] : prepared.cube_files)
        for (const auto& folder : folders_of(request)) {
            std::string reason;
            const auto environment = Environment::read((folder / file).string(), reason);
            if (!environment)
                continue;
            if (prepared.drawing.cube_maps.empty())
                prepared.drawing.environment = environment;
            prepared.drawing.cube_maps.emplace(uniform, environment);
            break;
        }
}

// False with the reason when the user's environment cannot be read.
bool load_environment(Prepared& prepared, const Render_request& request, Render_result& result)
{
    if (request.environment) {
        prepared.drawing.environment = request.environment;
        return true;
    }
    if (request.environment_file.empty()) {
        load_cube_maps(prepared, request);
        return true;
    }
    std::string reason;
    const auto environment = Environment::read(request.environment_file, reason);
    if (!environment) {
        result.error = request.environment_file + ": " + reason + "\n";
        return false;
    }
    prepared.drawing.environment = environment;
    return true;
}

} // namespace

Render_result render(const Render_request& request)
{
    Render_result result;
    result.error = wrong_measure(request);
    if (!result.error.empty())
        return result;
    auto prepared = prepare(request, result);
    if (!prepared)
        return result;
    load_textures(*prepared, request, result);
    if (!load_environment(*prepared, request, result))
        return result;
    prepared->drawing.view = request.view;
    for (const auto& [name, values] : request.uniforms)
        prepared->drawing.uniforms[name] = values;
    auto picture = draw(prepared->drawing, request.size, result.error);
    if (!picture)
        return result;
    if (const std::size_t bad = count_bad_pixels(*picture); bad > 0)
        result.notes.push_back(request.shader_files.back() + ": " + std::to_string(bad) +
                               " pixels hold no finite numbers");
    result.picture = std::move(*picture);
    put_before_backdrop(result.picture, request.view, *prepared->drawing.environment);
    std::string reason;
    result.drawn =
        request.picture_file.empty() ||
        write_png(encode(result.picture, request.encoding), request.picture_file, reason);
    if (!result.drawn)
        result.error = request.picture_file + ": cannot be written: " + reason + "\n";
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

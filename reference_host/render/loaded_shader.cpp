#include "reference_host/render/loaded_shader.h"

#include "reference_host/render/backdrop.h"
#include "reference_host/render/drawing_device.h"
#include "reference_host/render/effect_text.h"
#include "reference_host/render/effect_translation.h"
#include "reference_host/render/shader_tokens.h"

#include <filesystem>

namespace reference_host
{

namespace
{

constexpr int max_size = 4096; // of a picture's sides, in pixels
constexpr int max_samples = 4;
constexpr double min_field_of_view = 5; // degrees
constexpr double max_field_of_view = 120;

// A drawing, and the files of its textures by uniform.
using Prepared = Translated_effect;

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

// Uniforms that are zero because nothing sets them.
void note_empty_uniforms(const std::string& file, const std::string& text, Render_result& result)
{
    for (const Glsl_uniform& uniform : glsl_uniforms(text))
        if (!uniform.has_value && !is_sampler(uniform.type) && !is_scene_matrix(uniform.name))
            result.notes.push_back(file + ": the uniform " + uniform.name + " has no value");
}

Prepared prepare_glsl(const std::vector<Shader_source>& texts, Render_result& result)
{
    Prepared prepared;
    prepared.drawing.vertex = texts[0];
    prepared.drawing.fragment = texts[1];
    prepared.drawing.space = glsl_vertex_space(texts[0].text);
    prepared.texture_files = texture_comments(texts[1].text);
    for (const Glsl_uniform& uniform : glsl_uniforms(texts[1].text))
        if (auto file = prepared.texture_files.extract(uniform.name);
            file && uniform.type == "samplerCube")
            prepared.cube_files.insert(std::move(file));
        else
            prepared.texture_files.insert(std::move(file));
    for (const Shader_source& text : texts)
        note_empty_uniforms(text.name, text.text, result);
    return prepared;
}

std::optional<Prepared> prepare_effect(const Shader_source& text, const Render_request& request,
                                       Render_result& result)
{
    const std::string compiler =
        request.cg_compiler.empty() ? find_cg_compiler() : request.cg_compiler;
    if (!compiler.empty())
        return translate_effect(text.name, text.text, compiler, result.error);
    result.error = text.name + ": effects are drawn through the Cg compiler cgc, which is absent; "
                               "scripts/fetch-validators.sh brings it\n";
    return std::nullopt;
}

std::optional<Prepared> prepare(const std::vector<Shader_source>& texts,
                                const Render_request& request, Render_result& result)
{
    if (texts.empty() || texts.size() > 2) {
        result.error = "one effect, or a vertex and a fragment shader are needed\n";
        return std::nullopt;
    }
    auto prepared =
        texts.size() == 1 ? prepare_effect(texts[0], request, result) : prepare_glsl(texts, result);
    if (prepared)
        prepared->drawing.conventions = conventions_of(texts.back().text);
    return prepared;
}

// Where a file may lie: beside the shader and in the search paths.
using Folders = std::vector<std::filesystem::path>;

Folders folders_of(const std::string& shader, const Render_request& request)
{
    Folders folders = {std::filesystem::path(shader).parent_path()};
    folders.insert(folders.end(), request.search_paths.begin(), request.search_paths.end());
    return folders;
}

std::string nowhere(const std::filesystem::path& file, const Folders& folders)
{
    std::string reason = "no such PNG or JPEG image";
    if (file.is_absolute())
        return reason;
    std::string separator = " in ";
    for (const auto& folder : folders) {
        reason += separator + "'" + (folder.empty() ? "." : folder.string()) + "'";
        separator = ", ";
    }
    return reason;
}

// Looks for the image beside the shader and in the search paths. Null with the reason when none can
// be used.
std::shared_ptr<const Image> find_image(const std::string& name, const Folders& folders,
                                        std::string& reason)
{
    const std::filesystem::path file(name);
    reason = nowhere(file, folders);
    for (const auto& folder : folders) {
        const std::string path = (folder / file).string();
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored))
            continue;
        if (auto image = read_image(path, reason))
            return std::make_shared<Image>(std::move(*image));
    }
    return nullptr;
}

void load_textures(Prepared& prepared, const Folders& folders, const Render_request& request,
                   Render_result& result)
{
    std::map<std::string, std::shared_ptr<const Image>> images; // each file is read once
    for (const auto& [uniform, file] : prepared.texture_files) {
        const auto [image, is_new] = images.try_emplace(file);
        std::string reason;
        const auto given = request.images.find(std::filesystem::path(file).filename().string());
        if (is_new)
            image->second =
                given == request.images.end() ? find_image(file, folders, reason) : given->second;
        if (is_new && !image->second)
            result.notes.push_back(file + ": " + reason + "; a checker stands in");
        if (image->second)
            prepared.drawing.textures.emplace(uniform, image->second);
    }
}

// The cube maps of the shader; the first one also surrounds the object.
void load_cube_maps(Prepared& prepared, const Folders& folders)
{
    for (const auto& [uniform, file] : prepared.cube_files)
        for (const auto& folder : folders) {
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
bool load_environment(Prepared& prepared, const Folders& folders, const Render_request& request,
                      Render_result& result)
{
    if (request.environment) {
        prepared.drawing.environment = request.environment;
        return true;
    }
    if (request.environment_file.empty()) {
        load_cube_maps(prepared, folders);
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

std::string wrong_measure(const Render_request& request)
{
    if (request.size < 1 || request.size > max_size)
        return "a picture has 1 to " + std::to_string(max_size) + " pixels a side\n";
    if (request.view.samples < 1 || request.view.samples > max_samples)
        return "a pixel has 1 to " + std::to_string(max_samples) + " samples a side\n";
    const double angle = request.view.camera.field_of_view;
    if (!(angle >= min_field_of_view && angle <= max_field_of_view))
        return "the camera sees 5 to 120 degrees\n";
    const double distance = request.view.camera.distance;
    if (!(distance >= min_distance && distance <= max_distance))
        return "the camera stands 1.2 to 8 away\n";
    return "";
}

Loaded_shader::Loaded_shader(const std::vector<Shader_source>& texts, const Render_request& request)
    : Loaded_shader(texts, request, std::make_shared<Drawing_device>())
{
}

Loaded_shader::Loaded_shader(const std::vector<Shader_source>& texts, const Render_request& request,
                             const std::shared_ptr<Drawing_device>& device)
    : m_name(texts.empty() ? std::string() : texts.back().name)
{
    auto prepared = prepare(texts, request, m_loading);
    if (!prepared)
        return;
    const Folders folders = folders_of(m_name, request);
    load_textures(*prepared, folders, request, m_loading);
    if (load_environment(*prepared, folders, request, m_loading))
        m_drawing =
            Prepared_drawing::prepare(std::move(prepared->drawing), device, m_loading.error);
}

Loaded_shader::~Loaded_shader() = default;

Render_result Loaded_shader::draw(const Render_request& request)
{
    Render_result result = m_loading;
    if (result.error.empty())
        result.error = wrong_measure(request);
    if (!result.error.empty())
        return result;
    auto picture = m_drawing->draw(request.view, request.uniforms, request.size, result.error);
    if (!picture)
        return result;
    if (const std::size_t bad = count_bad_pixels(*picture); bad > 0)
        result.notes.push_back(m_name + ": " + std::to_string(bad) +
                               " pixels hold no finite numbers");
    result.picture = std::move(*picture);
    put_before_backdrop(result.picture, request.view, m_drawing->environment());
    result.drawn = true;
    return result;
}

} // namespace reference_host

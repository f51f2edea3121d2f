#include "reference_host/render/effect_translation.h"

#include "reference_host/render/cg_listing.h"
#include "reference_host/render/effect_text.h"
#include "reference_host/render/shader_tokens.h"
#include "reference_host/system/memory_file.h"
#include "reference_host/system/process.h"

#include <algorithm>
#include <future>

namespace reference_host
{

namespace
{

// Far above what an effect needs. One whose macros double with each line has no end.
constexpr std::size_t max_translation = std::size_t{16} << 20;
constexpr Process_limits compiler_limits = {20, std::size_t{2} << 30, max_translation};

using Lists = std::map<std::string, std::vector<std::string>>;

// One light of each kind, for effects whose lights only their application sets. World space.
struct Light_value {
    const char* structure;
    const char* member;
    std::array<float, 3> value;
};
constexpr Light_value light_values[] = {
    {"SLightDir", "LightDir", {-0.6F, 0.5F, 0.4F}}, // from the scene to the light
    {"SLightDir", "LightColor", {0.25F, 0.32F, 0.55F}},
    {"SLightPoint", "LightPos", {2.0F, 2.0F, 3.0F}},
    {"SLightPoint", "LightColor", {0.8F, 0.8F, 0.75F}},
    {"SLightSpot", "LightPos", {-2.0F, -1.0F, 3.0F}},
    {"SLightSpot", "LightDir", {2.0F, 1.0F, -3.0F}}, // from the light to the scene
    {"SLightSpot", "LightColor", {0.8F, 0.2F, 0.1F}},
    {"SLightSpot", "lightI_SCos_SExp", {1.0F, 0.98F, 10.0F}},
};

void replace_all(std::string& text, const std::string& old_text, const std::string& new_text)
{
    for (std::size_t at = text.find(old_text); at != std::string::npos;
         at = text.find(old_text, at + new_text.size()))
        text.replace(at, old_text.size(), new_text);
}

void replace_word(std::string& text, const std::string& old_word, const std::string& new_word)
{
    std::size_t at = 0;
    while ((at = text.find(old_word, at)) != std::string::npos) {
        const std::size_t end = at + old_word.size();
        const bool alone = (at == 0 || !is_word_character(text[at - 1])) &&
                           (end == text.size() || !is_word_character(text[end]));
        if (alone)
            text.replace(at, old_word.size(), new_word);
        at += alone ? new_word.size() : 1;
    }
}

struct Stage {
    std::string text;
    Cg_listing listing;
};

class Translator
{
public:
    // The temporary copy of the effect has the name `file` in messages.
    Translator(const std::string& file, const std::string& text, const std::string& compiler,
               const Lists& lists)
        : m_file(file),
          m_compiler(compiler),
          m_lists(lists),
          m_copy(without_parameter_semantics(text))
    {
    }

    std::optional<Stage> translate(const char* profile, const std::string& entry,
                                   std::string& error) const
    {
        const Memory_file output;
        const Process_result result =
            run_program(command(profile, entry, output.path()), compiler_limits);
        std::string text = output.content(max_translation);
        if (result.status == 0 && !text.empty()) {
            const Cg_listing listing = read_cg_listing(text);
            return Stage{std::move(text), listing};
        }
        std::string messages = result.output;
        replace_all(messages, m_copy.path(), m_file);
        if (!messages.empty() && messages.find(m_file) == std::string::npos)
            messages = m_file + ": " + messages; // a compiler that runs out of memory names no file
        error += messages;
        if (messages.empty() || result.end != Process_end::exit)
            error += m_file + ": the compiler '" + m_compiler + "' " +
                     describe_end(result, compiler_limits) + "\n";
        return std::nullopt;
    }

private:
    std::vector<std::string> command(const char* profile, const std::string& entry,
                                     const std::string& output) const
    {
        std::vector<std::string> words = {m_compiler, "-quiet",      "-profile", profile,
                                          "-po",      "version=120", "-entry",   entry};
        for (const auto& [list, structs] : m_lists) {
            std::string binding = list + " = {";
            for (const std::string& structure : structs)
                binding.append(structure == structs.front() ? " " : ", ").append(structure);
            words.insert(words.end(), {"-type", binding + " }"});
        }
        words.insert(words.end(), {"-o", output, m_copy.path()});
        return words;
    }

    std::string m_file;
    std::string m_compiler;
    Lists m_lists;
    Memory_file m_copy;
};

// ---- inputs of the vertex program -------------------------------------------

// What the Cg compiler calls the streams that OpenGL knows by itself; others keep their semantic.
struct Stream_name {
    const char* semantic;
    const char* glsl_type;
    const char* glsl_name;
};
constexpr Stream_name stream_names[] = {
    {"POSITION", "vec4", "gl_Vertex"},
    {"POSITION0", "vec4", "gl_Vertex"},
    {"NORMAL", "vec3", "gl_Normal"},
    {"NORMAL0", "vec3", "gl_Normal"},
    {"COLOR", "vec4", "gl_Color"},
    {"COLOR0", "vec4", "gl_Color"},
    {"DIFFUSE", "vec4", "gl_Color"},
    {"COLOR1", "vec4", "gl_SecondaryColor"},
    {"TEXCOORD", "vec4", "gl_MultiTexCoord0"},
    {"TEXCOORD0", "vec4", "gl_MultiTexCoord0"},
    {"TEXCOORD1", "vec4", "gl_MultiTexCoord1"},
    {"TEXCOORD2", "vec4", "gl_MultiTexCoord2"},
    {"TEXCOORD3", "vec4", "gl_MultiTexCoord3"},
    {"TEXCOORD4", "vec4", "gl_MultiTexCoord4"},
    {"TEXCOORD5", "vec4", "gl_MultiTexCoord5"},
    {"TEXCOORD6", "vec4", "gl_MultiTexCoord6"},
    {"TEXCOORD7", "vec4", "gl_MultiTexCoord7"},
};

// Programs feed tangents through whatever stream they have free: the effect's own name of an input
// tells what it is.
std::string input_name(const Cg_variable& variable, const std::string& semantic)
{
    const std::string member = variable.name.substr(variable.name.rfind('.') + 1);
    const bool is_encoded =
        semantic.compare(0, 5, "COLOR") == 0 && member.find("color") == std::string::npos;
    return "vertex_" + member + (is_encoded ? encoded_suffix : "");
}

void rename_inputs(Stage& stage)
{
    constexpr char mark[] = "$vin.";
    constexpr std::size_t mark_length = sizeof mark - 1;
    std::string declarations;
    for (const Cg_variable& variable : stage.listing.variables) {
        if (variable.semantic.compare(0, mark_length, mark) != 0 || variable.uniform.empty())
            continue;
        const std::string semantic = variable.semantic.substr(mark_length);
        const std::string name = input_name(variable, semantic);
        const auto known =
            std::find_if(std::begin(stream_names), std::end(stream_names),
                         [&](const Stream_name& row) { return semantic == row.semantic; });
        if (known == std::end(stream_names)) {
            replace_word(stage.text, semantic, name);
            continue;
        }
        replace_word(stage.text, known->glsl_name, name);
        declarations += std::string("attribute ") + known->glsl_type + " " + name + ";\n";
    }
    const std::size_t version = stage.text.find("#version");
    if (version != std::string::npos)
        stage.text.insert(std::min(stage.text.find('\n', version) + 1, stage.text.size()),
                          declarations);
}

// ---- parameters -------------------------------------------------------------

bool is_matrix(const Cg_variable& variable)
{
    return variable.type == "float4x4" || variable.type == "float3x3";
}

// The value of "lights[1].LightPos", where the list of this name holds that struct at 1.
std::vector<float> light_value(const std::string& name, const Lists& lists)
{
    const std::size_t open = name.find('[');
    const std::size_t close = name.find("].");
    if (open == std::string::npos || close == std::string::npos || close < open)
        return {};
    const auto list = lists.find(name.substr(0, open));
    const std::size_t element = std::strtoul(name.c_str() + open + 1, nullptr, 10);
    if (list == lists.end() || element >= list->second.size())
        return {};
    for (const Light_value& row : light_values)
        if (list->second[element] == row.structure && name.substr(close + 2) == row.member)
            return {row.value.begin(), row.value.end()};
    return {};
}

std::vector<float> parameter_value(const Cg_variable& variable, const Cg_listing& listing,
                                   const Effect_description& effect)
{
    const std::vector<float> value = default_of(listing, variable);
    return value.empty() ? light_value(variable.name, effect.unsized_lists) : value;
}

void add_texture(const Cg_variable& sampler, const Effect_description& effect,
                 Translated_effect& result)
{
    const auto file = effect.texture_files.find(sampler.name);
    auto& files = sampler.type == "samplerCUBE" ? result.cube_files : result.texture_files;
    if (file != effect.texture_files.end())
        files.emplace(sampler.uniform, file->second);
    result.drawing.texture_labels.emplace(sampler.uniform,
                                          sampler.name.substr(0, sampler.name.rfind("_sampler")));
}

void add_parameters(const Cg_listing& listing, const Effect_description& effect,
                    Translated_effect& result)
{
    for (const Cg_variable& variable : listing.variables) {
        if (variable.uniform.empty() || variable.semantic.compare(0, 1, "$") == 0)
            continue;
        if (variable.type.compare(0, 7, "sampler") == 0)
            add_texture(variable, effect, result);
        else if (is_matrix(variable) && scene_matrix({}, variable.name, variable.semantic))
            result.drawing.matrices.emplace(variable.uniform,
                                            Matrix_parameter{variable.name, variable.semantic,
                                                             effect.direct3d,
                                                             variable.type == "float4x4" ? 4 : 3});
        else if (auto value = parameter_value(variable, listing, effect); !value.empty())
            result.drawing.uniforms.emplace(variable.uniform, std::move(value));
        result.drawing.parameters[variable.name].push_back(variable.uniform);
    }
}

Vertex_space space_of(const Cg_listing& listing)
{
    std::vector<std::string> matrices;
    for (const Cg_variable& variable : listing.variables)
        if (is_matrix(variable) && !variable.uniform.empty())
            matrices.insert(matrices.end(), {variable.semantic, variable.name});
    return vertex_space(matrices);
}

} // namespace

std::optional<Translated_effect> translate_effect(const std::string& file, const std::string& text,
                                                  const std::string& compiler, std::string& error)
{
    const Effect_description effect = describe_effect(text);
    if (effect.vertex_entry.empty() || effect.fragment_entry.empty()) {
        error += file + ": no pass with a vertex and a fragment program\n";
        return std::nullopt;
    }
    const Translator translator(file, text, compiler, effect.unsized_lists);
    std::string vertex_error;
    auto vertex_translation = std::async(std::launch::async, [&] {
        return translator.translate("glslv", effect.vertex_entry, vertex_error);
    });
    std::string fragment_error;
    auto fragment = translator.translate("glslf", effect.fragment_entry, fragment_error);
    auto vertex = vertex_translation.get();
    error += vertex_error + fragment_error;
    if (!vertex || !fragment)
        return std::nullopt;
    rename_inputs(*vertex);

    Translated_effect result;
    result.drawing.space = space_of(vertex->listing);
    for (const Stage* stage : {&*vertex, &*fragment})
        add_parameters(stage->listing, effect, result);
    result.drawing.vertex = {file + " (vertex program as GLSL)", std::move(vertex->text)};
    result.drawing.fragment = {file + " (fragment program as GLSL)", std::move(fragment->text)};
    return result;
}

} // namespace reference_host

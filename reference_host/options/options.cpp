#include "reference_host/options/options.h"

#include "reference_host/options/profiles.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>

namespace reference_host
{
namespace
{

struct Named_space {
    const char* name;
    Space space;
};

constexpr Named_space spaces[] = {{"object", Space::object},
                                  {"world", Space::world},
                                  {"camera", Space::camera},
                                  {"screen", Space::screen}};

void report(Diagnostics& diagnostics, Severity severity, const std::string& text)
{
    diagnostics.push_back({severity, text, {}});
}

void report_value(Diagnostics& diagnostics, const std::string& option, const std::string& value)
{
    report(diagnostics, Severity::error, "option \"" + option + "\" cannot be \"" + value + "\"");
}

// Each reads one kind of value; false when the text is not one.
bool read(const std::string& text, bool& value)
{
    value = text == "true";
    return value || text == "false";
}

bool read(const std::string& text, std::string& value)
{
    value = text;
    return true;
}

bool read(const std::string& text, Space& value)
{
    for (const Named_space& named : spaces)
        if (text == named.name) {
            value = named.space;
            return true;
        }
    return false;
}

// The space of the shading itself.
bool read(const std::string& text, std::optional<Space>& value)
{
    Space space = Space::camera;
    if (!read(text, space) || (space != Space::camera && space != Space::world))
        return false;
    value = space;
    return true;
}

bool read(const std::string& text, Effect_format& value)
{
    value = text == "HLSL" ? Effect_format::hlsl : Effect_format::cgfx;
    return text == "HLSL" || text == "CgFX";
}

bool read(const std::string& text, int& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool read(const std::string& text, double& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() &&
           std::isfinite(value);
}

bool is_identifier(const std::string& text)
{
    return !text.empty() && !std::isdigit(static_cast<unsigned char>(text[0])) &&
           std::all_of(text.begin(), text.end(),
                       [](unsigned char sign) { return std::isalnum(sign) || sign == '_'; });
}

template<class Options>
using Read_option = bool (*)(const std::string&, Options&);

template<class Options>
struct Option_row {
    const char* name;
    Read_option<Options> read;
};

// An option that fills a field as it stands.
template<auto field, class Options>
bool read_field(const std::string& text, Options& options)
{
    return read(text, options.*field);
}

// An option whose value becomes a word of the text.
template<auto field, class Options>
bool read_word(const std::string& text, Options& options)
{
    options.*field = text;
    return is_identifier(text);
}

template<int set>
bool read_texcoord_semantic(const std::string& text, Text_options& options)
{
    options.texcoord_semantics[set] = text;
    return is_identifier(text);
}

bool read_internal_space(const std::string& text, Group_options& options)
{
    std::optional<Space> space;
    const bool known = read(text, space);
    options.internal_space = space.value_or(Space::camera);
    return known;
}

bool read_shader_type(const std::string& text, Text_options& options)
{
    options.shader_type = text.empty() ? "surface" : text;
    static constexpr std::array kinds = {"surface", "environment", "lens", "light", "volume"};
    return std::find(kinds.begin(), kinds.end(), options.shader_type) != kinds.end();
}

bool read_glsl_version(const std::string& text, Text_options& options)
{
    static constexpr std::array versions = {110, 120, 130, 140, 150, 330,
                                            400, 410, 420, 430, 440, 450};
    return read(text, options.glsl_version) &&
           std::find(versions.begin(), versions.end(), options.glsl_version) != versions.end();
}

// "float4(r,g,b,a)" with four numbers.
bool read_scene_ambient(const std::string& text, Text_options& options)
{
    options.scene_ambient = text;
    const std::string head = "float4(";
    if (text.compare(0, head.size(), head) != 0 || text.back() != ')')
        return false;
    std::string rest = text.substr(head.size(), text.size() - head.size() - 1);
    for (int i = 0; i < 4; ++i) {
        const std::size_t comma = std::min(rest.find(','), rest.size());
        const std::size_t first = rest.find_first_not_of(' ');
        double number = 0.0;
        if (first >= comma || !read(rest.substr(first, comma - first), number))
            return false;
        if ((i < 3) != (comma < rest.size()))
            return false;
        rest.erase(0, comma + 1);
    }
    return true;
}

bool accept_anything(const std::string&, Text_options&)
{
    return true;
}

std::vector<std::string> split_names(const std::string& list)
{
    std::vector<std::string> names;
    std::size_t first = 0;
    for (std::size_t end = 0; end != std::string::npos; first = end + 2) {
        end = list.find(", ", first);
        names.push_back(list.substr(first, end - first));
    }
    return names;
}

bool read_lights(const std::string& text, Group_options& options)
{
    const std::vector<std::string> names = split_names(text);
    options.lights.resize(std::max(options.lights.size(), names.size()));
    for (std::size_t i = 0; i < names.size(); ++i)
        options.lights[i].name = names[i];
    return true;
}

constexpr Option_row<Group_options> group_rows[] = {
    {"shader_name", read_field<&Group_options::shader_name>},
    {"resolve_unsized_arrays", read_field<&Group_options::resolve_unsized_arrays>},
    {"preserve_light_loop", read_field<&Group_options::preserve_light_loop>},
    {"ignore_literal", read_field<&Group_options::ignore_literal>},
    {"internal_space", read_internal_space},
    {"lights", read_lights},
    {"environment", read_field<&Group_options::environment>},
    {"volume", read_field<&Group_options::volume>},
};

constexpr Option_row<Text_options> text_rows[] = {
    {"format", read_field<&Text_options::format>},
    {"shader_name", read_field<&Text_options::shader_name>},
    {"shader_type", read_shader_type},
    {"vertex_shader_profile", read_word<&Text_options::vertex_shader_profile>},
    {"fragment_shader_profile", read_word<&Text_options::fragment_shader_profile>},
    {"fx_header", read_field<&Text_options::fx_header>},
    {"user_copyright", read_field<&Text_options::user_copyright>},
    {"annotation_map", read_field<&Text_options::annotation_map>},
    {"scene_ambient", read_scene_ambient},
    {"internal_space", read_field<&Text_options::internal_space>},
    {"vertex_stream_space", read_field<&Text_options::vertex_stream_space>},
    {"screen_space_vertices", read_field<&Text_options::screen_space_vertices>},
    {"two_sided", read_field<&Text_options::two_sided>},
    {"face_forward", read_field<&Text_options::face_forward>},
    {"normals_face_forward", read_field<&Text_options::normals_face_forward>},
    {"rotate_cube_map", read_field<&Text_options::rotate_cube_map>},
    {"flip_tex2d_v", read_field<&Text_options::flip_tex2d_v>},
    {"flip_vs_texture_v", read_field<&Text_options::flip_vs_texture_v>},
    {"generate_texture_parameters", read_field<&Text_options::generate_texture_parameters>},
    {"generate_samplers", read_field<&Text_options::generate_samplers>},
    {"generate_sampler_states", read_field<&Text_options::generate_sampler_states>},
    {"generate_sampler_default_address_mode",
     read_field<&Text_options::generate_sampler_default_address_mode>},
    {"generate_umapped_annotations", read_field<&Text_options::generate_umapped_annotations>},
    {"alpha_transparency", read_field<&Text_options::alpha_transparency>},
    {"use_oit", read_field<&Text_options::use_oit>},
    {"depth_test", read_field<&Text_options::depth_test>},
    {"depth_write", read_field<&Text_options::depth_write>},
    {"add_default_states", read_field<&Text_options::add_default_states>},
    {"hlsl_sas_conformance", read_field<&Text_options::hlsl_sas_conformance>},
    {"interfaces", read_field<&Text_options::interfaces>},
    {"light_interfaces_only", read_field<&Text_options::light_interfaces_only>},
    {"eval_volume", read_field<&Text_options::eval_volume>},
    {"light_interface_name", read_word<&Text_options::light_interface_name>},
    {"light_list_name", read_word<&Text_options::light_list_name>},
    {"texture_resource_annotation", read_word<&Text_options::texture_resource_annotation>},
    {"vs_binding_tangent", read_word<&Text_options::tangent_semantic>},
    {"vs_binding_binormal", read_word<&Text_options::binormal_semantic>},
    {"vs_binding_texcoord0", read_texcoord_semantic<0>},
    {"vs_binding_texcoord1", read_texcoord_semantic<1>},
    {"vs_binding_texcoord2", read_texcoord_semantic<2>},
    {"vs_binding_texcoord3", read_texcoord_semantic<3>},
    {"glsl_version", read_glsl_version},
    // Sent for one program only, without a documented meaning.
    {"catia_siggraph_hack", accept_anything},
};

// "light_stateN_type", "_spread", "_distance_limit". False when the name is not of that form.
bool read_light_state(const std::string& name, const std::string& value, Group_options& options,
                      Diagnostics& diagnostics)
{
    const std::string head = "light_state";
    std::size_t number = 0;
    const auto parsed = std::from_chars(name.data() + std::min(head.size(), name.size()),
                                        name.data() + name.size(), number);
    if (name.compare(0, head.size(), head) != 0 || parsed.ec != std::errc() || number > 9999)
        return false;
    options.lights.resize(std::max(options.lights.size(), number + 1));
    Light_option& light = options.lights[number];
    const std::string field(parsed.ptr);
    int kind = 0;
    bool good = false;
    if (field == "_type") {
        good = read(value, kind) && kind >= 0 && kind <= 2;
        light.kind = good ? static_cast<Light_kind>(kind) : Light_kind::directional;
        light.kind_given = good;
    } else if (field == "_spread") {
        good = read(value, light.spread) && light.spread >= 0.0 && light.spread <= 360.0;
    } else if (field == "_distance_limit") {
        good = read(value, light.distance_limit) && light.distance_limit >= 0.0;
    } else {
        return false;
    }
    if (!good)
        report_value(diagnostics, name, value);
    return true;
}

template<class Options, std::size_t count>
const Option_row<Options>* find_row(const Option_row<Options> (&rows)[count],
                                    const std::string& name)
{
    for (const Option_row<Options>& row : rows)
        if (name == row.name)
            return &row;
    return nullptr;
}

// Future compilers may know more of them.
void warn_of_unknown_profiles(const Text_options& options, Diagnostics& diagnostics)
{
    const auto warn = [&](const char* option, const std::string& profile) {
        report(diagnostics, Severity::warning,
               std::string("option \"") + option + "\": the profile \"" + profile +
                   "\" is unknown");
    };
    const std::string& vertex = options.vertex_shader_profile;
    if (!vertex.empty() && !is_vertex_profile(vertex))
        warn("vertex_shader_profile", vertex);
    const std::string& fragment = options.fragment_shader_profile;
    if (!fragment.empty() && !find_fragment_profile(fragment))
        warn("fragment_shader_profile", fragment);
}

} // namespace

Group_options read_group_options(const Option_set& options, Diagnostics& diagnostics)
{
    Group_options read_options;
    for (const auto& [name, value] : options) {
        const auto* row = find_row(group_rows, name);
        if (row && !row->read(value, read_options))
            report_value(diagnostics, name, value);
        if (!row && !read_light_state(name, value, read_options, diagnostics))
            report(diagnostics, Severity::warning, "option \"" + name + "\" is unknown");
    }
    // States of lights that "lights" does not name.
    auto& lights = read_options.lights;
    lights.erase(std::remove_if(lights.begin(), lights.end(),
                                [](const Light_option& light) { return light.name.empty(); }),
                 lights.end());
    return read_options;
}

Text_options read_text_options(const Option_set& options, Diagnostics& diagnostics)
{
    Text_options read_options;
    for (const auto& [name, value] : options) {
        const auto* row = find_row(text_rows, name);
        if (!row)
            report(diagnostics, Severity::warning, "option \"" + name + "\" is unknown");
        else if (!row->read(value, read_options))
            report_value(diagnostics, name, value);
    }
    warn_of_unknown_profiles(read_options, diagnostics);
    return read_options;
}

bool has_errors(const Diagnostics& diagnostics)
{
    return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic& diagnostic) {
        return diagnostic.severity == Severity::error;
    });
}

bool covers_screen(const Text_options& options)
{
    return options.shader_type == "environment" || options.shader_type == "lens";
}

} // namespace reference_host

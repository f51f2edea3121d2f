// The exports of the generic exporter.
#include "exporters/exporter_generic.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/compiler_options.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "export_common/output_names.h"
#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporters/generic_controls.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr int world_index = 0;  // of the internal space
constexpr int camera_index = 1; // of the internal space

// What the options of one export are computed from.
struct Generic_source {
    const Generic_options& options;
    const char* kind; // of the node, for the compiler
};

using Value = std::optional<std::string>;

template<wxString Generic_options::*text>
Value text_value(const Generic_source& source)
{
    return to_bytes(source.options.*text);
}

template<bool Generic_options::*flag>
Value switch_value(const Generic_source& source)
{
    return switch_text(source.options.*flag);
}

Value shader_kind(const Generic_source& source)
{
    return source.kind;
}

Value eval_volume(const Generic_source& source)
{
    return switch_text(source.options.use_interfaces && source.options.eval_volume);
}

// Sent unchanged, even when it does not name a file.
Value annotation_map(const Generic_source& source)
{
    if (source.options.annotation_map.empty())
        return std::nullopt;
    return to_bytes(source.options.annotation_map);
}

Value internal_space(const Generic_source& source)
{
    return source.options.internal_space == camera_index ? "camera" : "world";
}

// An index out of range counts as object space.
Value vertex_space(const Generic_source& source)
{
    constexpr const char* names[] = {"object", "world", "camera", "screen"};
    const int index = source.options.vertex_space;
    return names[index >= 1 && index <= 3 ? index : 0];
}

constexpr Option_row<Generic_source> cgfx_options[] = {
    {"shader_type", shader_kind},
    {"format", "CgFX"},
    {"interfaces", switch_value<&Generic_options::use_interfaces>},
    {"eval_volume", eval_volume},
};

constexpr Option_row<> hlsl_options[] = {
    {"shader_type", "surface"},
    {"format", "HLSL"},
};

constexpr Option_row<Generic_source> common_fx_options[] = {
    {"annotation_map", annotation_map},
    {"vertex_shader_profile", text_value<&Generic_options::vertex_profile>},
    {"fragment_shader_profile", text_value<&Generic_options::fragment_profile>},
    {"internal_space", internal_space},
    {"vertex_stream_space", vertex_space},
    {"two_sided", switch_value<&Generic_options::two_sided>},
    {"face_forward", switch_value<&Generic_options::face_forward>},
    {"rotate_cube_map", switch_value<&Generic_options::rotate_cube_map>},
    {"flip_tex2d_v", switch_value<&Generic_options::flip_tex2d_v>},
    {"generate_sampler_states", switch_value<&Generic_options::generate_sampler_states>},
    {"alpha_transparency", switch_value<&Generic_options::alpha_transparency>},
    {"use_oit", switch_value<&Generic_options::use_oit>},
    {"depth_test", switch_value<&Generic_options::depth_test>},
    {"depth_write", switch_value<&Generic_options::depth_write>},
    {"hlsl_sas_conformance", switch_value<&Generic_options::hlsl_sas_conformance>},
    {"generate_samplers", "true"},
    {"vs_binding_tangent", "TANGENT"},
    {"vs_binding_binormal", "BINORMAL"},
    {"add_default_states", "true"},
    {"generate_umapped_annotations", "false"},
};

constexpr Option_row<Generic_source> glsl_options[] = {
    {"shader_type", "surface"},
    {"alpha_transparency", switch_value<&Generic_options::alpha_transparency>},
    {"two_sided", switch_value<&Generic_options::two_sided>},
    {"use_oit", switch_value<&Generic_options::use_oit>},
    {"glsl_version", text_value<&Generic_options::glsl_version>},
};

constexpr int vertex_code_index = 0;
constexpr int fragment_code_index = 1;

} // namespace

bool Exporter_generic::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(false, [&] { return run_export(app, view); });
}

bool Exporter_generic::run_export(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    constexpr bool interactive = true;
    if (!has_single_selection(app, view))
        return false;
    Export_objects objects;
    objects.take_node(view);
    if (!require_exportfile_name(wxT("Error! no export file name is specified."))) {
        objects.node.abandon(); // on purpose: the selection is not released on this path
        return false;
    }
    if (!objects.node)
        return false;
    objects.take_compiler(app);
    objects.take_errors();

    Host_ref<TSDK::ICompilation_unit> unit;
    if (m_target == TARGET_CGFX && m_options.use_interfaces) {
        unit = objects.compile_node(objects.errors.get());
    } else {
        // A world internal space arrives as "ignore literals" and not as "world space". The
        // compiler learns the space itself from the second set of options; the flag stays.
        const bool world = m_options.internal_space == world_index;
        wxString unused_message; // only a call that is not interactive writes it
        unit = compile_group(view, app, objects.errors.get(), objects.node.get(),
                             RESOLVE_UNSIZED_ARRAYS | (world ? IGNORE_LITERAL : 0), get_window(),
                             interactive, unused_message);
    }
    if (!unit || !objects.compiler)
        return true;

    const wxString filename = get_exportfile_name();
    TSDK::ITovira_compiler* compiler = objects.compiler.get();
    if (m_target == TARGET_HLSL)
        export_hlsl(filename, unit.get(), compiler, app);
    else if (m_target == TARGET_GLSL)
        export_glsl(filename, unit.get(), compiler, app);
    else if (m_target == TARGET_CGFX)
        export_cgfx(filename, unit.get(), compiler, app, objects.node.get(), view);
    return true;
}

void Exporter_generic::set_common_fx_options(TSDK::ICompiler_options* options)
{
    set_options(options, common_fx_options, Generic_source{m_options, nullptr});
}

bool Exporter_generic::export_hlsl(const wxString& filename, TSDK::ICompilation_unit* unit,
                                   TSDK::ITovira_compiler* compiler, TSDK::ITovira* app)
{
    const wxString path = add_extension(filename, wxT("fx"));
    const Host_ref<TSDK::ICompiler_options> options = adopt(compiler->create_options());
    set_options(options.get(), hlsl_options);
    set_common_fx_options(options.get());
    set_user_copyright_option(app, options.get());
    write_fx(path, unit, options.get());
    return true;
}

bool Exporter_generic::export_cgfx(const wxString& filename, TSDK::ICompilation_unit* unit,
                                   TSDK::ITovira_compiler* compiler, TSDK::ITovira* app,
                                   TSDK::IGraph_node* node, TSDK::IGraph_view* view)
{
    const wxString path = add_extension(filename, wxT("cgfx"));
    const Host_ref<TSDK::ICompiler_options> options = adopt(compiler->create_options());
    const char* kind = m_options.use_interfaces ? get_shader_kind(node) : nullptr;
    set_options(options.get(), cgfx_options, Generic_source{m_options, kind ? kind : "surface"});
    set_common_fx_options(options.get());
    set_scene_ambient_option(options.get(), view);
    set_user_copyright_option(app, options.get());
    write_fx(path, unit, options.get());
    return true;
}

// Asks about an existing file only after the generation has succeeded.
void Exporter_generic::write_fx(const wxString& path, TSDK::ICompilation_unit* unit,
                                TSDK::ICompiler_options* options)
{
    const Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "FX", options));
    if (shader && can_export(to_bytes(path).c_str()))
        write_code(path, shader.get());
}

bool Exporter_generic::export_glsl(const wxString& filename, TSDK::ICompilation_unit* unit,
                                   TSDK::ITovira_compiler* compiler, TSDK::ITovira* app)
{
    wxString fragment_file;
    wxString vertex_file;
    update_glsl_filename(filename, fragment_file, vertex_file);
    if (!can_export(to_bytes(vertex_file).c_str()) || !can_export(to_bytes(fragment_file).c_str()))
        return false;

    Host_ref<TSDK::ICompiler_options> options = adopt(compiler->create_options());
    set_options(options.get(), glsl_options, Generic_source{m_options, nullptr});
    set_user_copyright_option(app, options.get());

    Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "GL", options.get()));
    if (!shader)
        return false;
    wxString unused_error;
    save_bytes_to_file(vertex_file, {Code_text(shader.get(), vertex_code_index).c_str()},
                       unused_error);
    save_bytes_to_file(fragment_file, {Code_text(shader.get(), fragment_code_index).c_str()},
                       unused_error);
    release_in_order(options, shader);
    return true;
}

void Exporter_generic::update_glsl_filename(const wxString& filename, wxString& fragment_file,
                                            wxString& vertex_file)
{
    Output_stem stem = split_output_name(filename, {wxT("gl"), wxT("glsl")});
    const wxString extension = stem.extension.empty() ? wxString(wxT("gl")) : stem.extension;
    wxString bare;
    if (stem.base.EndsWith(wxT("_f"), &bare) || stem.base.EndsWith(wxT("_v"), &bare))
        stem.base = bare;
    fragment_file = stem.with(wxT("_f.") + extension);
    vertex_file = stem.with(wxT("_v.") + extension);
}

} // namespace TOVIRAEXPORT
} // namespace QZ

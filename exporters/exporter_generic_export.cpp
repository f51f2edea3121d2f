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
#include "exporters/generic_flags.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr Compiler_option fixed_fx_options[] = {
    {"generate_samplers", "true"},
    {"vs_binding_tangent", "TANGENT"},
    {"vs_binding_binormal", "BINORMAL"},
    {"add_default_states", "true"},
    {"generate_umapped_annotations", "false"},
};

// The compiler's word for a vertex space index; an index out of range counts as object space.
const char* vertex_space_name(int index)
{
    constexpr const char* names[] = {"object", "world", "camera", "screen"};
    return index >= 1 && index <= 3 ? names[index] : names[0];
}

constexpr int world_index = 0;  // of the internal space
constexpr int camera_index = 1; // of the internal space

constexpr int vertex_code_index = 0;
constexpr int fragment_code_index = 1;

} // namespace

bool Exporter_generic::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(false, [&] { return run_export(app, view); });
}

bool Exporter_generic::run_export(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    constexpr bool resolve_unsized_arrays = true;
    constexpr bool preserve_light_loop = false;
    constexpr bool world_space = false;
    constexpr bool interactive = true;
    // A world internal space arrives as "ignore literals" and not as "world space". The compiler
    // learns the space itself from the second set of options; the position of the flag stays.
    const bool ignore_literal = m_internal_space == world_index;

    if (!has_single_selection(app, view))
        return false;
    Export_objects objects;
    objects.take_node(view);
    if (get_exportfile_name().empty()) {
        show_error(wxT("Error! no export file name is specified."));
        objects.node.abandon(); // on purpose: the selection is not released on this path
        return false;
    }
    if (!objects.node)
        return false;
    objects.take_compiler(app);
    objects.take_errors();

    Host_ref<TSDK::ICompilation_unit> unit;
    wxString unused_message; // only a call that is not interactive writes it
    if (m_target == TARGET_CGFX && m_flags[FLAG_USE_INTERFACES])
        unit = objects.compile_node(objects.errors.get());
    else
        unit = adopt(compile_group(view, app, objects.errors.get(), objects.node.get(),
                                   resolve_unsized_arrays, preserve_light_loop, world_space,
                                   ignore_literal, get_window(), interactive, unused_message));
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

const char* Exporter_generic::flag_text(Flag flag) const
{
    return switch_text(m_flags[flag]);
}

// The annotation map's name goes out as it stands, also when it is no file's name.
void Exporter_generic::set_common_fx_options(TSDK::ICompiler_options* options)
{
    if (!m_annotation_map.empty())
        set_option(options, "annotation_map", m_annotation_map);
    set_option(options, "vertex_shader_profile", m_vertex_profile);
    set_option(options, "fragment_shader_profile", m_fragment_profile);
    set_option(options, "internal_space", m_internal_space == camera_index ? "camera" : "world");
    set_option(options, "vertex_stream_space", vertex_space_name(m_vertex_space));
    for (int flag = 0; flag < FLAG_USE_INTERFACES; ++flag)
        set_option(options, generic_flags[flag].option, flag_text(static_cast<Flag>(flag)));
    set_options(options, Option_table(fixed_fx_options));
}

bool Exporter_generic::export_hlsl(const wxString& filename, TSDK::ICompilation_unit* unit,
                                   TSDK::ITovira_compiler* compiler, TSDK::ITovira* app)
{
    const Host_ref<TSDK::ICompiler_options> options = adopt(compiler->create_options());
    set_option(options.get(), "shader_type", "surface");
    set_option(options.get(), "format", "HLSL");
    set_common_fx_options(options.get());
    set_user_copyright_option(app, options.get());
    write_fx(add_extension(filename, wxT("fx")), unit, options.get());
    return true;
}

bool Exporter_generic::export_cgfx(const wxString& filename, TSDK::ICompilation_unit* unit,
                                   TSDK::ITovira_compiler* compiler, TSDK::ITovira* app,
                                   TSDK::IGraph_node* node, TSDK::IGraph_view* view)
{
    const bool interfaces = m_flags[FLAG_USE_INTERFACES];
    const Host_ref<TSDK::ICompiler_options> options = adopt(compiler->create_options());
    const char* kind = interfaces ? get_shader_kind(node) : nullptr;
    set_option(options.get(), "shader_type", kind ? kind : "surface");
    set_option(options.get(), "format", "CgFX");
    set_option(options.get(), "interfaces", switch_text(interfaces));
    set_option(options.get(), "eval_volume", switch_text(interfaces && m_flags[FLAG_EVAL_VOLUME]));
    set_common_fx_options(options.get());
    set_scene_ambient_option(options.get(), view);
    set_user_copyright_option(app, options.get());
    write_fx(add_extension(filename, wxT("cgfx")), unit, options.get());
    return true;
}

// The question about an existing file comes after the generation: nothing is asked in vain.
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
    set_option(options.get(), "shader_type", "surface");
    set_option(options.get(), "alpha_transparency", flag_text(FLAG_ALPHA_TRANSPARENCY));
    set_option(options.get(), "two_sided", flag_text(FLAG_TWO_SIDED));
    set_option(options.get(), "use_oit", flag_text(FLAG_USE_OIT));
    set_option(options.get(), "glsl_version", m_glsl_version);
    set_user_copyright_option(app, options.get());

    Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "GL", options.get()));
    if (!shader)
        return false;
    wxString unused_error;
    save_buffer_to_file(vertex_file,
                        from_bytes(get_code_bytes(shader.get(), vertex_code_index).c_str()),
                        unused_error);
    save_buffer_to_file(fragment_file,
                        from_bytes(get_code_bytes(shader.get(), fragment_code_index).c_str()),
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

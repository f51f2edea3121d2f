#include "exporters/exporter_catia.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporters/application_export.h"
#include "exporters/catia_lights.h"

#include <algorithm>
#include <iterator>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

// CATIA's own spelling of its name on files differs from the exporter's; both stay.
constexpr Application_dialog dialog = {
    wxT("Catia CgFX (*.fx)|*.fx|"),
    wxT("fx"),
    wxT("Choose a Catia CgFX file"),
    wxT("Save a Catia CgFX file"),
};

// No format is set: the compiler writes CgFX for these profiles.
constexpr Compiler_option options_before_flip[] = {
    {"annotation_map", "catia.axml"},
    {"interfaces", "true"},
    {"two_sided", "true"},
    {"vertex_shader_profile", "vp40"},
    {"fragment_shader_profile", "fp40"},
    {"shader_type", "surface"},
    {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "TANGENT"},
    {"vs_binding_binormal", "BINORMAL"},
    {"rotate_cube_map", "true"},
};

// The light names are those of exporters/catia_lights.txt.
constexpr Compiler_option options_after_flip[] = {
    {"alpha_transparency", "true"},
    {"add_default_states", "true"},
    {"generate_texture_parameters", "false"},
    {"catia_siggraph_hack", "true"},
    {"generate_sampler_states", "true"},
    {"light_interface_name", "Light"},
    {"light_list_name", "lights"},
    {"eval_volume", "false"},
    {"light_interfaces_only", "true"},
    {"normals_face_forward", "true"},
};

// CATIA makes tangents only for a file that asks for them by this line, and brings them in texture
// coordinates 1 and 2: the shader's own move up.
constexpr Compiler_option tangent_options[] = {
    {"fx_header", "int NeedTandB = 1;\n"}, {"vs_binding_tangent", "TEXCOORD1"},
    {"vs_binding_binormal", "TEXCOORD2"},  {"vs_binding_texcoord0", "TEXCOORD0"},
    {"vs_binding_texcoord1", "TEXCOORD3"}, {"vs_binding_texcoord2", "TEXCOORD4"},
    {"vs_binding_texcoord3", "TEXCOORD5"},
};

bool needs_tangents(TSDK::ICompilation_unit* unit)
{
    static const char* const states[] = {"texture_tangent", "texture_binormal", "tangent_space"};
    return std::any_of(std::begin(states), std::end(states),
                       [unit](const char* state) { return unit->uses_state(0, state); });
}

void set_catia_options(TSDK::ICompiler_options* options, bool flip_tex2d_v, bool tangents,
                       TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    set_options(options, Option_table(options_before_flip));
    set_option(options, "flip_tex2d_v", switch_text(flip_tex2d_v));
    set_options(options, Option_table(options_after_flip));
    set_scene_ambient_option(options, view);
    set_user_copyright_option(app, options);
    if (tangents)
        set_options(options, Option_table(tangent_options));
}

bool write(TSDK::ICompilation_unit* unit, TSDK::ICompiler_options* options, const wxString& path,
           wxString& error)
{
    const Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "FX", options));
    if (!shader) {
        error = wxT("can not generate a shader.");
        return false;
    }
    wxString code;
    return get_shader_source_code(shader.get(), 0, code, error) &&
           save_buffer_to_file(path, code + from_bytes(catia_lights), error);
}

bool run(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path, wxWindow* parent,
         bool interactive, wxString& error)
{
    constexpr bool resolve_unsized_arrays = false;
    constexpr bool preserve_light_loop = true;
    constexpr bool world_space = false;
    constexpr bool ignore_literal = false;

    Export_objects objects;
    objects.take_node(view);
    if (!objects.node || !is_surface(objects.node.get())) {
        error = wxT("no surface shader.");
        return false;
    }
    objects.take_compiler(app);
    objects.take_preferences(app);
    objects.take_errors();
    const Host_ref<TSDK::ICompiler_options> options = objects.create_options();

    wxString compile_error;
    const Host_ref<TSDK::ICompilation_unit> unit = adopt(compile_group(
        view, app, objects.errors.get(), objects.node.get(), resolve_unsized_arrays,
        preserve_light_loop, world_space, ignore_literal, parent, interactive, compile_error));
    if (!unit) {
        error = wxT("can not get a compilation unit.\n") + compile_error;
        return false;
    }
    bool flip_tex2d_v = false;
    objects.read_preference("cg_flip_tex2d_v", flip_tex2d_v);
    set_catia_options(options.get(), flip_tex2d_v, needs_tangents(unit.get()), app, view);
    return write(unit.get(), options.get(), path, error);
}

} // namespace

Exporter_catia::Exporter_catia() : Exporter_base("CATIA (CgFX)") {}

bool Exporter_catia::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(
        false, [&] { return export_and_report(*this, app, view, wxT("fx"), export_catia_shader); });
}

int Exporter_catia::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    return create_exportfile_panel(parent, width);
}

void Exporter_catia::initialize()
{
    register_exportfile_setting();
    register_chooser_properties(wxT("exportfile"), chooser_properties(dialog));
}

const char* Exporter_catia::get_language() const
{
    return "Cg";
}

bool export_catia_shader(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path,
                         wxWindow* parent, bool interactive, wxString& error)
{
    wxString reason;
    const bool done = run(app, view, path, parent, interactive, reason);
    error = done ? wxString() : wxT("Error! export_catia_shader: ") + reason;
    return done;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

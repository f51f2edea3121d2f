#include "exporters/exporter_catia.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
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

std::optional<std::string> flip_tex2d_v(const bool& flip)
{
    return switch_text(flip);
}

// Computed from the preference. No format is set: the compiler writes CgFX for these profiles. The
// light names are those of exporters/catia_lights.txt.
constexpr Option_row<bool> catia_options[] = {
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
    {"flip_tex2d_v", flip_tex2d_v},
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

// CATIA computes tangents only for a file that asks for them with this line, and passes them in
// texture coordinates 1 and 2: the shader's own move up.
constexpr Option_row<> tangent_options[] = {
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

// Generates the code and writes it, followed by the lights.
bool generate_and_write(TSDK::ICompilation_unit* unit, TSDK::ICompiler_options* options,
                        const wxString& path, wxString& reason)
{
    const Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "FX", options));
    if (!shader) {
        reason = wxT("can not generate a shader.");
        return false;
    }
    Code_text code;
    return get_shader_source_code(shader.get(), 0, code, reason) &&
           save_bytes_to_file(path, {code.c_str(), catia_lights}, reason);
}

} // namespace

Exporter_catia::Exporter_catia() : Application_exporter(facts_of<Exporter_catia>(), dialog) {}

bool Exporter_catia::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return export_and_report(app, view, export_catia_shader);
}

bool export_catia_shader(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path,
                         wxWindow* parent, bool interactive, wxString& error)
{
    const auto fail = [&error](const wxString& reason) {
        error = wxT("Error! export_catia_shader: ") + reason;
        return false;
    };
    error.Clear();
    Export_objects objects;
    objects.take_node(view);
    if (!objects.node || !is_surface_kind(get_shader_kind(objects.node.get())))
        return fail(wxT("no surface shader."));
    objects.take_compiler(app);
    objects.take_preferences(app);
    objects.take_errors();
    const Host_ref<TSDK::ICompiler_options> options = objects.create_options();

    wxString compile_error;
    const Host_ref<TSDK::ICompilation_unit> unit =
        compile_group(view, app, objects.errors.get(), objects.node.get(), PRESERVE_LIGHT_LOOP,
                      parent, interactive, compile_error);
    if (!unit)
        return fail(wxT("can not get a compilation unit.\n") + compile_error);

    bool flip = false;
    objects.read_preference("cg_flip_tex2d_v", flip);
    const bool tangents = needs_tangents(unit.get());
    set_options(options.get(), catia_options, flip);
    set_scene_ambient_option(options.get(), view);
    set_user_copyright_option(app, options.get());
    if (tangents)
        set_options(options.get(), tangent_options);

    wxString reason;
    return generate_and_write(unit.get(), options.get(), path, reason) || fail(reason);
}

} // namespace TOVIRAEXPORT
} // namespace QZ

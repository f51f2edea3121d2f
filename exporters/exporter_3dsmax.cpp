#include "exporters/exporter_3dsmax.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "exporter_base/bytes.h"

#include <string>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr Application_dialog dialog = {
    wxT("3ds Max HLSL (*.fx)|*.fx|"),
    wxT("fx"),
    wxT("Choose a 3ds Max HLSL file"),
    wxT("Save a 3ds Max HLSL file"),
};

// The parameter id, by which 3ds Max knows which parser reads the file.
constexpr char short_header[] = R"(#ifdef _MAX_
string ParamID = "0x003";
#endif
)";

// The same, the script global that selects technique T0, and the texture coordinates 0 to 3 tied to
// the map channels 1 to 4. Byte for byte as in users' existing files, including the space at the
// end of the second "#ifdef _MAX_ ".
constexpr char full_header[] = R"(#ifdef _MAX_
string ParamID = "0x003";
#endif

float Script : STANDARDSGLOBAL <
	string UIWidget = "none";
	string ScriptClass = "object";
	string ScriptOrder = "standard";
	string ScriptOutput = "color";
	string Script = "Technique=T0;";
> = 0.8; // version #


#ifdef _MAX_)"
                               " "
                               R"(
int texcoord1 : Texcoord
<
	int Texcoord = 0;
	int MapChannel = 1;
	string UIWidget = "None";
>;

int texcoord2 : Texcoord
<
	int Texcoord = 1;
	int MapChannel = 2;
	string UIWidget = "None";
>;

int texcoord3 : Texcoord
<
	int Texcoord = 2;
	int MapChannel = 3;
	string UIWidget = "None";
>;

int texcoord4 : Texcoord
<
	int Texcoord = 3;
	int MapChannel = 4;
	string UIWidget = "None";
>;

#endif
)";

// What the options of one export are computed from.
struct Max_shader {
    std::string kind; // of the node
    std::string name; // under which the node is exported
};

std::optional<std::string> shader_kind(const Max_shader& shader)
{
    return shader.kind;
}

std::optional<std::string> shader_name(const Max_shader& shader)
{
    return shader.name;
}

// Tangent and binormal are crossed on purpose, in both tables: what 3ds Max delivers under one name
// is what the compiler's shaders take for the other.
constexpr Option_row<Max_shader> screen_options[] = {
    {"fx_header", short_header},
    {"format", "HLSL"},
    {"vertex_shader_profile", "vs_3_0"},
    {"fragment_shader_profile", "ps_3_0"},
    {"generate_samplers", "true"},
    {"depth_test", "false"},
    {"depth_write", "false"},
    {"screen_space_vertices", "true"},
    {"shader_type", shader_kind},
    {"shader_name", shader_name},
    {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "BINORMAL"},
    {"vs_binding_binormal", "TANGENT"},
    {"flip_tex2d_v", "false"},
    {"interfaces", "false"},
    {"two_sided", "true"},
    {"add_default_states", "true"},
    {"texture_resource_annotation", "ResourceName"},
    {"alpha_transparency", "true"},
    {"generate_sampler_default_address_mode", "true"},
};

constexpr Option_row<Max_shader> surface_options[] = {
    {"fx_header", full_header},
    {"format", "HLSL"},
    {"vertex_shader_profile", "vs_3_0"},
    {"fragment_shader_profile", "ps_3_0"},
    {"generate_samplers", "true"},
    {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "BINORMAL"},
    {"vs_binding_binormal", "TANGENT"},
    {"flip_tex2d_v", "true"},
    {"flip_vs_texture_v", "true"},
    {"interfaces", "false"},
    {"two_sided", "true"},
    {"shader_type", "surface"},
    {"add_default_states", "true"},
    {"shader_name", shader_name},
    {"interfaces", "false"}, // set a second time, as it always has been
    {"internal_space", "world"},
    {"texture_resource_annotation", "ResourceName"},
    {"alpha_transparency", "true"},
    {"generate_sampler_default_address_mode", "true"},
};

// Generates and writes the code. False with a message that names the step that failed.
bool generate_and_write(TSDK::ICompilation_unit* unit, TSDK::ICompiler_options* options,
                        const wxString& path, wxString& reason)
{
    const Host_ref<TSDK::IGenerated_shader> shader = adopt(generate_code(unit, "FX", options));
    Code_text code;
    wxString messages;
    if (!shader)
        reason = wxT("unable to create the shader");
    else if (!get_shader_source_code(shader.get(), 0, code, messages))
        reason = wxT("can not generate code.\n") + messages;
    else if (!save_bytes_to_file(path, {code.c_str()}, messages))
        reason = wxT("can not write the code [") + path + wxT("]\n") + messages;
    return reason.empty();
}

} // namespace

Exporter_3dsmax::Exporter_3dsmax() : Application_exporter(facts_of<Exporter_3dsmax>(), dialog) {}

bool Exporter_3dsmax::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return export_and_report(app, view, export_3dsmax_shader);
}

bool export_3dsmax_shader(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path,
                          wxWindow* parent, bool interactive, wxString& error)
{
    const auto fail = [&error](const wxString& reason) {
        error = wxT("Error exporting shader: ") + reason;
        return false;
    };
    error.Clear();
    Export_objects objects;
    objects.take_node(view);
    if (!objects.node)
        return fail(wxT("unable to create the shader"));
    const char* kind = get_shader_kind(objects.node.get());
    Max_shader shader;
    shader.kind = kind ? kind : "surface";
    objects.take_compiler(app);
    objects.take_preferences(app); // held like the rest, though none is read
    objects.take_errors();
    const Host_ref<TSDK::ICompiler_options> options = objects.create_options();
    shader.name = to_bytes(get_shader_name(objects.node.get()));

    Host_ref<TSDK::ICompilation_unit> unit;
    if (shader.kind == "environment" || shader.kind == "lens") {
        // The node by itself, drawn over the whole screen. The scene's ambient colour is set for
        // these only, on purpose.
        unit = objects.compile_node(nullptr);
        if (!unit)
            return fail(wxT("unable to create the shader"));
        set_options(options.get(), screen_options, shader);
        set_scene_ambient_option(options.get(), view);
    } else if (shader.kind == "surface") {
        wxString compile_error;
        unit = compile_group(view, app, objects.errors.get(), objects.node.get(),
                             RESOLVE_UNSIZED_ARRAYS | WORLD_SPACE | IGNORE_LITERAL, parent,
                             interactive, compile_error);
        if (!unit)
            return fail(wxT("Fail to compile a surface shader\n") + compile_error);
        set_options(options.get(), surface_options, shader);
    } else if (shader.kind == "light" || shader.kind == "volume") {
        return fail(from_bytes(shader.kind.c_str()) +
                    wxT(" shaders are not supported for export to 3ds Max"));
    } else {
        return fail(wxT("unknown shader type \"") + from_bytes(shader.kind.c_str()) + wxT("\""));
    }
    set_user_copyright_option(app, options.get());

    wxString reason;
    return generate_and_write(unit.get(), options.get(), path, reason) || fail(reason);
}

} // namespace TOVIRAEXPORT
} // namespace QZ

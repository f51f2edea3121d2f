#include "exporters/exporter_3dsmax.h"

#include "export_common/code_output.h"
#include "export_common/compile_group.h"
#include "export_common/export_objects.h"
#include "export_common/graph_queries.h"
#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporters/application_export.h"

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
// the map channels 1 to 4. Byte for byte what users' files have had so far, the blank at the end of
// the second "#ifdef _MAX_ " included.
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

// The tables are cut where a value is set that is only known at the export.
//
// Tangent and binormal are crossed on purpose: what 3ds Max delivers under one name is what the
// compiler's shaders take for the other.
constexpr Compiler_option screen_options_before_names[] = {
    {"fx_header", short_header},
    {"format", "HLSL"},
    {"vertex_shader_profile", "vs_3_0"},
    {"fragment_shader_profile", "ps_3_0"},
    {"generate_samplers", "true"},
    {"depth_test", "false"},
    {"depth_write", "false"},
    {"screen_space_vertices", "true"},
};

constexpr Compiler_option screen_options_after_names[] = {
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

constexpr Compiler_option surface_options_before_name[] = {
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
};

constexpr Compiler_option surface_options_after_name[] = {
    {"interfaces", "false"}, // set a second time, as it always has been
    {"internal_space", "world"},    {"texture_resource_annotation", "ResourceName"},
    {"alpha_transparency", "true"}, {"generate_sampler_default_address_mode", "true"},
};

// One export: what its steps hand on to each other.
struct Export {
    TSDK::ITovira* app;
    TSDK::IGraph_view* view;
    wxWindow* parent;
    bool interactive;
    std::string kind; // of the node
    wxString name;    // under which the node is exported
    Export_objects objects;
    Host_ref<TSDK::ICompiler_options> options;
    Host_ref<TSDK::ICompilation_unit> unit;
};

// Environment and lens shaders: the node by itself, drawn over the whole screen. Leaves no unit
// when the compiler fails.
void compile_screen(Export& work)
{
    work.unit = work.objects.compile_node(nullptr);
    if (!work.unit)
        return;
    TSDK::ICompiler_options* options = work.options.get();
    set_options(options, Option_table(screen_options_before_names));
    set_option(options, "shader_type", work.kind);
    set_option(options, "shader_name", work.name);
    set_options(options, Option_table(screen_options_after_names));
    set_scene_ambient_option(options, work.view);
    set_user_copyright_option(work.app, options);
}

// Surface shaders: with the scene's lights, environment and volume. The scene's ambient colour is
// set for screen shaders only, on purpose.
bool compile_surface(Export& work, wxString& error)
{
    constexpr bool resolve_unsized_arrays = true;
    constexpr bool preserve_light_loop = false;
    constexpr bool world_space = true;
    constexpr bool ignore_literal = true;

    wxString compile_error;
    work.unit =
        adopt(compile_group(work.view, work.app, work.objects.errors.get(), work.objects.node.get(),
                            resolve_unsized_arrays, preserve_light_loop, world_space,
                            ignore_literal, work.parent, work.interactive, compile_error));
    if (!work.unit) {
        error = wxT("Fail to compile a surface shader\n") + compile_error;
        return false;
    }
    TSDK::ICompiler_options* options = work.options.get();
    set_options(options, Option_table(surface_options_before_name));
    set_option(options, "shader_name", work.name);
    set_options(options, Option_table(surface_options_after_name));
    set_user_copyright_option(work.app, options);
    return true;
}

// Compiles by kind. False with a message for a kind that 3ds Max does not take and for a surface
// that does not compile.
bool compile(Export& work, wxString& error)
{
    if (work.kind == "environment" || work.kind == "lens") {
        compile_screen(work);
        return true;
    }
    if (work.kind == "surface")
        return compile_surface(work, error);
    const wxString kind = from_bytes(work.kind.c_str());
    if (work.kind == "light" || work.kind == "volume")
        error = kind + wxT(" shaders are not supported for export to 3ds Max");
    else
        error = wxT("unknown shader type \"") + kind + wxT("\"");
    return false;
}

bool write(Export& work, const wxString& path, wxString& error)
{
    const Host_ref<TSDK::IGenerated_shader> shader =
        adopt(generate_code(work.unit.get(), "FX", work.options.get()));
    if (!shader) {
        error = wxT("unable to create the shader");
        return false;
    }
    wxString code;
    wxString messages;
    if (!get_shader_source_code(shader.get(), 0, code, messages)) {
        error = wxT("can not generate code.\n") + messages;
        return false;
    }
    if (!save_buffer_to_file(path, code, messages)) {
        error = wxT("can not write the code [") + path + wxT("]\n") + messages;
        return false;
    }
    return true;
}

bool run(Export& work, const wxString& path, wxString& error)
{
    work.objects.take_node(work.view);
    if (!work.objects.node) {
        error = wxT("unable to create the shader");
        return false;
    }
    const char* kind = get_shader_kind(work.objects.node.get());
    work.kind = kind ? kind : "surface";
    work.objects.take_compiler(work.app);
    work.objects.take_preferences(work.app); // held like the rest, though none is read
    work.objects.take_errors();
    work.options = work.objects.create_options();
    work.name = get_shader_name(work.objects.node.get());
    return compile(work, error) && write(work, path, error);
}

} // namespace

Exporter_3dsmax::Exporter_3dsmax() : Exporter_base("Autodesk 3ds Max legacy (HLSL)") {}

bool Exporter_3dsmax::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(false, [&] {
        return export_and_report(*this, app, view, wxT("fx"), export_3dsmax_shader);
    });
}

int Exporter_3dsmax::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    return create_exportfile_panel(parent, width);
}

void Exporter_3dsmax::initialize()
{
    register_exportfile_setting();
    register_chooser_properties(wxT("exportfile"), chooser_properties(dialog));
}

// This exporter writes HLSL only. The text is part of its settings' keys and stays.
const char* Exporter_3dsmax::get_language() const
{
    return "Cg and HLSL";
}

bool export_3dsmax_shader(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path,
                          wxWindow* parent, bool interactive, wxString& error)
{
    Export work = {app, view, parent, interactive, {}, {}, {}, {}, {}};
    wxString reason;
    const bool done = run(work, path, reason);
    error = done ? wxString() : wxT("Error exporting shader: ") + reason;
    return done;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

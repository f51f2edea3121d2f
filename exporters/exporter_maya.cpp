#include "exporters/exporter_maya.h"

#include "exporter_base/border.h"
#include "exporters/application_export.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

constexpr Application_dialog dialog = {
    wxT("Maya CgFX (*.cgfx)|*.cgfx|"),
    wxT("cgfx"),
    wxT("Choose a Maya CgFX file"),
    wxT("Save a Maya CgFX file"),
};

// Maya feeds tangents and binormals through TEXCOORD1 and 2, so the shader's texture coordinates 1
// to 3 move up to 3 to 5.
constexpr Compiler_option maya_options[] = {
    {"shader_type", "surface"},
    {"format", "CgFX"},
    {"vertex_shader_profile", "vp40"},
    {"fragment_shader_profile", "fp40"},
    {"two_sided", "false"},
    {"eval_volume", "false"},
    {"generate_samplers", "true"},
    {"generate_umapped_annotations", "false"},
    {"vs_binding_tangent", "TEXCOORD1"},
    {"vs_binding_binormal", "TEXCOORD2"},
    {"vs_binding_texcoord0", "TEXCOORD0"},
    {"vs_binding_texcoord1", "TEXCOORD3"},
    {"vs_binding_texcoord2", "TEXCOORD4"},
    {"vs_binding_texcoord3", "TEXCOORD5"},
    {"rotate_cube_map", "true"},
    {"flip_tex2d_v", "false"},
    {"alpha_transparency", "true"},
    {"add_default_states", "true"},
};

} // namespace

Exporter_maya::Exporter_maya() : Exporter_base("Autodesk Maya (CgFX)") {}

bool Exporter_maya::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return at_border(
        false, [&] { return export_cgfx_surface(*this, app, view, Option_table(maya_options)); });
}

int Exporter_maya::create_window(wxWindow* parent, int width, TSDK::IGraph_view*)
{
    return create_exportfile_panel(parent, width);
}

void Exporter_maya::initialize()
{
    register_exportfile_setting();
    register_chooser_properties(wxT("exportfile"), chooser_properties(dialog));
}

const char* Exporter_maya::get_language() const
{
    return "CgFX";
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#include "exporters/exporter_maya.h"

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
constexpr Option_row<> maya_options[] = {
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

Exporter_maya::Exporter_maya() : Application_exporter(facts_of<Exporter_maya>(), dialog) {}

bool Exporter_maya::export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view)
{
    return export_cgfx_surface(app, view, maya_options);
}

} // namespace TOVIRAEXPORT
} // namespace QZ

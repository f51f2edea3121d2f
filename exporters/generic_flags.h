// The switches of the generic exporter, one row each: what it feeds, how it starts, where it shows.
#ifndef EXPORTERS_GENERIC_FLAGS_H
#define EXPORTERS_GENERIC_FLAGS_H

#include "exporter_base/control_ids.h"
#include "exporters/exporter_generic.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

struct Generic_flag {
    const char* option; // of the compiler
    bool by_default;
    int id; // of the check box
    const wxChar* label;
    bool on_cgfx_panel;
    bool on_hlsl_panel;
    const wxChar* group_box; // on those two panels
};

// The index of a row is the Exporter_generic::Flag; the order is that in which the compiler is
// told.
// clang-format off
constexpr Generic_flag generic_flags[Exporter_generic::FLAG_COUNT] = {
    {"two_sided", false, ID_TWO_SIDED, wxT("Two sided"), true, false, wxT("Normals")},
    {"face_forward", false, ID_FACE_FORWARD, wxT("Face forward"), true, true, wxT("Normals")},
    {"rotate_cube_map", false, ID_ROTATE_CUBE_MAP, wxT("Rotate cube map"), true, true,
     wxT("Texturing")},
    {"flip_tex2d_v", false, ID_FLIP_TEX2D_V, wxT("Vertically flip tex2d lookup"), true, true,
     wxT("Texturing")},
    {"generate_sampler_states", true, ID_GENERATE_SAMPLER_STATES, wxT("Generate sampler states"),
     true, true, wxT("Texturing")},
    {"alpha_transparency", false, ID_ALPHA_TRANSPARENCY, wxT("Alpha transparency"), true, true,
     wxT("Transparency")},
    {"use_oit", false, ID_USE_OIT, wxT("Order independent transparency"), true, true,
     wxT("Transparency")},
    {"depth_test", true, ID_DEPTH_TEST, wxT("Depth test"), true, true, wxT("Depth buffer")},
    {"depth_write", true, ID_DEPTH_WRITE, wxT("Depth write"), true, true, wxT("Depth buffer")},
    {"hlsl_sas_conformance", false, ID_HLSL_SAS_CONFORMANCE, wxT("Enabled"), false, true,
     wxT("Microsoft SAS")},
    {"interfaces", false, ID_USE_INTERFACES, wxT("Use interfaces"), true, false,
     wxT("Interfaces")},
    {"eval_volume", false, ID_EVAL_VOLUME, wxT("Evaluate volume shader"), true, false,
     wxT("Interfaces")},
};
// clang-format on

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

// The window ids of the controls on the exporters' panels.
//
// The ids never change: whoever drives a panel finds the controls by them. One id stands for one
// control, whatever panel shows it; each is one more than the one before, so that none is doubled.
#ifndef EXPORTER_BASE_CONTROL_IDS_H
#define EXPORTER_BASE_CONTROL_IDS_H

namespace QZ
{
namespace TOVIRAEXPORT
{

enum Control_id {
    ID_EXPORTFILE_TEXT = 18201, // every export-file row: the file name
    ID_EXPORTFILE_BROWSE,       // every export-file row: "..."

    ID_FXCOMPOSER_HLSL, // FX Composer: "Export HLSL FX file"
    ID_FXCOMPOSER_CGFX, // FX Composer: "Export CgFX file"

    // The generic exporter; exporters/generic_controls.h tells what each is.
    ID_ANNOTATION_MAP_TEXT,
    ID_ANNOTATION_MAP_BROWSE,
    ID_VERTEX_PROFILE,
    ID_FRAGMENT_PROFILE,
    ID_VERTEX_SPACE,
    ID_INTERNAL_SPACE,
    ID_TWO_SIDED,
    ID_FACE_FORWARD,
    ID_ROTATE_CUBE_MAP,
    ID_FLIP_TEX2D_V,
    ID_GENERATE_SAMPLER_STATES,
    ID_ALPHA_TRANSPARENCY,
    ID_USE_OIT,
    ID_DEPTH_TEST,
    ID_DEPTH_WRITE,
    ID_HLSL_SAS_CONFORMANCE,
    ID_USE_INTERFACES,
    ID_EVAL_VOLUME,
    ID_GLSL_VERSION,

    ID_SWRC_QZ, // renderer source: "Export qz file"
    ID_SWRC_CPP // renderer source: "Export cpp file"
};

static_assert(ID_EXPORTFILE_BROWSE == 18202 && ID_FXCOMPOSER_CGFX == 18204 &&
                  ID_ANNOTATION_MAP_BROWSE == 18206 && ID_GLSL_VERSION == 18223 &&
                  ID_SWRC_CPP == 18225,
              "the ids of the controls never change");

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

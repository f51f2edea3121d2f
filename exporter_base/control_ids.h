// The window ids of the controls on the exporters' panels.
//
// The ids never change: whoever drives a panel finds the controls by them. One id stands for one
// control, whatever panel shows it.
#ifndef EXPORTER_BASE_CONTROL_IDS_H
#define EXPORTER_BASE_CONTROL_IDS_H

namespace QZ
{
namespace TOVIRAEXPORT
{

enum Control_id {
    ID_EXPORTFILE_TEXT = 18201,   // every export-file row: the file name
    ID_EXPORTFILE_BROWSE = 18202, // every export-file row: "..."

    ID_FXCOMPOSER_HLSL = 18203, // FX Composer: "Export HLSL FX file"
    ID_FXCOMPOSER_CGFX = 18204, // FX Composer: "Export CgFX file"

    ID_ANNOTATION_MAP_TEXT = 18205, // generic effect: the annotation map's file name
    ID_ANNOTATION_MAP_BROWSE = 18206,
    ID_VERTEX_PROFILE = 18207,
    ID_FRAGMENT_PROFILE = 18208,
    ID_VERTEX_SPACE = 18209,
    ID_INTERNAL_SPACE = 18210,
    ID_TWO_SIDED = 18211, // generic effect and GLSL
    ID_FACE_FORWARD = 18212,
    ID_ROTATE_CUBE_MAP = 18213,
    ID_FLIP_TEX2D_V = 18214,
    ID_GENERATE_SAMPLER_STATES = 18215,
    ID_ALPHA_TRANSPARENCY = 18216,
    ID_USE_OIT = 18217,
    ID_DEPTH_TEST = 18218,
    ID_DEPTH_WRITE = 18219,
    ID_HLSL_SAS_CONFORMANCE = 18220,
    ID_USE_INTERFACES = 18221,
    ID_EVAL_VOLUME = 18222,
    ID_GLSL_VERSION = 18223,

    ID_SWRC_QZ = 18224, // renderer source: "Export qz file"
    ID_SWRC_CPP = 18225 // renderer source: "Export cpp file"
};

constexpr int first_control_id = 18201;
constexpr int last_control_id = 18225;

constexpr int all_control_ids[] = {
    ID_EXPORTFILE_TEXT,
    ID_EXPORTFILE_BROWSE,
    ID_FXCOMPOSER_HLSL,
    ID_FXCOMPOSER_CGFX,
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
    ID_SWRC_QZ,
    ID_SWRC_CPP,
};

// Ids in rising order are unique; the first and the last one bound the range.
constexpr bool control_ids_are_sound()
{
    int previous = first_control_id - 1;
    for (int id : all_control_ids) {
        if (id <= previous || id > last_control_id)
            return false;
        previous = id;
    }
    return previous == last_control_id;
}
static_assert(control_ids_are_sound(), "control ids must be unique, in order and in range");

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

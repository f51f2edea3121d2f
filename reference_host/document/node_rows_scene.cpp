#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

// Light directions point from the light into the scene, in world space. The angles of a spot light
// are measured from its axis, in radians.
constexpr Node_row rows[] = {
    {"directional_light", "",
     "vector3 direction = 0 0 -1, color3 color = 1, float intensity = 1 [0 10]", "lightshader out"},
    {"point_light", "",
     "vector3 position, color3 color = 1, float intensity = 1 [0 10], "
     "float decay_rate = 2 [0 4]",
     "lightshader out"},
    {"spot_light", "",
     "vector3 position, vector3 direction = 0 0 -1, color3 color = 1, "
     "float intensity = 1 [0 10], float decay_rate = 2 [0 4], "
     "float inner_angle = 0.4 [0 1.5], float outer_angle = 0.5 [0 1.5]",
     "lightshader out"},

    {"environment_map", "", "filename file, color3 color = 1, float intensity = 1 [0 4]",
     "color3 out = cube_image(file, state.direction) * color * intensity"},
    {"fog", "", "color3 color = 0.5, float density = 0.1 [0 1]", "volumeshader out"},

    {"surfacematerial", "",
     "surfaceshader surfaceshader, surfaceshader backsurfaceshader, "
     "displacementshader displacementshader",
     "material out"},
    {"volumematerial", "", "volumeshader volumeshader", "material out"},
    {"displacement", "float vector3", "T displacement, float scale = 1", "displacementshader out"},
};

} // namespace

Node_rows scene_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host

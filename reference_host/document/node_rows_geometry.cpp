#include "reference_host/document/node_rows.h"

#include <iterator>

namespace reference_host
{
namespace
{

constexpr Node_row rows[] = {
    {"position", "", "string space = \"object\"",
     "vector3 out = space == \"object\" ? object_position : (space == \"model\" ? "
     "object_position : world_position)"},
    {"normal", "", "string space = \"object\"",
     "vector3 out = space == \"world\" ? world_normal : object_normal"},
    {"tangent", "", "string space = \"object\", integer index",
     "vector3 out = space == \"world\" ? world_tangent : object_tangent"},
    {"bitangent", "", "string space = \"object\", integer index",
     "vector3 out = space == \"world\" ? world_bitangent : object_bitangent"},
    {"viewdirection", "", "string space = \"world\"",
     "vector3 out = space == \"world\" ? world_viewdirection : object_viewdirection"},
    {"texcoord", "", "integer index", "vector2 out = texture_set(index)"},
    {"texcoord", "", "integer index", "vector3 out = float3(texture_set(index), 0.0)"},
    {"normalmap", "",
     "vector3 in = 0.5 0.5 1, float|vector2 scale = 1, vector3 normal = normal, "
     "vector3 tangent = tangent, vector3 bitangent = bitangent, string space = \"tangent\"",
     "vector3 out = normal_map(in, scale.xx, normal, tangent, bitangent)"},
};

} // namespace

Node_rows geometry_rows()
{
    return {rows, std::size(rows)};
}

} // namespace reference_host

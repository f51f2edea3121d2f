#include "reference_host/lowering/scene_values.h"

#include "reference_host/shading/switches.h"

namespace reference_host
{
namespace
{

struct Scene_value {
    const char* name;
    State_field field;
};

using Field = State_field;

// Names that are the same in every internal space.
constexpr Scene_value scene_values[] = {
    {"texcoord", Field::texture_coordinate0},
    {"position", Field::object_position},
    {"normal", Field::normal},
    {"tangent", Field::texture_tangent},
    {"bitangent", Field::texture_binormal},
    {"viewdirection", Field::direction},
    {"object_position", Field::object_position},
    {"object_normal", Field::object_normal},
    {"object_tangent", Field::object_tangent},
    {"object_bitangent", Field::object_binormal},
    {"vertex_color", Field::vertex_color},
};

// Directions that the internal space turns.
constexpr Scene_value world_values[] = {
    {"world_normal", Field::normal},
    {"world_tangent", Field::texture_tangent},
    {"world_bitangent", Field::texture_binormal},
    {"world_viewdirection", Field::direction},
};

constexpr Scene_value vertex_properties[] = {
    {"st", Field::texture_coordinate0},    {"uv", Field::texture_coordinate0},
    {"UV0", Field::texture_coordinate0},   {"st0", Field::texture_coordinate0},
    {"uv0", Field::texture_coordinate0},   {"map1", Field::texture_coordinate0},
    {"UVMap", Field::texture_coordinate0}, {"st1", Field::texture_coordinate1},
    {"uv1", Field::texture_coordinate1},   {"UV1", Field::texture_coordinate1},
    {"st2", Field::texture_coordinate2},   {"UV2", Field::texture_coordinate2},
    {"displayColor", Field::vertex_color}, {"color", Field::vertex_color},
    {"Cd", Field::vertex_color},           {"COLOR_0", Field::vertex_color},
    {"normals", Field::object_normal},     {"Nobject", Field::object_normal},
    {"Pobject", Field::object_position},
};

// World space is the internal space or not; which one is decided later.
Expr in_world_or(const Expr& in_world, const Expr& in_camera)
{
    return choose(switch_variable(Switch::world_space), in_world, in_camera);
}

} // namespace

Expr find_scene_value(const std::string& name)
{
    for (const Scene_value& value : scene_values)
        if (name == value.name)
            return state_field(value.field);
    for (const Scene_value& value : world_values)
        if (name == value.name)
            return world_direction(state_field(value.field));
    if (name == "world_position")
        return in_world_or(state_field(Field::position), state_field(Field::world_position));
    return name == "state" ? state_variable() : nullptr;
}

Expr find_vertex_property(const std::string& name)
{
    for (const Scene_value& property : vertex_properties)
        if (name == property.name)
            return state_field(property.field);
    return nullptr;
}

Expr world_direction(const Expr& direction)
{
    return in_world_or(direction, call(Builtin::camera_to_world, {direction}));
}

Expr internal_direction(const Expr& direction)
{
    return in_world_or(direction, call(Builtin::world_to_camera, {direction}));
}

Expr internal_position(const Expr& position)
{
    return in_world_or(position, call(Builtin::world_to_camera_at, {position}));
}

} // namespace reference_host

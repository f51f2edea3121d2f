#include "reference_host/generator/transforms.h"

#include <algorithm>

namespace reference_host
{
namespace
{

struct Vertex_transform_row {
    Space stream;
    Space target;
    Vertex_transform transform;
};

constexpr Vertex_transform_row vertex_transforms[] = {
    {Space::object, Space::object, {"", "", false}},
    {Space::object, Space::world, {"world", "world_it", false}},
    {Space::object, Space::camera, {"world_view", "world_view_it", false}},
    {Space::world, Space::object, {"world_inverse", "world_inverse", false}},
    {Space::world, Space::world, {"", "", false}},
    {Space::world, Space::camera, {"view_matrix", "view_matrix", false}},
    {Space::camera, Space::object, {"world_view_inverse", "world_view_inverse", false}},
    {Space::camera, Space::world, {"view_inverse", "view_inverse", false}},
    {Space::camera, Space::camera, {"", "", false}},
    {Space::screen, Space::object, {"world_view_projection_inverse", "", true}},
    {Space::screen, Space::world, {"view_projection_inverse", "", true}},
    {Space::screen, Space::camera, {"projection_inverse", "", true}},
};

} // namespace

const std::vector<Transform>& transforms()
{
    static const std::vector<Transform> rows = {
        {Kind::matrix4, "world_view_projection", "WORLDVIEWPROJECTION",
         "Sas.Camera.ObjectToProjection"},
        {Kind::matrix4, "world_view", "WORLDVIEW", "Sas.Camera.ObjectToView"},
        {Kind::matrix4, "world_view_it", "WORLDVIEWINVERSETRANSPOSE", ""},
        {Kind::matrix4, "world", "WORLD", "Sas.Skeleton.MeshToJointToWorld[0]"},
        {Kind::matrix4, "world_it", "WORLDINVERSETRANSPOSE", ""},
        {Kind::matrix4, "world_inverse", "WORLDINVERSE", ""},
        {Kind::matrix4, "world_view_inverse", "WORLDVIEWINVERSE", ""},
        {Kind::matrix4, "world_view_projection_inverse", "WORLDVIEWPROJECTIONINVERSE", ""},
        {Kind::matrix4, "view_matrix", "VIEW", "Sas.Camera.WorldToView"},
        {Kind::matrix4, "view_inverse", "VIEWINVERSE", "Sas.Camera.ViewToWorld"},
        {Kind::matrix4, "view_projection", "VIEWPROJECTION", "Sas.Camera.WorldToProjection"},
        {Kind::matrix4, "view_projection_inverse", "VIEWPROJECTIONINVERSE", ""},
        {Kind::matrix4, "projection", "PROJECTION", "Sas.Camera.Projection"},
        {Kind::matrix4, "projection_inverse", "PROJECTIONINVERSE", ""},
        {Kind::float1, "time", "TIME", "Sas.Time.Now"},
    };
    return rows;
}

bool is_transform(const std::string& name)
{
    return std::any_of(transforms().begin(), transforms().end(),
                       [&](const Transform& transform) { return name == transform.name; });
}

void define_transforms(Program& program, Language language, bool shares_view_matrix)
{
    program.define("time", variable(Kind::float1, "time"));
    program.define("has_derivatives", boolean_literal(language != Language::cpp));
    // The state that a renderer fills is in world space and needs no matrices.
    if (language == Language::cpp)
        return;
    for (const Transform& transform : transforms()) {
        // The matrix for normals has no other use, so that GLSL programs pass its rotation alone.
        const bool rotation = is_glsl(language) && transform.name == std::string("world_view_it");
        program.define(transform.name,
                       variable(rotation ? Kind::matrix3 : transform.type, transform.name));
    }
    if (shares_view_matrix)
        program.define("view_matrix", variable(Kind::matrix4, shared_view_matrix));
    const Expr view_inverse = program.find_variable("view_inverse");
    program.define("camera_rotation", is_glsl(language) ? variable(Kind::matrix3, "camera_to_world")
                                                        : construct(Kind::matrix3, {view_inverse}));
    program.define(
        "eye",
        parse_expression("host_transform(view_inverse, float4(0.0, 0.0, 0.0, 1.0)).xyz", program));
}

std::string internal_position(const std::string& position, Space internal_space)
{
    return internal_space == Space::world
               ? position
               : "host_transform(view_matrix, float4(" + position + ", 1.0)).xyz";
}

std::string internal_direction(const std::string& direction, Space internal_space,
                               Language language)
{
    if (internal_space == Space::world)
        return direction;
    // The inverse of a rotation is its transpose: GLSL needs no second matrix.
    return is_glsl(language) ? "host_untransform(camera_rotation, " + direction + ")"
                             : "host_transform(float3x3(view_matrix), " + direction + ")";
}

Vertex_transform vertex_transform(Space stream, Space target)
{
    for (const Vertex_transform_row& row : vertex_transforms)
        if (row.stream == stream && row.target == target)
            return row.transform;
    return {"", "", false};
}

std::string projection_of(Space stream)
{
    switch (stream) {
    case Space::world:
        return "view_projection";
    case Space::camera:
        return "projection";
    case Space::screen:
        return "";
    default:
        return "world_view_projection";
    }
}

} // namespace reference_host

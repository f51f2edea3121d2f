#include "reference_host/render/mesh.h"

#include <cmath>
#include <gtest/gtest.h>

namespace reference_host
{

namespace
{

constexpr Shape shapes[] = {Shape::sphere, Shape::plane, Shape::cube, Shape::ball};

float length(const std::array<float, 4>& v)
{
    return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

float dot(const std::array<float, 4>& a, const std::array<float, 4>& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

TEST(Mesh, every_shape_has_unit_vectors_at_right_angles)
{
    for (const Shape shape : shapes)
        for (const Vertex& vertex : make_mesh(shape, Vertex_space::world).vertices) {
            ASSERT_NEAR(length(vertex.normal), 1, 1e-5);
            ASSERT_NEAR(length(vertex.tangent), 1, 1e-5);
            ASSERT_NEAR(length(vertex.binormal), 1, 1e-5);
            ASSERT_NEAR(dot(vertex.normal, vertex.tangent), 0, 1e-5);
            ASSERT_NEAR(dot(vertex.normal, vertex.binormal), 0, 1e-5);
            ASSERT_NEAR(dot(vertex.tangent, vertex.binormal), 0, 1e-5);
            ASSERT_NEAR(vertex.encoded_tangent[0] * 2 - 1, vertex.tangent[0], 1e-5);
        }
}

TEST(Mesh, the_sphere_has_its_normals_as_positions)
{
    for (const Vertex& vertex : make_mesh(Shape::sphere, Vertex_space::world).vertices)
        for (std::size_t i = 0; i < 3; ++i)
            ASSERT_NEAR(vertex.position[i], vertex.normal[i], 1e-6);
}

std::array<float, 4> difference(const std::array<float, 4>& a, const std::array<float, 4>& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2], 0};
}

TEST(Mesh, triangles_and_normals_of_every_shape_agree_about_the_outside)
{
    for (const Shape shape : shapes) {
        const Mesh mesh = make_mesh(shape, Vertex_space::world);
        for (std::size_t i = 0; i < mesh.triangles.size(); i += 3) {
            const Vertex& a = mesh.vertices[mesh.triangles[i]];
            const auto u = difference(mesh.vertices[mesh.triangles[i + 1]].position, a.position);
            const auto v = difference(mesh.vertices[mesh.triangles[i + 2]].position, a.position);
            const std::array<float, 4> normal = {
                u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0], 0};
            ASSERT_GT(dot(normal, a.normal), -1e-7);
        }
    }
}

TEST(Mesh, every_shape_leaves_a_margin_in_the_usual_view)
{
    const Matrix project = *scene_matrix(Camera(), "world_view_projection", "");
    for (const Shape shape : shapes)
        for (const Vertex& vertex : make_mesh(shape, Vertex_space::world).vertices) {
            const auto along = [&](int row) {
                float sum = 0;
                for (int i = 0; i < 4; ++i)
                    sum += project[static_cast<std::size_t>(4 * row + i)] *
                           vertex.position[static_cast<std::size_t>(i)];
                return sum;
            };
            ASSERT_LT(std::abs(along(0) / along(3)), 0.95F);
            ASSERT_LT(std::abs(along(1) / along(3)), 0.95F);
        }
}

TEST(Mesh, triangles_refer_to_vertices)
{
    for (const Vertex_space space :
         {Vertex_space::world, Vertex_space::camera, Vertex_space::screen}) {
        const Mesh mesh = make_mesh(Shape::ball, space);
        EXPECT_EQ(mesh.triangles.size() % 3, 0U);
        for (const unsigned index : mesh.triangles)
            ASSERT_LT(index, mesh.vertices.size());
    }
}

TEST(Mesh, in_camera_space_the_sphere_is_in_front_of_the_camera)
{
    for (const Vertex& vertex : make_mesh(Shape::sphere, Vertex_space::camera).vertices)
        EXPECT_NEAR(vertex.position[2] + 3, vertex.normal[2], 1e-5);
}

TEST(Mesh, in_camera_space_is_seen_from_where_the_camera_stands)
{
    Camera camera;
    camera.yaw = 90;
    const auto world = make_mesh(Shape::cube, Vertex_space::world).vertices;
    const auto seen = make_mesh(Shape::cube, Vertex_space::camera, V_axis::up, camera).vertices;
    for (std::size_t i = 0; i < world.size(); ++i) {
        EXPECT_NEAR(seen[i].position[2], world[i].position[0] - 3, 1e-5) << "+x is nearest";
        EXPECT_NEAR(seen[i].normal[2], world[i].normal[0], 1e-5);
        EXPECT_NEAR(seen[i].tangent[0], -world[i].tangent[2], 1e-5);
        EXPECT_NEAR(seen[i].encoded_tangent[0], 0.5 - world[i].tangent[2] / 2, 1e-5);
    }
}

TEST(Vertex_stream, is_told_by_the_input_name)
{
    EXPECT_EQ(stream_for("vertex_position"), &Vertex::position);
    EXPECT_EQ(stream_for("vertex_normal"), &Vertex::normal);
    EXPECT_EQ(stream_for("vertex_tangent"), &Vertex::tangent);
    EXPECT_EQ(stream_for("vertex_binormal"), &Vertex::binormal);
    EXPECT_EQ(stream_for("vertex_texcoord3"), &Vertex::texcoord);
    EXPECT_EQ(stream_for("vertex_color0"), &Vertex::color);
    EXPECT_EQ(stream_for("vertex_tangent_encoded"), &Vertex::encoded_tangent);
    EXPECT_EQ(stream_for("vertex_binormal_encoded"), &Vertex::encoded_binormal);
    EXPECT_EQ(stream_for(""), &Vertex::position);
}

} // namespace

} // namespace reference_host

#include "reference_host/render/scene.h"

#include <cmath>
#include <gtest/gtest.h>

namespace reference_host
{

namespace
{

Matrix product(const Matrix& a, const Matrix& b)
{
    Matrix result = {};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            for (int k = 0; k < 4; ++k)
                result[4 * row + column] += a[4 * row + k] * b[4 * k + column];
    return result;
}

void expect_identity(const Matrix& matrix, const std::string& what)
{
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(matrix[i], i % 5 == 0 ? 1 : 0, 1e-5) << what << ", number " << i;
}

// Of a camera that stands anywhere.
Matrix named(const std::string& semantic)
{
    Camera camera;
    camera.yaw = 40;
    camera.pitch = -25;
    camera.distance = 2.5;
    const auto matrix = scene_matrix(camera, "", semantic);
    EXPECT_TRUE(matrix) << semantic;
    return matrix.value_or(Matrix{});
}

TEST(Scene_matrix, inverses_undo_their_matrices)
{
    const char* pairs[][2] = {{"VIEW", "VIEWINVERSE"},
                              {"WORLD", "WORLDINVERSE"},
                              {"WORLDVIEW", "WORLDVIEWINVERSE"},
                              {"PROJECTION", "PROJECTIONINVERSE"},
                              {"VIEWPROJECTION", "VIEWPROJECTIONINVERSE"}};
    for (const auto& pair : pairs)
        expect_identity(product(named(pair[0]), named(pair[1])), pair[0]);
    expect_identity(product(named("WORLDVIEW"), transposed(named("WORLDVIEWINVERSETRANSPOSE"))),
                    "WORLDVIEWINVERSETRANSPOSE");
}

TEST(Scene_matrix, products_are_those_of_their_parts)
{
    const Matrix expected = product(product(named("PROJECTION"), named("VIEW")), named("WORLD"));
    EXPECT_EQ(named("WORLDVIEWPROJECTION"), expected);
    EXPECT_EQ(named("VIEWPROJECTION"), expected);
}

TEST(Scene_matrix, is_known_by_name_or_semantic_in_any_case)
{
    for (const char* name :
         {"world_view_projection", "world_view", "world_view_it", "camera_to_world", "world",
          "world_it", "view_inverse", "view_matrix", "__world_to_camera", "view_projection",
          "projection", "view_projection_inverse"})
        EXPECT_TRUE(scene_matrix(Camera(), name, "")) << name;
    EXPECT_EQ(scene_matrix(Camera(), "any", "View"), scene_matrix(Camera(), "", "VIEW"));
    EXPECT_EQ(scene_matrix(Camera(), "world", "VIEW"), scene_matrix(Camera(), "", "VIEW"));
    EXPECT_FALSE(scene_matrix(Camera(), "", ""));
    EXPECT_FALSE(scene_matrix(Camera(), "uv_matrix", "TEXMATRIX"));
}

TEST(Scene_matrix, the_eye_is_at_the_camera)
{
    const Matrix eye = *scene_matrix(Camera(), "", "VIEWINVERSE");
    EXPECT_EQ(eye[3], 0);
    EXPECT_EQ(eye[7], 0);
    EXPECT_EQ(eye[11], 3);
    Camera camera;
    camera.yaw = 90;
    camera.distance = 2;
    const Matrix right = view_inverse(camera);
    EXPECT_NEAR(right[3], 2, 1e-5);
    EXPECT_NEAR(right[11], 0, 1e-5);
    camera.pitch = 90;
    EXPECT_NEAR(view_inverse(camera)[7], 2, 1e-5);
}

TEST(Vertex_space, follows_the_matrices_in_use)
{
    EXPECT_EQ(vertex_space({"other", "world_view_projection"}), Vertex_space::world);
    EXPECT_EQ(vertex_space({"VIEWPROJECTION"}), Vertex_space::world);
    EXPECT_EQ(vertex_space({"projection", "world_view"}), Vertex_space::camera);
    EXPECT_EQ(vertex_space({"view_projection_inverse"}), Vertex_space::screen);
    EXPECT_EQ(vertex_space({}), Vertex_space::screen);
}

} // namespace

} // namespace reference_host

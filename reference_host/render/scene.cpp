#include "reference_host/render/scene.h"

#include <cmath>
#include <strings.h>

namespace reference_host
{

namespace
{

constexpr double pi = 3.14159265358979323846;
constexpr float near_plane = 0.1F;
constexpr float far_plane = 10.0F;

constexpr Matrix identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr Matrix view = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, -camera_distance, 0, 0, 0, 1};
constexpr Matrix view_inverse = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, camera_distance, 0, 0, 0, 1};

Matrix product(const Matrix& a, const Matrix& b)
{
    Matrix result = {};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            for (int k = 0; k < 4; ++k)
                result[4 * row + column] += a[4 * row + k] * b[4 * k + column];
    return result;
}

// The projection of OpenGL, and its inverse.
constexpr float depth_scale = (far_plane + near_plane) / (near_plane - far_plane);
constexpr float depth_offset = 2 * far_plane * near_plane / (near_plane - far_plane);

Matrix projection(const Camera& camera)
{
    const auto f = static_cast<float>(1 / half_width(camera));
    return {f, 0, 0, 0, 0, f, 0, 0, 0, 0, depth_scale, depth_offset, 0, 0, -1, 0};
}

Matrix projection_inverse(const Camera& camera)
{
    const auto f = static_cast<float>(half_width(camera));
    return {
        f, 0, 0, 0, 0, f, 0, 0, 0, 0, 0, -1, 0, 0, 1 / depth_offset, depth_scale / depth_offset};
}

struct Named_matrix {
    const char* semantic;
    const char* name;
    Matrix matrix;
};

std::vector<Named_matrix> named_matrices(const Camera& camera)
{
    return {
        {"WORLDVIEWPROJECTION", "world_view_projection", product(projection(camera), view)},
        {"VIEWPROJECTION", "view_projection", product(projection(camera), view)},
        {"VIEWPROJECTIONINVERSE", "view_projection_inverse",
         product(view_inverse, projection_inverse(camera))},
        {"PROJECTION", "projection", projection(camera)},
        {"PROJECTIONINVERSE", "projection_inverse", projection_inverse(camera)},
        {"WORLDVIEW", "world_view", view},
        {"WORLDVIEWINVERSE", "world_view_inverse", view_inverse},
        {"WORLDVIEWINVERSETRANSPOSE", "world_view_it", transposed(view_inverse)},
        {"VIEW", "view_matrix", view},
        {"VIEW", "__world_to_camera", view},
        {"VIEW", "world_to_camera", view},
        {"VIEWINVERSE", "view_inverse", view_inverse},
        {"VIEWINVERSE", "camera_to_world", view_inverse},
        {"VIEWINVERSETRANSPOSE", "view_it", transposed(view_inverse)},
        {"WORLD", "world", identity},
        {"WORLDINVERSE", "world_inverse", identity},
        {"WORLDINVERSETRANSPOSE", "world_it", identity},
    };
}

bool equal_ignoring_case(const std::string& a, const char* b)
{
    return strcasecmp(a.c_str(), b) == 0;
}

} // namespace

double half_width(const Camera& camera)
{
    return std::tan(camera.field_of_view * pi / 360);
}

Matrix transposed(const Matrix& matrix)
{
    Matrix result = {};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result[4 * column + row] = matrix[4 * row + column];
    return result;
}

std::optional<Matrix> scene_matrix(const Camera& camera, const std::string& name,
                                   const std::string& semantic)
{
    const std::vector<Named_matrix> matrices = named_matrices(camera);
    for (const Named_matrix& row : matrices)
        if (equal_ignoring_case(semantic, row.semantic))
            return row.matrix;
    for (const Named_matrix& row : matrices)
        if (equal_ignoring_case(name, row.name))
            return row.matrix;
    return std::nullopt;
}

bool is_scene_matrix(const std::string& name)
{
    return scene_matrix(Camera(), name, "").has_value();
}

Vertex_space vertex_space(const std::vector<std::string>& matrices)
{
    Vertex_space space = Vertex_space::screen;
    for (const std::string& matrix : matrices) {
        for (const char* name :
             {"WORLDVIEWPROJECTION", "world_view_projection", "VIEWPROJECTION", "view_projection"})
            if (equal_ignoring_case(matrix, name))
                return Vertex_space::world;
        if (equal_ignoring_case(matrix, "projection"))
            space = Vertex_space::camera;
    }
    return space;
}

} // namespace reference_host

#include "reference_host/render/scene.h"

#include "reference_host/shading/host_values.h"

#include <cmath>
#include <strings.h>

namespace reference_host
{

namespace
{

constexpr double pi = 3.14159265358979323846;
constexpr double degree = pi / 180;
constexpr float near_plane = 0.1F;
constexpr float far_plane = 10.0F;

constexpr Matrix identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
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

struct Scene_matrix {
    Host_value value;
    Matrix matrix;
};

std::vector<Scene_matrix> scene_matrices(const Camera& camera)
{
    const Matrix view = view_matrix(camera);
    const Matrix back = view_inverse(camera);
    return {
        {Host_value::world_view_projection, product(projection(camera), view)},
        {Host_value::view_projection, product(projection(camera), view)},
        {Host_value::view_projection_inverse, product(back, projection_inverse(camera))},
        {Host_value::projection, projection(camera)},
        {Host_value::projection_inverse, projection_inverse(camera)},
        {Host_value::world_view, view},
        {Host_value::world_view_inverse, back},
        {Host_value::world_view_it, transposed(back)},
        {Host_value::view_matrix, view},
        {Host_value::view_inverse, back},
        {Host_value::world, identity},
        {Host_value::world_inverse, identity},
        {Host_value::world_it, identity},
    };
}

// What other shaders call the matrices of the camera, as a name or as a semantic.
struct Other_matrix {
    const char* word;
    Matrix matrix;
};

std::vector<Other_matrix> other_matrices(const Camera& camera)
{
    const Matrix view = view_matrix(camera);
    const Matrix back = view_inverse(camera);
    return {
        {"__world_to_camera", view},
        {"world_to_camera", view},
        {"camera_to_world", back},
        {"view_it", transposed(back)},
        {"VIEWINVERSETRANSPOSE", transposed(back)},
    };
}

bool equal_ignoring_case(const std::string& a, const char* b)
{
    return strcasecmp(a.c_str(), b) == 0;
}

const char* semantic_of(Host_value value)
{
    return row_of(value).semantic;
}

bool is_called(const std::string& word, Host_value value)
{
    return equal_ignoring_case(word, semantic_of(value)) ||
           equal_ignoring_case(word, name_of(value));
}

std::optional<Matrix> find_matrix(const Camera& camera, const std::string& word,
                                  const char* (*word_of)(Host_value))
{
    for (const Scene_matrix& row : scene_matrices(camera))
        if (equal_ignoring_case(word, word_of(row.value)))
            return row.matrix;
    for (const Other_matrix& row : other_matrices(camera))
        if (equal_ignoring_case(word, row.word))
            return row.matrix;
    return std::nullopt;
}

} // namespace

// The camera is turned up or down first, then around.
Matrix view_matrix(const Camera& camera)
{
    const auto sin_yaw = static_cast<float>(std::sin(camera.yaw * degree));
    const auto cos_yaw = static_cast<float>(std::cos(camera.yaw * degree));
    const auto sin_pitch = static_cast<float>(std::sin(camera.pitch * degree));
    const auto cos_pitch = static_cast<float>(std::cos(camera.pitch * degree));
    return {cos_yaw,
            0,
            -sin_yaw,
            0,
            -sin_yaw * sin_pitch,
            cos_pitch,
            -cos_yaw * sin_pitch,
            0,
            sin_yaw * cos_pitch,
            sin_pitch,
            cos_yaw * cos_pitch,
            static_cast<float>(-camera.distance),
            0,
            0,
            0,
            1};
}

Matrix view_inverse(const Camera& camera)
{
    Matrix view = view_matrix(camera);
    view[11] = 0;
    Matrix inverse = transposed(view);
    for (std::size_t row = 0; row < 3; ++row) // the camera is on its own z axis
        inverse[4 * row + 3] = inverse[4 * row + 2] * static_cast<float>(camera.distance);
    return inverse;
}

std::array<double, 3> turned(const Matrix& matrix, const std::array<double, 3>& vector)
{
    std::array<double, 3> result = {};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += static_cast<double>(matrix[4 * row + column]) * vector[column];
    return result;
}

double half_width(const Camera& camera)
{
    return std::tan(camera.field_of_view * degree / 2);
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
    const std::optional<Matrix> meant = find_matrix(camera, semantic, semantic_of);
    return meant ? meant : find_matrix(camera, name, name_of);
}

bool is_scene_matrix(const std::string& name)
{
    return scene_matrix(Camera(), name, "").has_value();
}

Vertex_space vertex_space(const std::vector<std::string>& matrices)
{
    Vertex_space space = Vertex_space::screen;
    for (const std::string& matrix : matrices) {
        for (const Host_value value :
             {Host_value::world_view_projection, Host_value::view_projection})
            if (is_called(matrix, value))
                return Vertex_space::world;
        if (is_called(matrix, Host_value::projection))
            space = Vertex_space::camera;
    }
    return space;
}

} // namespace reference_host

#include "reference_host/render/scene.h"

#include <cmath>
#include <strings.h>

namespace reference_host
{

namespace
{

constexpr double pi = 3.14159265358979323846;
constexpr float camera_distance = 3.0F;
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

double half_width(const Camera& camera)
{
    return std::tan(camera.field_of_view * pi / 360);
}

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

std::array<float, 4> encoded(const std::array<float, 4>& vector)
{
    return {vector[0] / 2 + 0.5F, vector[1] / 2 + 0.5F, vector[2] / 2 + 0.5F, 1};
}

void complete(Vertex& vertex)
{
    vertex.color = encoded(vertex.normal);
    vertex.encoded_tangent = encoded(vertex.tangent);
    vertex.encoded_binormal = encoded(vertex.binormal);
}

// `u` runs once around, `v` from pole to pole, both 0 to 1. The texture repeats twice around, so
// that it stands once and undistorted in the middle of the picture.
Vertex sphere_vertex(double u, double v)
{
    const double longitude = u * 2 * pi;
    const double latitude = (v - 0.5) * pi;
    const auto sin_a = static_cast<float>(std::sin(longitude));
    const auto cos_a = static_cast<float>(std::cos(longitude));
    const auto sin_b = static_cast<float>(std::sin(latitude));
    const auto cos_b = static_cast<float>(std::cos(latitude));
    Vertex vertex = {};
    vertex.normal = {cos_b * sin_a, sin_b, cos_b * cos_a, 0};
    vertex.position = {vertex.normal[0], vertex.normal[1], vertex.normal[2], 1};
    vertex.tangent = {cos_a, 0, -sin_a, 0};
    vertex.binormal = {-sin_b * sin_a, cos_b, -sin_b * cos_a, 0};
    vertex.texcoord = {static_cast<float>(2 * u + 0.5), static_cast<float>(v), 0, 1};
    complete(vertex);
    return vertex;
}

void add_grid_triangles(Mesh& mesh, unsigned columns, unsigned rows)
{
    for (unsigned row = 0; row < rows; ++row)
        for (unsigned column = 0; column < columns; ++column) {
            const unsigned a = row * (columns + 1) + column;
            const unsigned b = a + columns + 1;
            mesh.triangles.insert(mesh.triangles.end(), {a, a + 1, b + 1, a, b + 1, b});
        }
}

Mesh make_sphere()
{
    constexpr int columns = 192;
    constexpr int rows = 96;
    Mesh mesh;
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column)
            mesh.vertices.push_back(
                sphere_vertex(double{1} * column / columns, double{1} * row / rows));
    add_grid_triangles(mesh, columns, rows);
    return mesh;
}

Mesh make_square()
{
    Mesh mesh;
    for (const float y : {-1.0F, 1.0F})
        for (const float x : {-1.0F, 1.0F}) {
            Vertex vertex = {};
            vertex.position = {x, y, 0, 1};
            vertex.normal = {0, 0, 1, 0};
            vertex.tangent = {1, 0, 0, 0};
            vertex.binormal = {0, 1, 0, 0};
            vertex.texcoord = {x / 2 + 0.5F, y / 2 + 0.5F, 0, 1};
            complete(vertex);
            mesh.vertices.push_back(vertex);
        }
    add_grid_triangles(mesh, 1, 1);
    return mesh;
}

bool equal_ignoring_case(const std::string& a, const char* b)
{
    return strcasecmp(a.c_str(), b) == 0;
}

struct Stream_word {
    const char* word;
    Vertex_stream stream;
    Vertex_stream encoded_stream;
};

// In the order of the search: "binormal" holds "normal".
constexpr Stream_word stream_words[] = {
    {"texcoord", &Vertex::texcoord, &Vertex::texcoord},
    {"binormal", &Vertex::binormal, &Vertex::encoded_binormal},
    {"bitangent", &Vertex::binormal, &Vertex::encoded_binormal},
    {"tangent", &Vertex::tangent, &Vertex::encoded_tangent},
    {"normal", &Vertex::normal, &Vertex::normal},
    {"color", &Vertex::color, &Vertex::color},
};

} // namespace

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

Mesh make_mesh(Vertex_space space, V_axis v_axis)
{
    Mesh mesh = space == Vertex_space::screen ? make_square() : make_sphere();
    for (Vertex& vertex : mesh.vertices) {
        if (space == Vertex_space::camera)
            vertex.position[2] -= camera_distance;
        if (v_axis == V_axis::down)
            vertex.texcoord[1] = 1 - vertex.texcoord[1];
    }
    return mesh;
}

Vertex_stream stream_for(const std::string& input_name)
{
    const bool is_encoded = input_name.find(encoded_suffix) != std::string::npos;
    for (const Stream_word& row : stream_words)
        if (input_name.find(row.word) != std::string::npos)
            return is_encoded ? row.encoded_stream : row.stream;
    return &Vertex::position;
}

} // namespace reference_host

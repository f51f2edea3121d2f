#include "reference_host/render/mesh.h"

#include <cmath>

namespace reference_host
{

namespace
{

constexpr double pi = 3.14159265358979323846;

using Vector = std::array<double, 3>;

Vector cross(const Vector& a, const Vector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

std::array<float, 4> stream_value(const Vector& vector, float w)
{
    return {static_cast<float>(vector[0]), static_cast<float>(vector[1]),
            static_cast<float>(vector[2]), w};
}

std::array<float, 4> encoded(const std::array<float, 4>& vector)
{
    return {vector[0] / 2 + 0.5F, vector[1] / 2 + 0.5F, vector[2] / 2 + 0.5F, 1};
}

// The normal and the tangent are unit vectors at right angles.
Vertex make_vertex(const Vector& position, const Vector& normal, const Vector& tangent, double u,
                   double v)
{
    Vertex vertex = {};
    vertex.position = stream_value(position, 1);
    vertex.normal = stream_value(normal, 0);
    vertex.tangent = stream_value(tangent, 0);
    vertex.binormal = stream_value(cross(normal, tangent), 0);
    vertex.texcoord = {static_cast<float>(u), static_cast<float>(v), 0, 1};
    vertex.color = encoded(vertex.normal);
    vertex.encoded_tangent = encoded(vertex.tangent);
    vertex.encoded_binormal = encoded(vertex.binormal);
    return vertex;
}

// A turn about the y axis, then one about the x axis towards the eye, in degrees. Then a move up.
struct Pose {
    double turn = 0;
    double tilt = 0;
    double lift = 0;
};

Vector turned(const Vector& v, const Pose& pose)
{
    const double a = pose.turn * pi / 180;
    const double b = pose.tilt * pi / 180;
    const double z = v[2] * std::cos(a) - v[0] * std::sin(a);
    return {v[0] * std::cos(a) + v[2] * std::sin(a), v[1] * std::cos(b) - z * std::sin(b),
            v[1] * std::sin(b) + z * std::cos(b)};
}

Vector placed(const Vector& v, const Pose& pose)
{
    Vector result = turned(v, pose);
    result[1] += pose.lift;
    return result;
}

// Adds a grid of (columns + 1) x (rows + 1) vertices; `vertex_at` takes u and v, both 0 to 1, and
// the normals are to the front where u runs to the right and v upwards.
template<typename Vertex_at>
void add_grid(Mesh& mesh, unsigned columns, unsigned rows, Vertex_at vertex_at)
{
    const auto first = static_cast<unsigned>(mesh.vertices.size());
    for (unsigned row = 0; row <= rows; ++row)
        for (unsigned column = 0; column <= columns; ++column)
            mesh.vertices.push_back(
                vertex_at(double{1} * column / columns, double{1} * row / rows));
    for (unsigned row = 0; row < rows; ++row)
        for (unsigned column = 0; column < columns; ++column) {
            const unsigned a = first + row * (columns + 1) + column;
            const unsigned b = a + columns + 1;
            mesh.triangles.insert(mesh.triangles.end(), {a, a + 1, b + 1, a, b + 1, b});
        }
}

// A point of a profile that is turned about the y axis: distance from the axis, height, and the
// direction in which the profile goes on.
struct Profile_point {
    double radius;
    double height;
    double radius_step;
    double height_step;
};

// The profile goes from below to above on the outside. The texture repeats twice around, so that it
// stands once and undistorted in the middle of the picture.
template<typename Profile>
void add_revolution(Mesh& mesh, unsigned rows, const Pose& pose, Profile profile)
{
    constexpr unsigned columns = 192;
    add_grid(mesh, columns, rows, [&](double u, double v) {
        const Profile_point point = profile(v);
        const double sin_a = std::sin(u * 2 * pi);
        const double cos_a = std::cos(u * 2 * pi);
        const double length = std::hypot(point.radius_step, point.height_step);
        const double outwards = point.height_step / length;
        const Vector position = {point.radius * sin_a, point.height, point.radius * cos_a};
        const Vector normal = {outwards * sin_a, -point.radius_step / length, outwards * cos_a};
        return make_vertex(placed(position, pose), turned(normal, pose),
                           turned({cos_a, 0, -sin_a}, pose), 2 * u + 0.5, v);
    });
}

Mesh make_sphere()
{
    Mesh mesh;
    add_revolution(mesh, 96, Pose(), [](double v) {
        const double b = (v - 0.5) * pi;
        return Profile_point{std::cos(b), std::sin(b), -std::sin(b), std::cos(b)};
    });
    return mesh;
}

// Faces the camera; the texture stands on it once.
Mesh make_plane()
{
    constexpr double half = 0.95;
    Mesh mesh;
    add_grid(mesh, 32, 32, [](double u, double v) {
        return make_vertex({(2 * u - 1) * half, (2 * v - 1) * half, 0}, {0, 0, 1}, {1, 0, 0}, u, v);
    });
    return mesh;
}

// Shows three faces, each with the whole texture.
Mesh make_cube()
{
    constexpr double half = 0.58;
    constexpr Pose pose = {-38, 24, 0};
    struct Face {
        Vector normal;
        Vector right;
    };
    constexpr Face faces[] = {{{0, 0, 1}, {1, 0, 0}},   {{1, 0, 0}, {0, 0, -1}},
                              {{0, 0, -1}, {-1, 0, 0}}, {{-1, 0, 0}, {0, 0, 1}},
                              {{0, 1, 0}, {1, 0, 0}},   {{0, -1, 0}, {1, 0, 0}}};
    Mesh mesh;
    for (const Face& face : faces) {
        const Vector up = cross(face.normal, face.right);
        add_grid(mesh, 24, 24, [&](double u, double v) {
            Vector position = {};
            for (std::size_t i = 0; i < 3; ++i)
                position[i] =
                    half * (face.normal[i] + (2 * u - 1) * face.right[i] + (2 * v - 1) * up[i]);
            return make_vertex(placed(position, pose), turned(face.normal, pose),
                               turned(face.right, pose), u, v);
        });
    }
    return mesh;
}

// A ball with a groove around it, on a ring: round and hollow, near and far, light and shadow side
// in one picture.
Mesh make_ball()
{
    constexpr double ball = 0.8;
    constexpr double depth = 0.09; // of the groove, as a share of the radius
    constexpr double width = 0.13; // of the groove, in radians
    Mesh mesh;
    add_revolution(mesh, 256, {0, 36, 0.22}, [](double v) {
        const double b = (v - 0.5) * pi;
        // The radius over the latitude, and its derivative.
        const double groove = depth * std::exp(-std::pow((b - 0.3) / width, 4));
        const double r = ball * (1 - groove);
        const double step = ball * groove * 4 * std::pow((b - 0.3) / width, 3) / width;
        return Profile_point{r * std::cos(b), r * std::sin(b), step * std::cos(b) - r * std::sin(b),
                             step * std::sin(b) + r * std::cos(b)};
    });
    add_revolution(mesh, 64, {0, 14, -0.53}, [](double v) {
        constexpr double ring = 0.55;
        constexpr double thick = 0.13;
        const double b = (2 * v - 0.5) * pi;
        return Profile_point{ring + thick * std::cos(b), thick * std::sin(b), -std::sin(b),
                             std::cos(b)};
    });
    return mesh;
}

Mesh make_square()
{
    Mesh mesh;
    add_grid(mesh, 1, 1, [](double u, double v) {
        return make_vertex({2 * u - 1, 2 * v - 1, 0}, {0, 0, 1}, {1, 0, 0}, u, v);
    });
    return mesh;
}

Mesh make_shape(Shape shape)
{
    switch (shape) {
    case Shape::plane:
        return make_plane();
    case Shape::cube:
        return make_cube();
    case Shape::ball:
        return make_ball();
    default:
        return make_sphere();
    }
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

std::array<float, 4> product(const Matrix& matrix, const std::array<float, 4>& vector)
{
    std::array<float, 4> result = {};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            result[row] += matrix[4 * row + column] * vector[column];
    return result;
}

// The vertex in the space of the camera.
Vertex seen(const Vertex& vertex, const Matrix& view)
{
    Vertex result = vertex;
    for (const auto vector :
         {&Vertex::position, &Vertex::normal, &Vertex::tangent, &Vertex::binormal})
        result.*vector = product(view, vertex.*vector);
    result.encoded_tangent = encoded(result.tangent);
    result.encoded_binormal = encoded(result.binormal);
    return result;
}

} // namespace

Mesh make_mesh(Shape shape, Vertex_space space, V_axis v_axis, const Camera& camera)
{
    Mesh mesh = space == Vertex_space::screen ? make_square() : make_shape(shape);
    const Matrix view = view_matrix(camera);
    for (Vertex& vertex : mesh.vertices) {
        if (space == Vertex_space::camera)
            vertex = seen(vertex, view);
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

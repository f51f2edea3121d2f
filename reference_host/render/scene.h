// What is drawn: the sphere (or a square that covers the screen), its vertex streams, and the
// matrices of the camera. World space is object space.
#ifndef REFERENCE_HOST_RENDER_SCENE_H
#define REFERENCE_HOST_RENDER_SCENE_H

#include "reference_host/render/view.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

// Row by row, for column vectors: the translation is the fourth number of each of the first rows.
using Matrix = std::array<float, 16>;

Matrix transposed(const Matrix& matrix);

// The matrix that a shader's parameter stands for, known by its semantic or, where that says
// nothing, by its name. Both without regard to case. Nothing when neither is known.
std::optional<Matrix> scene_matrix(const Camera& camera, const std::string& name,
                                   const std::string& semantic);

// Whether there is such a matrix.
bool is_scene_matrix(const std::string& name);

// How the positions that a vertex shader receives become the picture.
enum class Vertex_space {
    world,  // the shader takes them from object or world space to the screen
    camera, // from camera space, with the projection alone
    screen  // they are on the screen already
};

// Tells it from the matrices that a vertex shader uses, by names or semantics; other words among
// them do not matter.
Vertex_space vertex_space(const std::vector<std::string>& matrices);

struct Vertex {
    std::array<float, 4> position; // w is 1
    std::array<float, 4> normal;   // unit vectors, w is 0; the binormal is normal x tangent
    std::array<float, 4> tangent;
    std::array<float, 4> binormal;
    std::array<float, 4> texcoord; // u, v, 0, 1
    std::array<float, 4> color;
    std::array<float, 4> encoded_tangent; // as a color stream holds vectors: 0 to 1 for -1 to 1
    std::array<float, 4> encoded_binormal;
};

struct Mesh {
    std::vector<Vertex> vertices;
    std::vector<unsigned> triangles; // three indices each, counterclockwise from outside
};

enum class V_axis { up, down };

// The sphere; a square for Vertex_space::screen. The tangents are the same for both axes.
Mesh make_mesh(Vertex_space space, V_axis v_axis = V_axis::up);

// The stream that a vertex shader's input wants, told by the words in the input's name: "texcoord",
// "binormal", "tangent", "normal", "color", otherwise the position.
using Vertex_stream = std::array<float, 4> Vertex::*;
Vertex_stream stream_for(const std::string& input_name);

// In a vertex shader's input name: the vector comes as a color stream holds it.
constexpr char encoded_suffix[] = "_encoded";

} // namespace reference_host

#endif

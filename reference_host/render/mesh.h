// What is drawn: shapes and their vertex streams.
#ifndef REFERENCE_HOST_RENDER_MESH_H
#define REFERENCE_HOST_RENDER_MESH_H

#include "reference_host/render/scene.h"
#include "reference_host/render/view.h"

#include <array>
#include <string>
#include <vector>

namespace reference_host
{

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

// The shape; a square for Vertex_space::screen. The tangents are the same for both axes. The camera
// matters for Vertex_space::camera alone.
Mesh make_mesh(Shape shape, Vertex_space space, V_axis v_axis = V_axis::up,
               const Camera& camera = {});

// The stream that a vertex shader's input wants, told by the words in the input's name: "texcoord",
// "binormal", "tangent", "normal", "color", otherwise the position.
using Vertex_stream = std::array<float, 4> Vertex::*;
Vertex_stream stream_for(const std::string& input_name);

// In a vertex shader's input name: the vector comes as a color stream holds it.
constexpr char encoded_suffix[] = "_encoded";

} // namespace reference_host

#endif

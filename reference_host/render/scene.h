// Where the camera stands: its matrices. World space is object space.
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

// From world space to that of the camera, and back.
Matrix view_matrix(const Camera& camera);
Matrix view_inverse(const Camera& camera);

// A vector of three numbers, turned and scaled but not moved by the matrix.
std::array<double, 3> turned(const Matrix& matrix, const std::array<double, 3>& vector);

// How far from the origin the camera may stand: not inside the object, and not so far that it
// leaves what is drawn.
constexpr double min_distance = 1.2;
constexpr double max_distance = 8;

// Half of what the camera sees across, at distance 1.
double half_width(const Camera& camera);

// The matrix that a shader's parameter stands for, known by its semantic or, where that says
// nothing, by its name. Both without regard to case. Nothing when neither is known.
std::optional<Matrix> scene_matrix(const Camera& camera, const std::string& name,
                                   const std::string& semantic);

// A shader's parameter that stands for such a matrix.
struct Matrix_parameter {
    std::string name;
    std::string semantic;
    bool transposed = false; // filled for row vectors
    int side = 4;            // 4, or 3 for the upper left part
};

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

} // namespace reference_host

#endif

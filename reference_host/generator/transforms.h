// The matrices and the time that the host fills, and transforms between spaces in terms of them.
#ifndef REFERENCE_HOST_GENERATOR_TRANSFORMS_H
#define REFERENCE_HOST_GENERATOR_TRANSFORMS_H

#include "reference_host/generator/dialect.h"
#include "reference_host/generator/options.h"
#include "reference_host/generator/program.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Transform {
    Kind type;
    const char* name;        // in the text
    const char* semantic;    // in effects
    const char* sas_address; // the Standard Annotations and Semantics of DirectX
};

const std::vector<Transform>& transforms();
bool is_transform(const std::string& name);

// The view matrix under the name that texts for lists of lights share.
constexpr const char* shared_view_matrix = "__world_to_camera";

// Makes the matrices known to a program by their names, with "camera_rotation" (directions from
// camera to world space) and "eye" (the eye in world space).
void define_transforms(Program& program, Language language, bool shares_view_matrix);

// A position or direction of world space, given in the notation, in the internal space.
std::string internal_position(const std::string& position, Space internal_space);
std::string internal_direction(const std::string& direction, Space internal_space,
                               Language language);

// How positions and normals of vertices come from the space of the stream into another one. Empty:
// they are in it. Normals are turned by the upper left of the matrix.
struct Vertex_transform {
    const char* position;
    const char* normal;
    bool divides; // by w, as the stream is projected
};
Vertex_transform vertex_transform(Space stream, Space target);

// The matrix that projects positions of the stream; empty: they are projected.
std::string projection_of(Space stream);

} // namespace reference_host

#endif

// How the program for which a shader was exported holds textures, where it differs from OpenGL.
#ifndef REFERENCE_HOST_RENDER_TARGET_CONVENTIONS_H
#define REFERENCE_HOST_RENDER_TARGET_CONVENTIONS_H

#include <string>

namespace reference_host
{

struct Target_conventions {
    bool flipped_textures = false;  // the first row of an image is at v = 0, as in Direct3D
    bool flipped_mesh = false;      // the mesh's v runs downwards; its tangents are the same
    bool rotated_cube_maps = false; // shaders look up (x, z, -y) for the direction (x, y, z)
};

// What a shader says about them in a comment line of its own, "// Conventions: flipped textures,
// rotated cube maps"; OpenGL's conventions where it says nothing.
Target_conventions conventions_of(const std::string& shader_text);

} // namespace reference_host

#endif

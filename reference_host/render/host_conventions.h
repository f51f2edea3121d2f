// How the program for which a shader was exported holds textures, where it differs from OpenGL.
#ifndef REFERENCE_HOST_RENDER_HOST_CONVENTIONS_H
#define REFERENCE_HOST_RENDER_HOST_CONVENTIONS_H

namespace reference_host
{

struct Host_conventions {
    bool flipped_textures = false;  // the first row of an image is at v = 0, as in Direct3D
    bool flipped_mesh = false;      // the mesh's v runs downwards; its tangents are the same
    bool rotated_cube_maps = false; // shaders look up (x, z, -y) for the direction (x, y, z)
};

} // namespace reference_host

#endif

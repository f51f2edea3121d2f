// A GLSL program of the current drawing context.
#ifndef REFERENCE_HOST_RENDER_GL_PROGRAM_H
#define REFERENCE_HOST_RENDER_GL_PROGRAM_H

#include "reference_host/render/opengl.h"
#include "reference_host/render/scene.h"
#include "reference_host/render/shader_source.h"

#include <string>
#include <vector>

namespace reference_host
{

// Compiles and links. 0 and lines in `error` when that fails. The context owns the program.
GLuint link_program(const Shader_source& vertex, const Shader_source& fragment, std::string& error);

struct Uniform {
    std::string name; // of an array: without "[0]"
    GLint location;
    GLint count; // elements of an array, otherwise 1
    GLenum type;
};

std::vector<Uniform> active_uniforms(GLuint program);

// Sets a uniform of the program in use. Values of matrices and arrays: one row or element after the
// other; as many as there are.
void set_uniform(const Uniform& uniform, const std::vector<float>& values);

// The values of a scene matrix for a uniform of 4 x 4 or, its upper left part, 3 x 3.
std::vector<float> matrix_values(const Matrix& matrix, int side);

} // namespace reference_host

#endif

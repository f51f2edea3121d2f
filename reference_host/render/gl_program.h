// A GLSL program. All that is done with one is done in the drawing context in which it was made.
#ifndef REFERENCE_HOST_RENDER_GL_PROGRAM_H
#define REFERENCE_HOST_RENDER_GL_PROGRAM_H

#include "reference_host/render/opengl.h"
#include "reference_host/render/scene.h"
#include "reference_host/render/shader_source.h"

#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

struct Uniform {
    std::string name; // of an array: without "[0]"
    GLint location;
    GLint count; // elements of an array, otherwise 1
    GLenum type;
    std::vector<float> value; // that the text gives it; none: a sampler
};

// Sets a uniform of the program in use. Values of matrices and arrays: one row or element after the
// other; as many as there are.
void set_uniform(const Uniform& uniform, const std::vector<float>& values);

class Gl_program
{
public:
    // Compiles and links. Null and lines in `error` when that fails.
    static std::unique_ptr<Gl_program> link(const Shader_source& vertex,
                                            const Shader_source& fragment, std::string& error);
    ~Gl_program();
    Gl_program(const Gl_program&) = delete;
    Gl_program& operator=(const Gl_program&) = delete;

    GLuint id() const { return m_id; }
    const std::vector<Uniform>& uniforms() const { return m_uniforms; }

    // Uses the program, with all its uniforms as the texts set them.
    void start_afresh() const;

private:
    explicit Gl_program(GLuint id);

    GLuint m_id;
    std::vector<Uniform> m_uniforms; // those in use
};

// The values of a scene matrix for a uniform of 4 x 4 or, its upper left part, 3 x 3.
std::vector<float> matrix_values(const Matrix& matrix, int side);

} // namespace reference_host

#endif

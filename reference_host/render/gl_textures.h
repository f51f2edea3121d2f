// The textures of a drawing, in the current drawing context.
#ifndef REFERENCE_HOST_RENDER_GL_TEXTURES_H
#define REFERENCE_HOST_RENDER_GL_TEXTURES_H

#include "reference_host/render/drawing.h"
#include "reference_host/render/gl_program.h"

#include <map>
#include <memory>

namespace reference_host
{

class Gl_textures
{
public:
    // The drawing must outlive the textures.
    explicit Gl_textures(const Drawing& drawing) : m_drawing(drawing) {}

    // Loads the texture of a sampler of the program in use, one for all samplers that share an
    // image, and gives the sampler a unit of its own. False when the uniform is not a sampler.
    bool load(const Uniform& sampler);

private:
    void load_cube_map(const std::string& sampler) const;
    void load_image(const std::string& sampler);
    std::shared_ptr<const Image> image_for(const std::string& sampler) const;

    const Drawing& m_drawing;
    GLint m_unit = 0; // the next free one
    std::map<std::shared_ptr<const Image>, GLuint> m_loaded;
};

} // namespace reference_host

#endif

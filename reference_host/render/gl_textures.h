// Textures of a drawing. All that is done with them is done in the drawing context in which they
// were made.
#ifndef REFERENCE_HOST_RENDER_GL_TEXTURES_H
#define REFERENCE_HOST_RENDER_GL_TEXTURES_H

#include "reference_host/render/drawing.h"
#include "reference_host/render/gl_program.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace reference_host
{

class Gl_texture
{
public:
    // `target`: GL_TEXTURE_2D or GL_TEXTURE_CUBE_MAP.
    explicit Gl_texture(GLenum target);
    ~Gl_texture();
    Gl_texture(const Gl_texture&) = delete;
    Gl_texture& operator=(const Gl_texture&) = delete;

    // Puts the texture into the active unit.
    void bind() const;

private:
    GLenum m_target;
    GLuint m_id = 0;
};

using Shared_texture = std::shared_ptr<const Gl_texture>;

Shared_texture load_cube_map(const Environment& environment, Cube_up cube_up);

class Gl_textures
{
public:
    // The drawing must outlive the textures. `sky` makes the cube map of own_sky().
    Gl_textures(const Drawing& drawing, std::function<Shared_texture(Cube_up)> sky)
        : m_drawing(drawing), m_sky(std::move(sky))
    {
    }

    // Loads the texture of a sampler of the program in use, one for all samplers that share an
    // image, and gives the sampler a unit of its own. False when the uniform is not a sampler.
    bool load(const Uniform& sampler);

    // Puts all textures into their units.
    void bind() const;

private:
    Shared_texture cube_map_for(const std::string& sampler) const;
    Shared_texture texture_for(const std::string& sampler);
    std::shared_ptr<const Image> image_for(const std::string& sampler) const;

    const Drawing& m_drawing;
    const std::function<Shared_texture(Cube_up)> m_sky;
    std::vector<Shared_texture> m_units;
    std::map<std::shared_ptr<const Image>, Shared_texture> m_loaded;
};

} // namespace reference_host

#endif

// Mesa's software OpenGL with what the drawings made on it have in common. It keeps what is slow to
// make: the machine code of the programs drawn last, and the sky.
#ifndef REFERENCE_HOST_RENDER_DRAWING_DEVICE_H
#define REFERENCE_HOST_RENDER_DRAWING_DEVICE_H

#include "reference_host/render/gl_program.h"
#include "reference_host/render/gl_textures.h"
#include "reference_host/render/offscreen_context.h"

#include <list>
#include <map>
#include <memory>
#include <string>

namespace reference_host
{

// For one thread. Everything made on a device needs it to be current when it is used and when it
// ends.
class Drawing_device
{
public:
    ~Drawing_device();

    bool make_current() { return m_context.make_current(); }
    bool draw_into(Linear_picture& target) { return m_context.draw_into(target); }

    // Links the program of two texts, or takes it from those that are kept: it is the caller's
    // then, until he gives it to keep(). It is in use. Null and lines in `error` when that fails.
    std::unique_ptr<Gl_program> program(const Shader_source& vertex, const Shader_source& fragment,
                                        std::string& error);
    void keep(std::unique_ptr<Gl_program> program, const Shader_source& vertex,
              const Shader_source& fragment);

    // The cube map of own_sky().
    Shared_texture sky(Cube_up cube_up);

private:
    struct Kept {
        std::string texts;
        std::unique_ptr<Gl_program> program;
    };

    Offscreen_context m_context;
    std::list<Kept> m_programs; // the newest first
    std::map<Cube_up, Shared_texture> m_skies;
};

} // namespace reference_host

#endif

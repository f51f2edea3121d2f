#include "reference_host/render/offscreen_context.h"

#include "reference_host/render/opengl.h"

#include <cstdlib>

namespace reference_host
{
namespace
{

// A program from the cache comes without the linker's warnings. Set while the program starts: later
// there may be threads that read the environment.
const bool is_cache_off = setenv("MESA_SHADER_CACHE_DISABLE", "true", 1) == 0;

} // namespace

Offscreen_context::Offscreen_context() : m_ground(1, 1)
{
    constexpr int attributes[] = {OSMESA_FORMAT,
                                  OSMESA_RGBA,
                                  OSMESA_DEPTH_BITS,
                                  24,
                                  OSMESA_PROFILE,
                                  OSMESA_COMPAT_PROFILE,
                                  OSMESA_CONTEXT_MAJOR_VERSION,
                                  3,
                                  OSMESA_CONTEXT_MINOR_VERSION,
                                  0,
                                  0};
    if (is_cache_off)
        m_context.reset(OSMesaCreateContextAttribs(attributes, nullptr));
}

bool Offscreen_context::make_current()
{
    return draw_into(m_ground);
}

bool Offscreen_context::draw_into(Linear_picture& target)
{
    return m_context &&
           OSMesaMakeCurrent(static_cast<OSMesaContext>(m_context.get()), target.pixels.data(),
                             GL_FLOAT, target.width, target.height);
}

void Offscreen_context::Destroy::operator()(void* context) const
{
    OSMesaDestroyContext(static_cast<OSMesaContext>(context));
}

void prefer_early_pictures()
{
    setenv("GALLIVM_PERF", "nopt", 1);
}

} // namespace reference_host

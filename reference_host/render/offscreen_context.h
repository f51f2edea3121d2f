// Mesa's software OpenGL, which needs neither display nor GPU.
#ifndef REFERENCE_HOST_RENDER_OFFSCREEN_CONTEXT_H
#define REFERENCE_HOST_RENDER_OFFSCREEN_CONTEXT_H

#include "reference_host/render/linear_picture.h"

#include <memory>

namespace reference_host
{

// Deprecated features are in, so that shaders of all GLSL versions from 1.10 on compile.
class Offscreen_context
{
public:
    Offscreen_context();

    // The calls of OpenGL that follow are for this context. False when Mesa cannot do it.
    bool make_current();

    // The same; what is drawn is drawn as floats into `target`, which must live until the next call
    // of make_current().
    bool draw_into(Linear_picture& target);

private:
    struct Destroy {
        void operator()(void* context) const;
    };
    Linear_picture m_ground; // what is drawn into while nothing is drawn
    std::unique_ptr<void, Destroy> m_context;
};

// From now on shaders are ready to be drawn in half the time, and each drawing takes up to twice as
// long. To be called before the first context is made and before there are threads.
void prefer_early_pictures();

} // namespace reference_host

#endif

// OpenGL as Mesa's off-screen library has it.
#ifndef REFERENCE_HOST_RENDER_OPENGL_H
#define REFERENCE_HOST_RENDER_OPENGL_H

#define GL_GLEXT_PROTOTYPES
#include <GL/osmesa.h>
// After osmesa.h, which brings the basic declarations.
#include <GL/glext.h>

#endif

// Compiles and links a GLSL pair with Mesa's software OpenGL and draws it, as the stand-in host
// does. Needs no window, display or GPU.
//
//     glslcheck VERTEX FRAGMENT [PICTURE.png]
//
// Exit status 0: both compile, the program links, every varying that the fragment shader reads is
// written, and OpenGL draws without error. 1: anything else, with the reason on standard error.
// 2: wrong usage.
#include "reference_host/render/render.h"

#include <cstdio>

int main(int count, char** arguments)
{
    if (count < 3 || count > 4) {
        std::fputs("usage: glslcheck VERTEX FRAGMENT [PICTURE.png]\n", stderr);
        return 2;
    }
    reference_host::Render_request request;
    request.shader_files = {arguments[1], arguments[2]};
    request.picture_file = count == 4 ? arguments[3] : "";
    const reference_host::Render_result result = reference_host::render(request);
    std::fputs(result.error.c_str(), stderr);
    return result.drawn ? 0 : 1;
}

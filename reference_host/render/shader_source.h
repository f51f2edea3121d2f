// The text of a shader, wherever it comes from.
#ifndef REFERENCE_HOST_RENDER_SHADER_SOURCE_H
#define REFERENCE_HOST_RENDER_SHADER_SOURCE_H

#include <string>

namespace reference_host
{

struct Shader_source {
    std::string name; // of its file, for messages and for what lies beside it
    std::string text;
};

} // namespace reference_host

#endif

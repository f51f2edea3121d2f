// Writes a shader as a pair of GLSL texts.
#ifndef REFERENCE_HOST_TARGETS_GLSL_WRITER_H
#define REFERENCE_HOST_TARGETS_GLSL_WRITER_H

#include "reference_host/targets/text_plan.h"

#include <string>
#include <vector>

namespace reference_host
{

// The vertex shader and the fragment shader. The names of uniforms and attributes are the
// generator's own, so that the texts hold for every version from 1.10 to 4.50 that the options ask
// for; a comment "// texture NAME: FILE" in the fragment shader says what the program is to bind.
// Throws Notation_error.
std::vector<std::string> write_glsl(const Module& module, const Text_plan& plan);

} // namespace reference_host

#endif

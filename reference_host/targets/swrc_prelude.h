// The parts of generated C++ sources that are the same in all of them, from the files
// swrc_prelude.txt and swrc_lights.txt.
#ifndef REFERENCE_HOST_TARGETS_SWRC_PRELUDE_H
#define REFERENCE_HOST_TARGETS_SWRC_PRELUDE_H

#include "reference_host/shading/shade_file.h"

#include <string>

namespace reference_host
{

const std::vector<Shade_text>& swrc_texts();

// Vectors, matrices, samplers and the intrinsic functions of the shading notation. Needs <cmath>
// and <cstddef>, and stands in a namespace.
inline std::string swrc_prelude()
{
    return std::string(swrc_texts()[0].text);
}

// The list of lights that the renderer hands to a shader; needs State and Light_iterator.
inline std::string swrc_lights()
{
    return "\n" + std::string(swrc_texts()[1].text);
}

} // namespace reference_host

#endif

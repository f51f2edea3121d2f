// The part of generated C++ sources that is the same in all of them: vectors, matrices, samplers
// and the intrinsic functions of the shading notation.
#ifndef REFERENCE_HOST_GENERATOR_SWRC_PRELUDE_H
#define REFERENCE_HOST_GENERATOR_SWRC_PRELUDE_H

namespace reference_host
{

// Needs <cmath> and <cstddef>, and stands in a namespace.
const char* swrc_prelude();

// The list of lights that the renderer hands to a shader; needs State and Light_iterator.
const char* swrc_lights();

} // namespace reference_host

#endif

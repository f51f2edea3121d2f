// The profiles that compilers of effects are known to have.
#ifndef REFERENCE_HOST_OPTIONS_PROFILES_H
#define REFERENCE_HOST_OPTIONS_PROFILES_H

#include <string>

namespace reference_host
{

// Whether some compiler, of Cg or of HLSL, has that profile. Empty, the usual one, counts as known.
bool is_vertex_profile(const std::string& profile);
bool is_fragment_profile(const std::string& profile);

} // namespace reference_host

#endif

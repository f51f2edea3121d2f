// Whether a shader fits into the programs of a profile.
#ifndef REFERENCE_HOST_TARGETS_PROFILE_LIMITS_H
#define REFERENCE_HOST_TARGETS_PROFILE_LIMITS_H

#include "reference_host/options/generation.h"
#include "reference_host/options/profiles.h"
#include "reference_host/shading/module.h"

namespace reference_host
{

// Throws Refusal, in the name of what takes most, when the shader is sure to be too large or may
// be: what compilers make of a program is estimated. Warns when only some machines will take it.
void check_limits(const Module& module, const Fragment_profile& profile, Diagnostics& diagnostics);

} // namespace reference_host

#endif

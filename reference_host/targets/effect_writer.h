// Writes a shader as one effect file: CgFX, or HLSL for Direct3D 9.
#ifndef REFERENCE_HOST_TARGETS_EFFECT_WRITER_H
#define REFERENCE_HOST_TARGETS_EFFECT_WRITER_H

#include "reference_host/targets/text_plan.h"

#include <string>

namespace reference_host
{

// Throws Notation_error.
std::string write_effect(const Module& module, const Text_plan& plan, Diagnostics& diagnostics);

} // namespace reference_host

#endif

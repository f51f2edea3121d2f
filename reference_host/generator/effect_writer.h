// Writes a shader as one effect file: CgFX, or HLSL for Direct3D 9.
#ifndef REFERENCE_HOST_GENERATOR_EFFECT_WRITER_H
#define REFERENCE_HOST_GENERATOR_EFFECT_WRITER_H

#include "reference_host/generator/generator.h"
#include "reference_host/generator/options.h"
#include "reference_host/generator/shader_code.h"

#include <string>

namespace reference_host
{

// Throws Refusal or Notation_error.
std::string write_effect(const Shader_request& request, const Text_options& options,
                         const Generator_settings& settings, Diagnostics& diagnostics);

} // namespace reference_host

#endif

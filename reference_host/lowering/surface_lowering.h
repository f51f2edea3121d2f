// Surfaces: the slots of a document's surface model, what lights, environment and volume add, and
// what of the library's surface model all this needs.
#ifndef REFERENCE_HOST_LOWERING_SURFACE_LOWERING_H
#define REFERENCE_HOST_LOWERING_SURFACE_LOWERING_H

#include "reference_host/lowering/shader_lowering.h"

namespace reference_host
{

// The body of the shader function. Adds the environment's function to the module.
Statements surface_body(const Shader_request& request, Lowering_context& context);

// Which parts of the library's surface model the shader has.
void add_features(const Node& shader, Switch_values& known);

} // namespace reference_host

#endif

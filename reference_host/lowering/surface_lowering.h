// Surfaces: the lobes of their closures, and what lights, environment and volume do with them.
#ifndef REFERENCE_HOST_LOWERING_SURFACE_LOWERING_H
#define REFERENCE_HOST_LOWERING_SURFACE_LOWERING_H

#include "reference_host/lowering/shader_lowering.h"

#include <string>
#include <vector>

namespace reference_host
{

// The body of the shader function. Adds the environment's function to the module.
Statements surface_body(const Shader_request& request, Lowering_context& context);

// What a surface does with what is around it.
struct Surface_usage {
    bool is_lit = false;
    bool looks_around = false; // it reads an environment when there is one
    bool mirrors = false;      // as metals and coats do, which are dull without an environment
    bool refracts = false;     // likewise
};
Surface_usage surface_usage(const Node& shader);

// Inputs that the document sets to something else than their default and that the text of the
// shader's node does not name.
std::vector<std::string> inputs_without_counterpart(const Node& node);

} // namespace reference_host

#endif

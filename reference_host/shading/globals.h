// The variables that a module may read without declaring them: switches, what the host provides,
// the scene's ambient light and its lists of lights, environments and volumes.
#ifndef REFERENCE_HOST_SHADING_GLOBALS_H
#define REFERENCE_HOST_SHADING_GLOBALS_H

#include "reference_host/shading/function.h"

#include <string>
#include <vector>

namespace reference_host
{

// Those of the scene: "scene_ambient", "lights", "environments", "volumes".
const std::vector<Variable_declaration>& scene_variables();

// Null when there is none of that name.
Expr find_global(const std::string& name);

} // namespace reference_host

#endif

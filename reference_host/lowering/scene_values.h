// The names under which node implementations reach the shading state.
#ifndef REFERENCE_HOST_LOWERING_SCENE_VALUES_H
#define REFERENCE_HOST_LOWERING_SCENE_VALUES_H

#include "reference_host/shading/shading_state.h"

#include <string>

namespace reference_host
{

// The expression behind a name ("texcoord", "world_normal", ...); null when there is none.
Expr find_scene_value(const std::string& name);

// A property of the mesh by the names that applications use for it; null when there is none.
Expr find_vertex_property(const std::string& name);

// A direction of the internal space in world space, and values of world space in the internal one.
Expr world_direction(const Expr& direction);
Expr internal_direction(const Expr& direction);
Expr internal_position(const Expr& position);

} // namespace reference_host

#endif

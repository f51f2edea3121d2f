// What a shader knows about the point that it shades: the fields of the structure State, where they
// come from, and the names under which node implementations reach them.
#ifndef REFERENCE_HOST_GENERATOR_SHADING_STATE_H
#define REFERENCE_HOST_GENERATOR_SHADING_STATE_H

#include "reference_host/generator/options.h"
#include "reference_host/generator/program.h"

#include <string>
#include <vector>

namespace reference_host
{

// How a field gets its value in the fragment program.
enum class State_source {
    position,  // a position that the vertex program brings into a space and hands over
    direction, // a direction, likewise; made a unit vector again
    plain,     // an attribute that is handed over as it is
    derived,   // from other fields
    lights     // filled by the lights of a list
};

struct State_field {
    const char* name;
    Kind type;
    State_source source;
    Space space;           // of positions and directions; Space::camera stands for the internal one
    const char* attribute; // of the vertex, for all but derived fields
    const char* note;
};

const std::vector<State_field>& state_fields();

// The field as an expression: state.name.
Expr state_field(const std::string& name);

// The expression behind a name of node implementations ("texcoord", "world_normal", ...); null when
// there is none.
Expr find_scene_source(const std::string& name, Space internal_space, Program& program);

// A direction of the internal space in world space.
Expr world_direction(const Expr& direction, Space internal_space, Program& program);

// A property of the mesh by the names that applications use for it; null when there is none.
Expr find_vertex_property(const std::string& name);

// The structures that the library works with, with all their fields.
void add_shading_structures(Program& program);

} // namespace reference_host

#endif

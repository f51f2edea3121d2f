// What shading knows about the point that it shades and about the scene: the fields of the
// structure State and where they come from, the other structures, and what the host provides.
#ifndef REFERENCE_HOST_SHADING_SHADING_STATE_H
#define REFERENCE_HOST_SHADING_SHADING_STATE_H

#include "reference_host/shading/function.h"
#include "reference_host/shading/host_values.h"

#include <string>
#include <vector>

namespace reference_host
{

enum class Space { object, world, camera, screen };

enum class State_field {
    position,
    normal,
    direction,
    eye_distance,
    texture_tangent,
    texture_binormal,
    texture_coordinate0,
    texture_coordinate1,
    texture_coordinate2,
    texture_coordinate3,
    world_position,
    object_position,
    object_normal,
    object_tangent,
    object_binormal,
    vertex_color,
    light_to_surface,
    light_distance,
    light_dotnl,
    none
};

// How a field gets its value in the fragment program.
enum class State_source {
    position,  // a position that the vertex program brings into a space and hands over
    direction, // a direction, likewise; made a unit vector again
    plain,     // an attribute that is handed over as it is
    derived,   // from other fields
    lights     // filled by the lights of a list
};

// What comes in with a vertex.
enum class Attribute {
    position,
    normal,
    tangent,
    binormal,
    texcoord0,
    texcoord1,
    texcoord2,
    texcoord3,
    color,
    none
};

struct State_field_row {
    State_field field;
    const char* name;
    Base_type type;
    State_source source;
    Space space; // of positions and directions; Space::camera stands for the internal one
    Attribute attribute;
    const char* note;
};

const State_field_row& row_of(State_field field);

// The variable "state", and a field of it.
Expr state_variable();
Expr state_field(State_field field);

// The structures that the library works with: State, Light_iterator.
const std::vector<Structure>& shading_structures();
const Structure* find_structure(const std::string& name);

// The type of a field, or of what the method of an interface or list gives; none when there is no
// such member.
Code_type member_type(const std::string& structure, const std::string& member);

// A field of a known structure.
Expr field_of(const Expr& structure, const std::string& name);

Host_value find_host_value(const std::string& name); // none when there is none of that name
Expr host_variable(Host_value value);

} // namespace reference_host

#endif

// Truths that a module leaves open: boolean variables by these names, until the pass "specialise"
// gives them their values. Most follow from the target and the options of a text.
#ifndef REFERENCE_HOST_SHADING_SWITCHES_H
#define REFERENCE_HOST_SHADING_SWITCHES_H

#include "reference_host/shading/expression.h"

#include <map>
#include <string>

namespace reference_host
{

enum class Switch {
    has_distance_limit,
    light_list,       // the lights come in a list
    environment_list, // so do the environments
    volume_list,      // and the volumes
    world_space,      // the internal space is world space, not camera space
    has_ambient,
    has_alpha,
    has_derivatives,
    has_integers,     // natural numbers and their bits
    has_wide_lookups, // a text may say how wide the place is that it looks up
    flips_images,
    turns_cube_maps,
    none
};

const char* name_of(Switch which);
Switch find_switch(const std::string& name); // none when there is none of that name
Expr switch_variable(Switch which);

using Switch_values = std::map<Switch, bool>;

} // namespace reference_host

#endif

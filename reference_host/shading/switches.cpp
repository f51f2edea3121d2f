#include "reference_host/shading/switches.h"

#include <cstddef>

namespace reference_host
{
namespace
{

// In the order of the enumeration.
constexpr const char* names[] = {
    "has_distance_limit", "light_list",       "environment_list", "volume_list",
    "world_space",        "has_ambient",      "has_alpha",        "has_derivatives",
    "has_integers",       "has_wide_lookups", "flips_images",     "turns_cube_maps",
};
static_assert(sizeof names / sizeof *names == static_cast<std::size_t>(Switch::none));

} // namespace

const char* name_of(Switch which)
{
    return names[static_cast<std::size_t>(which)];
}

Switch find_switch(const std::string& name)
{
    for (std::size_t i = 0; i < static_cast<std::size_t>(Switch::none); ++i)
        if (name == names[i])
            return static_cast<Switch>(i);
    return Switch::none;
}

Expr switch_variable(Switch which)
{
    return variable(Base_type::boolean, name_of(which));
}

} // namespace reference_host

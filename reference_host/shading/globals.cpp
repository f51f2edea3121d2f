#include "reference_host/shading/globals.h"

#include "reference_host/shading/shading_state.h"
#include "reference_host/shading/switches.h"

namespace reference_host
{

const std::vector<Variable_declaration>& scene_variables()
{
    static const std::vector<Variable_declaration> variables = {
        {Kind::float4, "scene_ambient", ""},
        {Shading_type("Light[]"), "lights", ""},
        {Shading_type("Environment[]"), "environments", ""},
        {Shading_type("Volume[]"), "volumes", ""},
    };
    return variables;
}

Expr find_global(const std::string& name)
{
    const Switch which = find_switch(name);
    if (which != Switch::none)
        return switch_variable(which);
    const Host_value value = find_host_value(name);
    if (value != Host_value::none)
        return host_variable(value);
    for (const Variable_declaration& declared : scene_variables())
        if (declared.name == name)
            return variable(declared.type, declared.name);
    return nullptr;
}

} // namespace reference_host

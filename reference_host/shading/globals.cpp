#include "reference_host/shading/globals.h"

#include "reference_host/shading/shading_state.h"
#include "reference_host/shading/switches.h"

#include <unordered_map>

namespace reference_host
{

const std::vector<Variable_declaration>& scene_variables()
{
    static const std::vector<Variable_declaration> variables = {
        {Base_type::float4, "scene_ambient", ""},
        {Code_type("Light[]"), "lights", ""},
        {Code_type("Environment[]"), "environments", ""},
        {Code_type("Volume[]"), "volumes", ""},
    };
    return variables;
}

Expr find_global(const std::string& name)
{
    static const auto globals = [] {
        std::unordered_map<std::string, Expr> made;
        for (int i = 0; i < static_cast<int>(Switch::none); ++i)
            made[name_of(static_cast<Switch>(i))] = switch_variable(static_cast<Switch>(i));
        for (int i = 0; i < static_cast<int>(Host_value::none); ++i)
            made[name_of(static_cast<Host_value>(i))] = host_variable(static_cast<Host_value>(i));
        for (const Variable_declaration& declared : scene_variables())
            made[declared.name] = variable(declared.type, declared.name);
        return made;
    }();
    const auto found = globals.find(name);
    return found == globals.end() ? nullptr : found->second;
}

} // namespace reference_host

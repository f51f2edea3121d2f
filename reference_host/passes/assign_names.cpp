#include "reference_host/passes/passes.h"

#include <unordered_map>

namespace reference_host
{
namespace
{

using Renamed = std::unordered_map<std::string, std::string>;

// Those that change. Names are given out in the order in which the module made them, the entry's
// first.
Renamed new_names(const Module& module, const Pass_settings& settings)
{
    Renamed renamed;
    Names names(*settings.reserved);
    bool is_entry = true;
    for (const Given_name& given : module.names) {
        const bool wishes = is_entry && !settings.entry_name.empty();
        const std::string name = names.take(wishes ? settings.entry_name : given.wish);
        if (name != given.name)
            renamed[given.name] = name;
        if (is_entry)
            for (const std::string& taken : settings.further_names)
                names.reserve(taken);
        is_entry = false;
    }
    return renamed;
}

void rename(std::string& name, const Renamed& renamed)
{
    const auto found = renamed.find(name);
    if (found != renamed.end())
        name = found->second;
}

void rename(Statements& statements, const Renamed& renamed)
{
    for (Statement& statement : statements) {
        rename(statement.name, renamed);
        rename(statement.body, renamed);
        rename(statement.otherwise, renamed);
    }
}

} // namespace

// Functions of the library know nothing of the document, and keep their names.
void assign_names(Module& module, const Pass_settings& settings)
{
    const Renamed renamed = new_names(module, settings);
    if (renamed.empty())
        return;
    const auto named = [&](const Expr& expression) -> Expr {
        if (expression->op != Op::variable && expression->op != Op::call)
            return expression;
        const auto found = renamed.find(expression->name);
        if (found == renamed.end())
            return expression;
        auto made = std::make_shared<Expression>(*expression);
        made->name = found->second;
        return made;
    };
    for (Function& function : module.functions) {
        if (function.of_library)
            continue;
        rename(function.name, renamed);
        rename(function.body, renamed);
        replace(function.body, named);
    }
    rename(module.name, renamed);
    for (Module_parameter& parameter : module.parameters)
        rename(parameter.name, renamed);
    for (Module_texture& texture : module.textures)
        rename(texture.name, renamed);
}

} // namespace reference_host

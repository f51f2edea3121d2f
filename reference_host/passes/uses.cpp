#include "reference_host/passes/uses.h"

namespace reference_host
{

void Uses::add(const Statements& statements)
{
    visit(statements, [&](const Expression& expression) {
        if (expression.op == Op::variable)
            variables.insert(expression.name);
        else if (expression.op == Op::member)
            fields[expression.operands[0]->type.structure].insert(expression.name);
    });
}

const std::set<std::string>& Uses::fields_of(const std::string& structure) const
{
    static const std::set<std::string> none;
    const auto found = fields.find(structure);
    return found == fields.end() ? none : found->second;
}

Uses collect_uses(const Module& module)
{
    Uses uses;
    for (const Function& function : module.functions)
        uses.add(function.body);
    return uses;
}

} // namespace reference_host

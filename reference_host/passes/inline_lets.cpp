#include "reference_host/passes/passes.h"

#include <unordered_map>

namespace reference_host
{
namespace
{

void inline_lets(Statements& statements)
{
    std::unordered_map<std::string, Expr> simple;
    const auto known = [&](const Expr& expression) {
        if (expression->op != Op::variable)
            return expression;
        const auto found = simple.find(expression->name);
        return found == simple.end() ? expression : found->second;
    };
    Statements all = std::move(statements);
    statements.clear();
    for (Statement& statement : all) {
        Statements one;
        one.push_back(std::move(statement));
        if (!simple.empty())
            replace(one, known);
        for (Statement& left : one)
            if (left.kind == Statement::Kind::let && is_simple(left.value))
                simple[left.name] = left.value;
            else
                statements.push_back(std::move(left));
    }
}

} // namespace

void inline_lets(Module& module, const Pass_settings&)
{
    for (Function& function : module.functions)
        if (!function.of_library)
            inline_lets(function.body);
}

} // namespace reference_host

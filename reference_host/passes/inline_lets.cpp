#include "reference_host/passes/passes.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

namespace reference_host
{
namespace
{

bool is_simple_let(const Statement& statement)
{
    return statement.kind == Statement::Kind::let && is_simple(statement.value);
}

void inline_lets(Statements& statements)
{
    std::unordered_map<std::string, Expr> simple;
    const auto known = [&](const Expr& expression) {
        if (expression->op != Op::variable)
            return expression;
        const auto found = simple.find(expression->name);
        return found == simple.end() ? expression : found->second;
    };
    const auto first = std::find_if(statements.begin(), statements.end(), is_simple_let);
    Statements rest(std::make_move_iterator(first), std::make_move_iterator(statements.end()));
    statements.erase(first, statements.end());
    for (Statement& statement : rest) {
        Statements one;
        one.push_back(std::move(statement));
        replace(one, known);
        for (Statement& left : one)
            if (is_simple_let(left))
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

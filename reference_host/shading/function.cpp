#include "reference_host/shading/function.h"

#include <iterator>

namespace reference_host
{
namespace
{

Statement made(Statement::Kind kind, const Expr& value)
{
    Statement statement;
    statement.kind = kind;
    statement.value = value;
    return statement;
}

bool is_known_condition(const Statement& statement)
{
    return statement.kind == Statement::Kind::condition && is_literal(statement.value);
}

// Puts what conditions that are known lead to in their place.
void take_branches(Statements& statements)
{
    Statements kept;
    kept.reserve(statements.size());
    for (Statement& statement : statements)
        if (is_known_condition(statement))
            append(kept,
                   std::move(is_true(statement.value) ? statement.body : statement.otherwise));
        else
            kept.push_back(std::move(statement));
    statements = std::move(kept);
}

} // namespace

Statement let(const std::string& name, const Expr& value)
{
    Statement statement = made(Statement::Kind::let, value);
    statement.type = value->type;
    statement.name = name;
    return statement;
}

Statement declare(const Code_type& type, const std::string& name, const Expr& value)
{
    Statement statement = made(Statement::Kind::declare, value);
    statement.type = type;
    statement.name = name;
    return statement;
}

Statement assign(const Expr& target, const Expr& value)
{
    return assign(target, Operator::none, value);
}

Statement assign(const Expr& target, Operator op, const Expr& value)
{
    Statement statement = made(Statement::Kind::assign, value);
    statement.oper = op;
    statement.target = target;
    return statement;
}

Statement return_value(const Expr& value)
{
    return made(Statement::Kind::return_value, value);
}

Statement empty_line()
{
    return {};
}

Statement condition(const Expr& truth, Statements body)
{
    Statement statement = made(Statement::Kind::condition, truth);
    statement.body = std::move(body);
    return statement;
}

void append(Statements& statements, Statements more)
{
    std::move(more.begin(), more.end(), std::back_inserter(statements));
}

void visit(const Statements& statements, const std::function<void(const Expression&)>& visitor)
{
    for (const Statement& statement : statements) {
        visit(statement.target, visitor);
        visit(statement.value, visitor);
        visit(statement.body, visitor);
        visit(statement.otherwise, visitor);
    }
}

void replace(Statements& statements, const Rewrite& replacement)
{
    bool any_known = false;
    for (Statement& statement : statements) {
        if (statement.target)
            statement.target = replaced(statement.target, replacement);
        if (statement.value)
            statement.value = replaced(statement.value, replacement);
        any_known = any_known || is_known_condition(statement);
        if (!is_known_condition(statement) || is_true(statement.value))
            replace(statement.body, replacement);
        if (!is_known_condition(statement) || !is_true(statement.value))
            replace(statement.otherwise, replacement);
    }
    // Most often the statements stay where they are.
    if (any_known)
        take_branches(statements);
}

void inline_result(Statements& statements)
{
    if (statements.size() < 2)
        return;
    const Statement& named = statements[statements.size() - 2];
    Statement& last = statements.back();
    const bool names_result = named.kind == Statement::Kind::declare && named.value &&
                              last.kind == Statement::Kind::return_value &&
                              last.value->op == Op::variable && last.value->name == named.name &&
                              named.value->type == named.type;
    if (!names_result)
        return;
    last.value = named.value;
    statements.erase(statements.end() - 2);
}

} // namespace reference_host

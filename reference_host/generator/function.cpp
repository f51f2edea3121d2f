#include "reference_host/generator/function.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace reference_host
{
namespace
{

void visit_expression(const Expr& expression, const std::function<void(const Expression&)>& visitor)
{
    if (!expression)
        return;
    visitor(*expression);
    for (const Expr& operand : expression->operands)
        visit_expression(operand, visitor);
}

} // namespace

Statement declare(const Shading_type& type, const std::string& name, const Expr& value)
{
    Statement statement;
    statement.kind = Statement::Kind::declare;
    statement.type = type;
    statement.name = name;
    statement.value = value;
    return statement;
}

Statement assign(const Expr& target, const std::string& op, const Expr& value)
{
    Statement statement;
    statement.kind = Statement::Kind::assign;
    statement.op = op;
    statement.target = target;
    statement.value = value;
    return statement;
}

Statement give_back(const Expr& value)
{
    Statement statement;
    statement.kind = Statement::Kind::give_back;
    statement.value = value;
    return statement;
}

Statement comment(const std::string& text)
{
    Statement statement;
    statement.name = text;
    return statement;
}

void append(Statements& statements, Statements more)
{
    std::move(more.begin(), more.end(), std::back_inserter(statements));
}

void visit(const Statements& statements, const std::function<void(const Expression&)>& visitor)
{
    for (const Statement& statement : statements) {
        visit_expression(statement.target, visitor);
        visit_expression(statement.value, visitor);
        visit(statement.body, visitor);
        visit(statement.otherwise, visitor);
    }
}

void remove_unused(Statements& statements)
{
    std::unordered_set<std::string> read;
    Statements kept;
    for (auto statement = statements.rbegin(); statement != statements.rend(); ++statement) {
        if (statement->kind == Statement::Kind::declare && !read.count(statement->name))
            continue;
        visit({*statement}, [&](const Expression& expression) {
            if (expression.op == Op::variable)
                read.insert(expression.name);
        });
        kept.push_back(std::move(*statement));
    }
    std::reverse(kept.begin(), kept.end());
    statements = std::move(kept);
}

void inline_result(Statements& statements)
{
    if (statements.size() < 2)
        return;
    const Statement& named = statements[statements.size() - 2];
    Statement& last = statements.back();
    const bool names_result = named.kind == Statement::Kind::declare && named.value &&
                              last.kind == Statement::Kind::give_back &&
                              last.value->op == Op::variable && last.value->name == named.name &&
                              named.value->type == named.type;
    if (!names_result)
        return;
    last.value = named.value;
    statements.erase(statements.end() - 2);
}

} // namespace reference_host

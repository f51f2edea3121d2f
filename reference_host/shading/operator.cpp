#include "reference_host/shading/operator.h"

#include <cstddef>

namespace reference_host
{
namespace
{

// In the order of the enumeration.
constexpr Operator_row rows[] = {
    {Operator::add, "+", Level::sum, [](double a, double b) { return a + b; }},
    {Operator::subtract, "-", Level::sum, [](double a, double b) { return a - b; }},
    {Operator::multiply, "*", Level::product, [](double a, double b) { return a * b; }},
    {Operator::divide, "/", Level::product, [](double a, double b) { return a / b; }},
    {Operator::less, "<", Level::order, [](double a, double b) -> double { return a < b; }},
    {Operator::less_equal, "<=", Level::order, [](double a, double b) -> double { return a <= b; }},
    {Operator::greater, ">", Level::order, [](double a, double b) -> double { return a > b; }},
    {Operator::greater_equal, ">=", Level::order,
     [](double a, double b) -> double { return a >= b; }},
    {Operator::equal, "==", Level::equality, [](double a, double b) -> double { return a == b; }},
    {Operator::not_equal, "!=", Level::equality,
     [](double a, double b) -> double { return a != b; }},
    {Operator::both, "&&", Level::both,
     [](double a, double b) -> double { return a != 0.0 && b != 0.0; }},
    {Operator::either, "||", Level::either,
     [](double a, double b) -> double { return a != 0.0 || b != 0.0; }},
    {Operator::negate, "-", Level::sign, [](double, double a) { return 0.0 - a; }},
    {Operator::invert, "!", Level::sign, [](double, double a) -> double { return a == 0.0; }},
};

constexpr bool in_order()
{
    for (std::size_t i = 0; i < static_cast<std::size_t>(Operator::none); ++i)
        if (rows[i].op != static_cast<Operator>(i))
            return false;
    return sizeof rows / sizeof *rows == static_cast<std::size_t>(Operator::none);
}
static_assert(in_order(), "an operator has no row, or one in the wrong place");

} // namespace

const Operator_row& row_of(Operator op)
{
    return rows[static_cast<std::size_t>(op)];
}

bool is_arithmetic(Operator op)
{
    return op <= Operator::divide;
}

Operator find_binary(std::string_view sign)
{
    for (const Operator_row& row : rows)
        if (row.op < Operator::negate && sign == row.sign)
            return row.op;
    return Operator::none;
}

} // namespace reference_host

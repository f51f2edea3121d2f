#include "reference_host/shading/operator.h"

#include "reference_host/shading/types.h"

#include <cstddef>
#include <cstdint>

namespace reference_host
{
namespace
{

template<Operator op>
double of_bits(double a, double b)
{
    return natural_result(op, a, b);
}

// In the order of the enumeration.
constexpr Operator_row rows[] = {
    {Operator::add, "+", Level::sum, [](double a, double b) { return a + b; }},
    {Operator::subtract, "-", Level::sum, [](double a, double b) { return a - b; }},
    {Operator::multiply, "*", Level::product, [](double a, double b) { return a * b; }},
    {Operator::divide, "/", Level::product, [](double a, double b) { return a / b; }},
    {Operator::shift_left, "<<", Level::shift, of_bits<Operator::shift_left>},
    {Operator::shift_right, ">>", Level::shift, of_bits<Operator::shift_right>},
    {Operator::common_bits, "&", Level::common_bits, of_bits<Operator::common_bits>},
    {Operator::different_bits, "^", Level::different_bits, of_bits<Operator::different_bits>},
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

double natural_result(Operator op, double a, double b)
{
    const std::uint32_t x = natural_number(a);
    const std::uint32_t y = natural_number(b);
    switch (op) {
    case Operator::multiply:
        return x * y;
    case Operator::shift_left:
        return y < 32 ? x << y : 0;
    case Operator::shift_right:
        return y < 32 ? x >> y : 0;
    case Operator::common_bits:
        return x & y;
    case Operator::different_bits:
        return x ^ y;
    default:
        return natural_number(row_of(op).fold(a, b));
    }
}

bool is_arithmetic(Operator op)
{
    return op <= Operator::different_bits;
}

bool is_of_bits(Operator op)
{
    return op >= Operator::shift_left && op <= Operator::different_bits;
}

Operator find_binary(std::string_view sign)
{
    for (const Operator_row& row : rows)
        if (row.op < Operator::negate && sign == row.sign)
            return row.op;
    return Operator::none;
}

} // namespace reference_host

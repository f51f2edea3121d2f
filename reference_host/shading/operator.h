// The operators of the shading notation, which are those of every target.
#ifndef REFERENCE_HOST_SHADING_OPERATOR_H
#define REFERENCE_HOST_SHADING_OPERATOR_H

#include <string_view>

namespace reference_host
{

enum class Operator {
    add,
    subtract,
    multiply,
    divide,
    shift_left, // these four take naturals alone
    shift_right,
    common_bits,    // &
    different_bits, // ^
    less,
    less_equal,
    greater,
    greater_equal,
    equal,
    not_equal,
    both,   // &&
    either, // ||
    negate,
    invert, // !
    none
};

// How closely an expression holds its operands; higher binds closer.
enum class Level {
    lowest,
    choice,
    either,
    both,
    different_bits,
    common_bits,
    equality,
    order,
    shift,
    sum,
    product,
    sign,
    closest
};

struct Operator_row {
    Operator op;
    const char* sign;
    Level level;
    double (*fold)(double, double); // of two numbers; truths are 0 and 1
};

const Operator_row& row_of(Operator op);

// The result for two whole numbers of 32 bits, which wraps around.
double natural_result(Operator op, double a, double b);

bool is_arithmetic(Operator op);
bool is_of_bits(Operator op);

// The operator between two operands that is written so; none when there is no such sign.
Operator find_binary(std::string_view sign);

} // namespace reference_host

#endif

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
enum class Level { lowest, choice, either, both, equality, order, sum, product, sign, closest };

struct Operator_row {
    Operator op;
    const char* sign;
    Level level;
    double (*fold)(double, double); // of two numbers; truths are 0 and 1
};

const Operator_row& row_of(Operator op);

bool is_arithmetic(Operator op);

// The operator between two operands that is written so; none when there is no such sign.
Operator find_binary(std::string_view sign);

} // namespace reference_host

#endif

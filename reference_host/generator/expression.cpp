#include "reference_host/generator/expression.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{
namespace
{

Expr make(Op op, const Shading_type& type, const std::string& name, std::vector<Expr> operands)
{
    auto made = std::make_shared<Expression>();
    made->op = op;
    made->type = type;
    made->name = name;
    made->operands = std::move(operands);
    return made;
}

bool all_numbers_are(const Expr& expression, double number)
{
    if (!is_literal(expression) || expression->type == Kind::text)
        return false;
    const auto end = expression->numbers.begin() + component_count(expression->type);
    return std::all_of(expression->numbers.begin(), end, [&](double n) { return n == number; });
}

double component(const Expr& expression, int i)
{
    return expression
        ->numbers[component_count(expression->type) == 1 ? 0 : static_cast<std::size_t>(i)];
}

const Shading_type& wider(const Expr& a, const Expr& b)
{
    return component_count(a->type) >= component_count(b->type) ? a->type : b->type;
}

Expr splat(const Expr& scalar, const Shading_type& type)
{
    return scalar->type == type ? scalar : construct(type, {scalar});
}

bool compare(const std::string& op, double a, double b)
{
    if (op == "<")
        return a < b;
    if (op == "<=")
        return a <= b;
    if (op == ">")
        return a > b;
    if (op == ">=")
        return a >= b;
    return op == "==" ? a == b : a != b;
}

double calculate(char op, double a, double b)
{
    switch (op) {
    case '+':
        return a + b;
    case '-':
        return a - b;
    case '*':
        return a * b;
    default:
        return a / b;
    }
}

bool is_arithmetic(const std::string& op)
{
    return op.size() == 1 && std::string("+-*/").find(op) != std::string::npos;
}

Expr fold_arithmetic(char op, const Expr& a, const Expr& b)
{
    const Shading_type& type = wider(a, b);
    std::array<double, 16> numbers{};
    for (int i = 0; i < component_count(type); ++i) {
        double result = calculate(op, component(a, i), component(b, i));
        if (type == Kind::integer)
            result = std::trunc(result);
        if (!std::isfinite(result))
            return nullptr;
        numbers[static_cast<std::size_t>(i)] = result;
    }
    return literal(type, numbers);
}

// What is left of an arithmetic operation with a neutral operand, or null.
Expr without_neutral(char op, const Expr& a, const Expr& b)
{
    const Shading_type& type = wider(a, b);
    if (component_count(type) > 4)
        return nullptr;
    if (((op == '+' || op == '-') && is_zero(b)) || ((op == '*' || op == '/') && is_one(b)))
        return splat(a, type);
    if ((op == '+' && is_zero(a)) || (op == '*' && is_one(a)))
        return splat(b, type);
    if (op == '*' && (is_zero(a) || is_zero(b)))
        return splat(is_zero(a) ? a : b, type);
    return nullptr;
}

Expr arithmetic(const std::string& op, const Expr& a, const Expr& b)
{
    Expr folded = without_neutral(op[0], a, b);
    if (!folded && is_literal(a) && is_literal(b))
        folded = fold_arithmetic(op[0], a, b);
    return folded ? folded : make(Op::binary, wider(a, b), op, {a, b});
}

Expr comparison(const std::string& op, const Expr& a, const Expr& b)
{
    if (is_literal(a) && is_literal(b)) {
        if ((a->type == Kind::text) != (b->type == Kind::text))
            return boolean_literal(op == "!=");
        if (a->type == Kind::text)
            return boolean_literal((a->text == b->text) == (op == "=="));
        return boolean_literal(compare(op, a->numbers[0], b->numbers[0]));
    }
    return make(Op::binary, Kind::boolean, op, {a, b});
}

Expr logical(const std::string& op, const Expr& a, const Expr& b)
{
    const bool deciding = op == "||"; // the value of one side that decides the whole
    for (const auto& [side, other] : {std::pair(a, b), std::pair(b, a)})
        if (is_literal(side))
            return is_true(side) == deciding ? side : other;
    return make(Op::binary, Kind::boolean, op, {a, b});
}

Expr converted_literal(const Shading_type& type, const Expr& scalar)
{
    double number = scalar->numbers[0];
    if (type == Kind::integer)
        number = std::trunc(number);
    if (type == Kind::boolean)
        number = number != 0.0;
    std::array<double, 16> numbers{};
    std::fill_n(numbers.begin(), component_count(type), number);
    return literal(type, numbers);
}

} // namespace

int component_count(const Shading_type& type)
{
    switch (type.kind) {
    case Kind::boolean:
    case Kind::integer:
    case Kind::float1:
        return 1;
    case Kind::float2:
        return 2;
    case Kind::float3:
        return 3;
    case Kind::float4:
        return 4;
    case Kind::matrix3:
        return 9;
    case Kind::matrix4:
        return 16;
    default:
        return 0;
    }
}

bool is_float(const Shading_type& type)
{
    return type.kind >= Kind::float1 && type.kind <= Kind::float4;
}

Kind float_kind(int components)
{
    return static_cast<Kind>(static_cast<int>(Kind::float1) + components - 1);
}

Shading_type shading_type(Type type)
{
    switch (type) {
    case Type::boolean:
        return Kind::boolean;
    case Type::integer:
        return Kind::integer;
    case Type::float1:
        return Kind::float1;
    case Type::vector2:
        return Kind::float2;
    case Type::vector3:
    case Type::color3:
        return Kind::float3;
    case Type::vector4:
    case Type::color4:
        return Kind::float4;
    case Type::matrix33:
        return Kind::matrix3;
    case Type::matrix44:
        return Kind::matrix4;
    case Type::string:
    case Type::filename:
        return Kind::text;
    default:
        return Kind::none;
    }
}

Expr literal(double number)
{
    return literal(Kind::float1, {number});
}

Expr literal(const Shading_type& type, const std::array<double, 16>& numbers)
{
    auto made = std::make_shared<Expression>();
    made->type = type;
    made->numbers = numbers;
    return made;
}

Expr integer_literal(int number)
{
    return literal(Kind::integer, {static_cast<double>(number)});
}

Expr boolean_literal(bool truth)
{
    return literal(Kind::boolean, {truth ? 1.0 : 0.0});
}

Expr text_literal(const std::string& text)
{
    auto made = std::make_shared<Expression>();
    made->type = Kind::text;
    made->text = text;
    return made;
}

Expr literal(const Value& value)
{
    const Shading_type type = shading_type(value.type);
    return type == Kind::text ? text_literal(value.text) : literal(type, value.numbers);
}

Expr variable(const Shading_type& type, const std::string& name)
{
    return make(Op::variable, type, name, {});
}

Expr member(const Expr& structure, const std::string& name, const Shading_type& type)
{
    return make(Op::member, type, name, {structure});
}

Expr swizzle(const Expr& vector, const std::string& channels)
{
    const int count = static_cast<int>(channels.size());
    const Shading_type type = float_kind(count);
    if (vector->type == Kind::float1)
        return splat(vector, type);
    if (vector->type == type && std::string("xyzw").compare(0, channels.size(), channels) == 0)
        return vector;
    if (is_literal(vector)) {
        std::array<double, 16> numbers{};
        for (std::size_t i = 0; i < channels.size(); ++i)
            numbers[i] = vector->numbers[std::string("xyzw").find(channels[i])];
        return literal(type, numbers);
    }
    if (vector->op == Op::swizzle) {
        std::string composed;
        for (const char channel : channels)
            composed += vector->name[std::string("xyzw").find(channel)];
        return swizzle(vector->operands[0], composed);
    }
    if (vector->op == Op::construct && vector->operands.size() == 1) // all components are equal
        return splat(vector->operands[0], type);
    return make(Op::swizzle, type, channels, {vector});
}

Expr index(const Expr& list, const Expr& position, const Shading_type& type)
{
    return make(Op::index, type, "", {list, position});
}

Expr negate(const Expr& operand)
{
    if (is_literal(operand)) {
        std::array<double, 16> numbers = operand->numbers;
        for (double& number : numbers)
            number = 0.0 - number;
        return literal(operand->type, numbers);
    }
    return make(Op::unary, operand->type, "-", {operand});
}

Expr logical_not(const Expr& operand)
{
    if (is_literal(operand))
        return boolean_literal(!is_true(operand));
    return make(Op::unary, Kind::boolean, "!", {operand});
}

Expr binary(const std::string& op, const Expr& a, const Expr& b)
{
    if (is_arithmetic(op))
        return arithmetic(op, a, b);
    return op == "&&" || op == "||" ? logical(op, a, b) : comparison(op, a, b);
}

Expr choose(const Expr& condition, const Expr& a, const Expr& b)
{
    if (is_literal(condition))
        return is_true(condition) ? a : b;
    return make(Op::choose, a->type, "", {condition, a, b});
}

Expr call(const std::string& function, const Shading_type& type, std::vector<Expr> arguments)
{
    // Blends with a constant weight are frequent where a weight is left at zero or one.
    if (function == "mix" && is_zero(arguments[2]))
        return arguments[0];
    if (function == "mix" && is_one(arguments[2]))
        return arguments[1];
    return make(Op::call, type, function, std::move(arguments));
}

Expr method(const Expr& object, const std::string& name, const Shading_type& type,
            std::vector<Expr> arguments)
{
    arguments.insert(arguments.begin(), object);
    return make(Op::method, type, name, std::move(arguments));
}

Expr construct(const Shading_type& type, std::vector<Expr> parts)
{
    if (parts.size() == 1 && parts[0]->type == type)
        return parts[0];
    if (parts.size() == 1 && is_float(type) &&
        component_count(parts[0]->type) > component_count(type) && is_float(parts[0]->type))
        return swizzle(parts[0], std::string("xyzw").substr(0, component_count(type)));
    if (parts.size() == 1 && component_count(parts[0]->type) == 1 && is_literal(parts[0]) &&
        component_count(type) <= 4)
        return converted_literal(type, parts[0]);
    if (std::all_of(parts.begin(), parts.end(), is_literal)) {
        std::array<double, 16> numbers{};
        std::size_t next = 0;
        for (const Expr& part : parts)
            for (int i = 0; i < component_count(part->type) && next < numbers.size(); ++i)
                numbers[next++] = component(part, i);
        if (next == static_cast<std::size_t>(component_count(type)))
            return literal(type, numbers);
    }
    return make(Op::construct, type, "", std::move(parts));
}

bool is_literal(const Expr& expression)
{
    return expression->op == Op::literal;
}

bool is_zero(const Expr& expression)
{
    return all_numbers_are(expression, 0.0);
}

bool is_one(const Expr& expression)
{
    return all_numbers_are(expression, 1.0);
}

bool is_true(const Expr& expression)
{
    return is_literal(expression) && expression->type == Kind::boolean &&
           expression->numbers[0] != 0.0;
}

bool is_false(const Expr& expression)
{
    return is_literal(expression) && expression->type == Kind::boolean &&
           expression->numbers[0] == 0.0;
}

bool is_simple(const Expr& expression)
{
    switch (expression->op) {
    case Op::literal:
    case Op::variable:
        return true;
    case Op::member:
    case Op::swizzle:
        return is_simple(expression->operands[0]);
    default:
        return false;
    }
}

} // namespace reference_host

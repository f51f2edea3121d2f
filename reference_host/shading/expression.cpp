#include "reference_host/shading/expression.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{
namespace
{

std::shared_ptr<Expression> make(Op op, const Code_type& type, const std::string& name,
                                 std::vector<Expr> operands)
{
    auto made = std::make_shared<Expression>();
    made->op = op;
    made->type = type;
    made->name = name;
    made->operands = std::move(operands);
    return made;
}

Expr make_operation(Operator oper, const Code_type& type, std::vector<Expr> operands)
{
    const Op op = operands.size() == 1 ? Op::unary : Op::binary;
    auto made = make(op, type, "", std::move(operands));
    made->oper = oper;
    return made;
}

bool all_numbers_are(const Expr& expression, double number)
{
    if (!is_literal(expression) || expression->type == Base_type::text)
        return false;
    return std::all_of(expression->numbers.begin(), expression->numbers.end(),
                       [&](double n) { return n == number; });
}

double component(const Expr& expression, int i)
{
    return expression
        ->numbers[component_count(expression->type) == 1 ? 0 : static_cast<std::size_t>(i)];
}

const Code_type& wider(const Expr& a, const Expr& b)
{
    return component_count(a->type) >= component_count(b->type) ? a->type : b->type;
}

Expr splat(const Expr& scalar, const Code_type& type)
{
    return scalar->type == type ? scalar : construct(type, {scalar});
}

Expr fold_arithmetic(Operator op, const Expr& a, const Expr& b)
{
    const Code_type& type = wider(a, b);
    std::array<double, 16> numbers{};
    for (int i = 0; i < component_count(type); ++i) {
        double result = type == Base_type::natural
                            ? natural_result(op, component(a, i), component(b, i))
                            : row_of(op).fold(component(a, i), component(b, i));
        if (type == Base_type::integer)
            result = std::trunc(result);
        if (!std::isfinite(result))
            return nullptr;
        numbers[static_cast<std::size_t>(i)] = result;
    }
    return literal(type, numbers);
}

// What is left of an arithmetic operation with a neutral operand, or null.
Expr without_neutral(Operator op, const Expr& a, const Expr& b)
{
    const Code_type& type = wider(a, b);
    if (component_count(type) > 4)
        return nullptr;
    const bool adds = op == Operator::add;
    const bool multiplies = op == Operator::multiply;
    if (((adds || op == Operator::subtract) && is_zero(b)) ||
        ((multiplies || op == Operator::divide) && is_one(b)))
        return splat(a, type);
    if ((adds && is_zero(a)) || (multiplies && is_one(a)))
        return splat(b, type);
    if (multiplies && (is_zero(a) || is_zero(b)))
        return splat(is_zero(a) ? a : b, type);
    return nullptr;
}

Expr arithmetic(Operator op, const Expr& a, const Expr& b)
{
    Expr folded = without_neutral(op, a, b);
    if (!folded && is_literal(a) && is_literal(b))
        folded = fold_arithmetic(op, a, b);
    return folded ? folded : make_operation(op, wider(a, b), {a, b});
}

Expr comparison(Operator op, const Expr& a, const Expr& b)
{
    if (is_literal(a) && is_literal(b)) {
        const bool wants_equal = op == Operator::equal;
        if ((a->type == Base_type::text) != (b->type == Base_type::text))
            return boolean_literal(!wants_equal);
        if (a->type == Base_type::text)
            return boolean_literal((a->name == b->name) == wants_equal);
        return boolean_literal(row_of(op).fold(a->numbers[0], b->numbers[0]) != 0.0);
    }
    return make_operation(op, Base_type::boolean, {a, b});
}

Expr logical(Operator op, const Expr& a, const Expr& b)
{
    const bool deciding = op == Operator::either; // the value of one side that decides the whole
    for (const auto& [side, other] : {std::pair(a, b), std::pair(b, a)})
        if (is_literal(side))
            return is_true(side) == deciding ? side : other;
    return make_operation(op, Base_type::boolean, {a, b});
}

Expr converted_literal(const Code_type& type, const Expr& scalar)
{
    double number = scalar->numbers[0];
    if (type == Base_type::integer)
        number = std::trunc(number);
    if (type == Base_type::natural)
        number = natural_number(number);
    if (type == Base_type::boolean)
        number = number != 0.0;
    std::array<double, 16> numbers{};
    std::fill_n(numbers.begin(), component_count(type), number);
    return literal(type, numbers);
}

Code_type widest_type(const std::vector<Expr>& arguments)
{
    const auto widest =
        std::max_element(arguments.begin(), arguments.end(), [](const Expr& a, const Expr& b) {
            return component_count(a->type) < component_count(b->type);
        });
    return (*widest)->type == Base_type::integer ? Code_type(Base_type::float1) : (*widest)->type;
}

Code_type result_type(const Builtin_row& row, const std::vector<Expr>& arguments)
{
    switch (row.result) {
    case Builtin_result::first:
        return arguments[0]->type;
    case Builtin_result::second:
        return arguments[1]->type;
    case Builtin_result::texel:
        return Base_type::float4;
    case Builtin_result::scalar:
        return Base_type::float1;
    default:
        return widest_type(arguments);
    }
}

// A literal vector whose components are all equal, as a scalar; anything else as it is.
Expr narrowed(const Expr& argument)
{
    const bool uniform = is_literal(argument) && is_float(argument->type) &&
                         all_numbers_are(argument, argument->numbers[0]);
    return uniform ? literal(argument->numbers[0]) : argument;
}

void fit_arguments(const Builtin_row& row, const Code_type& widest, std::vector<Expr>& arguments)
{
    const auto may_stay = [&](std::size_t i) { return (row.keeps_scalars >> i & 1U) != 0; };
    bool all_scalar = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i]->type == Base_type::integer)
            arguments[i] = construct(Base_type::float1, {arguments[i]});
        all_scalar =
            all_scalar && (!may_stay(i) || narrowed(arguments[i])->type == Base_type::float1);
    }
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (may_stay(i) && all_scalar)
            arguments[i] = narrowed(arguments[i]);
        else if (arguments[i]->type == Base_type::float1)
            arguments[i] = construct(widest, {arguments[i]});
}

} // namespace

Expr literal(double number)
{
    return literal(Base_type::float1, {number});
}

Expr literal(const Code_type& type, const std::array<double, 16>& numbers)
{
    auto made = std::make_shared<Expression>();
    made->type = type;
    made->numbers.assign(numbers.begin(), numbers.begin() + component_count(type));
    return made;
}

Expr integer_literal(int number)
{
    return literal(Base_type::integer, {static_cast<double>(number)});
}

Expr boolean_literal(bool truth)
{
    return literal(Base_type::boolean, {truth ? 1.0 : 0.0});
}

Expr text_literal(const std::string& text)
{
    auto made = std::make_shared<Expression>();
    made->type = Base_type::text;
    made->name = text;
    return made;
}

Expr variable(const Code_type& type, const std::string& name)
{
    return make(Op::variable, type, name, {});
}

Expr member(const Expr& structure, const std::string& name, const Code_type& type)
{
    return make(Op::member, type, name, {structure});
}

Expr swizzle(const Expr& vector, const std::string& channels)
{
    const int count = static_cast<int>(channels.size());
    const Code_type type = float_type(count);
    if (vector->type == Base_type::float1)
        return splat(vector, type);
    if (vector->type == type && std::string("xyzw").compare(0, channels.size(), channels) == 0)
        return vector;
    if (is_literal(vector)) {
        std::array<double, 16> numbers{};
        for (std::size_t i = 0; i < channels.size(); ++i) {
            const std::size_t channel = std::string("xyzw").find(channels[i]);
            numbers[i] = channel < vector->numbers.size() ? vector->numbers[channel] : 0.0;
        }
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

Expr index(const Expr& list, const Expr& position, const Code_type& type)
{
    return make(Op::index, type, "", {list, position});
}

Expr negate(const Expr& operand)
{
    if (is_literal(operand)) {
        auto negative = std::make_shared<Expression>(*operand);
        for (double& number : negative->numbers)
            number = 0.0 - number;
        return negative;
    }
    return make_operation(Operator::negate, operand->type, {operand});
}

Expr logical_not(const Expr& operand)
{
    if (is_literal(operand))
        return boolean_literal(!is_true(operand));
    return make_operation(Operator::invert, Base_type::boolean, {operand});
}

Expr binary(Operator op, const Expr& a, const Expr& b)
{
    if (is_arithmetic(op))
        return arithmetic(op, a, b);
    return op == Operator::both || op == Operator::either ? logical(op, a, b)
                                                          : comparison(op, a, b);
}

Expr choose(const Expr& condition, const Expr& a, const Expr& b)
{
    if (is_literal(condition))
        return is_true(condition) ? a : b;
    return make(Op::choose, a->type, "", {condition, a, b});
}

Expr call(const std::string& function, const Code_type& type, std::vector<Expr> arguments)
{
    return make(Op::call, type, function, std::move(arguments));
}

Expr method(const Expr& object, const std::string& name, const Code_type& type,
            std::vector<Expr> arguments)
{
    arguments.insert(arguments.begin(), object);
    return make(Op::method, type, name, std::move(arguments));
}

Expr construct(const Code_type& type, std::vector<Expr> parts)
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

Expr refused(const Code_type& type, const std::string& reason)
{
    return make(Op::refused, type, reason, {});
}

Expr call(Builtin builtin, std::vector<Expr> arguments)
{
    const Builtin_row& row = row_of(builtin);
    if (arguments.size() != static_cast<std::size_t>(row.arguments))
        throw Notation_error(std::string("wrong number of arguments for \"") + row.name + "\"");
    const Code_type type = result_type(row, arguments);
    if (row.result == Builtin_result::widest || row.result == Builtin_result::scalar) {
        const Code_type widest = widest_type(arguments);
        if (!is_float(widest))
            throw Notation_error(std::string("wrong type of argument for \"") + row.name + "\"");
        fit_arguments(row, widest, arguments);
    }
    // Blends with a constant weight are frequent where a weight is left at zero or one.
    if (builtin == Builtin::mix && is_literal(arguments[0]) && is_literal(arguments[1]) &&
        arguments[0]->numbers == arguments[1]->numbers)
        return arguments[0];
    if (builtin == Builtin::mix && is_zero(arguments[2]))
        return arguments[0];
    if (builtin == Builtin::mix && is_one(arguments[2]))
        return arguments[1];
    auto made = make(Op::builtin, type, "", std::move(arguments));
    made->builtin = builtin;
    return made;
}

Expr with_origin(const Expr& expression, const Origin* origin)
{
    if (is_literal(expression) || expression->origin || !origin)
        return expression;
    auto made = std::make_shared<Expression>(*expression);
    made->origin = origin;
    return made;
}

Expr with_operands(const Expr& expression, std::vector<Expr> operands)
{
    const Expression& e = *expression;
    const auto rest = [&] { return std::vector<Expr>(operands.begin() + 1, operands.end()); };
    switch (e.op) {
    case Op::member:
        return member(operands[0], e.name, e.type);
    case Op::swizzle:
        return swizzle(operands[0], e.name);
    case Op::index:
        return index(operands[0], operands[1], e.type);
    case Op::unary:
        return e.oper == Operator::negate ? negate(operands[0]) : logical_not(operands[0]);
    case Op::binary:
        return binary(e.oper, operands[0], operands[1]);
    case Op::choose:
        return choose(operands[0], operands[1], operands[2]);
    case Op::builtin:
        return call(e.builtin, std::move(operands));
    case Op::call:
        return call(e.name, e.type, std::move(operands));
    case Op::method:
        return method(operands[0], e.name, e.type, rest());
    case Op::construct:
        return construct(e.type, std::move(operands));
    default:
        return expression;
    }
}

Expr replaced(const Expr& expression, const Rewrite& replace)
{
    std::vector<Expr> operands; // empty while none has changed
    for (std::size_t i = 0; i < expression->operands.size(); ++i) {
        Expr operand = replaced(expression->operands[i], replace);
        if (operands.empty() && operand != expression->operands[i])
            operands = expression->operands;
        if (!operands.empty())
            operands[i] = std::move(operand);
    }
    if (operands.empty())
        return replace(expression);
    return replace(with_origin(with_operands(expression, std::move(operands)), expression->origin));
}

void visit(const Expr& expression, const std::function<void(const Expression&)>& visitor)
{
    if (!expression)
        return;
    visitor(*expression);
    for (const Expr& operand : expression->operands)
        visit(operand, visitor);
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
    return is_literal(expression) && expression->type == Base_type::boolean &&
           expression->numbers[0] != 0.0;
}

bool is_false(const Expr& expression)
{
    return is_literal(expression) && expression->type == Base_type::boolean &&
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

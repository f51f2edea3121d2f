#include "reference_host/shading/notation_printer.h"

#include "reference_host/shading/quotes.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace reference_host
{
namespace
{

constexpr std::size_t longest_line = 100;
constexpr std::size_t indentation = 4;

Level above(Level level)
{
    return static_cast<Level>(static_cast<int>(level) + 1);
}

bool all_components_equal(const Expression& literal)
{
    return std::all_of(literal.numbers.begin(), literal.numbers.end(),
                       [&](double number) { return number == literal.numbers[0]; });
}

// How closely what stands around a space belongs together; deepest_break: too closely to break
// there.
constexpr int deepest_break = 4;

int break_level(const std::string& line, std::size_t space)
{
    if (line[space - 1] == ',')
        return 0;
    switch (line[space + 1]) {
    case '?':
    case ':':
        return 1;
    case '+':
    case '-':
        return 2;
    case '*':
    case '/':
        return 3;
    default:
        return deepest_break;
    }
}

// The place where a line is best broken before `limit`: the last one in the fewest parentheses.
// npos when there is none.
std::size_t break_position(const std::string& line, std::size_t first, std::size_t limit)
{
    std::size_t best = std::string::npos;
    int best_level = std::numeric_limits<int>::max();
    int depth = 0;
    bool in_template = false; // is not broken, and no text in quotes is
    bool in_text = false;
    for (std::size_t i = 1; i + 1 < std::min(limit, line.size()); ++i) {
        depth += line[i] == '(';
        depth -= line[i] == ')';
        // Operators have a space before them, the angle brackets of templates have none.
        if ((line[i] == '<' || line[i] == '>') && line[i - 1] != ' ')
            in_template = line[i] == '<';
        const int level = depth * deepest_break + break_level(line, i);
        in_text = in_text != (line[i] == '"' && line[i - 1] != '\\');
        // The first third of a line is left whole: there is the target of an assignment.
        if (line[i] == ' ' && !in_template && !in_text && i > first && i > limit / 3 &&
            break_level(line, i) < deepest_break && level <= best_level) {
            best = i;
            best_level = level;
        }
    }
    return best;
}

} // namespace

std::string wrapped_line(const std::string& text, int depth)
{
    const std::string indent(static_cast<std::size_t>(depth) * indentation, ' ');
    const std::string further_indent = indent + std::string(indentation, ' ');
    std::string rest = indent + text;
    std::string lines;
    std::size_t first = indent.size() + 1;
    while (rest.size() > longest_line) {
        const std::size_t cut = break_position(rest, first, longest_line);
        if (cut == std::string::npos)
            break;
        lines.append(rest, 0, cut).append("\n");
        rest.replace(0, cut + 1, further_indent);
        first = further_indent.size() + 1;
    }
    return lines + rest + "\n";
}

std::string Notation_printer::type(const Code_type& code_type) const
{
    return code_type.base == Base_type::structure ? code_type.structure : type_word(code_type.base);
}

std::string Notation_printer::expression(const Expr& expression) const
{
    const Expression& e = *expression;
    const std::vector<Expr>& operands = e.operands;
    switch (e.op) {
    case Op::literal:
        return literal(e);
    case Op::variable:
        return e.name;
    case Op::member:
        return operand(operands[0], Level::closest) + "." + e.name;
    case Op::swizzle:
        return swizzle(e);
    case Op::index:
        return operand(operands[0], Level::closest) + "[" + this->expression(operands[1]) + "]";
    case Op::unary:
        return row_of(e.oper).sign + operand(operands[0], Level::closest);
    case Op::binary: {
        const Operator_row& row = row_of(e.oper);
        return operand(operands[0], row.level) + " " + row.sign + " " +
               operand(operands[1], above(row.level));
    }
    case Op::choose:
        return operand(operands[0], Level::either) + " ? " + operand(operands[1], Level::either) +
               " : " + operand(operands[2], Level::either);
    case Op::method:
        return operand(operands[0], Level::closest) + "." + e.name + "(" + arguments(operands, 1) +
               ")";
    case Op::construct:
        return construct(e);
    case Op::builtin:
        return builtin(e);
    case Op::refused:
        return refused(e);
    default:
        return e.name + "(" + arguments(operands) + ")";
    }
}

Level Notation_printer::level_of(const Expression& expression) const
{
    switch (expression.op) {
    case Op::choose:
        return Level::choice;
    case Op::binary:
    case Op::unary:
        return row_of(expression.oper).level;
    case Op::literal:
        return component_count(expression.type) == 1 && expression.numbers[0] < 0.0
                   ? Level::sign
                   : Level::closest;
    default:
        return Level::closest;
    }
}

std::string Notation_printer::operand(const Expr& expression, Level least) const
{
    const std::string text = this->expression(expression);
    return level_of(*expression) < least ? "(" + text + ")" : text;
}

std::string Notation_printer::arguments(const std::vector<Expr>& operands, std::size_t first) const
{
    std::string text;
    for (std::size_t i = first; i < operands.size(); ++i)
        text += (i > first ? ", " : "") + expression(operands[i]);
    return text;
}

// The shortest text that reads back as the number itself, without an exponent. There is no zero
// with a sign.
std::string Notation_printer::number(double number) const
{
    char buffer[512];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number == 0.0 ? 0.0 : number,
                                   std::chars_format::fixed)
                         .ptr;
    std::string text(buffer, end);
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

bool Notation_printer::repeats_one_component() const
{
    return true;
}

std::string Notation_printer::component(const Expression& literal, int i) const
{
    const double value = literal.numbers[static_cast<std::size_t>(i)];
    if (literal.type == Base_type::boolean)
        return value != 0.0 ? "true" : "false";
    if (literal.type == Base_type::integer)
        return std::to_string(static_cast<long>(std::clamp(value, -2147483647.0, 2147483647.0)));
    if (literal.type == Base_type::natural)
        return std::to_string(natural_number(value)) + "u";
    return number(value);
}

std::string Notation_printer::literal(const Expression& literal) const
{
    const int count = component_count(literal.type);
    if (literal.type == Base_type::text)
        return in_quotes(literal.name);
    if (count == 1)
        return component(literal, 0);
    std::string text = type(literal.type) + "(";
    if (count <= 4 && repeats_one_component() && all_components_equal(literal))
        return text + component(literal, 0) + ")";
    for (int i = 0; i < count; ++i)
        text += (i > 0 ? ", " : "") + component(literal, i);
    return text + ")";
}

std::string Notation_printer::builtin(const Expression& call) const
{
    return row_of(call.builtin).name + ("(" + arguments(call.operands)) + ")";
}

std::string Notation_printer::construct(const Expression& construct) const
{
    return type(construct.type) + "(" + arguments(construct.operands) + ")";
}

std::string Notation_printer::swizzle(const Expression& swizzle) const
{
    return operand(swizzle.operands[0], Level::closest) + "." + swizzle.name;
}

std::string Notation_printer::refused(const Expression& value) const
{
    std::string text = "refused<" + type(value.type) + ">(" + in_quotes(value.name);
    if (value.origin)
        text += ", " + in_quotes(value.origin->name) + ", " + in_quotes(value.origin->place.file) +
                ", " + std::to_string(value.origin->place.line);
    return text + ")";
}

std::string Notation_printer::parameter(const Variable_declaration& parameter) const
{
    return type(parameter.type) + " " + parameter.name;
}

std::string Notation_printer::clip(const Statement& clip, int depth) const
{
    return wrapped_line("clip(" + expression(clip.value) + ");", depth);
}

const char* Notation_printer::let_word() const
{
    return "let ";
}

std::string Notation_printer::statements(const Statements& statements, int depth) const
{
    std::string text;
    for (const Statement& statement : statements)
        text += this->statement(statement, depth);
    return text;
}

std::string Notation_printer::block(const Statements& body, int depth) const
{
    const std::string indent(static_cast<std::size_t>(depth) * indentation, ' ');
    return indent + "{\n" + statements(body, depth + 1) + indent + "}\n";
}

std::string Notation_printer::statement(const Statement& statement, int depth) const
{
    switch (statement.kind) {
    case Statement::Kind::let:
    case Statement::Kind::declare:
        return wrapped_line((statement.kind == Statement::Kind::let ? let_word() : "") +
                                type(statement.type) + " " + statement.name +
                                (statement.value ? " = " + expression(statement.value) : "") + ";",
                            depth);
    case Statement::Kind::assign:
        return wrapped_line(
            expression(statement.target) + " " +
                (statement.oper == Operator::none ? "" : row_of(statement.oper).sign) + "= " +
                expression(statement.value) + ";",
            depth);
    case Statement::Kind::condition:
        return wrapped_line("if (" + expression(statement.value) + ")", depth) +
               block(statement.body, depth) +
               (statement.otherwise.empty()
                    ? ""
                    : wrapped_line("else", depth) + block(statement.otherwise, depth));
    case Statement::Kind::loop:
        return wrapped_line("for (int " + statement.name + " = 0; " + statement.name + " < " +
                                operand(statement.value, Level::sum) + "; " + statement.name +
                                "++)",
                            depth) +
               block(statement.body, depth);
    case Statement::Kind::return_value:
        return wrapped_line("return " + expression(statement.value) + ";", depth);
    case Statement::Kind::clip:
        return clip(statement, depth);
    default:
        return "\n";
    }
}

std::string Notation_printer::function(const Function& function) const
{
    std::string head = type(function.type) + " " + function.name + "(";
    for (std::size_t i = 0; i < function.parameters.size(); ++i)
        head += (i > 0 ? ", " : "") + parameter(function.parameters[i]);
    return wrapped_line(head + ")", 0) + block(function.body, 0);
}

} // namespace reference_host

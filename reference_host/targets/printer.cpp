#include "reference_host/targets/printer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace reference_host
{
namespace
{

constexpr std::size_t longest_line = 100;
constexpr std::size_t indentation = 4;

bool is_pattern_product(const std::string& pattern)
{
    return pattern.find(" * ") != std::string::npos;
}

// How closely what an expression prints as holds together.
Level level_of(const Expression& expression, const Dialect& dialect)
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
    case Op::builtin:
        return is_pattern_product(spelling(expression.builtin, dialect.language)) ? Level::product
                                                                                  : Level::closest;
    default:
        return Level::closest;
    }
}

Level above(Level level)
{
    return static_cast<Level>(static_cast<int>(level) + 1);
}

bool all_components_equal(const Expression& literal)
{
    return std::all_of(literal.numbers.begin(), literal.numbers.end(),
                       [&](double number) { return number == literal.numbers[0]; });
}

// How closely what stands around a blank belongs together; deepest_break: too closely to break
// there.
constexpr int deepest_break = 4;

int break_level(const std::string& line, std::size_t blank)
{
    if (line[blank - 1] == ',')
        return 0;
    switch (line[blank + 1]) {
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
    bool in_template = false; // is not broken
    for (std::size_t i = 1; i + 1 < std::min(limit, line.size()); ++i) {
        depth += line[i] == '(';
        depth -= line[i] == ')';
        // Operators have a blank before them, the angle brackets of templates have none.
        if ((line[i] == '<' || line[i] == '>') && line[i - 1] != ' ')
            in_template = line[i] == '<';
        const int level = depth * deepest_break + break_level(line, i);
        // The first third of a line is left whole: there is the target of an assignment.
        if (line[i] == ' ' && !in_template && i > first && i > limit / 3 &&
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

std::string Printer::type(const Shading_type& shading_type) const
{
    return type_name(shading_type, m_dialect);
}

std::string Printer::expression(const Expr& expression) const
{
    const Expression& e = *expression;
    const std::vector<Expr>& operands = e.operands;
    switch (e.op) {
    case Op::literal:
        return literal_text(e);
    case Op::variable:
        return e.name;
    case Op::member:
        return operand(operands[0], Level::closest) + "." + e.name;
    case Op::swizzle:
        return swizzle_text(e);
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
        return construct_text(e);
    case Op::builtin:
        return builtin_text(e);
    case Op::refused:
        return type(e.type) + "(refused)";
    default:
        return e.name + "(" + arguments(operands, 0) + ")";
    }
}

std::string Printer::operand(const Expr& expression, Level least) const
{
    const std::string text = this->expression(expression);
    return level_of(*expression, m_dialect) < least ? "(" + text + ")" : text;
}

std::string Printer::arguments(const std::vector<Expr>& operands, std::size_t first) const
{
    std::string text;
    for (std::size_t i = first; i < operands.size(); ++i)
        text += (i > first ? ", " : "") + expression(operands[i]);
    return text;
}

std::string Printer::component_text(const Expression& literal, int i) const
{
    const double number = literal.numbers[static_cast<std::size_t>(i)];
    if (literal.type == Kind::boolean)
        return number != 0.0 ? "true" : "false";
    if (literal.type == Kind::integer)
        return std::to_string(static_cast<long>(std::clamp(number, -2147483647.0, 2147483647.0)));
    return m_dialect.number_text(number) + m_dialect.number_suffix;
}

std::string Printer::literal_text(const Expression& literal) const
{
    const int count = component_count(literal.type);
    if (literal.type == Kind::text)
        return "\"" + literal.name + "\"";
    if (count == 1)
        return component_text(literal, 0);
    std::string text = type(literal.type) + "(";
    if (count <= 4 && m_dialect.repeats_one_component && all_components_equal(literal))
        return text + component_text(literal, 0) + ")";
    for (int i = 0; i < count; ++i)
        text += (i > 0 ? ", " : "") + component_text(literal, i);
    return text + ")";
}

std::string Printer::builtin_text(const Expression& call) const
{
    const std::string pattern = spelling(call.builtin, m_dialect.language);
    if (pattern.find('$') == std::string::npos)
        return pattern + "(" + arguments(call.operands, 0) + ")";
    const bool in_product = is_pattern_product(pattern);
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '$') {
            text += pattern[i];
            continue;
        }
        const Expr& argument = call.operands[static_cast<std::size_t>(pattern[++i] - '1')];
        text += in_product ? operand(argument, Level::sign) : expression(argument);
    }
    return text;
}

std::string Printer::construct_text(const Expression& construct) const
{
    const Expr& first = construct.operands[0];
    if (construct.operands.size() == 1 && m_dialect.casts_matrices &&
        construct.type == Kind::matrix3)
        return "(" + type(construct.type) + ")" + operand(first, Level::closest);
    const int count = component_count(construct.type);
    if (construct.operands.size() == 1 && m_dialect.spreads_by_swizzle && count > 1 &&
        component_count(first->type) == 1)
        return operand(first, Level::closest) + "." +
               std::string(static_cast<std::size_t>(count), 'x');
    return type(construct.type) + "(" + arguments(construct.operands, 0) + ")";
}

std::string Printer::swizzle_text(const Expression& swizzle) const
{
    if (!m_dialect.swizzles_by_template || swizzle.name.size() == 1)
        return operand(swizzle.operands[0], Level::closest) + "." + swizzle.name;
    std::string text = "swizzle<";
    for (std::size_t i = 0; i < swizzle.name.size(); ++i)
        text += (i > 0 ? ", " : "") + std::to_string(std::string("xyzw").find(swizzle.name[i]));
    return text + ">(" + expression(swizzle.operands[0]) + ")";
}

std::string Printer::statements(const Statements& statements, int depth) const
{
    std::string text;
    for (const Statement& statement : statements)
        text += this->statement(statement, depth);
    return text;
}

std::string Printer::block(const Statements& body, int depth) const
{
    const std::string indent(static_cast<std::size_t>(depth) * indentation, ' ');
    return indent + "{\n" + statements(body, depth + 1) + indent + "}\n";
}

std::string Printer::clip_text(const Statement& clip, int depth) const
{
    if (m_dialect.has_clip)
        return wrapped_line("clip(" + expression(clip.value) + ");", depth);
    return wrapped_line("if (" + operand(clip.value, Level::sum) + " < 0.0)", depth) +
           wrapped_line("discard;", depth + 1);
}

std::string Printer::statement(const Statement& statement, int depth) const
{
    switch (statement.kind) {
    case Statement::Kind::let:
    case Statement::Kind::declare:
        return wrapped_line((statement.kind == Statement::Kind::let ? m_dialect.let_words : "") +
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
    case Statement::Kind::give_back:
        return wrapped_line("return " + expression(statement.value) + ";", depth);
    case Statement::Kind::clip:
        return clip_text(statement, depth);
    default:
        return statement.name.empty()
                   ? "\n"
                   : std::string(static_cast<std::size_t>(depth) * indentation, ' ') + "// " +
                         statement.name + "\n";
    }
}

std::string Printer::function(const Function& function) const
{
    std::string head = type(function.type) + " " + function.name + "(";
    for (std::size_t i = 0; i < function.parameters.size(); ++i) {
        const Variable_declaration& parameter = function.parameters[i];
        const bool sampler = is_sampler(parameter.type);
        head += i > 0 ? ", " : "";
        head += sampler ? m_dialect.sampler_parameter[0] : "";
        head += type(parameter.type) + (sampler ? m_dialect.sampler_parameter[1] : " ");
        head += parameter.name;
    }
    return wrapped_line(head + ")", 0) + block(function.body, 0);
}

std::string Printer::structure(const Structure& structure) const
{
    std::string text = "struct " + structure.name + "\n{\n";
    for (const Variable_declaration& field : structure.fields)
        text += "    " + type(field.type) + " " + field.name + ";" +
                (field.note.empty() ? "" : " // " + field.note) + "\n";
    return text + "};\n";
}

} // namespace reference_host

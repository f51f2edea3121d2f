#include "reference_host/targets/printer.h"

#include "reference_host/targets/float_text.h"

namespace reference_host
{
namespace
{

bool is_pattern_product(const std::string& pattern)
{
    return pattern.find(" * ") != std::string::npos;
}

} // namespace

std::string Printer::type(const Code_type& code_type) const
{
    return type_name(code_type, m_dialect);
}

Level Printer::level_of(const Expression& expression) const
{
    const bool is_product = expression.op == Op::builtin &&
                            is_pattern_product(spelling(expression.builtin, m_dialect.language));
    return is_product ? Level::product : Notation_printer::level_of(expression);
}

std::string Printer::number(double number) const
{
    return float_text(number) + m_dialect.number_suffix;
}

bool Printer::repeats_one_component() const
{
    return m_dialect.repeats_one_component;
}

std::string Printer::builtin(const Expression& call) const
{
    const std::string pattern = spelling(call.builtin, m_dialect.language);
    if (pattern.find('$') == std::string::npos)
        return pattern + "(" + arguments(call.operands) + ")";
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

std::string Printer::construct(const Expression& construct) const
{
    const Expr& first = construct.operands[0];
    if (construct.operands.size() == 1 && m_dialect.casts_matrices &&
        construct.type == Base_type::matrix3)
        return "(" + type(construct.type) + ")" + operand(first, Level::closest);
    const int count = component_count(construct.type);
    if (construct.operands.size() == 1 && m_dialect.spreads_by_swizzle && count > 1 &&
        component_count(first->type) == 1)
        return operand(first, Level::closest) + "." +
               std::string(static_cast<std::size_t>(count), 'x');
    return Notation_printer::construct(construct);
}

std::string Printer::swizzle(const Expression& swizzle) const
{
    if (!m_dialect.swizzles_by_template || swizzle.name.size() == 1)
        return Notation_printer::swizzle(swizzle);
    std::string text = "swizzle<";
    for (std::size_t i = 0; i < swizzle.name.size(); ++i)
        text += (i > 0 ? ", " : "") + std::to_string(std::string("xyzw").find(swizzle.name[i]));
    return text + ">(" + expression(swizzle.operands[0]) + ")";
}

// Nothing like this is left when a text is printed.
std::string Printer::refused(const Expression& value) const
{
    throw Notation_error(value.name);
}

std::string Printer::parameter(const Variable_declaration& parameter) const
{
    if (!is_sampler(parameter.type))
        return Notation_printer::parameter(parameter);
    return m_dialect.sampler_parameter[0] + type(parameter.type) + m_dialect.sampler_parameter[1] +
           parameter.name;
}

std::string Printer::clip(const Statement& clip, int depth) const
{
    if (m_dialect.has_clip)
        return Notation_printer::clip(clip, depth);
    return wrapped_line("if (" + operand(clip.value, Level::sum) + " < 0.0)", depth) +
           wrapped_line("discard;", depth + 1);
}

const char* Printer::let_word() const
{
    return "";
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

// Expressions, statements and functions as text of the shading notation. What another language
// writes in a way of its own, its printer overrides.
#ifndef REFERENCE_HOST_SHADING_NOTATION_PRINTER_H
#define REFERENCE_HOST_SHADING_NOTATION_PRINTER_H

#include "reference_host/shading/function.h"

#include <string>

namespace reference_host
{

class Notation_printer
{
public:
    virtual ~Notation_printer() = default;

    virtual std::string type(const Code_type& code_type) const;
    std::string expression(const Expr& expression) const;

    // Indented by `depth` times four spaces, each line with its end. Lines that would become too
    // long are broken after a comma or before an operator.
    std::string statements(const Statements& statements, int depth) const;
    std::string function(const Function& function) const;

protected:
    virtual Level level_of(const Expression& expression) const;
    virtual std::string number(double number) const; // a float
    virtual bool repeats_one_component() const;      // whether "float3(1.0)" is a constant
    virtual std::string builtin(const Expression& call) const;
    virtual std::string construct(const Expression& construct) const;
    virtual std::string swizzle(const Expression& swizzle) const;
    virtual std::string refused(const Expression& value) const;
    virtual std::string parameter(const Variable_declaration& parameter) const;
    virtual std::string clip(const Statement& clip, int depth) const;
    virtual const char* let_word() const; // before the declaration of a node's value

    // In parentheses where it holds together less closely than `least`.
    std::string operand(const Expr& expression, Level least) const;
    std::string arguments(const std::vector<Expr>& operands, std::size_t first = 0) const;

private:
    std::string literal(const Expression& literal) const;
    std::string component(const Expression& literal, int i) const;
    std::string block(const Statements& body, int depth) const;
    std::string statement(const Statement& statement, int depth) const;
};

// A line with its indentation and end, broken where it would become too long.
std::string wrapped_line(const std::string& text, int depth);

} // namespace reference_host

#endif

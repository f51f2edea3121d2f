// Expressions, statements, functions and structures as text of one language.
#ifndef REFERENCE_HOST_TARGETS_PRINTER_H
#define REFERENCE_HOST_TARGETS_PRINTER_H

#include "reference_host/shading/function.h"
#include "reference_host/targets/dialect.h"

#include <string>

namespace reference_host
{

class Printer
{
public:
    explicit Printer(Language language) : m_dialect(dialect_of(language)) {}

    const Dialect& dialect() const { return m_dialect; }
    std::string type(const Shading_type& shading_type) const;
    std::string expression(const Expr& expression) const;

    // Indented by `depth` times four blanks, each line with its end. Lines that would become too
    // long are broken after a comma or before an operator.
    std::string statements(const Statements& statements, int depth) const;
    std::string function(const Function& function) const;
    std::string structure(const Structure& structure) const;

private:
    std::string operand(const Expr& expression, Level least) const;
    std::string arguments(const std::vector<Expr>& operands, std::size_t first) const;
    std::string literal_text(const Expression& literal) const;
    std::string component_text(const Expression& literal, int i) const;
    std::string builtin_text(const Expression& call) const;
    std::string construct_text(const Expression& construct) const;
    std::string swizzle_text(const Expression& swizzle) const;
    std::string block(const Statements& body, int depth) const;
    std::string statement(const Statement& statement, int depth) const;
    std::string clip_text(const Statement& clip, int depth) const;

    const Dialect& m_dialect;
};

// A line with its indentation and end, broken where it would become too long.
std::string wrapped_line(const std::string& text, int depth);

} // namespace reference_host

#endif

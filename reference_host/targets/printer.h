// Expressions, statements, functions and structures as text of one language.
#ifndef REFERENCE_HOST_TARGETS_PRINTER_H
#define REFERENCE_HOST_TARGETS_PRINTER_H

#include "reference_host/shading/notation_printer.h"
#include "reference_host/targets/dialect.h"

#include <string>

namespace reference_host
{

class Printer : public Notation_printer
{
public:
    explicit Printer(Language language) : m_dialect(dialect_of(language)) {}

    const Dialect& dialect() const { return m_dialect; }
    std::string type(const Code_type& code_type) const override;
    std::string structure(const Structure& structure) const;

private:
    Level level_of(const Expression& expression) const override;
    std::string number(double number) const override;
    bool repeats_one_component() const override;
    std::string builtin(const Expression& call) const override;
    std::string construct(const Expression& construct) const override;
    std::string swizzle(const Expression& swizzle) const override;
    std::string refused(const Expression& value) const override;
    std::string parameter(const Variable_declaration& parameter) const override;
    std::string clip(const Statement& clip, int depth) const override;
    const char* let_word() const override;

    const Dialect& m_dialect;
};

} // namespace reference_host

#endif

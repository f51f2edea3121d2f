// The parser of the notation's expressions; what is around them, notation.cpp reads.
#ifndef REFERENCE_HOST_SHADING_EXPRESSION_PARSER_H
#define REFERENCE_HOST_SHADING_EXPRESSION_PARSER_H

#include "reference_host/shading/notation.h"

#include <map>

namespace reference_host
{

// Throws Notation_error with the text when the condition does not hold.
void require(bool holds, const std::string& otherwise);

// A scalar where a vector is wanted is repeated, an integer where a float is wanted converted.
// Anything else stays what it is.
Expr fitting(const Expr& value, const Code_type& wanted);

// One step down for as long as it lives. Parser and printer, verifier and destructors follow
// expressions and statements down: a text may not nest them too deeply. Throws Notation_error.
class Nesting
{
public:
    explicit Nesting(int& depth);
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& m_depth;
};

// Its operations take words from the stream and throw Notation_error.
class Expression_parser
{
public:
    Expression_parser(std::string_view text, Notation_scope& scope, Empty_lines empty_lines);

    // The text up to its end.
    Expr whole_expression();

    int lines_passed() const { return m_words.lines_passed(); }

protected:
    Expr expression();
    Expr postfix(); // with members, swizzles and indices, without operators

    Code_type known_type(std::string_view name);
    bool is_type(std::string_view name);
    void declare_local(const Code_type& type, const std::string& name);

    Word_stream m_words;
    int m_depth = 0;

private:
    Code_type type(std::string_view name); // none when it is unknown, and for "void"
    Expr taken_branch(bool is_first);
    Expr operation(int level);
    Expr prefix();
    Expr selected(const Expr& whole, const std::string& name);
    Named_values named_arguments();
    std::vector<Expr> arguments();
    Expr primary();
    Expr refused();
    Expr number(const std::string& word);
    Expr named(const std::string& name);

    Notation_scope& m_scope;
    std::map<std::string, Expr> m_locals;
};

} // namespace reference_host

#endif

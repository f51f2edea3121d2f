// Statements, functions and structures of generated code, independent of the shading language.
#ifndef REFERENCE_HOST_SHADING_FUNCTION_H
#define REFERENCE_HOST_SHADING_FUNCTION_H

#include "reference_host/shading/expression.h"

#include <functional>
#include <string>
#include <vector>

namespace reference_host
{

struct Statement {
    enum class Kind {
        let,          // type name = value; the value of a node, never assigned
        declare,      // type name = value; value may be null
        assign,       // target = value, or target op= value
        condition,    // if (value) body else otherwise
        loop,         // for (int name = 0; name < value; name++) body
        return_value, // return value
        clip,         // ends the fragment where value is below zero
        empty_line    // between paragraphs
    };

    Kind kind = Kind::empty_line;
    std::string name;
    Code_type type;
    Operator oper = Operator::none; // of an assignment; none: "="
    Expr target;
    Expr value;
    std::vector<Statement> body;
    std::vector<Statement> otherwise;
};

using Statements = std::vector<Statement>;

Statement let(const std::string& name, const Expr& value);
Statement declare(const Code_type& type, const std::string& name, const Expr& value);
Statement assign(const Expr& target, const Expr& value);
Statement assign(const Expr& target, Operator op, const Expr& value);
Statement return_value(const Expr& value);
Statement empty_line();
Statement condition(const Expr& truth, Statements body);

struct Variable_declaration {
    Code_type type;
    std::string name;
    std::string note; // a comment beside it, may be empty
};

struct Function {
    Code_type type;
    std::string name;
    std::vector<Variable_declaration> parameters;
    Statements body;
    bool of_library = false; // else its names are those of the document
};

struct Structure {
    std::string name;
    std::vector<Variable_declaration> fields;
};

// Moves statements to the end of others.
void append(Statements& statements, Statements more);

// Calls `visitor` for every expression below the statements, operands included.
void visit(const Statements& statements, const std::function<void(const Expression&)>& visitor);

// Puts every part of the statements' expressions through `replace`, innermost first. Conditions
// that become known leave only the taken branch.
void replace(Statements& statements, const Rewrite& replace);

// Where the last but one statement only names the value that the last one returns, returns it
// without the name.
void inline_result(Statements& statements);

} // namespace reference_host

#endif

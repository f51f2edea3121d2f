// Statements, functions and structures of generated code, independent of the shading language.
#ifndef REFERENCE_HOST_GENERATOR_FUNCTION_H
#define REFERENCE_HOST_GENERATOR_FUNCTION_H

#include "reference_host/generator/expression.h"

#include <functional>
#include <string>
#include <vector>

namespace reference_host
{

struct Statement {
    enum class Kind {
        declare,   // type name = value; value may be null
        assign,    // target op value
        condition, // if (value) body else otherwise
        loop,      // for (int name = 0; name < value; name++) body
        give_back, // return value
        clip,      // ends the fragment where value is below zero
        comment    // name
    };

    Kind kind = Kind::comment;
    std::string name;
    Shading_type type;
    std::string op; // "=", "+=", ...
    Expr target;
    Expr value;
    std::vector<Statement> body;
    std::vector<Statement> otherwise;
};

using Statements = std::vector<Statement>;

Statement declare(const Shading_type& type, const std::string& name, const Expr& value);
Statement assign(const Expr& target, const std::string& op, const Expr& value);
Statement give_back(const Expr& value);
Statement comment(const std::string& text);

struct Variable_declaration {
    Shading_type type;
    std::string name;
    std::string note; // a comment beside it, may be empty
};

struct Function {
    Shading_type type;
    std::string name;
    std::vector<Variable_declaration> parameters;
    Statements body;
};

struct Structure {
    std::string name;
    std::vector<Variable_declaration> fields;
};

// Moves statements to the end of others.
void append(Statements& statements, Statements more);

// Calls `visitor` for every expression below the statements, operands included.
void visit(const Statements& statements, const std::function<void(const Expression&)>& visitor);

// Takes out declarations of variables that nothing reads. Works on the outer level only, where the
// values of nodes are declared.
void remove_unused(Statements& statements);

// Where the last but one statement only names the value that the last one gives back, gives it back
// without the name.
void inline_result(Statements& statements);

} // namespace reference_host

#endif

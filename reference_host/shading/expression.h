// Typed expressions of generated code, independent of the shading language.
//
// Expressions are immutable and shared; what is computed once stands in a variable, so that trees
// stay shallow. They are made by the functions below alone, which fold what is known: constant
// arithmetic, sums with zero, products with one, choices by constants. These check nothing but what
// they need; the parser of notation.h reports what cannot be.
#ifndef REFERENCE_HOST_SHADING_EXPRESSION_H
#define REFERENCE_HOST_SHADING_EXPRESSION_H

#include "reference_host/shading/builtin.h"
#include "reference_host/shading/operator.h"
#include "reference_host/shading/place.h"
#include "reference_host/shading/types.h"

#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace reference_host
{

// What of a document a value comes from, for messages.
struct Origin {
    std::string name; // "node "wood" (image)"
    Place place;
};

enum class Op {
    literal,   // numbers or text
    variable,  // name
    member,    // operand.name, of a structure
    swizzle,   // operand.name, of a vector: one to four of xyzw
    index,     // operand[operand], a row of a matrix or an element of a list
    unary,     // oper: - !
    binary,    // oper: + - * / < <= > >= == != && ||
    choose,    // condition ? a : b
    builtin,   // builtin(operands)
    call,      // name(operands), a function of the module
    method,    // operand.name(operands): of an interface
    construct, // type(operands); one operand: repeated, converted or cut off
    refused    // cannot be expressed, for the reason in name; no text may need its value
};

struct Expression;
using Expr = std::shared_ptr<const Expression>;

struct Expression {
    Op op = Op::literal;
    Operator oper = Operator::none;
    Builtin builtin = Builtin::none;
    Code_type type;
    std::string name;            // of a variable, member or function; of a literal its text
    std::vector<double> numbers; // of a literal
    std::vector<Expr> operands;
    const Origin* origin = nullptr; // may be unknown
};

// A mistake in a text of the notation. Where the text comes from a file, what() begins with
// "file:line: ".
struct Notation_error : std::runtime_error {
    using std::runtime_error::runtime_error;
    bool is_placed = false;
};

// Something that the document asks for and that cannot be expressed.
struct Refusal : std::runtime_error {
    Refusal(const Origin* refused, const std::string& reason)
        : std::runtime_error(reason), origin(refused ? *refused : Origin())
    {
    }

    Origin origin; // without a name: unknown
};

Expr literal(double number);
Expr literal(const Code_type& type, const std::array<double, 16>& numbers);
Expr integer_literal(int number);
Expr boolean_literal(bool truth);
Expr text_literal(const std::string& text);

Expr variable(const Code_type& type, const std::string& name);
Expr member(const Expr& structure, const std::string& name, const Code_type& type);
Expr swizzle(const Expr& vector, const std::string& channels); // of xyzw; a scalar has x only
Expr index(const Expr& list, const Expr& position, const Code_type& type);
Expr negate(const Expr& operand);
Expr logical_not(const Expr& operand);
Expr binary(Operator op, const Expr& a, const Expr& b);
Expr choose(const Expr& condition, const Expr& a, const Expr& b);
Expr call(const std::string& function, const Code_type& type, std::vector<Expr> arguments);
Expr method(const Expr& object, const std::string& name, const Code_type& type,
            std::vector<Expr> arguments);
Expr construct(const Code_type& type, std::vector<Expr> parts);
Expr refused(const Code_type& type, const std::string& reason);

// A call of a builtin: checks the number of arguments and fits their types. Throws Notation_error.
Expr call(Builtin builtin, std::vector<Expr> arguments);

// The same value with a known origin, unless it has one or is a literal.
Expr with_origin(const Expr& expression, const Origin* origin);

// The expression over other operands, folded anew.
Expr with_operands(const Expr& expression, std::vector<Expr> operands);

// The expression with every part below it replaced, innermost first.
using Rewrite = std::function<Expr(const Expr&)>;
Expr replaced(const Expr& expression, const Rewrite& replace);

// Calls `visitor` for the expression and its operands, outermost first.
void visit(const Expr& expression, const std::function<void(const Expression&)>& visitor);

bool is_literal(const Expr& expression);
bool is_zero(const Expr& expression); // a literal whose numbers are all zero
bool is_one(const Expr& expression);  // a literal whose numbers are all one
bool is_true(const Expr& expression);
bool is_false(const Expr& expression);

// Whether naming the expression would add nothing: literals, variables and their parts.
bool is_simple(const Expr& expression);

} // namespace reference_host

#endif

// Typed expressions of generated code, independent of the shading language.
//
// Expressions are immutable and shared; what is computed once stands in a variable, so that trees
// stay shallow. The builder functions check nothing but what they need: the types of operands are
// the caller's concern (the parser of notation.h reports errors). They fold what is known: constant
// arithmetic, sums with zero, products with one, choices by constants.
#ifndef REFERENCE_HOST_GENERATOR_EXPRESSION_H
#define REFERENCE_HOST_GENERATOR_EXPRESSION_H

#include "reference_host/document/shader_graph.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

enum class Kind {
    none,
    boolean,
    integer,
    float1,
    float2,
    float3,
    float4,
    matrix3,
    matrix4,
    sampler_2d,
    sampler_cube,
    text, // known at generation, never printed
    structure
};

struct Shading_type {
    Kind kind = Kind::none;
    std::string structure; // the name of a structure

    Shading_type() = default;
    Shading_type(Kind type_kind) : kind(type_kind) {}
    explicit Shading_type(std::string name) : kind(Kind::structure), structure(std::move(name)) {}

    bool operator==(const Shading_type& other) const
    {
        return kind == other.kind && structure == other.structure;
    }
    bool operator!=(const Shading_type& other) const { return !(*this == other); }
};

// 1 to 4 for floats, 9 and 16 for matrices, 1 for integer and boolean, 0 otherwise.
int component_count(const Shading_type& type);
bool is_float(const Shading_type& type); // float1 to float4
Kind float_kind(int components);         // 1 to 4

// The type in which a value of a document is computed. Colours and vectors of one size are the
// same; none for shaders and materials.
Shading_type shading_type(Type type);

enum class Op {
    literal,  // numbers or text
    variable, // name
    member,   // operand.name, of a structure
    swizzle,  // operand.name, of a vector: one to four of xyzw
    index,    // operand[operand], a row of a matrix or an element of a list
    unary,    // name: - !
    binary,   // name: + - * / < <= > >= == != && ||
    choose,   // condition ? a : b
    call,     // name(operands): an intrinsic of the dialect table, or a function
    method,   // operand.name(operands): of an interface
    construct // type(operands); one operand: repeated, converted or cut off
};

struct Expression;
using Expr = std::shared_ptr<const Expression>;

struct Expression {
    Op op = Op::literal;
    Shading_type type;
    std::string name;                 // of a variable, operator, member or function
    std::array<double, 16> numbers{}; // of a literal
    std::string text;                 // of a literal text
    std::vector<Expr> operands;
};

Expr literal(double number);
Expr literal(const Shading_type& type, const std::array<double, 16>& numbers);
Expr integer_literal(int number);
Expr boolean_literal(bool truth);
Expr text_literal(const std::string& text);
Expr literal(const Value& value); // a value of a document

Expr variable(const Shading_type& type, const std::string& name);
Expr member(const Expr& structure, const std::string& name, const Shading_type& type);
Expr swizzle(const Expr& vector, const std::string& channels); // of xyzw; a scalar has x only
Expr index(const Expr& list, const Expr& position, const Shading_type& type);
Expr negate(const Expr& operand);
Expr logical_not(const Expr& operand);
Expr binary(const std::string& op, const Expr& a, const Expr& b);
Expr choose(const Expr& condition, const Expr& a, const Expr& b);
Expr call(const std::string& function, const Shading_type& type, std::vector<Expr> arguments);
Expr method(const Expr& object, const std::string& name, const Shading_type& type,
            std::vector<Expr> arguments);
Expr construct(const Shading_type& type, std::vector<Expr> parts);

bool is_literal(const Expr& expression);
bool is_zero(const Expr& expression); // a literal whose numbers are all zero
bool is_one(const Expr& expression);  // a literal whose numbers are all one
bool is_true(const Expr& expression);
bool is_false(const Expr& expression);

// Whether naming the expression would add nothing: literals, variables and their parts.
bool is_simple(const Expr& expression);

} // namespace reference_host

#endif

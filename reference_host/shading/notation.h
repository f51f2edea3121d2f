// The shading notation: a small typed language in which node implementations and helper functions
// are written once, for all languages.
//
//     float3 tint(float3 color, float amount)
//     {
//         float3 result = color;
//         if (has_gain)
//             result *= amount;
//         for (int i = 0; i < 3; i++)
//             result += 0.1;
//         return result;
//     }
//
// Types: bool int float float2 float3 float4 float3x3 float4x4, structures, and T where the scope
// gives it a meaning. Statements: declaration, assignment (= += -= *= /=), if/else, the loop above,
// return, clip(x) (ends the fragment where x is below zero). Expressions: + - * / comparisons && ||
// ! ?: calls, in nodes also of nodes ("layer(top = a, base = b)"), constructors ("float3(x)"
// repeats x), members, swizzles of xyzw, indices. Scalars combine with vectors. An "if" or "?:"
// with a condition that is known at generation leaves only the taken branch; the other one need not
// even be meaningful.
//
// Texts of modules (module_text.h) also have "let" before the declaration of a node's value, and
// refused<TYPE>("reason", "origin", "file", line) for a value that cannot be expressed.
#ifndef REFERENCE_HOST_SHADING_NOTATION_H
#define REFERENCE_HOST_SHADING_NOTATION_H

#include "reference_host/shading/function.h"
#include "reference_host/shading/shade_file.h"
#include "reference_host/shading/word_stream.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace reference_host
{

using Named_values = std::vector<std::pair<std::string, Expr>>;

// What names mean in a text.
class Notation_scope
{
public:
    virtual ~Notation_scope() = default;

    // Null when there is no such variable.
    virtual Expr find_variable(const std::string& name) = 0;

    // None when there is no such type. The types of the notation itself are not asked for.
    virtual Code_type find_type(const std::string& name) = 0;

    // The type of a field, or of what a method returns; none when there is no such member.
    virtual Code_type find_member(const std::string& structure, const std::string& member) = 0;

    // A node with values of its inputs; throws Notation_error where there are no nodes.
    virtual Expr node(const std::string& category, Named_values inputs);

    // A call of a function; throws Notation_error when there is none for the arguments.
    virtual Expr call(const std::string& function, std::vector<Expr> arguments) = 0;

    // A value that cannot be expressed: the reason and, where that is known, the name, file and
    // line of its origin. Throws Notation_error where there is no such thing.
    virtual Expr refused_value(const Code_type& type, const std::vector<Expr>& arguments);
};

Expr parse_expression(const Shade_text& text, Notation_scope& scope);
Expr parse_expression(std::string_view text, Notation_scope& scope);

// One function with its head.
Function parse_function(const Shade_text& text, Notation_scope& scope,
                        Empty_lines empty_lines = Empty_lines::skipped);

// Whether a text has the word in it.
bool names_word(std::string_view text, std::string_view word);

// The head alone: no body is read and parameter types need not be known.
struct Function_head {
    std::string type;
    std::string name;
    std::vector<std::string> parameter_types;
};
Function_head parse_head(const Shade_text& text);

} // namespace reference_host

#endif

// Closures: how a surface scatters light, as a value that nodes pass on to each other.
//
// In node files and in graphs a closure is an expression of the type BSDF or surfaceshader, made by
// the functions below. No text has such a value: a surface is spread out into lobes, each with a
// weight, which only the eye's direction decides, so that it is computed once for all lights.
//
//     lambert(weight, tint, normal), ...   a lobe; the others: see closures.cpp
//     nothing()                            scatters nothing and hides nothing
//     layer(top, base)                     what `top` lets through falls on `base`
//     blend(background, foreground, part)  also of whole surfaces
//     sum(a, b), scaled(a, factor)
//     opaque(a)                            the same, and nothing is seen below
//     thin_film(thickness, ior)            nothing by itself; as `top` colours glossy lobes
//     surface(bsdf, emission, opacity)
#ifndef REFERENCE_HOST_LOWERING_CLOSURES_H
#define REFERENCE_HOST_LOWERING_CLOSURES_H

#include "reference_host/shading/expression.h"

#include <functional>
#include <string>
#include <vector>

namespace reference_host
{

// Where a lobe looks to see what surrounds the object.
enum class Looks { around, behind, mirrored, through, ahead };

// How much of what is below a lobe is seen, beside its weight.
enum class Lets_through { nothing, rest, mean_rest };

// What a lobe answers: lights and surroundings in part, all of what surrounds it, or no lights.
enum class Answers { part, all, surroundings, all_surroundings };

struct Lobe_parameter {
    const char* name;
    Base_type type;
};

// A row of the table of lobes. Its functions stand in the library:
//
//     float3 NAME_lit(State, Light_iterator, parameters...)   what it sends of a light to the eye
//     float3 NAME_albedo(State, parameters...)                the same of light from all around
//
// without those that `answers` makes needless. A lobe that looks in a certain direction sees it as
// blurred as its parameter "alpha" says, or "alphas".
struct Lobe_kind {
    const char* name;
    std::vector<Lobe_parameter> parameters; // after weight, tint and normal
    Looks looks;
    Lets_through lets_through;
    Answers answers = Answers::part;

    bool is_lit() const { return answers == Answers::part || answers == Answers::all; }
    bool has_albedo() const { return answers == Answers::part || answers == Answers::surroundings; }
};

struct Lobe {
    const Lobe_kind* kind;
    Expr closure; // what it was made of
    Expr normal;
    std::vector<Expr> arguments;
    Expr own_weight; // without tint and what is above
    Expr weight;     // float3
};

// A surface spread out. Weights name what lobes on top let through by `rest_of`.
struct Flat_surface {
    std::vector<Lobe> lobes; // those that can be seen
    std::vector<Lobe> tops;  // those whose rest the weights name
    Expr emission;           // float3
    Expr opacity;            // float
};

bool is_closure(const Code_type& type);
Expr nothing(const Code_type& type);

// Whether there is such a function. A call of it throws Notation_error for wrong arguments.
bool is_closure_function(const std::string& name);
Expr closure_call(const std::string& function, std::vector<Expr> arguments);

// `rest_of` gives the value, float3, of what a lobe on top lets through.
Flat_surface flattened(const Expr& surface, const std::function<Expr(const Lobe&)>& rest_of);

} // namespace reference_host

#endif

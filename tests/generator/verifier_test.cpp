// Mistakes of the compiler, as the verifier finds them in modules.
#include "reference_host/shading/globals.h"
#include "reference_host/shading/module_text.h"
#include "reference_host/shading/shading_state.h"
#include "reference_host/shading/verifier.h"
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using namespace generation;
using namespace reference_host;

namespace
{

const Expr state = state_variable();
const Expr x = variable(Base_type::float1, "x");
const Expr v = variable(Base_type::float3, "v");
const Expr n = variable(Base_type::integer, "n");

// What the functions of expression.h would not make.
Expr made(Op op, const Code_type& type, const std::string& name, std::vector<Expr> operands)
{
    Expression e;
    e.op = op;
    e.type = type;
    e.name = name;
    e.operands = std::move(operands);
    return std::make_shared<const Expression>(e);
}

Expr made(Operator oper, const Code_type& type, const Expr& a, const Expr& b)
{
    Expression e = *made(Op::binary, type, "", {a, b});
    e.oper = oper;
    return std::make_shared<const Expression>(e);
}

Expr made(Builtin builtin, const Code_type& type, std::vector<Expr> operands)
{
    Expression e = *made(Op::builtin, type, "", std::move(operands));
    e.builtin = builtin;
    return std::make_shared<const Expression>(e);
}

// A function f(State state, float x, float3 v, int n) of these statements, which returns a float
// after them.
Module module_of(Statements statements)
{
    Module module;
    Function function{Base_type::float1,
                      "f",
                      {{Code_type("State"), "state", ""},
                       {Base_type::float1, "x", ""},
                       {Base_type::float3, "v", ""},
                       {Base_type::integer, "n", ""}},
                      std::move(statements)};
    function.body.push_back(return_value(x));
    module.functions.push_back(std::move(function));
    return module;
}

Module module_of(const Expr& value)
{
    return module_of(Statements{let("a", value)});
}

std::string mistake_in(const Module& module)
{
    try {
        verify(module);
        return "";
    } catch (const Module_error& error) {
        return error.what();
    }
}

Statement loop(const std::string& name, const Expr& rounds, Statements body)
{
    Statement made;
    made.kind = Statement::Kind::loop;
    made.name = name;
    made.value = rounds;
    made.body = std::move(body);
    return made;
}

} // namespace

TEST(Verifier, finds_nothing_in_any_document_after_any_pass)
{
    int count = 0;
    for (const Test_document& document : all_documents())
        for (const std::string& node : exported_nodes(*document.graph)) {
            Diagnostics diagnostics;
            const auto compiled = compile_group(*document.graph, lit_by_all(node), {}, diagnostics);
            ASSERT_TRUE(compiled) << document.name;
            for (const char* target : {"FX", "GL", "Swrc"})
                for (const std::string& phase : phase_names()) {
                    const auto module = compiled->module_after(phase, target, {}, diagnostics);
                    ASSERT_TRUE(module) << document.name;
                    EXPECT_EQ(mistake_in(*module), "")
                        << document.name << " " << node << " " << target << " " << phase;
                    ++count;
                }
        }
    EXPECT_GT(count, 9 * 18);
}

TEST(Verifier, names_the_place_and_the_mistake_of_a_value)
{
    const std::string place = "in \"f\", statement 1 \"a\": ";
    const Expr sampler = variable(Base_type::sampler_2d, "s");
    const struct {
        Expr value;
        const char* mistake;
    } rows[] = {
        {x, ""},
        {field_of(state, "normal"), ""},
        {variable(Base_type::float1, "y"), "\"y\" is not declared"},
        {variable(Base_type::float2, "v"), "a value of type float3 is said to be of type float2"},
        {variable(Base_type::boolean, "has_alpha"), ""},
        {variable(Base_type::float1, "has_alpha"),
         "a value of type bool is said to be of type float"},
        {made(Op::member, Base_type::float3, "colour", {state}), "State has no field \"colour\""},
        {made(Op::member, Base_type::float3, "x", {v}), "float3 has no field \"x\""},
        {made(Op::member, Code_type("Light_iterator"), "eval",
              {index(find_global("lights"), n, Code_type("Light"))}),
         "Light has no field \"eval\""},
        {made(Op::method, Base_type::float3, "normal", {state, state}),
         "State has no method \"normal\" for these arguments"},
        {made(Op::swizzle, Base_type::float1, "w", {v}), "float3 has no components \"w\""},
        {made(Op::swizzle, Base_type::float1, "x", {x}), ""},
        {made(Op::swizzle, Base_type::float2, "x", {v}),
         "a value of type float is said to be of type float2"},
        {made(Op::index, Base_type::float3, "", {v, n}), "float3 has no elements"},
        {made(Op::index, Code_type("Light"), "", {find_global("lights"), x}),
         "an index is not an integer"},
        {made(Operator::add, Base_type::float3, v, swizzle(v, "xy")),
         "\"+\" takes no float3 and float2"},
        {made(Operator::multiply, Base_type::float1, x, n), "\"*\" takes no float and int"},
        {made(Operator::less, Base_type::boolean, v, v), "\"<\" takes no float3 and float3"},
        {made(Operator::both, Base_type::boolean, x, x), "\"&&\" takes no float and float"},
        {made(Operator::add, Base_type::boolean, boolean_literal(true), boolean_literal(true)),
         "\"+\" takes no bool and bool"},
        {made(Op::choose, Base_type::float1, "", {x, x, x}), "a condition is not true or false"},
        {made(Op::choose, Base_type::float1, "", {find_global("has_alpha"), x, v}),
         "the two values are of different types: bool, float, float3"},
        {made(Builtin::sin, Base_type::float1, {n}), "\"sin\" takes no int"},
        {made(Builtin::sin, Base_type::float1, {x, x}), "\"sin\" takes no float, float"},
        {made(Builtin::max, Base_type::float3, {v, x}), ""},
        {made(Builtin::max, Base_type::float3, {x, v}), "\"max\" takes no float, float3"},
        {made(Builtin::cross, Base_type::float1, {x, x}), "\"cross\" takes no float, float"},
        {made(Builtin::refract, Base_type::float3, {v, v, v}),
         "\"refract\" takes no float3, float3"},
        {made(Builtin::texture_2d, Base_type::float4, {x, v}),
         "\"texture_2d\" takes no float, float3"},
        {made(Builtin::texture_cube_wide, Base_type::float4, {x, v, v, x}),
         "\"texture_cube_wide\" takes no float, float3, float3, float"},
        {made(Builtin::texture_cube_bias, Base_type::float4, {x, v, v}),
         "\"texture_cube_bias\" takes no float, float3, float3"},
        {made(Builtin::host_transform, Base_type::float3, {find_global("world"), v}),
         "\"host_transform\" takes no float4x4, float3"},
        {made(Op::construct, Base_type::float3, "", {x, x}), "no float3 is made of float, float"},
        {made(Op::construct, Base_type::matrix3, "", {x}), "no float3x3 is made of float"},
        {made(Op::construct, Code_type("State"), "", {x}), "no State is made of float"},
        {made(Op::call, Base_type::float1, "f", {state, x, v, n}),
         "no function \"f\" for these arguments is defined before"},
        {made(Op::literal, Base_type::float1, "", {}), "a literal of type float has 0 numbers"},
    };
    for (const auto& row : rows) {
        const std::string mistake = mistake_in(module_of(row.value));
        const std::string expected = *row.mistake ? place + row.mistake : "";
        EXPECT_EQ(mistake.substr(0, expected.size()), expected) << mistake;
        EXPECT_EQ(mistake.empty(), expected.empty()) << mistake;
    }
}

TEST(Verifier, names_the_place_and_the_mistake_of_a_statement)
{
    Statement valueless = let("a", x);
    valueless.value = nullptr;
    Statement wrong_type = let("a", x);
    wrong_type.type = Base_type::float2;
    const Statement inner = let("b", x);
    const Expr on = find_global("has_alpha");
    const struct {
        Statements statements;
        const char* mistake;
    } rows[] = {
        {{let("a", x), let("a", x)}, "in \"f\", statement 2 \"a\": \"a\" is declared twice"},
        {{let("v", x)}, "in \"f\", statement 1 \"v\": \"v\" is declared twice"},
        {{let("time", x)}, "in \"f\", statement 1 \"time\": \"time\" is declared twice"},
        {{valueless}, "in \"f\", statement 1 \"a\": it has no value"},
        {{wrong_type}, "in \"f\", statement 1 \"a\": a float2 gets a float"},
        {{declare(Code_type("Sky"), "a", nullptr)},
         "in \"f\", statement 1 \"a\": no variable is of type Sky"},
        {{declare(Base_type::float1, "a", nullptr), assign(variable(Base_type::float1, "a"), v)},
         "in \"f\", statement 2: a float3 is assigned to a float"},
        {{let("a", x), assign(variable(Base_type::float1, "a"), x)},
         "in \"f\", statement 2: what is assigned is not a variable"},
        {{assign(literal(1.0), x)}, "in \"f\", statement 1: what is assigned is not a variable"},
        {{assign(find_global("time"), x)},
         "in \"f\", statement 1: what is assigned is not a variable"},
        {{assign(v, Operator::multiply, x)}, ""},
        {{assign(x, Operator::multiply, v)},
         "in \"f\", statement 1: a float3 is assigned to a float"},
        {{condition(x, {})}, "in \"f\", statement 1: the condition is not true or false"},
        {{condition(on, {inner}), inner}, ""},
        {{condition(on, {inner}), assign(x, variable(Base_type::float1, "b"))},
         "in \"f\", statement 2: \"b\" is not declared"},
        {{condition(on, {inner, inner})}, "in \"f\", statement 1.2 \"b\": \"b\" is declared twice"},
        {{loop("i", n, {}), loop("i", n, {})}, ""},
        {{loop("i", x, {})}, "in \"f\", statement 1 \"i\": the number of rounds is not an integer"},
        {{loop("i", n, {loop("i", n, {})})},
         "in \"f\", statement 1.1 \"i\": \"i\" is declared twice"},
        {{loop("i", n, {assign(variable(Base_type::integer, "i"), n)})},
         "in \"f\", statement 1.1: what is assigned is not a variable"},
        {{return_value(v)}, "in \"f\", statement 1: the value is not of the function's type"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(mistake_in(module_of(row.statements)), row.mistake);
}

TEST(Verifier, wants_a_value_on_each_path)
{
    Module module = module_of(Statements());
    Statements& body = module.functions[0].body;
    body = {condition(find_global("has_alpha"), {return_value(x)})};
    EXPECT_EQ(mistake_in(module), "in \"f\": not every path returns a value");
    body[0].otherwise = {return_value(x)};
    EXPECT_EQ(mistake_in(module), "");
    body = {loop("i", n, {return_value(x)})};
    EXPECT_EQ(mistake_in(module), "in \"f\": not every path returns a value");
}

TEST(Verifier, names_the_node_of_a_value)
{
    const Origin origin{"node \"wood\" (image)", {}};
    EXPECT_EQ(mistake_in(module_of(with_origin(variable(Base_type::float1, "y"), &origin))),
              "in \"f\", statement 1 \"a\" (of node \"wood\" (image)): \"y\" is not declared");
}

TEST(Verifier, wants_names_and_functions_once_and_in_their_order)
{
    Module module = module_of(Statements());
    module.functions.push_back(module.functions[0]);
    EXPECT_EQ(mistake_in(module), "the function \"f\" is defined twice");
    module.functions[1].parameters.pop_back(); // may share the name
    EXPECT_EQ(mistake_in(module), "");
    module.functions[0].name = "sin";
    EXPECT_EQ(mistake_in(module), "the function \"sin\" is defined twice");

    Module uniforms = module_of(Statements());
    uniforms.textures = {{"a", "", "", "a.png", false}, {"a", "", "", "b.png", false}};
    EXPECT_EQ(mistake_in(uniforms), "\"a\" is declared twice");
    uniforms.textures = {{"x", "", "", "a.png", false}};
    EXPECT_EQ(mistake_in(uniforms), "in \"f\": \"x\" is declared twice");
    uniforms.functions[0].of_library = true; // knows nothing of the document
    EXPECT_EQ(mistake_in(uniforms), "");
    uniforms.parameters.emplace_back();
    EXPECT_EQ(mistake_in(uniforms), "the parameter \"\" has no value");
    EXPECT_EQ(mistake_in(Module()), "the module has no function");
}

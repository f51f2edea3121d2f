#include "reference_host/generator/dialect.h"
#include "reference_host/generator/library.h"
#include "reference_host/generator/printer.h"
#include "reference_host/generator/program.h"
#include "reference_host/generator/shading_state.h"

#include <gtest/gtest.h>

#include <set>

using namespace reference_host;

namespace
{

std::string cg(const std::string& text, Program& program)
{
    return Printer(Language::cg).expression(parse_expression(text, program));
}

Program program_with_variables()
{
    Program program;
    program.define("x", variable(Kind::float1, "x"));
    program.define("v", variable(Kind::float3, "v"));
    program.define("n", variable(Kind::integer, "n"));
    program.define("off", boolean_literal(false));
    program.define("on", boolean_literal(true));
    return program;
}

} // namespace

TEST(Notation, expressions_are_typed)
{
    Program program = program_with_variables();
    EXPECT_EQ(parse_expression("dot(v, v) * x", program)->type, Shading_type(Kind::float1));
    EXPECT_EQ(parse_expression("v * x", program)->type, Shading_type(Kind::float3));
    EXPECT_EQ(parse_expression("v.xy", program)->type, Shading_type(Kind::float2));
    EXPECT_EQ(parse_expression("x > 1.0 && n == 2", program)->type, Shading_type(Kind::boolean));
}

TEST(Notation, integers_are_converted_where_floats_are_wanted)
{
    Program program = program_with_variables();
    EXPECT_EQ(cg("x + n", program), "x + float(n)");
    EXPECT_EQ(cg("x + 2", program), "x + 2.0");
    EXPECT_EQ(cg("n + 2", program), "n + 2");
}

TEST(Notation, scalars_are_repeated_for_functions_that_take_vectors)
{
    Program program = program_with_variables();
    EXPECT_EQ(cg("pow(v, x)", program), "pow(v, x.xxx)");
    EXPECT_EQ(cg("max(v, 0.0)", program), "max(v, 0.0)");
    EXPECT_EQ(cg("mix(v, v, x)", program), "lerp(v, v, x)");
    EXPECT_EQ(cg("clamp(v, 0.0, v)", program), "clamp(v, float3(0.0, 0.0, 0.0), v)");
}

TEST(Notation, branches_that_are_not_taken_need_not_make_sense)
{
    Program program = program_with_variables();
    const Statements kept = parse_statements(
        "float a = x; if (off) { nonsense(b, c); } else a = 2.0; if (on) a *= 3.0; else what();",
        program);
    EXPECT_EQ(Printer(Language::cg).statements(kept, 0), "float a = x;\na = 2.0;\na *= 3.0;\n");
}

TEST(Notation, mistakes_are_errors_and_not_crashes)
{
    const char* const texts[] = {"",      "x +",        "f(x",     "x.rgb",   "v.",      "unknown",
                                 "sin()", "sin(v, v)",  "(x",      "x ? 1.0", "v.xyzwx", "\"open",
                                 "x]",    "noise_3d(v", "1.0 2.0", "@"};
    for (const char* text : texts) {
        Program program = program_with_variables();
        EXPECT_THROW(parse_expression(text, program), Notation_error) << text;
    }
}

TEST(Notation, statements_that_do_not_end_are_errors)
{
    const char* const texts[] = {
        "float a = x", "if (x > 1.0) {", "for (int i = 1; i < 2; i++) x;", "return", "{", "float"};
    for (const char* text : texts) {
        Program program = program_with_variables();
        EXPECT_THROW(parse_statements(text, program), Notation_error) << text;
    }
}

TEST(Library, every_function_has_a_name_of_its_own)
{
    std::set<std::string> names;
    for (const Library_function& function : standard_library().functions()) {
        EXPECT_TRUE(names.insert(function.head.name).second) << function.head.name;
        EXPECT_EQ(find_intrinsic(function.head.name), nullptr) << function.head.name;
        EXPECT_FALSE(is_reserved_word(function.head.name)) << function.head.name;
    }
}

TEST(Library, functions_are_made_once_for_each_type)
{
    Program program = program_with_variables();
    parse_expression("modulo(x, 2.0) + modulo(x, 3.0) + modulo(v, v)", program);
    EXPECT_EQ(program.functions().size(), 2U);
}

TEST(Library, what_a_function_calls_stands_before_it)
{
    Program program = program_with_variables();
    parse_expression("fractal_3d(v, n, x, x)", program);
    std::set<std::string> known;
    for (const Function& function : program.functions()) {
        visit(function.body, [&](const Expression& expression) {
            const bool called = expression.op == Op::call && !find_intrinsic(expression.name);
            EXPECT_TRUE(!called || known.count(expression.name)) << expression.name;
        });
        known.insert(function.name);
    }
    EXPECT_TRUE(known.count("fractal_3d"));
}

TEST(Dialects, every_language_has_a_word_for_every_intrinsic)
{
    for (const char* name : {"abs", "mix", "saturate", "texture_2d", "texture_cube", "ddx", "atan2",
                             "row_transform", "host_untransform"})
        for (const Language language :
             {Language::cg, Language::hlsl, Language::glsl, Language::glsl_legacy, Language::cpp})
            EXPECT_FALSE(intrinsic_text(*find_intrinsic(name), language).empty()) << name;
    EXPECT_EQ(intrinsic_text(*find_intrinsic("texture_2d"), Language::glsl_legacy), "texture2D");
    EXPECT_EQ(intrinsic_text(*find_intrinsic("mix"), Language::hlsl), "lerp");
}

#include "reference_host/targets/float_text.h"
#include "reference_host/targets/printer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace reference_host;

namespace
{

const Expr x = variable(Base_type::float1, "x");
const Expr v = variable(Base_type::float3, "v");

std::string cg(const Expr& expression)
{
    return Printer(Language::cg).expression(expression);
}

} // namespace

TEST(Expression, neutral_operands_vanish)
{
    EXPECT_EQ(cg(binary(Operator::multiply, x, literal(1.0))), "x");
    EXPECT_EQ(cg(binary(Operator::add, literal(0.0), x)), "x");
    EXPECT_EQ(cg(binary(Operator::divide, v, literal(1.0))), "v");
    EXPECT_EQ(cg(binary(Operator::multiply, v, literal(0.0))), "float3(0.0, 0.0, 0.0)");
    EXPECT_EQ(cg(binary(Operator::subtract, literal(0.0), x)), "0.0 - x");
}

TEST(Expression, constants_are_calculated)
{
    EXPECT_EQ(cg(binary(Operator::add, literal(1.5), literal(2.0))), "3.5");
    EXPECT_EQ(cg(binary(Operator::divide, literal(1.0), literal(0.0))), "1.0 / 0.0");
    EXPECT_EQ(cg(binary(Operator::divide, integer_literal(7), integer_literal(2))), "3");
    EXPECT_EQ(cg(choose(boolean_literal(false), x, v)), "v");
    EXPECT_EQ(cg(binary(Operator::equal, text_literal("world"), text_literal("world"))), "true");
    EXPECT_EQ(cg(binary(Operator::equal, text_literal("1"), integer_literal(1))), "false");
}

TEST(Expression, swizzles_of_swizzles_are_one)
{
    EXPECT_EQ(cg(swizzle(swizzle(v, "zyx"), "xx")), "v.zz");
    Expr turned = v;
    for (int i = 0; i < 100001; ++i)
        turned = swizzle(turned, "zyx");
    EXPECT_EQ(cg(turned), "v.zyx");
    EXPECT_EQ(cg(swizzle(v, "xyz")), "v");
    EXPECT_EQ(cg(swizzle(x, "xxx")), "x.xxx");
}

TEST(Expression, parentheses_stand_where_they_are_needed_only)
{
    EXPECT_EQ(cg(binary(Operator::multiply, binary(Operator::add, x, x), x)), "(x + x) * x");
    EXPECT_EQ(cg(binary(Operator::add, binary(Operator::multiply, x, x), x)), "x * x + x");
    EXPECT_EQ(cg(binary(Operator::subtract, x, binary(Operator::subtract, x, v))), "x - (x - v)");
    EXPECT_EQ(cg(binary(Operator::subtract, x, literal(-1.0))), "x - -1.0");
    EXPECT_EQ(cg(negate(binary(Operator::add, x, x))), "-(x + x)");
}

TEST(Expression, repeated_scalars_are_written_as_the_language_does)
{
    const Expr repeated = construct(Base_type::float3, {x});
    EXPECT_EQ(cg(repeated), "x.xxx");
    EXPECT_EQ(Printer(Language::glsl).expression(repeated), "vec3(x)");
    EXPECT_EQ(Printer(Language::cpp).expression(repeated), "float3(x)");
    EXPECT_EQ(Printer(Language::glsl).expression(literal(Base_type::float3, {2, 2, 2})),
              "vec3(2.0)");
    EXPECT_EQ(Printer(Language::cpp).expression(swizzle(v, "zx")), "swizzle<2, 0>(v)");
}

TEST(Expression, products_with_matrices_are_turned_as_the_language_needs)
{
    const Expr matrix = variable(Base_type::matrix4, "m");
    const Expr point = variable(Base_type::float4, "p");
    const Expr product = call(Builtin::host_transform, {matrix, point});
    EXPECT_EQ(cg(product), "mul(m, p)");
    EXPECT_EQ(Printer(Language::hlsl).expression(product), "mul(p, m)");
    EXPECT_EQ(Printer(Language::glsl).expression(swizzle(product, "xyz")), "(m * p).xyz");
}

TEST(Numbers, always_have_a_point_and_never_a_locale)
{
    const struct {
        double number;
        const char* text;
    } rows[] = {{0.0, "0.0"},
                {-0.0, "0.0"},
                {1.0, "1.0"},
                {0.1, "0.1"},
                {1.0 / 3, "0.33333334"},
                {-2.5, "-2.5"},
                {1e-5, "0.00001"},
                {123456.0, "123456.0"},
                {1e30, "1.0e+30"},
                {1e300, "3.4028235e+38"},
                {std::nan(""), "0.0"},
                {-std::numeric_limits<double>::infinity(), "-3.4028235e+38"}};
    for (const auto& row : rows)
        EXPECT_EQ(float_text(row.number), row.text);
}

TEST(Lines, are_broken_at_the_outermost_comma)
{
    const std::string inner(40, 'a');
    EXPECT_EQ(wrapped_line("x = f(g(" + inner + ", " + inner + "), " + inner + ");", 1),
              "    x = f(g(" + inner + ", " + inner + "),\n        " + inner + ");\n");
    EXPECT_EQ(wrapped_line(inner + "(s<0, 1>(" + inner + " * " + inner + "));", 0),
              inner + "(s<0, 1>(" + inner + "\n    * " + inner + "));\n");
    EXPECT_EQ(wrapped_line("short;", 0), "short;\n");
    const std::string unbreakable(150, 'b');
    EXPECT_EQ(wrapped_line(unbreakable, 0), unbreakable + "\n");
}

#include "reference_host/library/library_scope.h"
#include "reference_host/shading/quotes.h"
#include "reference_host/targets/printer.h"

#include <gtest/gtest.h>

#include <set>

using namespace reference_host;

namespace
{

class Scope_with_variables : public Library_scope
{
public:
    Expr find_variable(const std::string& name) override
    {
        if (name == "x")
            return variable(Base_type::float1, "x");
        if (name == "v")
            return variable(Base_type::float3, "v");
        if (name == "n")
            return variable(Base_type::integer, "n");
        if (name == "off" || name == "on")
            return boolean_literal(name == "on");
        return Library_scope::find_variable(name);
    }
};

std::string cg(const std::string& text)
{
    Scope_with_variables scope;
    return Printer(Language::cg).expression(parse_expression(text, scope));
}

} // namespace

TEST(Notation, expressions_are_typed)
{
    Scope_with_variables scope;
    EXPECT_EQ(parse_expression("dot(v, v) * x", scope)->type, Code_type(Base_type::float1));
    EXPECT_EQ(parse_expression("v * x", scope)->type, Code_type(Base_type::float3));
    EXPECT_EQ(parse_expression("v.xy", scope)->type, Code_type(Base_type::float2));
    EXPECT_EQ(parse_expression("x > 1.0 && n == 2", scope)->type, Code_type(Base_type::boolean));
}

TEST(Notation, integers_are_converted_where_floats_are_wanted)
{
    Scope_with_variables scope;
    EXPECT_EQ(cg("x + n"), "x + float(n)");
    EXPECT_EQ(cg("x + 2"), "x + 2.0");
    EXPECT_EQ(cg("n + 2"), "n + 2");
}

TEST(Notation, scalars_are_repeated_for_functions_that_take_vectors)
{
    Scope_with_variables scope;
    EXPECT_EQ(cg("pow(v, x)"), "pow(v, x.xxx)");
    EXPECT_EQ(cg("max(v, 0.0)"), "max(v, 0.0)");
    EXPECT_EQ(cg("mix(v, v, x)"), "lerp(v, v, x)");
    EXPECT_EQ(cg("clamp(v, 0.0, v)"), "clamp(v, float3(0.0, 0.0, 0.0), v)");
}

TEST(Notation, branches_that_are_not_taken_need_not_make_sense)
{
    Scope_with_variables scope;
    const Shade_text text{"float f() { float a = x; if (off) { nonsense(b, c); } else a = 2.0; "
                          "if (on) a *= 3.0; else what(); return a; }",
                          {}};
    EXPECT_EQ(Printer(Language::cg).statements(parse_function(text, scope).body, 0),
              "float a = x;\na = 2.0;\na *= 3.0;\nreturn a;\n");
}

TEST(Notation, mistakes_are_errors_and_not_crashes)
{
    const char* const texts[] = {"",      "x +",        "f(x",     "x.rgb",   "v.",      "unknown",
                                 "sin()", "sin(v, v)",  "(x",      "x ? 1.0", "v.xyzwx", "\"open",
                                 "x]",    "noise_3d(v", "1.0 2.0", "@"};
    for (const char* text : texts) {
        Scope_with_variables scope;
        EXPECT_THROW(parse_expression(text, scope), Notation_error) << text;
    }
}

TEST(Notation, what_is_nested_too_deeply_is_an_error)
{
    const auto repeated = [](const std::string& text) {
        std::string all;
        for (int i = 0; i < 100000; ++i)
            all += text;
        return all;
    };
    for (const char* text : {"(", "-", "!", "sin(", "x ? x : ", "x + ", "x + (", "v[", "v.xyz"}) {
        Scope_with_variables scope;
        EXPECT_THROW(parse_expression(repeated(text) + "x", scope), Notation_error) << text;
    }
    for (const char* text : {"{", "if (x > 1.0) ", "for (int i = 0; i < n; i++) "}) {
        Scope_with_variables scope;
        const std::string function = "float f() { " + repeated(text) + "x = 1.0; }";
        EXPECT_THROW(parse_function({function, {}}, scope), Notation_error) << text;
    }
    EXPECT_EQ(cg(std::string(300, '(') + "x" + std::string(300, ')')), "x");
}

TEST(Notation, numbers_out_of_range_are_errors)
{
    EXPECT_THROW(cg("n + 2147483648"), Notation_error);
    EXPECT_THROW(cg("x + 1" + std::string(400, '0') + ".0"), Notation_error);
    EXPECT_EQ(cg("n + 2147483647"), "n + 2147483647");
}

TEST(Notation, functions_and_statements_that_do_not_end_are_errors)
{
    const char* const texts[] = {
        "float a = x }", "if (x > 1.0) {", "float }",    "let float a; }",
        "return }",      "{ return x; }",  "x = x; } }", "for (int i = 1; i < 2; i++) x = x; }"};
    for (const char* text : texts) {
        Scope_with_variables scope;
        const std::string function = std::string("float f() { ") + text;
        EXPECT_THROW(parse_function({function, {}}, scope), Notation_error) << text;
    }
}

TEST(Notation, texts_in_quotes_may_have_any_sign)
{
    const std::string text = "a \"b\" \\ c\nd";
    EXPECT_EQ(in_quotes(text), "\"a \\\"b\\\" \\\\ c\\nd\"");
    EXPECT_EQ(without_quotes(in_quotes(text)), text);
    EXPECT_EQ(quoted_length(in_quotes(text) + " rest"), in_quotes(text).size());
    EXPECT_EQ(quoted_length("\"open \\"), 7U);
}

TEST(Library, every_function_has_a_name_of_its_own)
{
    std::set<std::string> names;
    for (const Library_function& function : standard_library().functions()) {
        EXPECT_TRUE(names.insert(function.head.name).second) << function.head.name;
        EXPECT_EQ(find_builtin(function.head.name), Builtin::none) << function.head.name;
        EXPECT_FALSE(reserved_names().words.count(function.head.name)) << function.head.name;
    }
}

TEST(Library, functions_are_made_once_for_each_type)
{
    Scope_with_variables scope;
    parse_expression("modulo(x, 2.0) + modulo(x, 3.0) + modulo(v, v)", scope);
    EXPECT_EQ(scope.used().size(), 2U);
}

TEST(Library, what_a_function_calls_stands_before_it)
{
    Scope_with_variables scope;
    parse_expression("fractal_3d(v, n, x, x)", scope);
    std::vector<Function> functions;
    for (const Library_instance* used : scope.used())
        add_with_callees(*used, functions);
    std::set<std::string> known;
    for (const Function& function : functions) {
        visit(function.body, [&](const Expression& expression) {
            EXPECT_TRUE(expression.op != Op::call || known.count(expression.name))
                << expression.name;
        });
        known.insert(function.name);
    }
    EXPECT_TRUE(known.count("fractal_3d"));
}

TEST(Dialects, every_language_has_a_word_for_every_builtin)
{
    for (int i = 0; i < static_cast<int>(Builtin::none); ++i)
        for (const Language language :
             {Language::cg, Language::hlsl, Language::glsl, Language::glsl_legacy, Language::cpp})
            EXPECT_STRNE(spelling(static_cast<Builtin>(i), language), "");
    EXPECT_STREQ(spelling(Builtin::texture_2d, Language::glsl_legacy), "texture2D");
    EXPECT_STREQ(spelling(Builtin::mix, Language::hlsl), "lerp");
    EXPECT_STREQ(spelling(Builtin::dot, Language::cpp), "dot");
}

// Mistakes in files of shading text, as the build reports them.
#include "reference_host/system/process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace
{

struct Checked {
    int status;
    std::string output; // without the folder
};

Checked check(const std::string& text)
{
    const QZ::TEST::Temporary_folder folder;
    auto result = reference_host::run_program({SHADE_CHECK, folder.write("broken.shade", text)});
    const std::string prefix = folder.path() + "/";
    for (std::size_t at = 0; (at = result.output.find(prefix)) != std::string::npos;)
        result.output.erase(at, prefix.size());
    return {result.status, result.output};
}

} // namespace

TEST(Shade_check, says_nothing_about_a_file_without_mistakes)
{
    const Checked checked =
        check("// Half of something.\n"
              "T half_of(T x) { return x * 0.5; }\n"
              "types numbers = float color3;\n"
              "inputs placed = vector2 place = texcoord, float size = 1 [0 2];\n"
              "node halved<numbers>(T in = 1, ...placed)\n"
              "{\n    let T half = half_of(in);\n    T out = half * size;\n}\n");
    EXPECT_EQ(checked.output, "");
    EXPECT_EQ(checked.status, 0);
}

TEST(Shade_check, names_the_file_and_the_line_of_each_mistake)
{
    const struct {
        const char *text, *message;
    } mistakes[] = {
        {"float f(float x)\n{\n    return g(x);\n}\n",
         "broken.shade:3: no function \"g\" for these arguments\n"},
        {"// Two lines\n// of comment.\nfloat f(float x)\n{\n    return x + y;\n}\n",
         "broken.shade:5: unknown name \"y\"\n"},
        {"float f(float2 x)\n{\n    return x;\n}\n",
         "broken.shade:3: the value is not of the function's type\n"},
        {"float3 f(float3 x)\n{\n    float2 a = x.xy;\n    return a + x;\n}\n",
         "broken.shade:4: wrong types of operands for \"+\"\n"},
        {"float f(float x)\n{\n    if (has_alpha)\n        return x;\n    else\n        return "
         "z;\n}\n",
         "broken.shade:6: unknown name \"z\"\n"},
        {"float f(float x)\n{\n    if (has_alpha)\n        return x;\n}\n",
         "broken.shade:1: in \"f\": not every path returns a value\n"},
        {"\nfloat f(float x)\n{\n    float x = 1.0;\n    x += 1.0;\n    return x;\n}\n",
         "broken.shade:2: in \"f\", statement 1 \"x\": \"x\" is declared twice\n"},
        {"\nfloat f(float x)\n{\n", "broken.shade:2: what begins here does not end\n"},
        {"float f(float x) { return x; }\nfloat f(float2 x) { return x.x; }\n",
         "broken.shade:2: the function \"f\" exists twice\n"},
        {"node n(colour3 in)\n{\n    color3 out = in;\n}\n",
         "broken.shade:1: unknown type \"colour3\"\n"},
        {"node n(\n    float a, float b = 1 2) { float out = a; }\n",
         "broken.shade:2: the default of \"b\" has 2 numbers and its type, float, 1\n"},
        {"node n(float a, float a) { float out = a; }\n",
         "broken.shade:1: the input \"a\" exists twice\n"},
        {"node n(vector3 a = texcoord) { vector3 out = a; }\n",
         "broken.shade:1: the scene has no \"texcoord\" of the type of input \"a\"\n"},
        {"node n(float a)\n{\n    float out = a\n        + c;\n}\n",
         "broken.shade:4: unknown name \"c\"\n"},
        {"node n(vector2 a)\n{\n    vector3 out = a;\n}\n",
         "broken.shade:3: \"out\" has a value of another type\n"},
        {"node n(float a, string s)\n{\n    float out = s == \"x\" ? a : b;\n}\n",
         "broken.shade:3: unknown name \"b\"\n"},
        {"node n(float a) { }\n", "broken.shade:1: the node \"n\" has no output\n"},
        {"node n(...placed) { float out = 1.0; }\n",
         "broken.shade:1: unknown list of inputs \"placed\"\n"},
    };
    for (const auto& mistake : mistakes) {
        const Checked checked = check(mistake.text);
        EXPECT_EQ(checked.output, mistake.message) << mistake.text;
        EXPECT_EQ(checked.status, 1) << mistake.text;
    }
}

TEST(Shade_check, goes_on_after_a_mistake)
{
    EXPECT_EQ(check("float f(float x) { return a; }\nfloat g(float x) { return b; }\n").output,
              "broken.shade:1: unknown name \"a\"\nbroken.shade:2: unknown name \"b\"\n");
}

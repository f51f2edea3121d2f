#include "reference_host/render/effect_text.h"

#include "reference_host/render/shader_tokens.h"
#include "tests/render/test_files.h"

#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

TEST(Describe_effect, finds_the_programs_of_both_kinds_of_effect)
{
    const Effect_description cgfx = describe_effect(fixture_text("plain.cgfx"));
    EXPECT_EQ(cgfx.vertex_entry, "vertex_main");
    EXPECT_EQ(cgfx.fragment_entry, "fragment_main");
    EXPECT_FALSE(cgfx.direct3d);
    const Effect_description hlsl = describe_effect(fixture_text("plain.fx"));
    EXPECT_EQ(hlsl.vertex_entry, "vertex_main");
    EXPECT_EQ(hlsl.fragment_entry, "fragment_main");
    EXPECT_TRUE(hlsl.direct3d);
}

TEST(Describe_effect, finds_no_program_in_comments)
{
    const Effect_description effect = describe_effect(
        "// VertexProgram = compile vp40 a();\n/* FragmentProgram = compile fp40 b(); */\n");
    EXPECT_EQ(effect.vertex_entry, "");
    EXPECT_EQ(effect.fragment_entry, "");
}

TEST(Describe_effect, gives_a_sampler_the_file_of_its_texture)
{
    for (const char* file : {"plain.cgfx", "plain.fx"})
        EXPECT_THAT(describe_effect(fixture_text(file)).texture_files,
                    UnorderedElementsAre(Pair("base_map", "stripes.png"),
                                         Pair("base_map_sampler", "stripes.png")))
            << file;
}

TEST(Describe_effect, reads_the_file_of_a_sampler_without_texture)
{
    EXPECT_THAT(describe_effect("sampler2D wood < string UIName = \"Wood; < 3\"; string "
                                "ResourceName = \"a b.png\"; > = sampler_state { MinFilter = "
                                "Linear; };")
                    .texture_files,
                ElementsAre(Pair("wood", "a b.png")));
}

TEST(Describe_effect, lists_the_structs_that_implement_an_unsized_list)
{
    EXPECT_THAT(describe_effect(fixture_text("lights.cgfx")).unsized_lists,
                ElementsAre(Pair("lights", ElementsAre("SLightDir", "SLightPoint", "SLightSpot"))));
    EXPECT_THAT(describe_effect("interface Light {}; Light lights[];").unsized_lists, IsEmpty());
}

struct Semantics_case {
    const char* text;
    const char* stripped;
};

TEST(Parameter_semantics, go_from_global_parameters_but_nothing_else)
{
    const Semantics_case cases[] = {
        {"float4 p : POSITION = {1, 2, 3, 4};", "float4 p            = {1, 2, 3, 4};"},
        {"float3 d : DIRECTION;", "float3 d            ;"},
        {"float3 c : LIGHTCOLOR < int LightRef = 0; >;",
         "float3 c              < int LightRef = 0; >;"},
        {"float4x4 m : WORLDVIEW;", "float4x4 m : WORLDVIEW;"},
        {"struct A { float3 p : POSITION; };", "struct A { float3 p : POSITION; };"},
        {"struct A : Light { };", "struct A : Light { };"},
        {"float4 f(float3 p : POSITION) : COLOR { }", "float4 f(float3 p : POSITION) : COLOR { }"},
        {"// float4 p : POSITION;", "// float4 p : POSITION;"},
    };
    for (const Semantics_case& row : cases)
        EXPECT_EQ(without_parameter_semantics(row.text), row.stripped) << row.text;
}

TEST(Texture_comments, name_the_image_of_a_uniform)
{
    EXPECT_THAT(texture_comments("#version 130\n// texture wood: images/a b.png\n"
                                 "//texture x: y\n// texture : z\n// texture none\n"),
                ElementsAre(Pair("wood", "images/a b.png")));
}

TEST(Glsl_uniforms, tell_which_have_a_value)
{
    const auto uniforms = glsl_uniforms("uniform vec3 tint = vec3(1.0);\n"
                                        "uniform float roughness;\n"
                                        "// uniform float not_this;\n"
                                        "uniform sampler2D maps[2];");
    ASSERT_EQ(uniforms.size(), 3U);
    EXPECT_EQ(uniforms[0].name, "tint");
    EXPECT_TRUE(uniforms[0].has_value);
    EXPECT_EQ(uniforms[1].name, "roughness");
    EXPECT_FALSE(uniforms[1].has_value);
    EXPECT_EQ(uniforms[2].type, "sampler2D");
}

TEST(Shader_tokens, know_words_texts_and_how_deep_they_stand)
{
    const std::string text = "a{b \"c\\\"d\"}// e\n#define f\n/* g */h";
    std::vector<std::string> words;
    for (const Token& token : tokens_of(text))
        words.push_back(std::to_string(token.depth) + std::string(token.text));
    EXPECT_THAT(words, ElementsAre("0a", "0{", "1b", "1c\\\"d", "0}", "0h"));
}

TEST(Effect_text, hostile_texts_are_read_to_their_end)
{
    const std::string texts[] = {
        "",
        "\"",
        "\"\\",
        "/*",
        "//",
        "{{{{(((",
        "}}}}]])",
        "float a :",
        "struct a",
        "sampler2D a <",
        "texture a = {",
        std::string(3, '\0'),
        "compile",
        "= compile",
        "uniform",
        "\xff\xfe\x80 \xff : \xff ;",
        "// texture ",
        "VertexProgram = compile",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(describe_effect(text).vertex_entry, "") << text;
        EXPECT_EQ(without_parameter_semantics(text).size(), text.size()) << text;
        EXPECT_THAT(texture_comments(text), IsEmpty()) << text;
        EXPECT_THAT(glsl_uniforms(text), IsEmpty()) << text;
    }
}

} // namespace

} // namespace reference_host

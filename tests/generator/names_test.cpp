#include "reference_host/targets/dialect.h"
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using reference_host::make_identifier;
using reference_host::Names;
using reference_host::reserved_names;

TEST(Names, become_identifiers_of_every_language)
{
    const struct {
        const char *name, *identifier;
    } rows[] = {{"brick_color", "brick_color"},
                {"Brick Color", "Brick_Color"},
                {"a__b", "a_b"},
                {"_a_", "a"},
                {"2nd", "n2nd"},
                {"", "unnamed"},
                {"\xff\xfe", "unnamed"},
                {"a\nb\\c\"d", "a_b_c_d"},
                {"gl_Color", "the_gl_Color"},
                {"gr\xc3\xbcn", "gr_n"},
                {"/path/to", "path_to"},
                {"vertex_color", "the_vertex_color"},
                {"fragment_x", "the_fragment_x"}};
    for (const auto& row : rows)
        EXPECT_EQ(make_identifier(row.name, reserved_names()), row.identifier);
}

TEST(Names, reserved_words_of_any_language_are_changed)
{
    for (const char* word : {"texture",   "sampler", "asm",       "compile",   "string", "vector",
                             "matrix",    "half",    "fixed",     "input",     "output", "inout",
                             "interface", "pass",    "technique", "float3",    "vec3",   "class",
                             "Texture",   "int",     "lerp",      "namespace", "mix"})
        EXPECT_EQ(make_identifier(word, reserved_names()), std::string("the_") + word);
}

TEST(Names, that_collide_are_numbered_in_order)
{
    Names names(reserved_names());
    EXPECT_EQ(names.take("wood"), "wood");
    EXPECT_EQ(names.take("wood"), "wood_2");
    EXPECT_EQ(names.take("wood_2"), "wood_2_2");
    EXPECT_EQ(names.take("wood "), "wood_3");
}

TEST(Names, of_the_skeleton_and_the_library_are_taken)
{
    Names names(reserved_names());
    for (const char* name : {"state", "vertex_main", "noise_3d", "world_view", "ParamID",
                             "texcoord1", "State", "surface", "SLightDir"})
        EXPECT_NE(names.take(name), name);
}

TEST(Names, odd_ones_reach_the_text_as_identifiers)
{
    const auto graph = generation::graph_of(R"(
<geomcolor name="technique" type="color3"/>
<multiply name="state" type="color3">
  <input name="in1" type="color3" nodename="technique"/>
  <input name="in2" type="color3" nodename="technique"/>
</multiply>
<surface_unlit name="float3" type="surfaceshader">
  <input name="emission_color" type="color3" nodename="state"/>
</surface_unlit>)");
    const auto result = generation::generate_node(*graph, "float3", "FX", {});
    EXPECT_TRUE(generation::contains(result.text(), "float4 the_float3(State state)"));
    EXPECT_TRUE(generation::contains(result.text(), "float3 state_2 = "));
}

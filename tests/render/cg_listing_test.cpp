#include "reference_host/render/cg_listing.h"

#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char listing_text[] = R"(// glslf output by Cg compiler
//profile glslf
//semantic tint
//var float4x4 world_view : WORLDVIEW : _world_view[0], 4 : -1 : 1
//var float3 tint :  : _tint : -1 : 1
//var float3x3 turn :  : _turn[0], 3 : -1 : 1
//var float4 lamps[0].color :  : _lamps[0]._color : -1 : 1
//var float4 lamps[1].color :  : _lamps[1]._color : -1 : 1
//var float3 lights[0].unused :  :  : -1 : 0
//var float4 vertex.texcoord0 : $vin.TEXCOORD0 : TEXCOORD0 : 0 : 1
//default tint = 0.5 1 1e-05
//default turn[0] = 1 2 3
//default turn[1] = 4 5 6
//default turn[2] = 7 8 9
//default color = 1 1 1 1
//default color = 2 2 2 2

#version 120
)";

const Cg_variable& variable(const Cg_listing& listing, const std::string& name)
{
    for (const Cg_variable& candidate : listing.variables)
        if (candidate.name == name)
            return candidate;
    ADD_FAILURE() << "no variable " << name;
    static const Cg_variable none;
    return none;
}

TEST(Cg_listing, variables_have_type_semantic_uniform_and_number_of_rows)
{
    const Cg_listing listing = read_cg_listing(listing_text);
    ASSERT_EQ(listing.variables.size(), 7U);
    const Cg_variable& matrix = variable(listing, "world_view");
    EXPECT_EQ(matrix.type, "float4x4");
    EXPECT_EQ(matrix.semantic, "WORLDVIEW");
    EXPECT_EQ(matrix.uniform, "_world_view");
    EXPECT_EQ(matrix.count, 4);
    EXPECT_EQ(variable(listing, "vertex.texcoord0").semantic, "$vin.TEXCOORD0");
    EXPECT_EQ(variable(listing, "lights[0].unused").uniform, "");
    EXPECT_EQ(variable(listing, "lamps[1].color").uniform, "_lamps[1]._color");
}

TEST(Cg_listing, defaults_are_found_by_name)
{
    const Cg_listing listing = read_cg_listing(listing_text);
    EXPECT_THAT(default_of(listing, variable(listing, "tint")), ElementsAre(0.5F, 1, 1e-05F));
    EXPECT_THAT(default_of(listing, variable(listing, "world_view")), IsEmpty());
}

TEST(Cg_listing, the_default_of_a_matrix_is_that_of_its_rows)
{
    const Cg_listing listing = read_cg_listing(listing_text);
    EXPECT_THAT(default_of(listing, variable(listing, "turn")),
                ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST(Cg_listing, the_default_of_a_list_element_is_the_one_of_its_turn)
{
    const Cg_listing listing = read_cg_listing(listing_text);
    EXPECT_THAT(default_of(listing, variable(listing, "lamps[1].color")), ElementsAre(2, 2, 2, 2));
}

TEST(Cg_listing, odd_lines_are_left_out)
{
    const Cg_listing listing = read_cg_listing("//var \n//var x\n//var float x\n//default\n"
                                               "//default y\n//var : : \n//var");
    EXPECT_THAT(listing.variables, IsEmpty());
    EXPECT_THAT(listing.defaults, IsEmpty());
}

} // namespace

} // namespace reference_host

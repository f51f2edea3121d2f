#include "reference_host/render/effect_parameters.h"

#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

using testing::ElementsAre;
using testing::FloatEq;
using testing::IsEmpty;

Effect_parameter only_parameter(const std::string& text)
{
    const std::vector<Effect_parameter> parameters = effect_parameters(text);
    EXPECT_EQ(parameters.size(), 1U) << text;
    return parameters.empty() ? Effect_parameter() : parameters[0];
}

TEST(Effect_parameters, have_the_name_range_and_folder_of_their_annotations)
{
    const Effect_parameter parameter =
        only_parameter("float sun_intensity < string UIName = \"Sun \\\"1\\\"\"; string UIWidget = "
                       "\"Slider\"; float UIMin = -0.5; float UIMax = 1e1; float UIStep = 0.1; "
                       "string UIFolder = \"sun; <a>\"; > = 1.5;");
    EXPECT_EQ(parameter.name, "sun_intensity");
    EXPECT_EQ(parameter.label, "Sun \"1\"");
    EXPECT_EQ(parameter.folder, "sun; <a>");
    EXPECT_EQ(parameter.widget, Parameter_widget::slider);
    EXPECT_EQ(parameter.min, -0.5F);
    EXPECT_EQ(parameter.max, 10.0F);
    EXPECT_EQ(parameter.step, 0.1F);
    EXPECT_THAT(parameter.value, ElementsAre(1.5F));
}

TEST(Effect_parameters, are_found_by_standard_annotations_too)
{
    const Effect_parameter parameter = only_parameter(
        "float a < string SasUiLabel = \"A\"; string SasUiControl = \"Slider\"; float SasUiMin = "
        "2.0; float SasUiMax = 3.0; float SasUiStride = 0.5; > = 2.5;");
    EXPECT_EQ(parameter.label, "A");
    EXPECT_EQ(parameter.widget, Parameter_widget::slider);
    EXPECT_EQ(parameter.min, 2.0F);
    EXPECT_EQ(parameter.max, 3.0F);
    EXPECT_EQ(parameter.step, 0.5F);
}

TEST(Effect_parameters, have_values_of_every_form)
{
    const struct {
        const char* text;
        std::vector<float> value;
    } rows[] = {
        {"float3 a < string UIName = \"A\"; > = float3(1.0, -.5, 2.5e-1);", {1, -0.5F, 0.25F}},
        {"float3 a < string UIName = \"A\"; > = {0.1, 0.2, 0.3};", {0.1F, 0.2F, 0.3F}},
        {"float2 a < string UIName = \"A\"; > = float2(4.0);", {4, 4}},
        {"bool a < string UIName = \"A\"; > = true;", {1}},
        {"int a < string UIName = \"A\"; > = -7;", {-7}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(only_parameter(row.text).value, row.value) << row.text;
}

TEST(Effect_parameters, leave_out_what_is_not_for_an_artist)
{
    for (const char* text :
         {"float a = 1.0;", "float a < string UIName = \"A\"; string UIWidget = \"None\"; > = 1.0;",
          "float a < string UIName = \"A\"; >;",
          "float a[2] < string UIName = \"A\"; > = {1.0, 2.0};",
          "float4x4 a < string UIName = \"A\"; > = 1.0;",
          "texture a < string UIName = \"A\"; string ResourceName = \"a.png\"; >;",
          "float3 a < string UIName = \"A\"; > = float3(1.0, 2.0);",
          "float a < string UIName = \"A\"; > = 1.0"})
        EXPECT_THAT(effect_parameters(text), IsEmpty()) << text;
}

} // namespace

} // namespace reference_host

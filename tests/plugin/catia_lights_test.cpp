// The text of the lights that the CATIA export appends: as a text, and run. CgFX is near enough to
// C++ that the three lights compile as it stands here, with a State and an iterator of the test's.
#include "exporters/catia_lights.h"

#include <gmock/gmock.h>

#include <cmath>
#include <regex>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace QZ
{
namespace TEST
{
namespace
{

using ::testing::ElementsAre;
using ::testing::StartsWith;
using TOVIRAEXPORT::catia_lights;
using Lines = std::vector<std::string>;

// ---- the language

struct float3 {
    double x, y, z;
};

struct float4 {
    float4() = default;
    float4(const float3& vector, double fourth) : xyz(vector), w(fourth) {}
    float3 xyz{};
    double w{};
};

struct float3x3 {
    float3 rows[3];
};

struct float4x4 {
    float3x3 rotation;
    float3 translation;
    explicit operator float3x3() const { return rotation; }
};

float3 operator-(const float3& v)
{
    return {-v.x, -v.y, -v.z};
}

float3 operator+(const float3& a, const float3& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

float3 operator-(const float3& a, const float3& b)
{
    return a + -b;
}

float3 operator*(const float3& v, double factor)
{
    return {v.x * factor, v.y * factor, v.z * factor};
}

float3& operator/=(float3& v, double divisor)
{
    return v = v * (1.0 / divisor);
}

float4 operator*(const float4& v, double factor)
{
    return {v.xyz * factor, v.w * factor};
}

double dot(const float3& a, const float3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double length(const float3& v)
{
    return std::sqrt(dot(v, v));
}

float3 normalize(const float3& v)
{
    return v * (1.0 / length(v));
}

float3 mul(const float3x3& m, const float3& v)
{
    return {dot(m.rows[0], v), dot(m.rows[1], v), dot(m.rows[2], v)};
}

float4 mul(const float4x4& m, const float4& v)
{
    return {mul(m.rotation, v.xyz) + m.translation * v.w, v.w};
}

double max(double a, double b)
{
    return a > b ? a : b;
}

[[maybe_unused]] double min(double a, double b)
{
    return a < b ? a : b;
}

double clamp(double v, double low, double high)
{
    return v < low ? low : v > high ? high : v;
}

double pow(double v, double exponent)
{
    return std::pow(v, exponent);
}

// ---- what the generated effect declares

struct State {
    float3 position;
    float3 normal;
    float3 light_to_surface;
    double light_distance;
    double light_dotnl;
};

struct Light_iterator {
    float4 tsl_raw_contribution;
    float4 tsl_contribution;
    float3 tsl_point;
    double tsl_distance;
    double tsl_dot_nl;
    float3 tsl_direction;
};

struct Light {
};

#define float double // exact enough to tell 3.141592 from pi
#include "catia_lights_as_cpp.h"
#undef float

// ---- the text

Lines lines_of(const std::string& text)
{
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// The lines that are code: without comments, indents, trailing spaces and empty lines.
Lines code_lines()
{
    Lines lines;
    for (const std::string& line : lines_of(catia_lights)) {
        const std::string code = std::regex_replace(line, std::regex("//.*$"), "");
        const size_t begin = code.find_first_not_of(' ');
        if (begin != std::string::npos)
            lines.push_back(code.substr(begin, code.find_last_not_of(' ') - begin + 1));
    }
    return lines;
}

TEST(Catia_lights, are_11780_bytes_with_a_space_before_every_newline)
{
    const std::string text = catia_lights;
    EXPECT_EQ(text.size(), 11780u);
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(text.find('\r'), std::string::npos);
    EXPECT_EQ(text.find('\t'), std::string::npos);
    for (const std::string& line : lines_of(text))
        EXPECT_EQ(line.find_last_of(' '), line.size() - 1) << line;
}

TEST(Catia_lights, begin_with_a_comment_that_names_them)
{
    const std::string first = lines_of(catia_lights)[0];
    EXPECT_THAT(first, StartsWith("// CATIA"));
    for (const char* kind : {"directional light", "point light", "spot light"})
        EXPECT_NE(first.find(kind), std::string::npos) << kind;
}

// Generated code may declare the matrix, too. It is the first code, and nothing else is guarded.
TEST(Catia_lights, guard_the_matrix)
{
    const Lines code = code_lines();
    EXPECT_THAT(Lines(code.begin(), code.begin() + 5),
                ElementsAre("#ifndef __WORLD_TO_CAMERA", "#define __WORLD_TO_CAMERA",
                            "float4x4 __world_to_camera : View;", "#endif",
                            "struct SLightDir : Light"));
    for (size_t i = 5; i < code.size(); ++i)
        EXPECT_NE(code[i][0], '#') << code[i];
}

TEST(Catia_lights, declare_three_structs_with_the_same_five_members)
{
    Lines declarations;
    Lines signatures;
    for (const std::string& line : code_lines()) {
        if (line.find("struct ") == 0 || line.find("const ") == 0)
            declarations.push_back(line);
        else if (line.find("Light_iterator eval") == 0 || line.find("void ") == 0)
            signatures.push_back(line);
    }
    Lines expected;
    for (const char* name : {"SLightDir", "SLightPoint", "SLightSpot"}) {
        expected.push_back(std::string("struct ") + name + " : Light");
        for (const char* member :
             {"LightPos", "LightDir", "LightColor", "LightColorSpec", "lightI_SCos_SExp"})
            expected.push_back(std::string("const float3 ") + member + ";");
    }
    EXPECT_EQ(declarations, expected);
    EXPECT_THAT(signatures,
                ElementsAre("void Light_directional_main(float3 color, State state, "
                            "out float4 result)",
                            "Light_iterator eval(State state)", "Light_iterator eval(State state)",
                            "Light_iterator eval(State state)"));
}

// A line of dashes, the name, a line of dashes or text: it stands before the later two.
TEST(Catia_lights, separate_point_and_spot_by_comments)
{
    const std::string text = catia_lights;
    for (const char* light : {"Point", "Spot"}) {
        const size_t comment = text.find(std::string("-- \n// ") + light + " light \n");
        ASSERT_NE(comment, std::string::npos) << light;
        const size_t end = text.find("\n \n", comment);
        EXPECT_EQ(text.compare(end + 3, 7, "struct "), 0);
        EXPECT_EQ(text.find(std::string("SLight") + light + " : Light", end), end + 10);
    }
}

// The application's exponent is not used: the line that would use it stays a comment, right before
// the fixed one.
TEST(Catia_lights, keep_the_exponent_of_the_light_as_a_comment)
{
    const std::string text = catia_lights;
    const std::string expected = "        // falloff = pow(falloff, lightI_SCos_SExp.z); \n"
                                 "        falloff = pow(falloff, 250.0); \n";
    EXPECT_NE(text.find(expected), std::string::npos);
    EXPECT_EQ(text.find("pow("), text.find(expected) + expected.find("pow("));
    for (const std::string& line : code_lines()) {
        EXPECT_EQ(line.find("lightI_SCos_SExp.z"), std::string::npos) << line;
        EXPECT_EQ(line.find("lightI_SCos_SExp.x"), std::string::npos) << line;
    }
}

// ---- the members

template<typename Struct>
constexpr bool has_constant_members()
{
    return std::is_const_v<decltype(Struct::LightPos)> &&
           std::is_const_v<decltype(Struct::LightDir)> &&
           std::is_const_v<decltype(Struct::LightColor)> &&
           std::is_const_v<decltype(Struct::LightColorSpec)> &&
           std::is_const_v<decltype(Struct::lightI_SCos_SExp)> && std::is_base_of_v<Light, Struct>;
}

TEST(Catia_lights, hold_members_that_only_the_application_sets)
{
    EXPECT_TRUE(has_constant_members<SLightDir>());
    EXPECT_TRUE(has_constant_members<SLightPoint>());
    EXPECT_TRUE(has_constant_members<SLightSpot>());
}

// ---- what the lights compute

const float3 light_position = {1, -2, 4};
const float3 light_direction = {2, 3, -6};
const float3 light_color = {0.25, 0.5, 2};
const float3 unused = {101, 102, 103};
constexpr double cone = 0.9; // cosine

// A light with another value in every member.
template<typename Struct>
Struct make_light(const float3& direction)
{
    return {{}, light_position, direction, light_color, unused, {107, cone, 109}};
}

void expect_near(const float3& vector, const float3& expected)
{
    constexpr double tolerance = 1e-12;
    EXPECT_NEAR(vector.x, expected.x, tolerance);
    EXPECT_NEAR(vector.y, expected.y, tolerance);
    EXPECT_NEAR(vector.z, expected.z, tolerance);
}

// A quarter turn about z, and a translation.
class Catia_light : public ::testing::Test
{
protected:
    Catia_light() { __world_to_camera = {{{{0, -1, 0}, {1, 0, 0}, {0, 0, 1}}}, {10, 20, 30}}; }

    static float3 turned(const float3& v) { return {-v.y, v.x, v.z}; }
    static float3 in_camera_space(const float3& v) { return turned(v) + float3{10, 20, 30}; }

    static State state_at(const float3& position)
    {
        return {position, normalize({1, 2, 3}), {-1, -1, -1}, -1, -1};
    }

    // What all lights have in common: `from_light` is the vector from the light to the surface.
    static void expect_common(const Light_iterator& light, const float3& from_light,
                              double brightness)
    {
        const float3 direction = normalize(from_light);
        expect_near(light.tsl_direction, -direction);
        EXPECT_NEAR(light.tsl_distance, length(from_light), 1e-12);
        EXPECT_NEAR(light.tsl_dot_nl, dot(-direction, normalize({1, 2, 3})), 1e-12);
        expect_near(light.tsl_raw_contribution.xyz, light_color * 3.141592 * brightness);
        EXPECT_NEAR(light.tsl_raw_contribution.w, 3.141592 * brightness, 1e-12);
        expect_near(light.tsl_contribution.xyz, light.tsl_raw_contribution.xyz);
        EXPECT_EQ(light.tsl_contribution.w, light.tsl_raw_contribution.w);
    }

    // The brightness of a spot light at a point whose angle to its axis has that cosine.
    static double spot_brightness(double cosine)
    {
        const float3 axis = {0, 0, 1}; // the same in both spaces
        const double sine = std::sqrt(1 - cosine * cosine);
        const float3 from_light = float3{sine, 0, cosine} * 5;
        const float3 point = in_camera_space(light_position) + from_light;
        const Light_iterator light = make_light<SLightSpot>(axis * 3).eval(state_at(point));
        const double brightness = light.tsl_raw_contribution.w / 3.141592;
        expect_common(light, from_light, brightness);
        return brightness;
    }
};

// LightDir points from the scene to the light; only the rotation applies to it. The point is
// reported as it was set, in world space.
TEST_F(Catia_light, directional_light_comes_from_its_direction)
{
    const Light_iterator light = make_light<SLightDir>(light_direction).eval(state_at({5, 6, 7}));
    expect_common(light, turned(-light_direction), 1);
    expect_near(light.tsl_point, light_position);
    EXPECT_EQ(light.tsl_distance, 7);
}

TEST_F(Catia_light, directional_contribution_is_a_method_of_its_own)
{
    float4 result;
    make_light<SLightDir>(light_direction)
        .Light_directional_main(light_color, state_at({}), result);
    expect_near(result.xyz, light_color * 3.141592);
    EXPECT_EQ(result.w, 3.141592);
}

TEST_F(Catia_light, point_light_shines_from_its_position_without_falling_off)
{
    for (const float3& point : {float3{5, 6, 7}, float3{500, 600, 700}}) {
        const Light_iterator light = make_light<SLightPoint>(light_direction).eval(state_at(point));
        expect_common(light, point - in_camera_space(light_position), 1);
        expect_near(light.tsl_point, in_camera_space(light_position));
    }
}

TEST_F(Catia_light, spot_light_reports_its_position_in_camera_space)
{
    const Light_iterator light = make_light<SLightSpot>(light_direction).eval(state_at({5, 6, 7}));
    expect_near(light.tsl_point, in_camera_space(light_position));
    expect_near(light.tsl_direction, -normalize(float3{5, 6, 7} - in_camera_space(light_position)));
}

// Its axis is turned with the camera, too.
TEST_F(Catia_light, spot_light_is_brightest_along_its_axis)
{
    const float3 point = in_camera_space(light_position) + turned(light_direction) * 2;
    const Light_iterator light = make_light<SLightSpot>(light_direction).eval(state_at(point));
    expect_common(light, turned(light_direction) * 2, 1);
}

TEST_F(Catia_light, spot_light_is_whole_inside_its_cone_and_fades_outside)
{
    for (const double inside : {1.0, 0.95, cone + 1e-9})
        EXPECT_NEAR(spot_brightness(inside), 1, 1e-9) << inside;
    for (const double outside : {0.899, 0.89, 0.88, 0.87, 0.86, 0.85, 0.5}) {
        const double t = (cone - outside) / cone;
        const double curve = 1 - (3 * t * t * (1 - t) + t * t * t);
        EXPECT_NEAR(spot_brightness(outside), std::pow(curve, 250), 1e-9) << outside;
    }
    EXPECT_NEAR(spot_brightness(0.87), 0.4421, 5e-5); // as its comment tells
}

TEST_F(Catia_light, spot_light_leaves_what_is_behind_it_dark)
{
    for (const double behind : {0.0, -0.5, -0.95, -1.0})
        EXPECT_EQ(spot_brightness(behind), 0) << behind;
}

} // namespace
} // namespace TEST
} // namespace QZ

// Shaders below and above what the programs of a profile can hold.
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using namespace generation;

namespace
{

std::string unlit(const std::string& color)
{
    return R"(<surface_unlit name="flat" type="surfaceshader">
  <input name="emission_color" type="color3" nodename=")" +
           color + R"("/>
</surface_unlit>
<surfacematerial name="paint" type="material">
  <input name="surfaceshader" type="surfaceshader" nodename="flat"/>
</surfacematerial>)";
}

// Nodes "n0", "n1" ... of a category with its inputs ("$" is the number), each added to the sum of
// those before.
std::string sum_of(int count, const std::string& category, const std::string& inputs)
{
    std::string elements = "<constant name=\"sum0\" type=\"color3\"/>";
    for (int i = 1; i <= count; ++i) {
        const std::string n = std::to_string(i);
        std::string own = inputs;
        for (std::size_t at = own.find('$'); at != std::string::npos; at = own.find('$'))
            own.replace(at, 1, n);
        elements += "<" + category + " name=\"n" + n + "\" type=\"color3\">" + own + "</" +
                    category + "><add name=\"sum" + n +
                    "\" type=\"color3\"><input name=\"in1\" type=\"color3\" nodename=\"n" + n +
                    "\"/><input name=\"in2\" type=\"color3\" nodename=\"sum" +
                    std::to_string(i - 1) + "\"/></add>";
    }
    return elements + unlit("sum" + std::to_string(count));
}

// Four instructions for each of them, the sum included.
std::string powers(int count)
{
    return "<geomcolor name=\"c\" type=\"color3\"/>" +
           sum_of(count, "power",
                  "<input name=\"in1\" type=\"color3\" nodename=\"c\"/>"
                  "<input name=\"in2\" type=\"float\" value=\"$.5\"/>");
}

// Lookups of one texture.
std::string images(int count)
{
    return sum_of(count, "tiledimage",
                  "<input name=\"file\" type=\"filename\" value=\"a.png\"/>"
                  "<input name=\"uvtiling\" type=\"vector2\" value=\"$, 1\"/>");
}

// Parameters.
std::string sums(int count)
{
    return "<geomcolor name=\"c\" type=\"color3\"/>" +
           sum_of(count, "multiply",
                  "<input name=\"in1\" type=\"color3\" nodename=\"c\"/>"
                  "<input name=\"in2\" type=\"color3\" value=\"0.1$, 0.2$, 0.3$\"/>");
}

// Parts that each keep a register while a program jumps between them.
std::string choices(int count)
{
    return "<geomcolor name=\"c\" type=\"color3\"/><texcoord name=\"t\" type=\"vector2\"/>"
           "<extract name=\"u\" type=\"float\"><input name=\"in\" type=\"vector2\" "
           "nodename=\"t\"/></extract>" +
           sum_of(count, "ifgreater",
                  "<input name=\"value1\" type=\"float\" nodename=\"u\"/>"
                  "<input name=\"value2\" type=\"float\" value=\"0.$\"/>"
                  "<input name=\"in1\" type=\"color3\" nodename=\"c\"/>");
}

// More values of the vertex than eight, of more floats than 32.
std::string handed_over(int texcoords)
{
    std::string elements = "<constant name=\"s\" type=\"vector3\"/>";
    std::string last = "s";
    for (const char* category : {"position", "normal", "tangent", "bitangent"})
        for (const char* space : {"object", "world"}) {
            const std::string name = std::string(category) + "_" + space;
            elements += "<" + std::string(category) + " name=\"" + name +
                        "\" type=\"vector3\"><input name=\"space\" type=\"string\" value=\"" +
                        space + "\"/></" + category + "><add name=\"s_" + name +
                        "\" type=\"vector3\"><input name=\"in1\" type=\"vector3\" nodename=\"" +
                        name + "\"/><input name=\"in2\" type=\"vector3\" nodename=\"" + last +
                        "\"/></add>";
            last = "s_" + name;
        }
    for (int i = 0; i < texcoords; ++i) {
        const std::string index = std::to_string(i);
        const std::string name = "t" + index;
        elements += "<texcoord name=\"" + name +
                    "\" type=\"vector3\"><input name=\"index\" type=\"integer\" value=\"" + index +
                    "\"/></texcoord><add name=\"s_" + name +
                    "\" type=\"vector3\"><input name=\"in1\" type=\"vector3\" nodename=\"" + name +
                    "\"/><input name=\"in2\" type=\"vector3\" nodename=\"" + last + "\"/></add>";
        last = "s_" + name;
    }
    return elements +
           "<convert name=\"c\" type=\"color3\"><input name=\"in\" type=\"vector3\" nodename=\"" +
           last + "\"/></convert>";
}

std::string plastic()
{
    return R"(<standard_surface name="plastic" type="surfaceshader"/>
<surfacematerial name="paint" type="material">
  <input name="surfaceshader" type="surfaceshader" nodename="plastic"/>
</surfacematerial>)";
}

std::string octaves(int count)
{
    return sum_of(1, "fractal3d",
                  "<input name=\"octaves\" type=\"integer\" value=\"" + std::to_string(count) +
                      "\"/>");
}

Option_set profile_options(const std::string& profile)
{
    const char* format = profile.compare(0, 3, "ps_") == 0 ? "HLSL" : "CgFX";
    return {{"format", format}, {"fragment_shader_profile", profile}};
}

Result with_profile(const std::string& elements, const std::string& profile)
{
    return generate(*graph_of(elements), "FX", {}, profile_options(profile));
}

void expect_fits(const std::string& elements, const std::string& profile)
{
    const Result result = with_profile(elements, profile);
    EXPECT_FALSE(result.texts.empty()) << profile << ": " << result.messages();
    EXPECT_EQ(result.messages(), "") << profile;
}

void expect_refused(const std::string& elements, const std::string& profile,
                    const std::string& reason)
{
    const Result result = with_profile(elements, profile);
    EXPECT_TRUE(result.texts.empty()) << profile << " takes it";
    EXPECT_TRUE(contains(result.messages(), reason)) << profile << ": " << result.messages();
}

} // namespace

TEST(Profile_limits, a_shader_of_too_many_instructions_is_refused)
{
    expect_fits(powers(9), "ps_2_0");
    expect_refused(powers(16), "ps_2_0", "instructions, ps_2_0 has 64;");
    expect_fits(powers(80), "ps_2_a");
    expect_refused(powers(110), "ps_2_a", "instructions, ps_2_a has 512;");
    expect_fits(powers(100), "arbfp1");
    expect_refused(octaves(8), "arbfp1", "instructions, arbfp1 has 1024;");
    expect_refused(octaves(2'000'000'000), "arbfp1", "instructions, arbfp1 has 1024;");
    expect_fits(powers(700), "fp40");
    expect_refused(powers(900), "fp40", "instructions, fp40 has 4096;");
}

TEST(Profile_limits, lookups_of_textures_have_a_limit_of_their_own)
{
    expect_fits(images(10), "ps_2_0");
    expect_refused(images(33), "ps_2_0", "lookups of textures, ps_2_0 has 32;");
    expect_fits(images(33), "ps_2_a");
}

TEST(Profile_limits, a_shader_of_too_many_parameters_is_refused)
{
    expect_fits(sums(30), "ps_2_b");
    expect_refused(sums(60), "ps_2_b", "registers for parameters and numbers, ps_2_b has 32;");
    EXPECT_FALSE(with_profile(powers(700), "ps_3_0").texts.empty());
    expect_refused(powers(950), "ps_3_0", "registers for parameters and numbers, ps_3_0 has 224;");
}

TEST(Profile_limits, choices_take_registers_where_programs_jump_for_them)
{
    expect_fits(choices(26), "fp40");
    expect_refused(choices(40), "fp40", "temporary registers, fp40 has 32;");
    expect_fits(choices(40), "ps_3_0");
}

TEST(Profile_limits, wide_graphs_need_few_registers_because_their_order_is_free)
{
    expect_fits(powers(60), "arbfp1");
}

TEST(Profile_limits, loops_are_written_out_only_where_programs_cannot_jump)
{
    expect_fits(octaves(8), "fp40");
    EXPECT_FALSE(with_profile(octaves(8), "ps_3_0").texts.empty());
    expect_refused(octaves(8), "fp30", "instructions, fp30 has 1024;");
}

TEST(Profile_limits, the_node_that_takes_most_is_named)
{
    std::string elements = powers(2);
    elements.replace(elements.find("nodename=\"c\""), 12, "nodename=\"dear\"");
    elements += "<fractal3d name=\"dear\" type=\"color3\"/>";
    expect_refused(elements, "ps_2_0", "\"dear\" (fractal3d): the shader needs about");
}

TEST(Profile_limits, what_only_some_machines_take_is_written_with_a_warning)
{
    const Result result = with_profile(powers(130), "ps_3_0");
    EXPECT_FALSE(result.texts.empty());
    EXPECT_TRUE(contains(result.messages(), "instructions; ps_3_0 promises 512"))
        << result.messages();
    expect_fits(powers(80), "ps_3_0");
}

TEST(Profile_limits, profiles_without_limits_and_unknown_ones_take_everything)
{
    expect_fits(powers(1200), "gp4fp");
    expect_fits(powers(1200), "ps_4_0");
    EXPECT_FALSE(with_profile(powers(1200), "ps_9_9").texts.empty());
}

TEST(Profile_limits, a_list_of_lights_counts_as_three)
{
    const auto graph = graph_of(plastic());
    const Result empty = generate(*graph, "FX", {}, profile_options("arbfp1"));
    EXPECT_FALSE(empty.texts.empty()) << empty.messages();
    Option_set options = profile_options("ps_2_x");
    options["format"] = "CgFX";
    options["interfaces"] = "true";
    const Result lit = generate(*graph, "FX", {{"preserve_light_loop", "true"}}, options);
    EXPECT_TRUE(contains(lit.messages(), "the shader needs about")) << lit.messages();
}

TEST(Profile_limits, derivatives_are_refused_where_a_profile_has_none)
{
    const std::string bump =
        "<position name=\"p\" type=\"vector3\"/><noise2d name=\"h\" type=\"float\"/>"
        "<heighttonormal name=\"n\" type=\"vector3\">"
        "<input name=\"in\" type=\"float\" nodename=\"h\"/></heighttonormal>"
        "<convert name=\"c\" type=\"color3\">"
        "<input name=\"in\" type=\"vector3\" nodename=\"n\"/></convert>" +
        unlit("c");
    EXPECT_TRUE(contains(with_profile(bump, "fp40").text(), "ddx("));
    EXPECT_FALSE(contains(with_profile(bump, "ps_2_b").text(), "ddx("));
}

TEST(Profile_limits, profiles_hand_over_eight_or_ten_values)
{
    const std::string elements = handed_over(2) + unlit("c");
    expect_fits(elements, "ps_3_0");
    expect_refused(elements, "ps_2_a", "values to the fragment program, which takes 8");
}

TEST(Profile_limits, old_versions_of_glsl_hand_over_thirty_two_floats)
{
    const auto fitting = graph_of(handed_over(4) + unlit("c"));
    const auto too_wide =
        graph_of(handed_over(4) +
                 "<geomcolor name=\"v\" type=\"color3\"/><add name=\"d\" type=\"color3\">"
                 "<input name=\"in1\" type=\"color3\" nodename=\"c\"/>"
                 "<input name=\"in2\" type=\"color3\" nodename=\"v\"/></add>" +
                 unlit("d"));
    EXPECT_FALSE(generate(*fitting, "GL", {}, {{"glsl_version", "120"}}).texts.empty());
    EXPECT_FALSE(generate(*too_wide, "GL", {}, {{"glsl_version", "130"}}).texts.empty());
    const Result old = generate(*too_wide, "GL", {}, {{"glsl_version", "120"}});
    EXPECT_TRUE(contains(old.messages(), "36 floats to the fragment program, which takes 32"))
        << old.messages();
}

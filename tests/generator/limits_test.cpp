// Graphs at and beyond what a program can hold.
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using namespace generation;

namespace
{

const Option_set lit = {{"scene_ambient", "float4(1,1,1,1)"}};

std::string surface_over(const std::string& node)
{
    return R"(<standard_surface name="paint_surface" type="surfaceshader">
  <input name="base_color" type="color3" nodename=")" +
           node + R"("/>
</standard_surface>
<surfacematerial name="paint" type="material">
  <input name="surfaceshader" type="surfaceshader" nodename="paint_surface"/>
</surfacematerial>)";
}

// Nodes "n0" to "n<count>", each the sum of `sources` times the one before.
std::string sums(int count, bool twice)
{
    std::string elements = "<geomcolor name=\"n0\" type=\"color3\"/>";
    for (int i = 1; i <= count; ++i) {
        const std::string source = "nodename=\"n" + std::to_string(i - 1) + "\"";
        elements += "<add name=\"n" + std::to_string(i) +
                    "\" type=\"color3\"><input name=\"in1\" " + "type=\"color3\" " + source +
                    "/><input name=\"in2\" type=\"color3\" " +
                    (twice ? source : std::string("value=\"0.1, 0, 0\"")) + "/></add>\n";
    }
    return elements + surface_over("n" + std::to_string(count));
}

std::string images(int count)
{
    std::string elements = "<constant name=\"sum0\" type=\"color3\"/>";
    for (int i = 1; i <= count; ++i) {
        const std::string n = std::to_string(i);
        elements += "<image name=\"i" + n + "\" type=\"color3\"><input name=\"file\" " +
                    "type=\"filename\" value=\"" + n + ".png\"/></image><add name=\"sum" + n +
                    "\" type=\"color3\"><input name=\"in1\" type=\"color3\" nodename=\"i" + n +
                    "\"/><input name=\"in2\" type=\"color3\" nodename=\"sum" +
                    std::to_string(i - 1) + "\"/></add>";
    }
    return elements + surface_over("sum" + std::to_string(count));
}

std::size_t count_of(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1))
        ++count;
    return count;
}

} // namespace

TEST(Limits, a_ladder_of_a_trillion_paths_is_one_statement_for_each_node)
{
    const auto graph = graph_of(sums(40, true));
    const Result result = generate(*graph, "FX", {}, lit);
    const std::size_t normals = count_of(result.text(), "    float3 normal");
    EXPECT_EQ(count_of(result.text(), "    float3 n") - normals, 40U) << result.messages();
}

TEST(Limits, a_hundred_thousand_nodes_in_a_row_do_not_exhaust_the_stack)
{
    const auto graph = graph_of(sums(100000, false));
    const Result result = generate(*graph, "GL", {}, lit);
    ASSERT_FALSE(result.texts.empty()) << result.messages();
    EXPECT_TRUE(contains(result.texts.back(), "vec3 n100000 = n99999 + vec3(0.1, 0.0, 0.0);"));
    EXPECT_TRUE(contains(generate(*graph, "FX", {}, lit).messages(), "instructions, fp40 has"));
}

TEST(Limits, sixteen_textures_fit_and_seventeen_are_refused)
{
    EXPECT_FALSE(generate(*graph_of(images(16)), "FX", {}, lit).texts.empty());
    for (const char* target : {"FX", "GL"}) {
        const Result result = generate(*graph_of(images(17)), target, {}, lit);
        EXPECT_TRUE(result.texts.empty()) << target;
        EXPECT_TRUE(contains(result.messages(), "reads 17 textures; 16 is the limit"));
    }
}

TEST(Limits, an_image_that_many_nodes_read_is_one_texture)
{
    const auto graph = graph_of(R"(
<image name="a" type="color3"><input name="file" type="filename" value="x.png"/></image>
<image name="b" type="color3"><input name="file" type="filename" value="x.png"/></image>
<add name="c" type="color3">
  <input name="in1" type="color3" nodename="a"/>
  <input name="in2" type="color3" nodename="b"/>
</add>)" + surface_over("c"));
    EXPECT_EQ(count_of(generate(*graph, "FX", {}, lit).text(), "\ntexture "), 1U);
}

TEST(Limits, too_many_values_for_the_interpolators_are_refused)
{
    std::string elements = "<constant name=\"s\" type=\"vector3\"/>";
    std::string last = "s";
    const auto add = [&](const std::string& node, const std::string& name) {
        elements += node + "<add name=\"s_" + name + "\" type=\"vector3\"><input name=\"in1\" " +
                    "type=\"vector3\" nodename=\"" + name +
                    "\"/><input name=\"in2\" type=\"vector3\" nodename=\"" + last + "\"/></add>";
        last = "s_" + name;
    };
    for (const char* category : {"position", "normal", "tangent", "bitangent"})
        for (const char* space : {"object", "world"}) {
            const std::string name = std::string(category) + "_" + space;
            add("<" + std::string(category) + " name=\"" + name +
                    "\" type=\"vector3\"><input name=\"space\" type=\"string\" value=\"" + space +
                    "\"/></" + category + ">",
                name);
        }
    for (int i = 0; i < 4; ++i)
        add("<texcoord name=\"t" + std::to_string(i) +
                "\" type=\"vector3\"><input name=\"index\" type=\"integer\" value=\"" +
                std::to_string(i) + "\"/></texcoord>",
            "t" + std::to_string(i));
    elements +=
        "<convert name=\"c\" type=\"color3\"><input name=\"in\" type=\"vector3\" nodename=\"" +
        last + "\"/></convert>" + surface_over("c");
    const auto graph = graph_of(elements);
    const Result result = generate(*graph, "FX", {}, lit);
    EXPECT_TRUE(result.texts.empty());
    EXPECT_TRUE(contains(result.messages(), "values to the fragment program, which takes 8"));
    EXPECT_FALSE(generate(*graph, "GL", {}, lit).texts.empty());
}

// What cannot be expressed is refused with the node's name, its category and the reason.
#include "tests/generator/generation.h"

#include <gtest/gtest.h>

using namespace generation;

namespace
{

std::string unlit(const std::string& nodes, const std::string& last)
{
    return nodes + R"(
<surface_unlit name="shown" type="surfaceshader">
  <input name="emission_color" type="color3" nodename=")" +
           last + R"("/>
</surface_unlit>)";
}

std::string bump(const char* category, const char* input)
{
    return unlit(std::string("<texcoord name=\"uv\" type=\"vector2\"/>"
                             "<extract name=\"u\" type=\"float\"><input name=\"in\" "
                             "type=\"vector2\" nodename=\"uv\"/></extract><") +
                     category + " name=\"bumpy\" type=\"vector3\"><input name=\"" + input +
                     "\" type=\"float\" nodename=\"u\"/></" + category +
                     "><convert name=\"c\" type=\"color3\"><input name=\"in\" type=\"vector3\" "
                     "nodename=\"bumpy\"/></convert>",
                 "c");
}

} // namespace

TEST(Refusals, derivatives_are_there_in_shaders_and_not_in_renderer_sources)
{
    const struct {
        const char *category, *input;
    } rows[] = {{"heighttonormal", "in"}, {"bump", "height"}};
    for (const auto& row : rows) {
        const auto graph = graph_of(bump(row.category, row.input));
        EXPECT_FALSE(generate_node(*graph, "shown", "FX", {}).texts.empty()) << row.category;
        const Result result = generate_node(*graph, "shown", "Swrc", {});
        EXPECT_TRUE(result.texts.empty());
        EXPECT_EQ(result.messages(),
                  std::string("node \"bumpy\" (") + row.category +
                      "): it needs derivatives, which the target does not have\n");
        EXPECT_GT(result.diagnostics[0].place.line, 0);
    }
}

TEST(Refusals, name_the_node_and_the_reason)
{
    const struct {
        const char *nodes, *message;
    } rows[] = {
        {R"(<texcoord name="uv" type="vector2">
            <input name="index" type="integer" value="7"/></texcoord>
            <swizzle name="c" type="color3"><input name="in" type="vector2" nodename="uv"/>
            <input name="channels" type="string" value="xyx"/></swizzle>)",
         "node \"uv\" (texcoord): there are four sets of texture coordinates, 0 to 3\n"},
        {R"(<texcoord name="uv" type="vector2"/>
            <swizzle name="c" type="color3"><input name="in" type="vector2" nodename="uv"/>
            <input name="channels" type="string" value="xyz"/></swizzle>)",
         "node \"c\" (swizzle): there are no channels \"xyz\"\n"},
        {R"(<image name="c" type="color3"><input name="file" type="filename" value="a.png"
            colorspace="mystery"/></image>)",
         "node \"c\" (image): the colour space \"mystery\" is unknown\n"},
    };
    for (const auto& row : rows) {
        const auto graph = graph_of(unlit(row.nodes, "c"));
        EXPECT_EQ(generate_node(*graph, "shown", "FX", {}).messages(), row.message);
    }
}

TEST(Refusals, a_property_that_no_mesh_has_is_a_warning_and_the_default)
{
    const auto graph = graph_of(unlit(R"(
<geompropvalue name="c" type="color3">
  <input name="geomprop" type="string" value="rust"/>
  <input name="default" type="color3" value="0.25, 0.5, 0.75"/>
</geompropvalue>)",
                                      "c"));
    const Result result = generate_node(*graph, "shown", "FX", {});
    EXPECT_TRUE(contains(result.text(), "float3(0.25, 0.5, 0.75)"));
    EXPECT_TRUE(contains(result.messages(), "no property \"rust\""));
}

TEST(Refusals, shaders_of_one_kind_are_not_exported_as_another)
{
    const auto graph = graph_of(painted_scene());
    const struct {
        const char *node, *kind, *message;
    } rows[] = {{"sun", "surface", "its output is not a colour"},
                {"paint", "light", "it is not a light"},
                {"paint", "volume", "it is not a volume"},
                {"haze", "environment", "its output is not a colour"}};
    for (const auto& row : rows) {
        const Result result = generate_node(*graph, row.node, "FX", {{"shader_type", row.kind}});
        EXPECT_TRUE(result.texts.empty());
        EXPECT_TRUE(contains(result.messages(), row.message)) << result.messages();
    }
}

TEST(Refusals, a_material_without_a_shader_says_so)
{
    const auto graph = graph_of("<surfacematerial name=\"paint\" type=\"material\"/>");
    EXPECT_EQ(generate(*graph, "FX", {}, {}).messages(),
              "node \"paint\" (surfacematerial): no surfaceshader is connected\n");
}

// The document has a node that nobody knows, of a type that nobody knows, and two shaders.
TEST(Refusals, an_unknown_node_spoils_only_what_uses_it)
{
    const auto graph = graph_of(R"(
<frobnicate name="strange" type="marvel">
  <input name="in" type="marvel" value="x"/>
</frobnicate>
<frobnicate name="odd" type="color3"><input name="in" type="color3" value="1, 1, 1"/></frobnicate>
<surface_unlit name="plain" type="surfaceshader"/>
<surface_unlit name="spoilt" type="surfaceshader">
  <input name="emission_color" type="color3" nodename="odd"/>
</surface_unlit>
<frobnicated_surface name="unknown" type="surfaceshader"/>)");
    ASSERT_TRUE(graph);
    EXPECT_FALSE(generate_node(*graph, "plain", "FX", {}).texts.empty());
    for (const char* name : {"spoilt", "odd"}) {
        const Result spoilt = generate_node(*graph, name, "FX", {});
        EXPECT_TRUE(spoilt.texts.empty());
        EXPECT_EQ(spoilt.messages(), "node \"odd\" (frobnicate): there is no such node\n");
        EXPECT_GT(spoilt.diagnostics[0].place.line, 0);
    }
    EXPECT_EQ(generate_node(*graph, "unknown", "FX", {}).messages(),
              "node \"unknown\" (frobnicated_surface): there is no such node\n");
    EXPECT_EQ(generate_node(*graph, "strange", "FX", {}).messages(),
              "node \"strange\" (frobnicate): there is no such node\n");
}

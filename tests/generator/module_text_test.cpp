// Modules in the notation: what is printed reads back as the same module.
#include "reference_host/shading/module_text.h"
#include "tests/generator/generation.h"
#include "tests/generator/same_module.h"

#include <gmock/gmock.h>

using namespace generation;
using reference_host::Module;

namespace
{

Module read(const std::string& text)
{
    return reference_host::read_module({text, {"module", 1}});
}

void expect_same_again(const Module& module, const std::string& what)
{
    const std::string text = module_text(module);
    try {
        const Module again = read(text);
        EXPECT_EQ(module_text(again), text) << what;
        EXPECT_EQ(first_difference(module, again), "") << what;
    } catch (const std::runtime_error& error) {
        ADD_FAILURE() << what << ": " << error.what() << "\n" << text;
    }
}

// After each phase, for each target. Returns how many modules there were.
int expect_same_in_all_phases(const Shader_graph& graph, const Option_set& group)
{
    int count = 0;
    Diagnostics diagnostics;
    const auto compiled = reference_host::compile_group(graph, group, {}, diagnostics);
    if (!compiled)
        return 0;
    for (const char* target : {"FX", "GL", "Swrc"})
        for (const std::string& phase : reference_host::phase_names())
            if (const auto module = compiled->module_after(phase, target, {}, diagnostics)) {
                expect_same_again(*module, group.at("shader_name") + " " + target + " " + phase);
                ++count;
            }
    return count;
}

// What stands in it is missing nowhere.
const char* const small_module = R"~(shader pattern shown;
source document "a \"b\".mtlx" folder "/c\nd" node "e" category "f";
without "g", "h";
name shown = "shown ö";
parameter float3 tint kind "color3" label "Tint" folder "Look" description "Dyes" min -1.0 max 1.0 step 0.1 scene constant = float3(0.5, -0.25, 0.0);
parameter float4x4 frame kind "matrix44" = float4x4(1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0);
parameter bool on kind "boolean" = true;
texture samplerCUBE sky file "sky.dds" label "Sky" folder "Look";

library float twice(float x)
{
    return x * 2.0;
}

library float2 twice(float2 x)
{
    return x * 2.0;
}

float4 shown(State state)
{
    let float3 a = tint * twice(state.texture_coordinate0).xyx;
    float3 b = a;

    for (int i = 0; i < lights.length; i++)
    {
        b += lights[i].eval(state).tsl_contribution.xyz;
    }
    if (on && !(twice(b.x) > 1.0))
    {
        b = -b;
    }
    else
    {
        b *= frame[2].w - (0.5 - b.y);
    }
    b.x = refused<float>("no \"x\"", "node \"n\" (image)", "a.mtlx", 12) + refused<float>("why");
    b -= texture_cube(sky, b).xyz + (has_alpha ? scene_ambient.xyz : float3(float(int(b.x))));
    return float4(b, 1.0);
}
)~";

} // namespace

TEST(Module_text, reads_back_as_the_same_module_for_every_document_after_each_pass)
{
    int count = 0;
    for (const Test_document& document : all_documents()) {
        SCOPED_TRACE(document.name);
        for (const std::string& node : exported_nodes(*document.graph)) {
            const int unlit = expect_same_in_all_phases(*document.graph, {{"shader_name", node}});
            const int lit = expect_same_in_all_phases(*document.graph, lit_by_all(node));
            EXPECT_GT(unlit, 0) << node;
            EXPECT_GT(lit, 0) << node;
            count += unlit + lit;
        }
    }
    EXPECT_GT(count, 9 * 2 * 18); // the samples have at least one material each
}

TEST(Module_text, reads_back_as_the_same_module_for_lights_and_volumes)
{
    const auto graph = graph_of(painted_scene());
    for (const char* node : {"spot", "haze", "sky", "paint"})
        EXPECT_GT(expect_same_in_all_phases(*graph, {{"shader_name", node}}), 0) << node;
}

TEST(Module_text, tells_why_a_value_is_refused_and_where)
{
    const auto graph = graph_of("<frobnicate name='odd' type='color3'/>\n"
                                "<blur name='soft' type='color3'/>\n"
                                "<multiply name='both' type='color3'>"
                                "<input name='in1' type='color3' nodename='odd'/>"
                                "<input name='in2' type='color3' nodename='soft'/></multiply>\n"
                                "<standard_surface name='s' type='surfaceshader'>"
                                "<input name='base_color' type='color3' nodename='both'/>"
                                "</standard_surface>\n");
    Diagnostics diagnostics;
    const auto compiled =
        reference_host::compile_node(*graph, *graph->find_node("s"), {}, diagnostics);
    ASSERT_TRUE(compiled); // without light no text needs the value
    const auto module = compiled->module_after("lower", "GL", {}, diagnostics);
    const std::string text = module_text(*module);
    EXPECT_THAT(text, testing::HasSubstr("refused<float3>(\"there is no such node\","));
    EXPECT_THAT(text, testing::HasSubstr("\"node \\\"odd\\\" (frobnicate)\","));
    EXPECT_THAT(text, testing::ContainsRegex("scene.mtlx\",[ \n]+3"));
    EXPECT_THAT(text, testing::HasSubstr("it reads its input at other places, which takes"));
    expect_same_again(*module, "refused");
}

TEST(Module_text, has_all_that_a_module_is)
{
    const Module module = read(small_module);
    EXPECT_EQ(module_text(module), small_module);
    EXPECT_EQ(module.document, "a \"b\".mtlx");
    EXPECT_EQ(module.folder, "/c\nd");
    EXPECT_EQ(module.parameters[0].step, 0.1);
    EXPECT_TRUE(module.has_refusals);
    EXPECT_EQ(module.origins->front().place.line, 12);
    EXPECT_FALSE(module.functions[1].of_library && module.functions[2].of_library);
}

TEST(Module_text, names_the_line_of_each_mistake)
{
    const struct {
        const char *text, *message;
    } mistakes[] = {
        {"surface a;", "module:1: expected \"shader \""},
        {"shader wood a;", "module:1: no shader is a \"wood\""},
        {"shader pattern a;\n", "module:2: the module has no function"},
        {"shader pattern a;\nsource node e;", "module:2: expected a text in quotes"},
        {"shader pattern a;\nparameter float2 b = 1.0;", "module:2: the value of \"b\" is none of"},
        {"shader pattern a;\nparameter float b = c;", "module:2: unknown name \"c\""},
        {"shader pattern a;\ntexture float b;", "module:2: no texture is of this type"},
        {"shader pattern a;\n\nfloat f()\n{\n    return g(1.0);\n}",
         "module:5: no function \"g\" for these arguments"},
        {"shader pattern a;\nfloat f()\n{\n    return refused<float>(1.0);\n}",
         "module:4: wrong arguments for \"refused\""},
        {"shader pattern a;\nfloat f()\n{", "module:2: what begins here does not end"},
    };
    for (const auto& mistake : mistakes)
        try {
            read(mistake.text);
            ADD_FAILURE() << mistake.text;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(mistake.message)) << mistake.text;
        }
}

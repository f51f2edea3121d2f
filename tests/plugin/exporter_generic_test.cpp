// The exports of the generic exporter.
#include "exporters/exporter_generic.h"

#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "tests/plugin/export_test.h"

#include <functional>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// The options that CgFX and HLSL FX share, with their defaults.
Options common_options(const char* vertex_profile, const char* fragment_profile)
{
    return {{"annotation_map", "default.axml"},
            {"vertex_shader_profile", vertex_profile},
            {"fragment_shader_profile", fragment_profile},
            {"internal_space", "camera"},
            {"vertex_stream_space", "object"},
            {"two_sided", "false"},
            {"face_forward", "false"},
            {"rotate_cube_map", "false"},
            {"flip_tex2d_v", "false"},
            {"generate_sampler_states", "true"},
            {"alpha_transparency", "false"},
            {"use_oit", "false"},
            {"depth_test", "true"},
            {"depth_write", "true"},
            {"hlsl_sas_conformance", "false"},
            {"generate_samplers", "true"},
            {"vs_binding_tangent", "TANGENT"},
            {"vs_binding_binormal", "BINORMAL"},
            {"add_default_states", "true"},
            {"generate_umapped_annotations", "false"}};
}

Options joined(Options first, const Options& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const Options cgfx_defaults = joined(joined({{"shader_type", "surface"},
                                             {"format", "CgFX"},
                                             {"interfaces", "false"},
                                             {"eval_volume", "false"}},
                                            common_options("vp40", "fp40")),
                                     {{"scene_ambient", "float4(0.00,0.00,0.00,1.00)"}});

const Options hlsl_defaults =
    joined({{"shader_type", "surface"}, {"format", "HLSL"}}, common_options("vs_3_0", "ps_3_0"));

const Options glsl_defaults = {{"shader_type", "surface"},
                               {"alpha_transparency", "false"},
                               {"two_sided", "false"},
                               {"use_oit", "false"},
                               {"glsl_version", "130"}};

// A table with one value changed.
Options with(Options options, const std::string& name, const std::string& value)
{
    for (auto& option : options)
        if (option.first == name)
            option.second = value;
    return options;
}

Options without(Options options, const std::string& name)
{
    options.erase(std::remove_if(options.begin(), options.end(),
                                 [&](const auto& option) { return option.first == name; }),
                  options.end());
    return options;
}

class Exporter_generic_test : public Export_test
{
protected:
    using Edit = std::function<void(Exporter_panel&)>;

    // Exports as "a" with what `edit` changes on the panel.
    bool run(Exporter_generic& exporter, const Edit& edit)
    {
        exporter.initialize();
        {
            Exporter_panel panel(exporter);
            panel.set_text(ID_EXPORTFILE_TEXT, folder.file("a"));
            edit(panel);
        }
        const Message_boxes boxes(std::vector<int>(3, wxID_YES));
        return exporter.export_shader(host.app(), host.view());
    }

    Exporter_generic cgfx{Exporter_generic::TARGET_CGFX};
    Exporter_generic hlsl{Exporter_generic::TARGET_HLSL};
    Exporter_generic glsl{Exporter_generic::TARGET_GLSL};
};

TEST_F(Exporter_generic_test, cgfx_options_are_set_in_order)
{
    EXPECT_TRUE(export_as(cgfx, "a"));
    EXPECT_EQ(host.options(1),
              (Options{{"shader_name", "wood"}, {"resolve_unsized_arrays", "true"}}));
    EXPECT_EQ(host.options(2), cgfx_defaults);
    EXPECT_EQ(folder.read("a.cgfx"), "code 0\n");
}

TEST_F(Exporter_generic_test, hlsl_options_are_set_in_order_without_ambient)
{
    EXPECT_TRUE(export_as(hlsl, "a"));
    EXPECT_EQ(host.options(2), hlsl_defaults);
    EXPECT_EQ(folder.read("a.fx"), "code 0\n");
}

TEST_F(Exporter_generic_test, glsl_options_are_few_and_its_codes_go_to_two_files)
{
    EXPECT_TRUE(export_as(glsl, "a"));
    EXPECT_EQ(host.options(2), glsl_defaults);
    EXPECT_THAT(host.calls("unit 1.generate"),
                ElementsAre("unit 1.generate_shader(\"GL\", options 2)"));
    EXPECT_EQ(folder.read("a_v.gl"), "code 0\n");
    EXPECT_EQ(folder.read("a_f.gl"), "code 1\n");
    EXPECT_THAT(host.calls("shader 1"),
                ElementsAre("shader 1.get_code_size(0)", "shader 1.get_code(0, 7)",
                            "shader 1.get_code_size(1)", "shader 1.get_code(1, 7)",
                            "shader 1.release()"));
}

TEST_F(Exporter_generic_test, copyright_follows_the_other_options)
{
    const Temporary_folder search_path;
    search_path.write("user_copyright.txt", "(c)");
    host.search_paths = {search_path.path()};
    const Options copyright = {{"user_copyright", "(c)"}};
    export_as(cgfx, "a");
    export_as(hlsl, "a");
    export_as(glsl, "a");
    EXPECT_EQ(host.options(2), joined(cgfx_defaults, copyright));
    EXPECT_EQ(host.options(4), joined(hlsl_defaults, copyright));
    EXPECT_EQ(host.options(6), joined(glsl_defaults, copyright));
}

TEST_F(Exporter_generic_test, every_box_reaches_its_option)
{
    struct Row {
        int id;
        const char* option;
        bool value;
    };
    const Row rows[] = {{ID_TWO_SIDED, "two_sided", true},
                        {ID_FACE_FORWARD, "face_forward", true},
                        {ID_ROTATE_CUBE_MAP, "rotate_cube_map", true},
                        {ID_FLIP_TEX2D_V, "flip_tex2d_v", true},
                        {ID_GENERATE_SAMPLER_STATES, "generate_sampler_states", false},
                        {ID_ALPHA_TRANSPARENCY, "alpha_transparency", true},
                        {ID_USE_OIT, "use_oit", true},
                        {ID_DEPTH_TEST, "depth_test", false},
                        {ID_DEPTH_WRITE, "depth_write", false},
                        {ID_HLSL_SAS_CONFORMANCE, "hlsl_sas_conformance", true}};
    for (const Row& row : rows) {
        const bool in_hlsl = row.id == ID_HLSL_SAS_CONFORMANCE;
        Exporter_generic exporter(in_hlsl ? Exporter_generic::TARGET_HLSL
                                          : Exporter_generic::TARGET_CGFX);
        Recording_host fresh;
        fresh.add_selected_node("wood");
        exporter.initialize();
        {
            Exporter_panel panel(exporter);
            panel.set_text(ID_EXPORTFILE_TEXT, folder.file("a"));
            panel.set_check_box(row.id, row.value);
        }
        const Message_boxes boxes({wxID_YES});
        EXPECT_TRUE(exporter.export_shader(fresh.app(), fresh.view()));
        EXPECT_EQ(fresh.options(2), with(in_hlsl ? hlsl_defaults : cgfx_defaults, row.option,
                                         row.value ? "true" : "false"));
    }
}

TEST_F(Exporter_generic_test, glsl_boxes_and_version_reach_their_options)
{
    EXPECT_TRUE(run(glsl, [](Exporter_panel& panel) {
        panel.set_check_box(ID_ALPHA_TRANSPARENCY, true);
        panel.set_check_box(ID_TWO_SIDED, true);
        panel.set_check_box(ID_USE_OIT, true);
        panel.set_text(ID_GLSL_VERSION, "330 core");
    }));
    EXPECT_EQ(host.options(2), (Options{{"shader_type", "surface"},
                                        {"alpha_transparency", "true"},
                                        {"two_sided", "true"},
                                        {"use_oit", "true"},
                                        {"glsl_version", "330 core"}}));
}

TEST_F(Exporter_generic_test, texts_are_sent_as_typed_and_an_empty_annotation_map_is_not)
{
    EXPECT_TRUE(run(hlsl, [](Exporter_panel& panel) {
        panel.set_text(ID_VERTEX_PROFILE, "vs_4_0");
        panel.set_text(ID_FRAGMENT_PROFILE, " ps_4_0 ");
        panel.set_text(ID_ANNOTATION_MAP_TEXT, "<none>");
    }));
    EXPECT_EQ(host.options(2), with(joined({{"shader_type", "surface"}, {"format", "HLSL"}},
                                           common_options("vs_4_0", " ps_4_0 ")),
                                    "annotation_map", "<none>"));
    EXPECT_TRUE(
        run(cgfx, [](Exporter_panel& panel) { panel.set_text(ID_ANNOTATION_MAP_TEXT, ""); }));
    EXPECT_EQ(host.options(4), without(cgfx_defaults, "annotation_map"));
}

TEST_F(Exporter_generic_test, vertex_space_is_sent_by_its_word)
{
    const char* const words[] = {"object", "world", "camera", "screen"};
    for (int index = -1; index < 4; ++index) {
        Recording_host fresh;
        fresh.add_selected_node("wood");
        cgfx.initialize();
        {
            Exporter_panel panel(cgfx);
            panel.set_text(ID_EXPORTFILE_TEXT, folder.file("a"));
            panel.select(ID_VERTEX_SPACE, index);
        }
        const Message_boxes boxes({wxID_YES});
        EXPECT_TRUE(cgfx.export_shader(fresh.app(), fresh.view()));
        EXPECT_EQ(option_value(fresh.options(2), "vertex_stream_space"),
                  words[index < 0 ? 0 : index]);
    }
}

// A world internal space is told to the first set of options as "ignore_literal".
TEST_F(Exporter_generic_test, world_internal_space_ignores_literals)
{
    EXPECT_TRUE(run(cgfx, [](Exporter_panel& panel) { panel.select(ID_INTERNAL_SPACE, 0); }));
    EXPECT_EQ(host.options(1), (Options{{"shader_name", "wood"},
                                        {"resolve_unsized_arrays", "true"},
                                        {"ignore_literal", "true"}}));
    EXPECT_EQ(host.options(2), with(cgfx_defaults, "internal_space", "world"));
}

TEST_F(Exporter_generic_test, no_internal_space_selected_is_world_but_keeps_literals)
{
    EXPECT_TRUE(run(cgfx, [](Exporter_panel& panel) { panel.select(ID_INTERNAL_SPACE, -1); }));
    EXPECT_EQ(option_value(host.options(1), "ignore_literal"), "<not set>");
    EXPECT_EQ(option_value(host.options(2), "internal_space"), "world");
}

TEST_F(Exporter_generic_test, interfaces_compile_the_node_alone_with_its_own_kind)
{
    shader.kind = "light";
    shader.functions = {"direct_light"}; // nothing is asked: there is no group
    const auto use_interfaces = [](Exporter_panel& panel) {
        panel.set_check_box(ID_USE_INTERFACES, true);
    };
    EXPECT_TRUE(run(cgfx, use_interfaces));
    EXPECT_THAT(host.calls("compiler.compile"),
                ElementsAre("compiler.compile_shader(wood, errors, 0)"));
    EXPECT_EQ(host.options(1),
              with(with(cgfx_defaults, "shader_type", "light"), "interfaces", "true"));
    shader.kind = std::nullopt;
    EXPECT_TRUE(run(cgfx, use_interfaces));
    EXPECT_EQ(option_value(host.options(2), "shader_type"), "surface");
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Exporter_generic_test, without_interfaces_every_kind_is_sent_as_a_surface)
{
    shader.kind = "light";
    EXPECT_TRUE(export_as(cgfx, "a"));
    EXPECT_EQ(option_value(host.options(2), "shader_type"), "surface");
    EXPECT_TRUE(export_as(hlsl, "a"));
    EXPECT_EQ(option_value(host.options(4), "shader_type"), "surface");
}

TEST_F(Exporter_generic_test, volume_is_evaluated_only_together_with_interfaces)
{
    EXPECT_TRUE(
        run(cgfx, [](Exporter_panel& panel) { panel.set_check_box(ID_EVAL_VOLUME, true); }));
    EXPECT_EQ(host.options(2), cgfx_defaults);
    EXPECT_TRUE(
        run(cgfx, [](Exporter_panel& panel) { panel.set_check_box(ID_USE_INTERFACES, true); }));
    EXPECT_EQ(option_value(host.options(3), "eval_volume"), "true");
}

TEST_F(Exporter_generic_test, discarded_panel_changes_no_option)
{
    EXPECT_TRUE(export_as(cgfx, "a"));
    {
        Exporter_panel panel(cgfx);
        panel.set_check_box(ID_TWO_SIDED, true);
        panel.select(ID_VERTEX_SPACE, 3);
        panel.set_text(ID_VERTEX_PROFILE, "other");
        panel.cancel();
    }
    const Message_boxes boxes({wxID_YES});
    EXPECT_TRUE(cgfx.export_shader(host.app(), host.view()));
    EXPECT_EQ(host.options(4), cgfx_defaults);
}

TEST_F(Exporter_generic_test, effect_file_is_asked_about_after_the_generation)
{
    folder.write("a.cgfx", "old");
    const Message_boxes boxes({wxID_NO});
    EXPECT_TRUE(export_as(cgfx, "a"));
    EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(folder.file("a.cgfx"))));
    EXPECT_THAT(host.calls("unit 1.generate"), SizeIs(1));
    EXPECT_THAT(host.calls("shader 1"), ElementsAre("shader 1.release()"));
    EXPECT_EQ(folder.read("a.cgfx"), "old");
}

TEST_F(Exporter_generic_test, glsl_files_are_asked_about_before_the_generation_vertex_first)
{
    folder.write("a_v.gl", "old");
    folder.write("a_f.gl", "old");
    {
        const Message_boxes boxes({wxID_YES, wxID_NO});
        EXPECT_TRUE(export_as(glsl, "a"));
        EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(folder.file("a_v.gl")),
                                               overwrite_question(folder.file("a_f.gl"))));
    }
    const Message_boxes boxes({wxID_NO});
    EXPECT_TRUE(export_as(glsl, "a"));
    EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(folder.file("a_v.gl"))));
    EXPECT_THAT(host.calls("unit 1.generate"), IsEmpty());
    EXPECT_THAT(host.calls("unit 2.generate"), IsEmpty());
    EXPECT_EQ(folder.read("a_v.gl"), "old");
}

TEST_F(Exporter_generic_test, glsl_export_tells_its_own_result)
{
    TSDK::ICompilation_unit* unit = host.make_unit();
    const wxString name = from_bytes(folder.file("a").c_str());
    EXPECT_TRUE(glsl.export_glsl(name, unit, host.compiler(), host.app()));
    {
        const Message_boxes boxes({wxID_NO});
        EXPECT_FALSE(glsl.export_glsl(name, unit, host.compiler(), host.app()));
    }
    host.generates = false;
    const Message_boxes boxes({wxID_YES, wxID_YES});
    EXPECT_FALSE(glsl.export_glsl(name, unit, host.compiler(), host.app()));
    EXPECT_TRUE(hlsl.export_hlsl(name, unit, host.compiler(), host.app()));
    EXPECT_TRUE(
        cgfx.export_cgfx(name, unit, host.compiler(), host.app(), host.node(shader), host.view()));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Exporter_generic_test, unit_is_released_first_then_errors_node_and_compiler)
{
    EXPECT_TRUE(export_as(hlsl, "a"));
    EXPECT_THAT(last_releases(6),
                ElementsAre("shader 1", "options 2", "unit 1", "errors", "wood", "compiler"));
    EXPECT_TRUE(export_as(glsl, "a"));
    EXPECT_THAT(last_releases(6),
                ElementsAre("options 4", "shader 2", "unit 2", "errors", "wood", "compiler"));
    EXPECT_THAT(host.calls("app.get_interface(1)"), IsEmpty());
}

TEST_F(Exporter_generic_test, node_is_taken_before_the_file_name_is_checked)
{
    cgfx.initialize();
    const Message_boxes boxes;
    EXPECT_FALSE(cgfx.export_shader(host.app(), host.view()));
    EXPECT_THAT(host.log(),
                ElementsAre("view.get_num_selected_nodes()", "view.get_selected_node(0)"));
}

} // namespace TEST
} // namespace QZ

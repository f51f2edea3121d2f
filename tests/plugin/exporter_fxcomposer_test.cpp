// The export for FX Composer: two files from one compilation.
#include "exporters/exporter_fxcomposer.h"

#include "exporter_base/control_ids.h"
#include "tests/plugin/export_test.h"

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string exporter_name = "FX Composer (HLSL/CgFX)";

Options cgfx_options(const char* flip)
{
    return {{"shader_type", "surface"},
            {"format", "CgFX"},
            {"vertex_shader_profile", "vp40"},
            {"fragment_shader_profile", "fp40"},
            {"two_sided", "true"},
            {"eval_volume", "false"},
            {"generate_samplers", "true"},
            {"generate_umapped_annotations", "false"},
            {"vs_binding_tangent", "TANGENT"},
            {"vs_binding_binormal", "BINORMAL"},
            {"rotate_cube_map", "true"},
            {"flip_tex2d_v", flip},
            {"alpha_transparency", "true"},
            {"add_default_states", "true"},
            {"internal_space", "world"},
            {"scene_ambient", "float4(0.00,0.00,0.00,1.00)"}};
}

Options hlsl_options(const char* flip)
{
    return {{"shader_type", "surface"},
            {"format", "HLSL"},
            {"vertex_shader_profile", "vs_3_0"},
            {"fragment_shader_profile", "ps_3_0"},
            {"generate_samplers", "true"},
            {"generate_umapped_annotations", "false"},
            {"vs_binding_tangent", "TANGENT"},
            {"vs_binding_binormal", "BINORMAL"},
            {"rotate_cube_map", "true"},
            {"flip_tex2d_v", flip},
            {"alpha_transparency", "true"},
            {"add_default_states", "true"},
            {"internal_space", "world"},
            {"two_sided", "true"},
            {"scene_ambient", "float4(0.00,0.00,0.00,1.00)"}};
}

class Exporter_fxcomposer_test : public Export_test
{
protected:
    // Chooses which files to write, and their name.
    void choose(bool cgfx, bool hlsl, const std::string& name = "a")
    {
        exporter.initialize();
        Exporter_panel panel(exporter);
        panel.set_text(ID_EXPORTFILE_TEXT, folder.file(name));
        panel.set_check_box(ID_FXCOMPOSER_CGFX, cgfx);
        panel.set_check_box(ID_FXCOMPOSER_HLSL, hlsl);
    }

    bool run() { return exporter.export_shader(host.app(), host.view()); }

    Exporter_fxcomposer exporter;
};

TEST_F(Exporter_fxcomposer_test, both_files_come_from_one_compilation)
{
    EXPECT_TRUE(export_as(exporter, "a"));
    EXPECT_THAT(folder.files(), ElementsAre("a.cgfx", "a.fx"));
    EXPECT_THAT(host.calls("compiler.compile("), SizeIs(1));
    EXPECT_EQ(host.options(1), (Options{{"shader_name", "wood"},
                                        {"resolve_unsized_arrays", "true"},
                                        {"internal_space", "world"}}));
    EXPECT_EQ(host.options(2), cgfx_options("false"));
    EXPECT_EQ(host.options(3), hlsl_options("true"));
    EXPECT_THAT(host.calls("unit 1.generate"),
                ElementsAre("unit 1.generate_shader(\"FX\", options 2)",
                            "unit 1.generate_shader(\"FX\", options 3)"));
}

TEST_F(Exporter_fxcomposer_test, flip_follows_the_preference_for_both_files)
{
    struct Case {
        bool has_preferences;
        std::map<std::string, bool> preferences;
        const char* cgfx_flip;
        const char* hlsl_flip;
    };
    const Case cases[] = {{true, {}, "false", "true"},
                          {false, {{"cg_flip_tex2d_v", true}}, "false", "true"},
                          {true, {{"cg_flip_tex2d_v", true}}, "true", "true"},
                          {true, {{"cg_flip_tex2d_v", false}}, "false", "false"}};
    choose(true, true);
    for (const Case& c : cases) {
        Recording_host fresh;
        fresh.add_selected_node("wood");
        fresh.has_preferences = c.has_preferences;
        fresh.preferences = c.preferences;
        const Message_boxes boxes({wxID_YES, wxID_YES});
        EXPECT_TRUE(exporter.export_shader(fresh.app(), fresh.view()));
        EXPECT_EQ(option_value(fresh.options(2), "flip_tex2d_v"), c.cgfx_flip);
        EXPECT_EQ(option_value(fresh.options(3), "flip_tex2d_v"), c.hlsl_flip);
    }
}

TEST_F(Exporter_fxcomposer_test, one_box_writes_one_file)
{
    choose(true, false);
    EXPECT_TRUE(run());
    EXPECT_THAT(folder.files(), ElementsAre("a.cgfx"));
    EXPECT_EQ(host.options(2), cgfx_options("false"));
    EXPECT_THAT(host.options(3), IsEmpty());
    choose(false, true, "b.fx");
    EXPECT_TRUE(run());
    EXPECT_THAT(folder.files(), ElementsAre("a.cgfx", "b.fx"));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Exporter_fxcomposer_test, no_box_is_an_error)
{
    choose(false, false);
    const Message_boxes boxes;
    EXPECT_FALSE(run());
    EXPECT_THAT(boxes.shown(),
                ElementsAre(error_box(exporter_name,
                                      "Error: Neither CgFX nor HLSL FX file creation has been "
                                      "chosen.")));
    EXPECT_THAT(host.log(), ElementsAre("view.get_num_selected_nodes()"));
}

TEST_F(Exporter_fxcomposer_test, cancelled_panel_keeps_the_boxes)
{
    choose(true, false);
    {
        Exporter_panel panel(exporter);
        EXPECT_TRUE(panel.check_box(ID_FXCOMPOSER_CGFX));
        EXPECT_FALSE(panel.check_box(ID_FXCOMPOSER_HLSL));
        panel.set_check_box(ID_FXCOMPOSER_CGFX, false);
        panel.set_check_box(ID_FXCOMPOSER_HLSL, true);
        panel.cancel();
    }
    EXPECT_TRUE(run());
    EXPECT_THAT(folder.files(), ElementsAre("a.cgfx"));
}

TEST_F(Exporter_fxcomposer_test, cgfx_is_asked_about_before_hlsl_and_both_before_the_compilation)
{
    folder.write("a.cgfx", "old");
    folder.write("a.fx", "old");
    choose(true, true);
    const Message_boxes boxes({wxID_NO, wxID_NO});
    EXPECT_FALSE(run());
    EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(folder.file("a.cgfx")),
                                           overwrite_question(folder.file("a.fx"))));
    EXPECT_THAT(host.log(), ElementsAre("view.get_num_selected_nodes()"));
}

// The shader of a refused file is generated nevertheless, and is not released.
TEST_F(Exporter_fxcomposer_test, refused_file_leaves_its_shader_behind)
{
    folder.write("a.cgfx", "old");
    choose(true, true);
    const Message_boxes boxes({wxID_NO});
    EXPECT_TRUE(run());
    EXPECT_EQ(folder.read("a.cgfx"), "old");
    EXPECT_EQ(folder.read("a.fx"), "code 0\n");
    EXPECT_THAT(host.calls("compiler.compile("), SizeIs(1));
    EXPECT_THAT(host.problems(), ElementsAre("never released: shader 1"));
}

TEST_F(Exporter_fxcomposer_test, refused_hlsl_file_leaves_its_shader_behind_too)
{
    folder.write("a.fx", "old");
    choose(true, true);
    const Message_boxes boxes({wxID_NO});
    EXPECT_TRUE(run());
    EXPECT_EQ(folder.read("a.cgfx"), "code 0\n");
    EXPECT_EQ(folder.read("a.fx"), "old");
    EXPECT_THAT(host.problems(), ElementsAre("never released: shader 2"));
}

TEST_F(Exporter_fxcomposer_test, other_kinds_are_refused_by_name_after_the_overwrite_question)
{
    folder.write("a.cgfx", "old");
    choose(true, false);
    for (const std::string kind : {"light", "lens", "", "gr\xc3\xbc\xc3\x9f"}) {
        shader.kind = kind;
        const Message_boxes boxes({wxID_YES, wxID_OK});
        EXPECT_FALSE(run());
        EXPECT_THAT(boxes.shown(),
                    ElementsAre(overwrite_question(folder.file("a.cgfx")),
                                error_box(exporter_name, "Error: " + kind +
                                                             " shaders are not supported by this "
                                                             "format.")));
    }
    EXPECT_THAT(host.calls("app"), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

// It is asked for its kind once, and is gone before the box is shown.
TEST_F(Exporter_fxcomposer_test, refused_node_is_released_before_the_box)
{
    shader.kind = "lens";
    choose(true, true);
    std::vector<std::string> log_at_the_box;
    Message_boxes boxes;
    boxes.watch([&] { log_at_the_box = host.log(); });
    EXPECT_FALSE(run());
    EXPECT_EQ(boxes.shown().size(), 1u);
    EXPECT_THAT(log_at_the_box,
                ElementsAre("view.get_num_selected_nodes()", "view.get_selected_node(0)",
                            "wood.get_shader_type()", "wood.release()"));
    EXPECT_EQ(host.log(), log_at_the_box);
}

TEST_F(Exporter_fxcomposer_test, kind_of_null_is_a_surface)
{
    shader.kind = std::nullopt;
    const Message_boxes boxes;
    EXPECT_TRUE(export_as(exporter, "a"));
    EXPECT_THAT(boxes.shown(), IsEmpty());
    EXPECT_EQ(host.options(2), cgfx_options("false"));
    EXPECT_EQ(host.options(3), hlsl_options("true"));
    EXPECT_THAT(folder.files(), ElementsAre("a.cgfx", "a.fx"));
}

TEST_F(Exporter_fxcomposer_test, user_copyright_stands_last_in_both_sets)
{
    const Temporary_folder search_path;
    search_path.write("user_copyright.txt", "(c)");
    host.search_paths = {search_path.path()};
    EXPECT_TRUE(export_as(exporter, "a"));
    Options expected = cgfx_options("false");
    expected.emplace_back("user_copyright", "(c)");
    EXPECT_EQ(host.options(2), expected);
    expected = hlsl_options("true");
    expected.emplace_back("user_copyright", "(c)");
    EXPECT_EQ(host.options(3), expected);
}

TEST_F(Exporter_fxcomposer_test, preference_is_asked_once_for_both_files)
{
    EXPECT_TRUE(export_as(exporter, "a"));
    EXPECT_THAT(host.calls("preferences.get_bool_preference"), SizeIs(1));
}

// Without a unit there is nothing to flip.
TEST_F(Exporter_fxcomposer_test, preference_is_not_asked_when_nothing_compiles)
{
    host.compiles = false;
    EXPECT_TRUE(export_as(exporter, "a"));
    EXPECT_THAT(host.calls("preferences.get_bool_preference"), IsEmpty());
    EXPECT_THAT(host.calls("compiler.create_options"), SizeIs(1)); // for the compilation
}

TEST_F(Exporter_fxcomposer_test, host_objects_are_released_in_order)
{
    EXPECT_TRUE(export_as(exporter, "a"));
    EXPECT_THAT(last_releases(9),
                ElementsAre("shader 1", "options 2", "shader 2", "options 3", "unit 1", "errors",
                            "wood", "compiler", "preferences"));
}

TEST_F(Exporter_fxcomposer_test, failed_writes_count_as_success)
{
    const Message_boxes boxes;
    EXPECT_TRUE(export_as(exporter, "no such folder/a"));
    EXPECT_THAT(boxes.shown(), IsEmpty());
}

} // namespace TEST
} // namespace QZ

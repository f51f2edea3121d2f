// The program as a user runs it: in a process of its own.
#include "tests/host/program.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <sys/wait.h>

#include <nlohmann/json.hpp>

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

TEST_F(Program, lists_the_exporters_with_their_indices)
{
    run({"list", "--plugin", PLUGIN});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, HasSubstr("7  Custom GLSL\n"));
    EXPECT_EQ("", m_errors);
}

TEST_F(Program, lists_as_json_what_each_exporter_takes_and_writes)
{
    run({"list", "--json", "--plugin", PLUGIN});
    EXPECT_EQ(0, m_status) << m_errors;
    const nlohmann::json list = nlohmann::json::parse(m_output);
    ASSERT_EQ(8u, list.size());
    ASSERT_EQ(4u, list[7]["options"].size());
    EXPECT_EQ((nlohmann::json{{"name", "glsl_version"},
                              {"type", "text"},
                              {"default", "130"},
                              {"choices", nlohmann::json::array()}}),
              list[7]["options"][0]);
    EXPECT_EQ((nlohmann::json{{"name", "internal_space"},
                              {"type", "choice"},
                              {"default", "camera"},
                              {"choices", {"world", "camera"}}}),
              list[5]["options"][4]);
    nlohmann::json glsl = list[7];
    glsl.erase("options");
    EXPECT_EQ(
        (nlohmann::json{
            {"index", 7},
            {"name", "Custom GLSL"},
            {"folder", "custom_glsl"},
            {"language", "GLSL"},
            {"kinds", {"surface"}},
            {"files",
             {{{"suffix", "_v.gl"}, {"text", "GLSL vertex shader"}, {"checker", "glsl"}},
              {{"suffix", "_f.gl"}, {"text", "GLSL fragment shader"}, {"checker", "glsl"}}}}}),
        glsl);
}

TEST_F(Program, lists_the_options_of_each_exporter_with_values_and_defaults)
{
    run({"list", "--plugin", PLUGIN});
    EXPECT_THAT(m_output, HasSubstr("7  Custom GLSL\n     glsl_version=TEXT (default: 130)\n"
                                    "     alpha_transparency=on|off (default: off)\n"));
    run({"panel", "--plugin", PLUGIN, "-e", "FX Composer", "--width", "300", "--json"});
    EXPECT_EQ(0, m_status) << m_errors;
    const nlohmann::json panel = nlohmann::json::parse(m_output);
    EXPECT_EQ("FX Composer (HLSL/CgFX)", panel["exporter"]);
    EXPECT_EQ(300, panel["width"]);
    EXPECT_LT(10, panel["height"]);
    EXPECT_EQ("export_cgfx_file", panel["options"][1]["name"]);
}

TEST_F(Program, lists_the_nodes_of_a_document_as_json)
{
    run({"nodes", sample("wood_textured"), "--json"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ((nlohmann::json{{"name", "Planks/grain"},
                              {"category", "tiledimage"},
                              {"type", "color3"},
                              {"file", sample("wood_textured")},
                              {"line", 8}}),
              nlohmann::json::parse(m_output)[0]);
}

TEST_F(Program, lists_the_nodes_of_a_document_with_their_places)
{
    run({"nodes", sample("wood_textured")});
    EXPECT_EQ(0, m_status);
    EXPECT_THAT(m_output, HasSubstr("Planks/grain  tiledimage  color3  " SOURCE_FOLDER
                                    "/samples/wood_textured.mtlx:8\n"));
}

TEST_F(Program, writes_the_file_and_says_so)
{
    run_export("Custom CgFX", {"--light", "key", "--environment", "sky:images/wood_color.png"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, HasSubstr(output() + ".cgfx  "));
    EXPECT_NE("", read_file(output() + ".cgfx"));
    EXPECT_EQ("", m_errors);
}

TEST_F(Program, writes_two_files_for_glsl)
{
    run_export("glsl");
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_NE("", read_file(output() + "_v.gl"));
    EXPECT_NE("", read_file(output() + "_f.gl"));
}

TEST_F(Program, continues_when_the_scene_lacks_lights_and_repeats_the_question)
{
    run_export("5");
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_errors, HasSubstr("[Tovira - Warning] Exported shader requires lights"));
    EXPECT_THAT(m_errors, HasSubstr("-> Yes"));
}

TEST_F(Program, cancels_when_the_scene_lacks_lights_and_the_user_wants_that)
{
    run_export("5", {"--missing", "cancel"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("error: cancelled: the scene lacks what the shader requires"));
    EXPECT_EQ("", read_file(output() + ".cgfx"));
}

TEST_F(Program, sets_options_of_the_panel_by_their_labels)
{
    run_export("5", {"--set", "Vertex shader profile:=arbvp1", "--set", "two_sided=on", "--set",
                     "vertex coordinate space=screen"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(read_file(output() + ".cgfx"), HasSubstr("arbvp1"));
}

TEST_F(Program, keeps_the_bytes_of_a_file_name)
{
    const std::string name = m_folder.file("h\xc3\xb6lz \xff%s");
    run({"export", sample("wood_textured"), "--plugin", PLUGIN, "--exporter", "5", "--output",
         name});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_NE("", read_file(name + ".cgfx"));
}

TEST_F(Program, names_a_document_without_surfaces_as_the_user_did)
{
    const std::string file = m_folder.write("empty.mtlx", "<materialx version='1.39'/>");
    run({"export", file, "--plugin", PLUGIN, "--exporter", "5", "--output", output()});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr(file + ": error: there is no surface material"));
}

TEST_F(Program, fails_when_the_exporter_takes_no_shader_of_that_kind)
{
    run_export("3ds Max", {"--kind", "light"});
    EXPECT_EQ(1, m_status);
    EXPECT_EQ("", read_file(output() + ".fx"));
}

TEST_F(Program, reports_file_line_and_reason_of_a_bad_document)
{
    const std::string bad =
        m_folder.write("bad.mtlx", document("<absval name='n' type='nonsense'/>"));
    run({"export", bad, "--plugin", PLUGIN, "--exporter", "5", "--output", output()});
    EXPECT_EQ(1, m_status);
    EXPECT_EQ(bad + ":2: error: absval 'n': unknown type 'nonsense'\n", m_errors);
}

TEST_F(Program, exports_through_all_exporters_into_folders_of_their_own)
{
    run({"batch", sample("plastic_two_lights"), "--plugin", PLUGIN, "--output",
         m_folder.file("all"), "--environment", "sky"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_NE("", read_file(m_folder.file("all/custom_cgfx/Plastic.cgfx")));
    EXPECT_NE("", read_file(m_folder.file("all/autodesk_maya_cgfx/Plastic.cgfx")));
}

TEST_F(Program, makes_the_same_bytes_twice)
{
    run_export("5");
    const std::string first = read_file(output() + ".cgfx");
    run_export("5", {"--overwrite", "yes"});
    EXPECT_EQ(first, read_file(output() + ".cgfx"));
}

TEST_F(Program, exports_a_graph_of_very_many_paths_at_once)
{
    run({"export", sample("shared_nodes"), "--plugin", PLUGIN, "--exporter", "5", "--output",
         output()});
    EXPECT_EQ(0, m_status) << m_errors;
}

TEST_F(Program, takes_a_picture_of_a_panel)
{
    run({"panel", "--plugin", PLUGIN, "--exporter", "custom cg", "--width", "280", "--screenshot",
         m_folder.file("panel.png")});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, ContainsRegex("Custom CgFX: [0-9]+ pixels high at a width of 280"));
    EXPECT_EQ("\x89PNG", read_file(m_folder.file("panel.png")).substr(0, 4));
    EXPECT_EQ("", m_errors) << "the toolkit's own warnings are of no use to a user";
}

TEST_F(Program, ends_when_a_picture_cannot_be_written)
{
    run({"panel", "--plugin", PLUGIN, "--exporter", "5", "--screenshot", "/nowhere/panel.png"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("the picture '/nowhere/panel.png' cannot be written"));
}

TEST_F(Program, does_not_succeed_when_its_output_is_lost)
{
    const int result = std::system("'" SHADER_EXPORT "' --help >/dev/full 2>/dev/null");
    EXPECT_EQ(1, WEXITSTATUS(result));
}

TEST_F(Program, calls_wrong_usage_by_its_name)
{
    const std::string wood = sample("wood_textured");
    const struct {
        std::vector<std::string> arguments;
        const char* error;
    } rows[] = {
        {{}, "subcommand"},
        {{"frobnicate"}, "unknown command 'frobnicate'"},
        {{"export", wood, "--exporter", "5"}, "--output is required"},
        {{"export", wood, "--exporter", "fx", "--output", "x"}, "several exporters fit 'fx'"},
        {{"export", wood, "--exporter", "8", "--output", "x"}, "no exporter fits '8'"},
        {{"export", wood, "--exporter", "", "--output", "x"}, "no exporter fits ''"},
        {{"export", wood, "--exporter", "5", "--output", ""}, "--output is empty"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--node", "none"},
         "the document has no node 'none'"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--light", "a:b"}, "--light"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--light", "Wood"},
         "the node 'Wood' is not a light"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--ambient", "1,2"}, "--ambient"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--overwrite", "maybe"},
         "--overwrite"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--preference", "p"}, "--preference"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--set", "two_sided"}, "--set"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--set", "colour=red"},
         "the panel has no option 'colour'"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--set", "two_sided=perhaps"},
         "is on or off, not 'perhaps'"},
        {{"export", wood, "--exporter", "5", "--output", "x", "--set", "internal space=moon"},
         "is one of world, camera, not 'moon'"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments = row.arguments;
        if (!arguments.empty() && arguments[0] == "export")
            arguments.insert(arguments.end(), {"--plugin", PLUGIN});
        run(arguments);
        EXPECT_EQ(2, m_status) << row.error << "\n" << m_errors;
        EXPECT_THAT(m_errors, HasSubstr(row.error));
    }
}

TEST_F(Program, notices_what_a_plug_in_does_wrong)
{
    const struct {
        const char* exporter;
        const char* error;
    } rows[] = {
        {"forgets a reference", "graph node 'Wood' was not released (1 reference)"},
        {"releases twice", "graph node 'Wood' was released more often than it was handed out"},
        {"uses what it released", "graph node 'Wood' was used after its release (get_name)"},
        {"compiles nothing", "compile was given no graph or no options"},
        {"writes nothing", "no file was written"},
        {"refuses", "the exporter refused, without saying why"},
    };
    for (const auto& row : rows) {
        run({"export", sample("wood_textured"), "--plugin", MISBEHAVING_PLUGIN, "--exporter",
             row.exporter, "--output", output()});
        EXPECT_EQ(1, m_status) << row.exporter;
        EXPECT_THAT(m_errors, HasSubstr(row.error));
    }
}

TEST_F(Program, opens_no_window_where_there_is_no_display)
{
    run({"window", sample("wood_textured"), "--plugin", PLUGIN});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("there is no display"));
}

TEST_F(Program, names_image_files_as_the_user_wants)
{
    const struct {
        const char* choice;
        std::string name;
    } rows[] = {
        {"as-is", "\"images/wood_color.png\""},
        {"absolute", "\"" SOURCE_FOLDER "/samples/images/wood_color.png\""},
        {"relative", "\"../"},
    };
    for (const auto& row : rows) {
        run_export("5", {"--texture-paths", row.choice, "--overwrite", "yes"});
        EXPECT_THAT(read_file(output() + ".cgfx"), HasSubstr(row.name));
    }
}

TEST_F(Program, says_why_a_plug_in_cannot_be_used)
{
    run({"list", "--plugin", m_folder.file("none.so")});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("the plug-in cannot be loaded"));
    run({"list", "--plugin", "libX11.so.6"});
    EXPECT_EQ(1, m_status) << "a bare name does not mean a library of the system";
    run({"list", "--plugin", "/usr/lib/x86_64-linux-gnu/libX11.so.6"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("it has no function 'initializer'"));
}

TEST_F(Program, draws_a_document_with_lights_of_its_own_where_it_has_none)
{
    const std::string picture = m_folder.file("wood.png");
    run({"render", sample("wood_textured"), "-o", picture, "--size", "32"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ("", m_errors);
    EXPECT_THAT(read_file(picture), HasSubstr("PNG"));
}

TEST_F(Program, draws_no_document_with_a_light_that_is_wrong)
{
    run({"render", sample("wood_textured"), "-o", m_folder.file("wood.png"), "--light", "a:area"});
    EXPECT_EQ(2, m_status);
    EXPECT_THAT(m_errors, HasSubstr("'area' is not a type of light"));
}

// What the program says about values that make no sense, and about files that are missing.
#include "tests/host/program.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::HasSubstr;

namespace
{

namespace fs = std::filesystem;

constexpr const char* textured = R"(<image name="grain" type="color3">
<input name="file" type="filename" value="images/grain.png"/></image>
<standard_surface name="s" type="surfaceshader">
<input name="base_color" type="color3" nodename="grain"/></standard_surface>
<surfacematerial name="Wood" type="material">
<input name="surfaceshader" type="surfaceshader" nodename="s"/></surfacematerial>
<image name="other" type="color3">
<input name="file" type="filename" value="images/other.png"/></image>)";

// Exports a document with a texture to "out/wood".
class Bad_values : public Program
{
protected:
    void export_textured(const std::vector<std::string>& more)
    {
        std::vector<std::string> arguments = {
            "export",     m_folder.write("in/wood.mtlx", document(textured)),
            "--plugin",   PLUGIN,
            "--exporter", "5",
            "--output",   "out/wood",
            "--parents",  "--light",
            "key"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        run(arguments);
    }
};

class Texture_paths : public Bad_values
{
};

} // namespace

TEST_F(Bad_values, are_refused_when_nothing_can_be_made_of_them)
{
    const struct {
        std::vector<std::string> arguments;
        const char* error;
    } rows[] = {
        {{"--light", "key:spot"}, "shader-export: error: the light 'key' is asked for twice\n"},
        {{"--kind", "surfcae"}, "'surfcae' is not surface|environment|lens|light|volume|none"},
    };
    for (const auto& row : rows) {
        export_textured(row.arguments);
        EXPECT_EQ(2, m_status) << row.error;
        EXPECT_THAT(m_errors, HasSubstr(row.error));
        EXPECT_FALSE(fs::exists(m_folder.file("out/wood.cgfx")));
    }
}

TEST_F(Bad_values, are_warned_of_when_the_export_can_go_on)
{
    m_folder.write("in/images/grain.png", "");
    export_textured({});
    EXPECT_EQ("", m_errors);
    const struct {
        std::vector<std::string> arguments;
        const char* warning;
    } rows[] = {
        {{"--set", "vertex_shader_profile=vp41"},
         "warning: option \"vertex_shader_profile\": the profile \"vp41\" is unknown\n"},
        {{"--set", "fragment_shader_profile=vp40"},
         "warning: option \"fragment_shader_profile\": the profile \"vp40\" is unknown\n"},
        {{"--set", "annotation_map_file=mine.axml"},
         "warning: the annotation map \"mine.axml\" is missing\n"},
        {{"--search-path", "none"}, "warning: the search path 'none' is not a folder\n"},
        {{"--environment", "sky"},
         "warning: the document has no environment 'sky', and there is no image 'sky.dds' for a "
         "new one\n"},
        {{"--volume", "mist"},
         "warning: the document has no volume 'mist'; a fog of that name is made\n"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments = row.arguments;
        arguments.insert(arguments.end(), {"--overwrite", "yes"});
        export_textured(arguments);
        EXPECT_EQ(0, m_status) << m_errors;
        EXPECT_EQ(std::string("shader-export: ") + row.warning, m_errors);
    }
}

TEST_F(Bad_values, are_missing_images_that_the_exported_node_reads)
{
    export_textured({});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(
        m_folder.file("in/wood.mtlx") +
            ":2: warning: node 'grain' (image), input 'file': the image 'images/grain.png' is "
            "missing\n",
        m_errors);
}

TEST_F(Bad_values, are_inputs_without_counterpart)
{
    const std::string file = m_folder.write("coat.mtlx", document(R"(
<standard_surface name="s" type="surfaceshader">
<input name="transmission_depth" type="float" value="0.5"/></standard_surface>)"));
    run({"export", file, "--plugin", PLUGIN, "--exporter", "FX Composer", "--output", output(),
         "--light", "key", "--set", "export_hlsl_fx_file=on", "--set", "export_cgfx_file=on"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(file + ":3: warning: node \"s\" (standard_surface): without counterpart here: "
                     "transmission_depth\n",
              m_errors)
        << "once for both files";
}

TEST_F(Bad_values, of_a_document_are_all_reported_at_once_by_every_command)
{
    const std::string bad = m_folder.write(
        "bad.mtlx", document("<absval name='n' type='nonsense'/>\n<constant type='float'/>"));
    const std::string errors = bad + ":2: error: absval 'n': unknown type 'nonsense'\n" + bad +
                               ":3: error: a node 'constant' has no name\n";
    const std::vector<std::string> rest = {"--plugin", PLUGIN, "--exporter", "5", "--output", "x"};
    for (const char* command : {"export", "batch", "plan", "nodes"}) {
        std::vector<std::string> arguments = {command, bad};
        if (command != std::string("nodes"))
            arguments.insert(arguments.end(), rest.begin(), rest.end());
        run(arguments);
        EXPECT_EQ(1, m_status) << command;
        EXPECT_EQ(errors, m_errors) << command;
    }
}

TEST_F(Texture_paths, are_as_the_user_wants_and_relative_by_default)
{
    m_folder.write("in/images/grain.png", "pixels");
    const struct {
        std::vector<std::string> arguments;
        std::string name;
    } rows[] = {
        {{}, "\"../in/images/grain.png\""},
        {{"--texture-paths", "relative"}, "\"../in/images/grain.png\""},
        {{"--texture-paths", "as-is"}, "\"images/grain.png\""},
        {{"--texture-paths", "absolute"}, "\"" + m_folder.file("in/images/grain.png") + "\""},
        {{"--texture-paths", "copy"}, "\"wood_grain.png\""},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments = row.arguments;
        arguments.insert(arguments.end(), {"--overwrite", "yes"});
        export_textured(arguments);
        EXPECT_EQ("", m_errors);
        EXPECT_THAT(m_folder.read("out/wood.cgfx"), HasSubstr(row.name));
    }
    EXPECT_EQ("pixels", m_folder.read("out/wood_grain.png"));
    EXPECT_THAT(m_output, HasSubstr("out/wood_grain.png  6 bytes\n"));
    EXPECT_FALSE(fs::exists(m_folder.file("out/wood_other.png")))
        << "the material does not read it";
}

TEST_F(Texture_paths, copies_do_not_replace_files_without_a_word)
{
    m_folder.write("in/images/grain.png", "pixels");
    m_folder.write("out/wood_grain.png", "mine");
    export_textured({"--texture-paths", "copy"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("refused: out/wood_grain.png already exists"));
    EXPECT_EQ("mine", m_folder.read("out/wood_grain.png"));
    EXPECT_FALSE(fs::exists(m_folder.file("out/wood.cgfx")));
}

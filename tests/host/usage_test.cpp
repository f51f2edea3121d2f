// What the program says about itself and about command lines that it does not understand.
#include "tests/host/program.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST_F(Program, prints_its_version)
{
    run({"--version"});
    EXPECT_EQ(0, m_status);
    EXPECT_EQ("shader-export " PROJECT_VERSION "\n", m_output);
    EXPECT_EQ("", m_errors);
}

TEST_F(Program, helps_with_a_command_as_the_command_itself_does)
{
    run({"export", "--help"});
    const std::string help = m_output;
    EXPECT_THAT(help, HasSubstr("--overwrite-edited"));
    run({"help", "export"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(help, m_output);
}

TEST_F(Program, helps_with_itself_when_no_command_is_named)
{
    run({"--help"});
    const std::string help = m_output;
    EXPECT_THAT(help, HasSubstr("Exit status:\n  0                           Done\n"));
    run({"help"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(help, m_output);
}

TEST_F(Program, suggests_the_word_that_is_near_an_unknown_one)
{
    const std::string wood = sample("wood_textured");
    const struct {
        std::vector<std::string> arguments;
        const char* error;
    } rows[] = {
        {{"frobnicate"}, "error: unknown command 'frobnicate'\n"},
        {{"exprot"}, "error: unknown command 'exprot'; did you mean 'export'?\n"},
        {{"help", "bacht"}, "error: unknown command 'bacht'; did you mean 'batch'?\n"},
        {{"export", wood, "--exportr", "5", "--output", "x"},
         "error: unknown option '--exportr'; did you mean '--exporter'?\n"},
        {{"list", "--jsno=1"}, "error: unknown option '--jsno'; did you mean '--json'?\n"},
        {{"ir", wood, "--after", "prun"}, "error: there is no pass 'prun'; did you mean 'prune'?"},
        {{"ir", wood, "--material", "Wod"},
         "error: the document has no node 'Wod'; did you mean 'Wood'?\n"},
        {{"list", "--frobnicate"}, "error: unknown option '--frobnicate'\n"},
        {{"export", wood, "--plugin", PLUGIN, "--exporter", "Custom CgXF", "--output", "x"},
         "error: no exporter fits 'Custom CgXF'; did you mean 'Custom CgFX'? There are:\n"},
        {{"export", wood, "--plugin", PLUGIN, "--exporter", "Mya", "--output", "x"},
         "error: no exporter fits 'Mya'; did you mean 'Maya'? There are:\n"},
        {{"export", wood, "--plugin", PLUGIN, "--exporter", "5", "--output", "x", "--node", "Wod"},
         "error: the document has no node 'Wod'; did you mean 'Wood'?\n"},
        {{"export", wood, "--plugin", PLUGIN, "-e", "5", "-o", "x", "-s", "two_sded=on"},
         "error: the panel has no option 'two_sded'; did you mean 'two_sided'? There are:"},
    };
    for (const auto& row : rows) {
        run(row.arguments);
        EXPECT_EQ(2, m_status) << row.error << "\n" << m_errors;
        EXPECT_EQ("", m_output);
        EXPECT_THAT(m_errors, HasSubstr(row.error));
    }
}

TEST_F(Program, prints_the_module_of_a_material_after_a_pass)
{
    run({"ir", sample("wood_textured"), "--material", "Wood", "--light", "key:directional"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output,
                StartsWith("shader surface Wood;\nsource document \"wood_textured.mtlx\""));
    EXPECT_THAT(m_output, HasSubstr("\nlibrary Light_iterator light_from(State state,"));
    EXPECT_THAT(m_output, HasSubstr("if (light_list)\n"));
    run({"ir", sample("wood_textured"), "--light", "key:directional", "--after", "specialise",
         "--target", "Swrc"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, Not(HasSubstr("if (light_list)\n")));
    EXPECT_THAT(m_output, HasSubstr("i < lights.length"));
}

TEST_F(Program, lists_the_passes_in_the_help_of_ir)
{
    run({"help", "ir"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, HasSubstr("--after lower|specialise|inline|prune|check|name"));
}

TEST_F(Program, takes_the_plug_in_that_the_environment_names)
{
    run({"list"}, "TOVIRAEXPORT_PLUGIN='" MISBEHAVING_PLUGIN "'");
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, StartsWith("0  forgets a reference\n"));
}

TEST_F(Program, takes_the_plug_in_of_the_command_line_before_that_of_the_environment)
{
    run({"list", "--plugin", PLUGIN}, "TOVIRAEXPORT_PLUGIN='" MISBEHAVING_PLUGIN "'");
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, HasSubstr("7  Custom GLSL\n"));
}

TEST_F(Program, says_where_it_looked_for_a_plug_in)
{
    m_folder.write("bin/shader-export", "");
    m_program = m_folder.file("bin/shader-export");
    std::filesystem::copy_file(SHADER_EXPORT, m_program,
                               std::filesystem::copy_options::overwrite_existing);
    run({"list"}, "unset TOVIRAEXPORT_PLUGIN;");
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("toviraexport.so was not found; name it with --plugin or "
                                    "TOVIRAEXPORT_PLUGIN. It would be one of these:\n  "));
    EXPECT_THAT(m_errors, HasSubstr("\n  " + m_folder.file("bin/toviraexport.so") + "\n"));
    EXPECT_THAT(m_errors, HasSubstr("\n  " + m_folder.file("lib/toviraexport.so") + "\n"));
}

TEST_F(Program, suggests_documents_and_inputs_that_may_be_meant)
{
    m_folder.write("wood.mtlx", document("<absval name='a' type='float'><input name='inn' "
                                         "type='float' value='1'/></absval>"));
    run({"nodes", "wod.mtlx"});
    EXPECT_EQ(1, m_status);
    EXPECT_EQ("wod.mtlx: error: cannot be opened: there is no such file; did you mean "
              "'wood.mtlx'?\n",
              m_errors);
    run({"nodes", "wood.mtlx"});
    EXPECT_THAT(m_errors, HasSubstr("there is no input 'inn'; did you mean 'in'?"));
}

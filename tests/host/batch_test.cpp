// Many exports at once: batches, and plans of batches.
#include "tests/host/program.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>

#include <sys/wait.h>

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace
{

namespace fs = std::filesystem;

using Contents = std::map<std::string, std::string>;

class Batch : public Program
{
protected:
    void SetUp() override
    {
        const std::string materials = material("Red") + material("Blue");
        m_folder.write("in/two.mtlx", document(materials));
        m_folder.write("in/deep/one.mtlx", document(material("Green")));
        m_folder.write("in/notes.txt", "no document");
        m_folder.write("sky.dds", "");
    }

    static std::string material(const std::string& name)
    {
        return "<standard_surface name='s" + name +
               "' type='surfaceshader'/>\n<surfacematerial name='" + name +
               "' type='material'><input name='surfaceshader' type='surfaceshader' nodename='s" +
               name + "'/></surfacematerial>\n";
    }

    void run_batch(const std::vector<std::string>& more, const std::string& before = {})
    {
        std::vector<std::string> arguments = {"batch", "--plugin", PLUGIN, "--exporter",
                                              "5",     "--light",  "key",  "--environment",
                                              sky()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        run(arguments, before);
    }

    // An environment of an image that is there.
    std::string sky() const { return "sky:" + m_folder.file("sky.dds"); }

    // All visible files below a folder of the test.
    Contents contents(const std::string& folder) const
    {
        Contents files;
        const fs::path root = m_folder.file(folder);
        for (const auto& entry : fs::recursive_directory_iterator(root)) {
            const std::string name = entry.path().lexically_relative(root).string();
            if (entry.is_regular_file() && name.find(".shader-export") == std::string::npos)
                files[name] = read_file(entry.path().string());
        }
        return files;
    }

    int shell(const std::string& line) const
    {
        const int result =
            std::system(("cd '" + m_folder.path() + "'; " + line + " >.shell 2>&1").c_str());
        return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    }
};

} // namespace

TEST_F(Batch, exports_every_material_of_files_folders_and_lists)
{
    run_batch({"in", "--output", "a"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, EndsWith("2 written, 0 unchanged, 0 skipped, 0 failed\n"));
    run_batch({"in", "-r", "--output", "b"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(3u, contents("b").size());
    EXPECT_EQ(1u, contents("b").count("custom_cgfx/Green.cgfx"));
    run_batch({"-", "--output", "c"}, "printf 'in/two.mtlx\\nin/deep\\n' |");
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(contents("b"), contents("c"));
}

TEST_F(Batch, exports_every_surface_of_a_document_without_materials)
{
    m_folder.write("bare.mtlx", document("<standard_surface name='Red' type='surfaceshader'/>\n"
                                         "<surface_unlit name='Blue' type='surfaceshader'/>\n"));
    run_batch({m_folder.file("bare.mtlx"), "--output", m_folder.file("out")});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_TRUE(fs::exists(m_folder.file("out/custom_cgfx/Red.cgfx")));
    EXPECT_TRUE(fs::exists(m_folder.file("out/custom_cgfx/Blue.cgfx")));
}

TEST_F(Batch, exports_the_materials_that_are_named_under_the_names_that_are_wanted)
{
    run_batch({"in/two.mtlx", "--material", "Blue", "--name", "{document}/../{material}_{exporter}",
               "--output", "a"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(1u, contents("a").size());
    EXPECT_EQ(1u, contents("a").count("two/_./Blue_custom_cgfx.cgfx"));
}

TEST_F(Batch, sets_an_option_where_it_exists_or_for_one_exporter_only)
{
    run_batch({"in/two.mtlx", "--material", "Red", "--exporter", "Maya", "--exporter", "GLSL",
               "--output", "a", "--set", "vertex shader profile:=arbvp1", "--set",
               "GLSL:two_sided=on"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_folder.read("a/custom_cgfx/Red.cgfx"), HasSubstr("arbvp1"));
}

TEST_F(Batch, goes_on_after_a_bad_item_and_fails)
{
    m_folder.write("in/bad.mtlx", "no XML");
    run_batch({"in", "none.mtlx", "--material", "Red", "--output", "a"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_output, EndsWith("1 written, 0 unchanged, 0 skipped, 2 failed\n"));
    EXPECT_THAT(m_errors, HasSubstr("in/bad.mtlx:"));
    EXPECT_THAT(m_errors, HasSubstr("none.mtlx: error: cannot be opened: there is no such file"));
}

TEST_F(Batch, does_not_write_two_items_to_one_file)
{
    run_batch({"in/two.mtlx", "--name", "same", "--output", "a"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("a/same is written by an earlier item"));
    EXPECT_EQ(1u, contents("a").size());
}

TEST_F(Batch, goes_on_in_another_process_when_one_crashes)
{
    run({"batch", "in/two.mtlx", "--plugin", MISBEHAVING_PLUGIN, "--exporter", "crashes",
         "--output", "a"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_output, EndsWith("0 written, 0 unchanged, 0 skipped, 2 failed\n"));
    EXPECT_THAT(m_errors, HasSubstr("the export crashed: Segmentation fault"));
}

TEST_F(Batch, writes_nothing_the_second_time_and_only_what_changed_afterwards)
{
    run_batch({"in", "-r", "--output", "a"});
    run_batch({"in", "-r", "--output", "a"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, EndsWith("0 written, 3 unchanged, 0 skipped, 0 failed\n"));
    m_folder.write(
        "in/deep/one.mtlx",
        document("<standard_surface name='sGreen' type='surfaceshader'><input name='base' "
                 "type='float' value='0.25'/></standard_surface><surfacematerial "
                 "name='Green' type='material'><input name='surfaceshader' "
                 "type='surfaceshader' nodename='sGreen'/></surfacematerial>"));
    run_batch({"in", "-r", "--output", "a", "--overwrite", "yes"});
    EXPECT_THAT(m_output, EndsWith("1 written, 2 unchanged, 0 skipped, 0 failed\n"));
    run_batch({"in", "-r", "--output", "a", "--overwrite", "yes", "--set", "two_sided=on"});
    EXPECT_THAT(m_output, EndsWith("3 written, 0 unchanged, 0 skipped, 0 failed\n"));
}

TEST_F(Batch, makes_again_what_was_removed)
{
    run_batch({"in/two.mtlx", "--output", "a"});
    fs::remove(m_folder.file("a/custom_cgfx/Red.cgfx"));
    run_batch({"in/two.mtlx", "--output", "a"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, EndsWith("1 written, 1 unchanged, 0 skipped, 0 failed\n"));
    EXPECT_EQ(2u, contents("a").size());
}

TEST_F(Batch, goes_on_where_it_was_killed_or_interrupted)
{
    std::string materials;
    for (int i = 0; i < 20; ++i)
        materials += material("M" + std::to_string(i));
    m_folder.write("many.mtlx", document(materials));
    const std::vector<std::string> arguments = {"many.mtlx", "-e", "GLSL"};
    const auto with_output = [&](const std::string& folder) {
        std::vector<std::string> more = arguments;
        more.insert(more.end(), {"--output", folder});
        return more;
    };
    run_batch(with_output("whole"));
    const Contents expected = contents("whole");
    EXPECT_EQ(60u, expected.size());
    for (const char* signal : {"KILL", "INT"}) {
        const std::string folder = signal;
        EXPECT_EQ(0, shell("'" SHADER_EXPORT "' batch many.mtlx --plugin '" PLUGIN
                           "' -e 5 -e GLSL --light key --environment '" +
                           sky() + "' --jobs 2 --output " + folder + " >" + folder +
                           ".log 2>&1 & id=$!; until grep -qs bytes " + folder +
                           ".log; do sleep 0.01; done; kill -" + folder +
                           " $id; wait $id; status=$?; [ $status = 137 ] || [ $status = 130 ]"))
            << m_folder.read(folder + ".log");
        EXPECT_GT(60u, contents(folder).size()) << "it was too quick";
        run_batch(with_output(folder));
        EXPECT_EQ(0, m_status) << m_errors;
        EXPECT_THAT(m_output, ContainsRegex("\n[0-9]+ written, [1-9][0-9]* unchanged, 0 skipped, "
                                            "0 failed\n$"));
        EXPECT_EQ(expected, contents(folder)) << signal;
        for (const auto& entry : fs::recursive_directory_iterator(m_folder.file(folder))) {
            const std::string name = entry.path().filename().string();
            EXPECT_NE(0u, name.find("stage-")) << entry.path();
            EXPECT_NE(0u, name.find("ready-")) << entry.path();
        }
    }
}

TEST_F(Batch, makes_the_same_bytes_with_several_processes)
{
    run_batch({"in", "-r", "--output", "a", "--exporter", "GLSL"});
    run_batch({"in", "-r", "--output", "b", "--exporter", "GLSL", "--jobs", "3"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(9u, contents("a").size());
    EXPECT_EQ(contents("a"), contents("b"));
}

TEST_F(Batch, says_what_it_would_do_and_writes_nothing)
{
    m_folder.write("a/custom_cgfx/Red.cgfx", "old");
    run_batch({"in/two.mtlx", "--output", "a", "--dry-run", "--overwrite", "skip"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, ContainsRegex("Red.cgfx  [0-9]+ bytes  would be skipped"));
    EXPECT_THAT(m_output, ContainsRegex("Blue.cgfx  [0-9]+ bytes  would be written"));
    EXPECT_EQ(1u, contents("a").size());
    EXPECT_EQ("old", m_folder.read("a/custom_cgfx/Red.cgfx"));
    EXPECT_FALSE(fs::exists(m_folder.file("a/custom_cgfx/.shader-export")));
}

TEST_F(Batch, says_as_much_as_the_user_wants)
{
    run_batch({"in/two.mtlx", "--output", "a", "-v"});
    EXPECT_THAT(m_output, ContainsRegex("two.mtlx: Red -> Custom CgFX: written, [0-9.]+ s"));
    EXPECT_EQ("", m_errors) << "no progress in a pipe";
    run_batch({"in/two.mtlx", "--output", "b", "-q"});
    EXPECT_EQ("", m_output);
}

TEST_F(Batch, names_the_item_of_a_message_and_says_once_what_is_wrong_with_a_document)
{
    m_folder.write("odd.mtlx",
                   document("<image name='i' type='color3'><input name='file' type='filename' "
                            "value='gone.png'/></image><standard_surface name='s' "
                            "type='surfaceshader'><input name='base_color' type='color3' "
                            "nodename='i'/></standard_surface><surfacematerial name='M' "
                            "type='material'><input name='surfaceshader' type='surfaceshader' "
                            "nodename='s'/></surfacematerial>"));
    run({"batch", "odd.mtlx", "nowhere.mtlx", "-v", "--plugin", PLUGIN, "-e", "5", "-e", "6", "-o",
         "out"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_output, HasSubstr("nowhere.mtlx: failed, "));
    EXPECT_THAT(m_errors, HasSubstr("odd.mtlx: warning: M -> Custom CgFX: [Tovira - Warning] "));
    EXPECT_THAT(m_errors, HasSubstr("odd.mtlx: warning: M -> Custom HLSL FX: [Tovira - Warning] "));
    const size_t told = m_errors.find("gone.png");
    ASSERT_NE(std::string::npos, told) << m_errors;
    EXPECT_EQ(std::string::npos, m_errors.find("gone.png", told + 1)) << m_errors;
}

TEST_F(Batch, keeps_control_characters_of_names_from_the_terminal)
{
    m_folder.write("odd.mtlx", document(material("M\x1b[2J\xc2\x9b"
                                                 "1m\x7f")));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"nodes", "odd.mtlx"},
          {"ir", "odd.mtlx", "--node", "none"},
          {"batch", "odd.mtlx", "-v", "--plugin", PLUGIN, "-e", "5", "-o", "out"}}) {
        run(arguments);
        const std::string said = m_output + m_errors;
        EXPECT_THAT(said, HasSubstr("M?[2J?1m?"));
        EXPECT_EQ(std::string::npos, said.find_first_of("\x1b\x7f\x9b")) << said;
    }
}

TEST_F(Batch, reports_what_its_schema_describes)
{
    m_folder.write("in/bad.mtlx", "no XML");
    run_batch({"in", "--output", "a", "--report", "r.json", "--junit", "r.xml"});
    EXPECT_EQ(0, shell("python3 '" SOURCE_FOLDER "/tests/host/check_report.py' '" SOURCE_FOLDER
                       "/docs/report.schema.json' r.json"))
        << m_folder.read(".shell");
    EXPECT_THAT(m_folder.read("r.json"), ContainsRegex("\"hash\": \"[0-9a-f]{32}\""));
    EXPECT_THAT(m_folder.read("r.xml"), HasSubstr("tests=\"3\" failures=\"1\""));
    run_batch({"in", "--output", "b", "--report", "none/r.json"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("cannot write 'none/r.json': No such file or directory"));
}

TEST_F(Batch, is_planned_for_build_systems_that_make_the_same_bytes)
{
    m_folder.write("odd $ name's.mtlx", document(material("Odd")));
    const std::vector<std::string> inputs = {"in", "-r", "--set", "two_sided=on"};
    const auto with = [&](std::vector<std::string> more) {
        more.insert(more.end(), inputs.begin(), inputs.end());
        more.insert(more.end(), {"odd $ name'\\''s.mtlx"});
        return more;
    };
    run_batch(with({"--output", "batch"}));
    const Contents expected = contents("batch");
    EXPECT_EQ(4u, expected.size()) << m_errors;
    const struct {
        const char* format;
        const char* command;
    } rows[] = {{"ninja", "ninja -f plan.ninja"}, {"make", "make -f plan.make all"}};
    for (const auto& row : rows) {
        const std::string folder = row.format;
        std::vector<std::string> arguments = with(
            {"--output", folder, "--format", folder, "-o", "plan." + folder, "--overwrite", "yes"});
        arguments.insert(arguments.begin(), {"plan", "--plugin", PLUGIN, "--exporter", "5",
                                             "--light", "key", "--environment", sky()});
        run(arguments);
        EXPECT_EQ(0, m_status) << m_errors;
        EXPECT_EQ(0, shell(row.command)) << m_folder.read(".shell");
        EXPECT_EQ(expected, contents(folder)) << row.format;
        EXPECT_EQ(0, shell(row.command));
        EXPECT_THAT(m_folder.read(".shell"), ContainsRegex("no work to do|Nothing to be done"));
        run_batch(with({"--output", folder}));
        EXPECT_THAT(m_output, EndsWith("0 written, 4 unchanged, 0 skipped, 0 failed\n"));
    }
}

TEST_F(Batch, is_planned_as_json_for_farms)
{
    run({"plan", "in", "--plugin", PLUGIN, "--exporter", "5", "--output", "a", "--format", "json"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, HasSubstr("\"--exporter=Custom CgFX\""));
    EXPECT_FALSE(fs::exists(m_folder.file("a"))) << "a plan does nothing";
}

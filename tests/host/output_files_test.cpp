// What the program does with files that exist, and with those that it cannot write.
#include "tests/host/program.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <sys/stat.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace
{

namespace fs = std::filesystem;

class Output_files : public Program
{
protected:
    // The arguments of an export that writes two files, wood_f.gl and wood_v.gl.
    std::vector<std::string> pair(const std::vector<std::string>& more = {}) const
    {
        std::vector<std::string> arguments = {
            "export",     sample("wood_textured"), "--plugin", PLUGIN,
            "--exporter", "Custom GLSL",           "--output", output()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    void make_old_pair() const
    {
        m_folder.write("wood_v.gl", "old v");
        m_folder.write("wood_f.gl", "old f");
    }

    bool pair_is_old() const
    {
        return m_folder.read("wood_v.gl") == "old v" && m_folder.read("wood_f.gl") == "old f";
    }

    bool pair_is_new() const
    {
        return m_folder.read("wood_v.gl").size() > 100 && m_folder.read("wood_f.gl").size() > 100;
    }
};

std::string hostile_document(const std::string& material)
{
    return document("<standard_surface name='s' type='surfaceshader'/>\n<surfacematerial name='" +
                    material +
                    "' type='material'><input name='surfaceshader' type='surfaceshader' "
                    "nodename='s'/></surfacematerial>");
}

} // namespace

TEST_F(Output_files, stay_in_their_folder_whatever_a_material_is_called)
{
    for (const std::string name :
         {"/abs/path", "../../escaped", "..", ".", "a/b", "-x", ".hidden"}) {
        const std::string file = m_folder.write("hostile.mtlx", hostile_document(name));
        for (const char* command : {"export", "batch"}) {
            const std::string inside = m_folder.file("box/in/out");
            fs::create_directories(inside);
            run({command, file, "--plugin", PLUGIN, "--exporter", "5", "--output", inside});
            EXPECT_EQ(0, m_status) << name << m_errors;
            int outside = 0;
            int written = 0;
            for (const auto& entry : fs::recursive_directory_iterator(m_folder.file("box"))) {
                const bool is_effect = entry.path().extension() == ".cgfx";
                const bool is_inside = entry.path().string().rfind(inside + "/", 0) == 0;
                written += is_effect;
                outside += is_effect && !is_inside;
            }
            EXPECT_EQ(1, written) << name;
            EXPECT_EQ(0, outside) << name;
            EXPECT_FALSE(fs::exists("/abs"));
            fs::remove_all(m_folder.file("box"));
        }
        run({"plan", file, "--plugin", PLUGIN, "--exporter", "5", "--output", "box/in/out",
             "--format", "json"});
        EXPECT_EQ(0, m_status) << name << m_errors;
        const size_t at = m_output.find("--output=");
        const std::string planned = m_output.substr(at + 9, m_output.find('"', at) - at - 9);
        EXPECT_EQ(fs::path("box/in/out"), fs::path(planned).parent_path().parent_path());
        EXPECT_EQ(planned, fs::path(planned).lexically_normal()) << "no way out";
    }
}

TEST_F(Output_files, are_not_replaced_without_a_word)
{
    make_old_pair();
    for (const char* answer : {"ask", "no"}) {
        run(pair({"--overwrite", answer}));
        EXPECT_EQ(1, m_status);
        EXPECT_THAT(m_errors, HasSubstr("error: refused: " + output() + "_v.gl already exists"));
        EXPECT_TRUE(pair_is_old());
        EXPECT_EQ("", m_output);
    }
    run(pair({"--overwrite", "yes"}));
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_TRUE(pair_is_new());
}

TEST_F(Output_files, are_never_one_new_beside_one_old)
{
    m_folder.write("wood_v.gl", "old v");
    run(pair({"--overwrite", "no"}));
    EXPECT_EQ(1, m_status);
    EXPECT_EQ("old v", m_folder.read("wood_v.gl"));
    EXPECT_EQ("<no file>", m_folder.read("wood_f.gl"));
}

TEST_F(Output_files, are_left_out_or_kept_when_the_user_wants_that)
{
    make_old_pair();
    run(pair({"--overwrite", "skip"}));
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_TRUE(pair_is_old());
    EXPECT_THAT(m_output, HasSubstr("skipped"));
    run(pair({"--overwrite", "backup"}));
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_TRUE(pair_is_new());
    EXPECT_EQ("old v", m_folder.read("wood_v.gl.~1~"));
    EXPECT_EQ("old f", m_folder.read("wood_f.gl.~1~"));
}

TEST_F(Output_files, with_the_same_content_are_unchanged_and_nobody_is_asked)
{
    run(pair());
    struct stat before, after;
    stat(m_folder.file("wood_v.gl").c_str(), &before);
    run(pair());
    stat(m_folder.file("wood_v.gl").c_str(), &after);
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, HasSubstr("unchanged"));
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
}

TEST_F(Output_files, are_asked_for_once_at_a_terminal)
{
    const struct {
        const char* answer;
        bool is_replaced;
        int status;
    } rows[] = {
        {"y\n", true, 0},  {"all\n", true, 0}, {"n\n", false, 0},
        {"s\n", false, 0}, {"q\n", false, 1},  {"what?\ny\n", true, 0},
    };
    for (const auto& row : rows) {
        make_old_pair();
        fs::remove_all(m_folder.file(".shader-export"));
        run_at_terminal(pair(), row.answer);
        EXPECT_EQ(row.status, m_status) << row.answer << m_errors;
        EXPECT_EQ(row.is_replaced, pair_is_new()) << row.answer;
        EXPECT_EQ(!row.is_replaced, pair_is_old()) << row.answer;
        EXPECT_THAT(m_errors, HasSubstr("_f.gl', '" + output() + "_v.gl' exist. Replace?"));
    }
}

TEST_F(Output_files, are_answered_for_all_exporters_at_once)
{
    for (const char* answer : {"a\n", "s\n", "q\n"}) {
        const std::string folder = m_folder.file("all");
        m_folder.write("all/custom_cgfx/Wood.cgfx", "old");
        m_folder.write("all/custom_hlsl_fx/Wood.fx", "old");
        run_at_terminal({"batch", sample("wood_textured"), "--plugin", PLUGIN, "--exporter", "5",
                         "--exporter", "6", "--output", folder},
                        answer);
        const bool is_all = answer[0] == 'a';
        EXPECT_EQ(answer[0] == 'q' ? 1 : 0, m_status) << answer << m_errors;
        EXPECT_EQ(!is_all, m_folder.read("all/custom_cgfx/Wood.cgfx") == "old");
        EXPECT_EQ(!is_all, m_folder.read("all/custom_hlsl_fx/Wood.fx") == "old");
    }
}

TEST_F(Output_files, edited_by_hand_are_replaced_only_when_the_user_says_so)
{
    run_export("5");
    m_folder.write("wood.cgfx", "edited");
    run_export("5", {"--overwrite", "yes"});
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("was edited since it was exported"));
    EXPECT_EQ("edited", m_folder.read("wood.cgfx"));
    run_export("5", {"--overwrite", "yes", "--overwrite-edited"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_NE("edited", m_folder.read("wood.cgfx"));
    run_export("5", {"--overwrite", "yes"});
    EXPECT_EQ(0, m_status) << "it is ours again: " << m_errors;
}

TEST_F(Output_files, of_others_are_not_reported)
{
    m_folder.write("wood.log", "");
    run({"export", sample("wood_textured"), "--plugin", PLUGIN, "--exporter", "5", "--output",
         output()},
        "(sleep 0.3; echo x >>wood.log) &");
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_THAT(m_output, Not(HasSubstr("wood.log")));
}

TEST_F(Output_files, are_asked_for_also_where_a_link_leads_nowhere)
{
    const fs::path link = m_folder.file("wood.cgfx");
    const fs::path target = m_folder.file("elsewhere/wood.cgfx");
    fs::create_directory(m_folder.file("elsewhere"));
    fs::create_symlink(target, link);
    run_export("5");
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("refused: " + link.string() + " already exists"));
    EXPECT_EQ(target, fs::read_symlink(link));
    run_export("5", {"--overwrite", "backup"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(link)));
    EXPECT_EQ(target, fs::read_symlink(link.string() + ".~1~"));
    EXPECT_FALSE(fs::exists(target)) << "nothing is written outside of the folder";
}

TEST_F(Output_files, take_the_name_of_the_material_in_a_folder)
{
    for (const std::string output : {".", "made/here/", "./made"}) {
        run_export("5", {"--output", output});
        EXPECT_EQ(0, m_status) << m_errors;
        EXPECT_TRUE(fs::exists(m_folder.file(output + "/Wood.cgfx"))) << output;
    }
}

TEST_F(Output_files, go_to_standard_output_when_there_is_one)
{
    run_export("5");
    const std::string expected = m_folder.read("wood.cgfx");
    run_export("5", {"--output", "-"});
    EXPECT_EQ(0, m_status) << m_errors;
    EXPECT_EQ(expected, m_output);
    run_export("7", {"--output", "-"});
    EXPECT_EQ(2, m_status);
    EXPECT_EQ("", m_output);
    EXPECT_THAT(m_errors, HasSubstr("standard output takes one file"));
}

TEST_F(Output_files, that_cannot_be_written_are_reported_once_with_the_reason_of_the_system)
{
    m_folder.write("file", "");
    fs::create_directory(m_folder.file("taken.cgfx"));
    const std::string large(251, 'x');
    const struct {
        std::string output;
        std::string error;
    } rows[] = {
        {"none/wood", "cannot write 'none/wood': No such file or directory\n"},
        {"file/wood", "cannot write 'file/wood': Not a directory\n"},
        {"taken", "cannot write 'taken.cgfx': Is a directory\n"},
        {large, "cannot write '" + large + "': File name too long\n"},
    };
    for (const auto& row : rows) {
        run_export("5", {"--output", row.output, "--light", "key", "--environment",
                         "sky:images/wood_color.png"});
        EXPECT_EQ(1, m_status);
        EXPECT_EQ("shader-export: error: " + row.error, m_errors);
        EXPECT_EQ("", m_output);
    }
}

TEST_F(Output_files, stay_as_they_were_when_the_disk_is_full)
{
    // As good as full: files end at 15 KiB, which is enough for a private display. The exporter
    // fails in the text that it adds itself.
    m_folder.write("marble.fx", "old");
    run({"export", sample("marble_procedural"), "--plugin", PLUGIN, "--exporter", "CATIA",
         "--output", "marble", "--overwrite", "yes", "--light", "key:point", "--environment",
         "sky:images/wood_color.png"},
        "ulimit -f 30;");
    EXPECT_EQ(1, m_status);
    EXPECT_EQ("shader-export: error: cannot write 'marble.fx': File too large\n", m_errors);
    EXPECT_EQ("old", m_folder.read("marble.fx"));
    EXPECT_FALSE(fs::exists(m_folder.file(".shader-export")));
}

TEST_F(Output_files, stay_as_they_were_when_the_user_interrupts)
{
    run({"export", sample("wood_textured"), "--plugin", MISBEHAVING_PLUGIN, "--exporter",
         "interrupted", "--output", output()});
    EXPECT_EQ(128 + 2, m_status);
    EXPECT_THAT(m_errors, HasSubstr("interrupted"));
    EXPECT_FALSE(fs::exists(m_folder.file(".shader-export")));
}

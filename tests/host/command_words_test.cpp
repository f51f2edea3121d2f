// Help, man pages and completions tell the same commands and options.
#include "tests/host/program.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include <sys/wait.h>

using testing::HasSubstr;
using testing::IsSupersetOf;

namespace
{

using Names = std::set<std::string>;
using Commands = std::map<std::string, Names>; // the options of each command

void add_matches(const std::string& text, const char* pattern, Names& names)
{
    const std::regex expression(pattern);
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
         ++match)
        names.insert((*match)[1]);
}

std::string without(std::string text, const std::string& part)
{
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part))
        text.erase(at, part.size());
    return text;
}

// The part of a text from a line that begins so up to one that begins with `end`.
std::string part_of(const std::string& text, const std::string& begin, const std::string& end)
{
    const size_t first = text.find("\n" + begin);
    if (first == std::string::npos)
        return {};
    const size_t last = text.find("\n" + end, first + 1);
    return text.substr(first, last - first);
}

class Command_words : public Program
{
protected:
    std::string print(const std::vector<std::string>& arguments)
    {
        run(arguments);
        EXPECT_EQ(0, m_status) << m_errors;
        return m_output;
    }

    // The commands with their options, long and short, as the help has them.
    Commands from_help()
    {
        Names commands;
        add_matches(part_of(print({"help"}), "Commands:", "Options:"), "\n  ([a-z]+) ", commands);
        Commands result;
        for (const std::string& command : commands) {
            std::istringstream lines(print({"help", command}));
            for (std::string line; std::getline(lines, line);) {
                if (line.compare(0, 3, "  -") == 0)
                    add_matches(line.substr(0, line.find("  ", 3)), " (-[^ ,]+)", result[command]);
            }
        }
        return result;
    }

    Commands from_man_pages(const Commands& commands)
    {
        Commands result;
        for (const auto& command : commands) {
            const std::string page = without(print({"man", command.first}), "\\");
            std::istringstream lines(part_of(page, ".SH OPTIONS", ".SH"));
            for (std::string line; std::getline(lines, line);) {
                if (line.compare(0, 3, "fB-") == 0)
                    add_matches(line, "fB(-.*?)fR", result[command.first]);
            }
        }
        return result;
    }

    Commands from_bash(const Commands& commands)
    {
        const std::string script = print({"completion", "bash"});
        Commands result;
        for (const auto& command : commands)
            add_matches(part_of(script, "    " + command.first + ") words=", "    "),
                        "[ \"](-[^ \"]+)", result[command.first]);
        return result;
    }

    Commands from_zsh(const Commands& commands)
    {
        const std::string script = print({"completion", "zsh"});
        Commands result;
        for (const auto& command : commands)
            add_matches(part_of(script, "        (" + command.first + ")\n", "            ;;"),
                        "'\\*?(--?[A-Za-z-]+)[=+]?\\[", result[command.first]);
        return result;
    }

    Commands from_fish(const Commands& commands)
    {
        std::istringstream lines(print({"completion", "fish"}));
        Commands result;
        for (std::string line; std::getline(lines, line);) {
            for (const auto& command : commands) {
                if (line.find("_from " + command.first + "'") == std::string::npos)
                    continue;
                Names found;
                const std::string head = line.substr(0, line.find(" -d "));
                add_matches(head, " -l ([^ ]+)", found);
                for (const std::string& name : found)
                    result[command.first].insert("--" + name);
                found.clear();
                add_matches(head, " -s ([^ ]+)", found);
                for (const std::string& name : found)
                    result[command.first].insert("-" + name);
            }
        }
        return result;
    }

    // The beginning of a command line in the folder of the test, where the program is installed.
    std::string with_program() const
    {
        return "cd '" + m_folder.path() + "' && PATH=\"" +
               std::filesystem::path(m_program).parent_path().string() +
               ":$PATH\" TOVIRAEXPORT_PLUGIN='" PLUGIN "'";
    }

    // What bash offers where the cursor stands, behind the words.
    std::string completed_by_bash(const std::string& words)
    {
        m_folder.write("script", print({"completion", "bash"}));
        const std::string line = with_program() + " bash -c 'source ./script; COMP_WORDS=(" +
                                 words +
                                 "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _shader_export "
                                 "2>/dev/null; echo ${COMPREPLY[@]}' >offered";
        EXPECT_EQ(0, std::system(line.c_str()));
        return m_folder.read("offered");
    }
};

} // namespace

TEST_F(Command_words, are_the_same_in_help_man_pages_and_completions)
{
    const Commands help = from_help();
    ASSERT_LE(13u, help.size());
    EXPECT_THAT(help.at("batch"),
                IsSupersetOf({"-j", "--jobs", "-o", "--output", "--texture-paths", "--preset"}));
    const std::map<std::string, Commands> places = {{"man page", from_man_pages(help)},
                                                    {"bash", from_bash(help)},
                                                    {"zsh", from_zsh(help)},
                                                    {"fish", from_fish(help)}};
    for (const auto& [place, commands] : places) {
        for (const auto& [command, options] : help)
            EXPECT_EQ(options, commands.at(command)) << command << " in " << place;
    }
}

TEST_F(Command_words, are_completed_by_bash)
{
    const struct {
        const char* words;
        const char* offered;
    } rows[] = {
        {"shader-export ex", "export\n"},
        {"shader-export export --overwrite-", "--overwrite-edited\n"},
        {"shader-export batch --overwrite b", "backup\n"},
        {"shader-export batch --overwrite = s", "skip\n"},
        {"shader-export completion z", "zsh\n"},
        {"shader-export help pl", "plan\n"},
        {"shader-export export -e Aut", "'Autodesk 3ds Max legacy (HLSL)' 'Autodesk Maya (CgFX)' "
                                        "'Autodesk Softimage (CgFX)'\n"},
        {"shader-export export wood.mtlx --light a", "\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.offered, completed_by_bash(row.words)) << row.words;
}

TEST_F(Command_words, are_completed_by_fish_with_the_names_of_exporters)
{
    if (std::system("command -v fish >/dev/null") != 0)
        GTEST_SKIP() << "fish is absent";
    m_folder.write("script", print({"completion", "fish"}));
    const std::string line = with_program() +
                             " fish --no-config -c 'source ./script; "
                             "complete -C \"shader-export export -e Custom\\\\ G\"' >offered";
    EXPECT_EQ(0, std::system(line.c_str()));
    EXPECT_EQ(0u, m_folder.read("offered").find("Custom GLSL\t")) << m_folder.read("offered");
}

TEST_F(Command_words, of_man_pages_are_read_by_man_without_a_warning)
{
    if (std::system("command -v groff >/dev/null") != 0)
        GTEST_SKIP() << "groff is absent";
    run({"man", "--all", "."});
    EXPECT_EQ(0, m_status) << m_errors;
    int pages = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.path())) {
        if (entry.path().extension() != ".1")
            continue;
        ++pages;
        const std::string line = "groff -man -Tascii -ww '" + entry.path().string() +
                                 "' >/dev/null 2>'" + m_folder.file("warnings") + "'";
        EXPECT_EQ(0, std::system(line.c_str()));
        EXPECT_EQ("", m_folder.read("warnings")) << entry.path();
    }
    EXPECT_LE(14, pages);
}

TEST_F(Command_words, of_scripts_are_understood_by_their_shells)
{
    const struct {
        const char* shell;
        const char* check;
    } rows[] = {{"bash", "bash -n"}, {"zsh", "zsh -n"}, {"fish", "fish --no-execute"}};
    for (const auto& row : rows) {
        const std::string found = std::string("command -v ") + row.shell + " >/dev/null";
        if (std::system(found.c_str()) != 0)
            continue;
        const std::string file = m_folder.write("script", print({"completion", row.shell}));
        EXPECT_EQ(0, std::system((std::string(row.check) + " '" + file + "'").c_str()));
    }
}

TEST_F(Command_words, are_wrapped_to_the_width_of_the_terminal)
{
    for (const size_t width : {60, 100}) {
        run({"help", "export"}, "COLUMNS=" + std::to_string(width));
        std::istringstream lines(m_output);
        size_t longest = 0;
        for (std::string line; std::getline(lines, line);)
            longest = std::max(longest, line.find_first_not_of(' ') == 30 ? line.size() : 0);
        EXPECT_LE(longest, width);
        EXPECT_GT(longest, width - 10);
    }
}

TEST_F(Command_words, come_with_examples_and_exit_codes)
{
    for (const auto& command : from_help()) {
        const std::string help = print({"help", command.first});
        EXPECT_THAT(help, HasSubstr("Exit status:\n  0 ")) << command.first;
        EXPECT_THAT(help, HasSubstr("Examples:\n  ")) << command.first;
        EXPECT_THAT(help, HasSubstr("shader-export " + command.first)) << command.first;
    }
}

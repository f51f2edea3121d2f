// The documents against the files that they speak of: links, paths and quoted messages.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;

const fs::path root = SOURCE_FOLDER;

std::string read(const fs::path& file)
{
    std::ifstream stream(file);
    std::stringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<fs::path> documents()
{
    std::vector<fs::path> files = {root / "README.md", root / "samples/README.md"};
    for (const auto& entry : fs::recursive_directory_iterator(root / "docs"))
        if (entry.path().extension() == ".md")
            files.push_back(entry.path());
    return files;
}

// A document without its code blocks.
std::string prose_of(const fs::path& document)
{
    std::istringstream lines(read(document));
    std::string prose;
    bool is_code = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 3, "```") == 0)
            is_code = !is_code;
        else if (!is_code && line.compare(0, 4, "<!--") != 0)
            prose += line + "\n";
    }
    return prose;
}

// What the first group of a pattern matches, everywhere in a text.
std::vector<std::string> all_matches(const std::string& text, const std::string& pattern)
{
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator i(text.begin(), text.end(), expression), end; i != end; ++i)
        found.push_back((*i)[1]);
    return found;
}

// "Add a target" as the name of the place within a page.
std::string anchor_of(const std::string& heading)
{
    std::string anchor;
    for (const char c : heading) {
        if (c == ' ')
            anchor += '-';
        else if (std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_')
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return anchor;
}

TEST(Documents, links_lead_to_files_and_headings_that_exist)
{
    for (const fs::path& document : documents()) {
        for (const std::string& link : all_matches(prose_of(document), R"(\]\(([^)\s]+)\))")) {
            if (link.find("://") != std::string::npos)
                continue;
            const std::size_t mark = link.find('#');
            const std::string file = link.substr(0, mark);
            const fs::path target = file.empty() ? document : document.parent_path() / file;
            EXPECT_TRUE(fs::exists(target)) << document << ": " << link;
            if (mark == std::string::npos)
                continue;
            std::set<std::string> anchors;
            for (const std::string& heading : all_matches(read(target), "\n#+ ([^\n]*)"))
                anchors.insert(anchor_of(heading));
            EXPECT_TRUE(anchors.count(link.substr(mark + 1))) << document << ": " << link;
        }
    }
}

// A path is what begins with a folder of the project: `scripts/demo.sh`, `exporters/`.
TEST(Documents, paths_in_them_exist)
{
    std::string folders;
    for (const auto& entry : fs::directory_iterator(root)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && name[0] != '.' && name.compare(0, 5, "build") != 0)
            folders += (folders.empty() ? "" : "|") + name;
    }
    for (const fs::path& document : documents()) {
        const std::string pattern = "`((?:" + folders + R"()/[\w./]*)[`\s])";
        for (const std::string& path : all_matches(prose_of(document), pattern))
            EXPECT_TRUE(fs::exists(root / path)) << document << ": " << path;
    }
}

// ---- quoted messages ----

// The texts of a source file, without its comments: parts that the compiler joins stand together,
// line ends are spaces.
std::string texts_of(std::string source)
{
    source = std::regex_replace(source, std::regex(R"(\n *//[^\n]*)"), "");
    source = std::regex_replace(source, std::regex(R"("\)?\s*(wxT\()?")"), "");
    source = std::regex_replace(source, std::regex(R"(\\n)"), " ");
    return std::regex_replace(source, std::regex(R"(\\")"), "\"");
}

std::string texts_of_the_programs()
{
    std::string texts;
    for (const char* folder : {"plugin", "exporter_base", "export_common", "exporters",
                               "reference_host", "validators"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            const std::string extension = entry.path().extension().string();
            if (extension == ".cpp" || extension == ".h")
                texts += texts_of(read(entry.path()));
        }
    }
    return texts;
}

// The fixed parts of a quoted message: "..." and words in capitals (FILE, KIND) stand for anything.
std::vector<std::string> fixed_parts(const std::string& message)
{
    const std::regex placeholder(R"(\.\.\.|\b[A-Z]{4,}\b)");
    std::vector<std::string> parts;
    for (std::sregex_token_iterator i(message.begin(), message.end(), placeholder, -1), end;
         i != end; ++i) {
        const std::string part = std::regex_replace(i->str(), std::regex("^ +| +$"), "");
        if (part.size() > 1)
            parts.push_back(part);
    }
    return parts;
}

// In the pages of the targets and of failed exports, double quotes hold what a program says.
TEST(Documents, quoted_messages_stand_in_the_sources)
{
    const std::string texts = texts_of_the_programs();
    for (const fs::path& document : documents()) {
        const std::string path = document.lexically_relative(root).string();
        if (path.compare(0, 12, "docs/targets") != 0 && path != "docs/failed-export.md")
            continue;
        for (std::string quoted :
             all_matches(prose_of(document), "[^`\\w\\\\]\"([^\"`]+)\"[^`\\w]")) {
            quoted = std::regex_replace(quoted, std::regex("\n"), " ");
            for (const std::string& part : fixed_parts(quoted))
                EXPECT_NE(texts.find(part), std::string::npos) << path << ": " << quoted;
        }
    }
}

// ---- programs of the tests ----

// Folder of each program of the tests, from their build files.
std::map<std::string, fs::path> test_programs()
{
    std::map<std::string, fs::path> programs;
    for (const auto& folder : fs::directory_iterator(root / "tests"))
        for (const std::string& program : all_matches(read(folder.path() / "CMakeLists.txt"),
                                                      R"((?:^|\n)add_\w+\((\w+_test)\s)"))
            programs[program] = folder.path();
    return programs;
}

TEST(Documents, contributing_names_every_program_of_the_tests)
{
    const std::string page = read(root / "docs/contributing.md");
    for (const auto& [program, folder] : test_programs())
        EXPECT_NE(page.find("\n| `" + program + "` |"), std::string::npos) << program;
    for (const std::string& program : all_matches(page, R"(\b(\w+_test)\b[^.])"))
        EXPECT_TRUE(test_programs().count(program)) << program;
}

bool has_suite(const fs::path& source, const std::string& suite)
{
    return source.extension() == ".cpp" &&
           read(source).find("(" + suite + ",") != std::string::npos;
}

// `build/tests/plugin/plugin_unit_test --gtest_filter='Exporter_table.*'`
TEST(Documents, commands_run_programs_that_have_the_suite)
{
    const std::string page = read(root / "docs/contributing.md");
    const std::string command = R"((\w+/\w+_test --gtest_filter='\w+)\.\*')";
    for (const std::string& found : all_matches(page, command)) {
        const std::string program = found.substr(0, found.find(' '));
        const std::string suite = found.substr(found.find('\'') + 1);
        const fs::path folder = root / "tests" / fs::path(program).parent_path();
        EXPECT_EQ(test_programs()[fs::path(program).filename()], folder) << found;
        const std::string build = read(folder / "CMakeLists.txt");
        const std::string sources = build.substr(build.find(fs::path(program).filename()));
        bool is_there = false;
        for (const std::string& source :
             all_matches(sources.substr(0, sources.find(')')), R"((\w+\.cpp))"))
            is_there = is_there || has_suite(folder / source, suite);
        EXPECT_TRUE(is_there) << found;
    }
}

} // namespace

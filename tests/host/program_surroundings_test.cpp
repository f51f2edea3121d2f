// The program among displays, pipes, closed streams and signals.
#include "reference_host/desktop/virtual_display.h"
#include "reference_host/system/process.h"
#include "tests/host/documents.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

using namespace reference_host;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

namespace
{

constexpr Process_limits patience = {60, 0, 1 << 20};
constexpr const char* sample = SOURCE_FOLDER "/samples/wood_textured.mtlx";

// Runs a line of the shell in which $0 is the program, $1 the plug-in, $2 a sample document and $3
// another word.
Process_result run_line(const std::string& line, const std::string& word = {},
                        const Process_limits& limits = patience)
{
    return run_program({"sh", "-c", line, SHADER_EXPORT, PLUGIN, sample, word}, limits);
}

class Surroundings : public testing::Test
{
protected:
    std::string pipe() const
    {
        const std::string path = m_folder.file("pipe");
        mkfifo(path.c_str(), 0600);
        return path;
    }

    Temporary_folder m_folder;
};

} // namespace

// Two servers of every kind: one ends with its last client, one starts anew without any. Busy
// processes make every moment longer at which that could disturb. TOVIRAEXPORT_DISPLAY_STARTS sets
// how often; 50 take some minutes.
TEST_F(Surroundings, a_display_that_does_not_outlive_its_clients_lasts_to_the_end)
{
    const char* wanted = std::getenv("TOVIRAEXPORT_DISPLAY_STARTS");
    const int count = wanted ? std::atoi(wanted) : 6;
    for (int i = 0; i < count; ++i) {
        const std::string server = i % 2 == 0 ? "-terminate" : "";
        const Process_result result = run_line(
            "for i in 1 2 3 4; do while :; do :; done >/dev/null 2>&1 & done; "
            "exec 5>\"$3\"; Xvfb -displayfd 5 -nolisten tcp " +
                server +
                " >/dev/null 2>&1 & until [ -s \"$3\" ]; do sleep 0.01; done; read number <\"$3\"; "
                "DISPLAY=:$number \"$0\" panel --plugin \"$1\" --exporter 5",
            m_folder.file("number"));
        EXPECT_EQ(0, result.status) << server << result.output;
        EXPECT_THAT(result.output, HasSubstr("Custom CgFX: "));
        EXPECT_THAT(result.output, Not(HasSubstr("window system")));
    }
}

TEST_F(Surroundings, a_private_display_takes_no_client_without_its_cookie)
{
    const Virtual_display display;
    EXPECT_TRUE(Display_connection().is_open());
    setenv("XAUTHORITY", "/nowhere", 1);
    EXPECT_FALSE(Display_connection().is_open());
}

TEST_F(Surroundings, no_path_is_waited_for_or_read_without_end)
{
    const struct {
        const char* line;
        bool writes; // the path, which may then be a file of any size
    } rows[] = {
        {"\"$0\" nodes \"$3\"", false},
        {"\"$0\" list --plugin \"$3\"", false},
        {"\"$0\" --config \"$3\" list", false},
        {"\"$0\" render \"$3\" -o picture.png", false},
        {"\"$0\" render \"$3\" \"$3\" -o picture.png", false},
        {"\"$0\" compare \"$3\" \"$3\"", false},
        {"\"$0\" panel --plugin \"$1\" --exporter 5 --screenshot \"$3\"", true},
        {"\"$0\" plan \"$2\" --plugin \"$1\" --exporter 5 --output all --plan \"$3\"", true},
        {"\"$0\" batch \"$2\" --plugin \"$1\" --exporter 5 --output all --report \"$3\"", true},
        {"\"$0\" batch \"$2\" --plugin \"$1\" --exporter 5 --output all --junit \"$3\"", true},
        {"\"$0\" export \"$2\" --plugin \"$1\" --exporter 5 --output a --depfile \"$3\"", true},
    };
    const std::string loop = m_folder.file("loop");
    std::filesystem::create_symlink(loop, loop);
    const std::string sparse = m_folder.write("sparse", "");
    std::filesystem::resize_file(sparse, std::uintmax_t{3} << 30);
    for (const std::string& path :
         {pipe(), std::string("/dev/zero"), m_folder.path(), loop, sparse}) {
        for (const auto& row : rows) {
            if (path == sparse && row.writes)
                continue;
            const Process_result result = run_line("cd '" + m_folder.path() + "'; " + row.line,
                                                   path, {20, 0, std::size_t{4} << 20});
            EXPECT_THAT(result.status, AnyOf(1, 2)) << row.line << " " << path << result.output;
            EXPECT_NE("", result.output) << row.line << " " << path;
        }
    }
}

TEST_F(Surroundings, what_stands_where_the_program_keeps_its_notes_is_not_waited_for)
{
    const std::string line = "\"$0\" batch \"$2\" --plugin \"$1\" --exporter 5 --overwrite yes "
                             "--output \"$3\"";
    ASSERT_EQ(0, run_line(line, m_folder.path()).status);
    const std::string notes = m_folder.file("custom_cgfx/.shader-export");
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(notes))
        files.push_back(entry.path().string());
    ASSERT_EQ(2U, files.size());
    for (const std::string& file : files) {
        std::filesystem::remove(file);
        mkfifo(file.c_str(), 0600);
    }
    const Process_result result = run_line(line + " --light key", m_folder.path());
    EXPECT_EQ(0, result.status) << describe_end(result, patience) << result.output;
}

TEST_F(Surroundings, closed_standard_streams_do_not_reach_the_files)
{
    const std::string export_line = "\"$0\" export \"$2\" --plugin \"$1\" --exporter 5 "
                                    "--overwrite yes --output \"$3\" ";
    ASSERT_EQ(0, run_line(export_line, m_folder.file("wood")).status);
    const std::string usual = m_folder.read("wood.cgfx");
    for (const char* closed : {"<&-", "2>&-", "<&- 2>&-", "<&- >&- 2>&-"}) {
        const Process_result result = run_line(export_line + closed, m_folder.file("wood"));
        const bool output_is_lost = std::string(closed).find(" >&-") != std::string::npos;
        EXPECT_EQ(output_is_lost ? 1 : 0, result.status) << closed;
        EXPECT_EQ(usual, m_folder.read("wood.cgfx")) << closed;
    }
}

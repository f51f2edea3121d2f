// The program among displays, pipes, closed streams and signals.
#include "reference_host/desktop/virtual_display.h"
#include "reference_host/system/process.h"
#include "tests/host/documents.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include <sys/stat.h>

using namespace reference_host;
using testing::HasSubstr;

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

TEST_F(Surroundings, a_display_that_ends_with_its_last_client_lasts_to_the_end)
{
    for (int i = 0; i < 5; ++i) {
        const Process_result result =
            run_line("exec 5>\"$3\"; Xvfb -displayfd 5 -terminate -nolisten tcp >/dev/null 2>&1 & "
                     "until [ -s \"$3\" ]; do sleep 0.01; done; read number <\"$3\"; "
                     "DISPLAY=:$number \"$0\" panel --plugin \"$1\" --exporter 5",
                     m_folder.file("number"));
        EXPECT_EQ(0, result.status) << result.output;
        EXPECT_THAT(result.output, HasSubstr("Custom CgFX: "));
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
    const std::string rows[] = {
        "\"$0\" nodes \"$3\"",
        "\"$0\" list --plugin \"$3\"",
        "\"$0\" render \"$3\" -o picture.png",
        "\"$0\" render \"$3\" \"$3\" -o picture.png",
        "\"$0\" compare \"$3\" \"$3\"",
        "\"$0\" panel --plugin \"$1\" --exporter 5 --screenshot \"$3\"",
    };
    const std::string loop = m_folder.file("loop");
    std::filesystem::create_symlink(loop, loop);
    const std::string sparse = m_folder.write("sparse", "");
    std::filesystem::resize_file(sparse, std::uintmax_t{3} << 30);
    for (const std::string& path :
         {pipe(), std::string("/dev/zero"), m_folder.path(), loop, sparse}) {
        for (const std::string& row : rows) {
            if (path == sparse && row.find("screenshot") != std::string::npos)
                continue; // a file that may be replaced
            const Process_result result =
                run_line("cd \"${3%/*}\"; " + row, path, {20, 0, 1 << 20});
            EXPECT_EQ(1, result.status) << row << " " << path << "\n" << result.output;
            EXPECT_NE("", result.output) << row << " " << path;
        }
    }
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

TEST_F(Surroundings, a_signal_at_any_moment_leaves_no_process_and_no_temporary_folder)
{
    std::filesystem::create_directory(m_folder.file("tmp"));
    std::mt19937 random(1);
    for (int i = 0; i < 20; ++i) {
        const int milliseconds = std::uniform_int_distribution<int>(0, 400)(random);
        const char* signal = i % 2 ? "KILL" : "TERM";
        const Process_result result =
            run_line("TMPDIR=${3%/*}/tmp; export TMPDIR; "
                     "env -u DISPLAY \"$0\" batch \"$2\" --plugin \"$1\" --output \"$3\" "
                     "--overwrite yes >/dev/null 2>&1 & program=$!; sleep 0." +
                         std::to_string(1000 + milliseconds).substr(1) + "; kill -" + signal +
                         " $program; wait $program; for i in $(seq 500); do "
                         "pgrep -g $$ -x Xvfb >/dev/null || exit 0; sleep 0.01; done; exit 9",
                     m_folder.file("all"));
        EXPECT_EQ(0, result.status) << signal << " after " << milliseconds << " ms";
    }
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.file("tmp")));
}

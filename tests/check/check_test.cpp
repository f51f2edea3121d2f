// The command `check`, with the plug-in and with a library of deliberate defects.
#include "reference_host/system/file_access.h"
#include "reference_host/system/process.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

using namespace reference_host;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

// No limit for files, which the program inherits: a check makes a sparse one of 3 GB.
constexpr Process_limits patience = {900, 0, 0};

Process_result check(std::vector<std::string> arguments, const std::string& defect = {})
{
    std::vector<std::string> command = {"env", "TOVIRAEXPORT_DEFECT=" + defect, SHADER_EXPORT,
                                        "check"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run_program(command, patience);
}

struct Listed_check {
    std::string id;
    std::string severity;
};

std::vector<Listed_check> listed_checks(const std::vector<std::string>& arguments = {})
{
    std::vector<std::string> all = {"--list"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::istringstream lines(check(all).output);
    std::vector<Listed_check> checks;
    Listed_check row;
    for (std::string rest; lines >> row.id >> row.severity && std::getline(lines, rest);)
        checks.push_back(row);
    return checks;
}

} // namespace

TEST(Check_command, every_check_finds_its_defect)
{
    const std::vector<Listed_check> checks = listed_checks();
    ASSERT_GE(checks.size(), 20U);
    for (const Listed_check& row : checks) {
        const Process_result result = check({DEFECTIVE_PLUGIN, "--include", row.id}, row.id);
        EXPECT_EQ(row.severity == "error" ? 1 : 0, result.status) << row.id << "\n"
                                                                  << result.output;
        EXPECT_THAT(result.output, Not(StartsWith("passed"))) << row.id;
    }
}

TEST(Check_command, finds_nothing_in_the_same_library_without_defect)
{
    const Process_result result = check(
        {DEFECTIVE_PLUGIN, "--exclude", "graphs", "--exclude", "panels.memory", "--jobs", "2"});
    EXPECT_EQ(0, result.status) << result.output;
    EXPECT_THAT(result.output, Not(HasSubstr("FAILED")));
}

TEST(Check_command, chooses_by_group_and_by_id)
{
    EXPECT_EQ(1U, listed_checks({"--include", "faults.none"}).size());
    EXPECT_EQ(4U, listed_checks({"--include", "graphs"}).size());
    EXPECT_EQ(3U, listed_checks({"--include", "graphs", "--exclude", "graphs.inputs"}).size());
}

TEST(Check_command, prints_results_for_programs)
{
    const Process_result result =
        check({PLUGIN, "--include", "interface.entries", "--include", "interface.ids", "--repeat",
               "2", "--seed", "7", "--json"});
    EXPECT_EQ(0, result.status) << result.output;
    EXPECT_THAT(result.output, StartsWith("[\n  {\"id\": \"interface.entries\", "));
    EXPECT_THAT(result.output, ContainsRegex("\"seed\": 7, \"passed\": true"));
    EXPECT_THAT(result.output, ContainsRegex("\"seed\": 8, \"passed\": true"));
    EXPECT_THAT(result.output, HasSubstr("\"findings\": \"\"}\n]\n"));
}

TEST(Check_command, runs_several_checks_at_once)
{
    const Process_result result =
        check({PLUGIN, "--include", "interface", "--exclude", "interface.sequences", "--exclude",
               "interface.loadings", "--repeat", "2", "--jobs", "6"});
    EXPECT_EQ(0, result.status) << result.output;
    EXPECT_EQ(12, std::count(result.output.begin(), result.output.end(), '\n')) << result.output;
}

TEST(Check_command, reports_wrong_usage_and_libraries_that_cannot_be_read)
{
    EXPECT_EQ(2, check({}).status);
    EXPECT_EQ(2, check({PLUGIN, "--include", "nonsense"}).status);
    EXPECT_EQ(2, check({PLUGIN, "--include", "graph"}).status);
    EXPECT_EQ(1, check({"/nowhere.so"}).status);
    EXPECT_EQ(1, check({"/dev/zero"}).status);
    EXPECT_EQ(1, check({"/etc/passwd", "--include", "interface.entries"}).status);
}

TEST(Check_command, the_page_of_checks_is_its_own_list)
{
    std::string reason;
    EXPECT_EQ(read_whole_file(SOURCE_FOLDER "/docs/check.md", 1 << 20, reason),
              check({"--markdown"}).output)
        << "renew it with: shader-export check --markdown >docs/check.md";
}

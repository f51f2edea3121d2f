#include "reference_host/system/process.h"

#include "reference_host/system/memory_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include <signal.h>

namespace reference_host
{

namespace
{

// A process that has ended may still wait for its new parent to ask for its status.
bool has_ended(int process)
{
    for (int i = 0; i < 2000; ++i) {
        std::ifstream file("/proc/" + std::to_string(process) + "/stat");
        std::string word;
        std::string state;
        if (!(file >> word >> word >> state) || state == "Z" || state == "X")
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

TEST(Run_program, gives_exit_status_and_both_outputs)
{
    const Process_result result = run_program({"sh", "-c", "echo out; echo err >&2; exit 3"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "out\nerr\n");
}

TEST(Run_program, reads_more_than_a_pipe_holds)
{
    const Process_result result = run_program({"head", "-c", "1000000", "/dev/zero"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.size(), 1000000U);
}

TEST(Run_program, hands_arguments_on_without_a_shell)
{
    EXPECT_EQ(run_program({"printf", "%s", "$HOME; `id` \"x\""}).output, "$HOME; `id` \"x\"");
}

TEST(Run_program, tells_a_program_that_does_not_run_to_its_end)
{
    EXPECT_EQ(run_program({}).status, -1);
    EXPECT_EQ(run_program({"/nonexistent/program"}).status, -1);
    EXPECT_EQ(run_program({"sh", "-c", "kill -9 $$"}).status, -1);
}

TEST(Run_program, ends_a_program_that_takes_too_long_and_all_that_it_started)
{
    const auto start = std::chrono::steady_clock::now();
    const Process_result result = run_program({"sh", "-c", "sleep 600 & echo $!; wait"}, {1, 0, 0});
    EXPECT_EQ(Process_end::time_limit, result.end);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_TRUE(has_ended(std::atoi(result.output.c_str())));
}

TEST(Run_program, ends_a_program_that_closes_its_output_and_goes_on)
{
    const Process_result result =
        run_program({"sh", "-c", "exec sleep 600 >/dev/null 2>&1"}, {1, 0, 0});
    EXPECT_EQ(Process_end::time_limit, result.end);
}

TEST(Run_program, ends_a_program_that_writes_too_much)
{
    const Process_result result = run_program({"cat", "/dev/zero"}, {60, 0, 1 << 20});
    EXPECT_EQ(Process_end::output_limit, result.end);
    EXPECT_EQ(std::size_t{1} << 20, result.output.size());
}

TEST(Run_program, ends_a_program_whose_file_grows_too_large)
{
    const Memory_file file;
    const Process_result result =
        run_program({"dd", "if=/dev/zero", "of=" + file.path(), "bs=1M"}, {60, 0, 1 << 20});
    EXPECT_EQ(Process_end::signal, result.end);
    EXPECT_LE(file.content(std::size_t{1} << 22).size(), std::size_t{1} << 20);
}

TEST(Run_program, gives_no_more_memory_than_allowed)
{
    // `tail` keeps what it reads until a line ends.
    const Process_result result =
        run_program({"tail", "-n", "1", "/dev/zero"}, {60, std::size_t{256} << 20, 0});
    EXPECT_NE(Process_end::time_limit, result.end);
    EXPECT_NE(0, result.status);
}

TEST(Run_program, leaves_no_program_behind_when_it_is_killed)
{
    const Memory_file number;
    const std::string path = number.path();
    const Process_result result = run_in_own_process(
        [&path] {
            run_program({"sh", "-c", "echo $$ >\"$0\"; kill -9 $PPID; exec sleep 600", path});
            return 0;
        },
        {20, 0, 0});
    EXPECT_EQ(SIGKILL, result.signal);
    const int process = std::atoi(number.content(20).c_str());
    ASSERT_GT(process, 0);
    EXPECT_TRUE(has_ended(process));
}

TEST(Run_in_own_process, tells_the_end_of_the_action)
{
    const Process_limits limits = {20, 0, 0};
    EXPECT_EQ(7, run_in_own_process([] { return 7; }, limits).status);
    const Process_result crash = run_in_own_process([] { return raise(SIGKILL); }, limits);
    EXPECT_EQ("ended by signal 9 (Killed)", describe_end(crash, limits));
}

} // namespace

} // namespace reference_host

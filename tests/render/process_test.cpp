#include "reference_host/render/process.h"

#include <gtest/gtest.h>

namespace reference_host
{

namespace
{

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

} // namespace

} // namespace reference_host

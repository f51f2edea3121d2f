// The border to the host: no exception crosses it.
#include "exporter_base/border.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

namespace QZ
{
namespace TEST
{

using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;
using TOVIRAEXPORT::at_border;

const std::string note = "Error! toviraexport gave up an operation after an exception.\n";

TEST(At_border, returns_what_the_body_returns)
{
    CaptureStderr();
    EXPECT_EQ(at_border(1, [] { return 2; }), 2);
    EXPECT_FALSE(at_border(true, [] { return false; }));
    EXPECT_TRUE(at_border(false, [] { return true; }));
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(At_border, turns_any_exception_into_the_failure_and_a_note)
{
    CaptureStderr();
    EXPECT_EQ(at_border(1, []() -> int { throw std::bad_alloc(); }), 1);
    EXPECT_TRUE(at_border(true, []() -> bool { throw std::runtime_error("any"); }));
    EXPECT_FALSE(at_border(false, []() -> bool { throw 7; }));
    EXPECT_EQ(GetCapturedStderr(), note + note + note);
}

TEST(At_border, body_without_a_result_is_run_once)
{
    int runs = 0;
    CaptureStderr();
    at_border([&] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(At_border, body_without_a_result_may_throw)
{
    CaptureStderr();
    at_border([] { throw std::bad_alloc(); });
    EXPECT_EQ(GetCapturedStderr(), note);
}

} // namespace TEST
} // namespace QZ

// What the program says of itself and of command lines that it does not understand.
#include "tests/host/program.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

using testing::HasSubstr;
using testing::StartsWith;

TEST_F(Program, tells_its_version)
{
    run({"--version"});
    EXPECT_EQ(0, m_status);
    EXPECT_EQ("shader-export " PROJECT_VERSION "\n", m_output);
    EXPECT_EQ("", m_errors);
}

#include "reference_host/system/memory_file.h"

#include "reference_host/system/process.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace reference_host
{
namespace
{

TEST(Memory_file, is_read_and_written_by_other_programs)
{
    const Memory_file file("old");
    EXPECT_EQ("old", run_program({"cat", file.path()}).output);
    EXPECT_EQ(0, run_program({"sh", "-c", "printf 'new text' >\"$0\"", file.path()}).status);
    EXPECT_EQ("new text", file.content(100));
    EXPECT_EQ("new", file.content(3));
}

TEST(Memory_file, is_gone_with_its_object)
{
    std::string path;
    {
        const Memory_file file("text");
        path = file.path();
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace
} // namespace reference_host

#include "reference_host/render/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace reference_host
{

namespace
{

TEST(Temporary_folder, goes_away_with_its_files)
{
    std::string path;
    {
        const Temporary_folder folder;
        path = folder.path();
        ASSERT_TRUE(std::filesystem::is_directory(path));
        std::filesystem::create_directory(path + "/inner");
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace

} // namespace reference_host

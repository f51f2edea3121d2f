#include "reference_host/output/file_names.h"

#include <gtest/gtest.h>

using reference_host::folder_name;
using reference_host::safe_file_name;

TEST(File_names, cannot_leave_their_folder)
{
    const struct {
        std::string text;
        std::string name;
    } rows[] = {
        {"Wood", "Wood"},
        {"H\xc3\xb6lz \xff%s", "H\xc3\xb6lz \xff%s"},
        {"Planks/grain", "Planks_grain"},
        {"/abs/path", "_abs_path"},
        {"../../escaped", "_._.._escaped"},
        {"..", "_."},
        {".", "_"},
        {".hidden", "_hidden"},
        {"-rf", "_rf"},
        {"", "_"},
        {"a\nb\\c:d", "a_b_c_d"},
        {std::string("a\0b", 3), "a_b"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.name, safe_file_name(row.text));
}

TEST(File_names, leave_room_for_extensions_and_end_with_a_whole_character)
{
    EXPECT_EQ(std::string(200, 'x'), safe_file_name(std::string(5000, 'x')));
    EXPECT_EQ(std::string(199, 'x'), safe_file_name(std::string(199, 'x') + "\xc3\xb6"));
}

TEST(File_names, of_folders_are_short_and_safe)
{
    EXPECT_EQ("custom_cgfx_cgfx", folder_name("Custom CgFX (.cgfx)"));
    EXPECT_EQ("etc", folder_name("../../etc"));
    EXPECT_EQ("_", folder_name(""));
}

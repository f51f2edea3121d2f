#include "reference_host/render/target_conventions.h"

#include <gtest/gtest.h>

namespace reference_host
{

namespace
{

TEST(Target_conventions, are_those_of_opengl_where_the_shader_says_nothing)
{
    const Target_conventions conventions = conventions_of("// Target: CgFX\nfloat a;\n");
    EXPECT_FALSE(conventions.flipped_textures);
    EXPECT_FALSE(conventions.flipped_mesh);
    EXPECT_FALSE(conventions.rotated_cube_maps);
}

TEST(Target_conventions, are_read_from_a_line_of_their_own)
{
    const Target_conventions conventions =
        conventions_of("#version 130\n// by // Conventions: flipped mesh\n"
                       "// Conventions: flipped textures, rotated cube maps\n// flipped mesh\n");
    EXPECT_TRUE(conventions.flipped_textures);
    EXPECT_FALSE(conventions.flipped_mesh);
    EXPECT_TRUE(conventions.rotated_cube_maps);
    EXPECT_TRUE(conventions_of("// Conventions: flipped mesh").flipped_mesh);
}

} // namespace

} // namespace reference_host

#include "reference_host/render/host_conventions.h"

#include <gtest/gtest.h>

namespace reference_host
{

namespace
{

TEST(Host_conventions, are_those_of_opengl_where_the_shader_says_nothing)
{
    const Host_conventions conventions = conventions_of("// Target: CgFX\nfloat a;\n");
    EXPECT_FALSE(conventions.flipped_textures);
    EXPECT_FALSE(conventions.flipped_mesh);
    EXPECT_FALSE(conventions.rotated_cube_maps);
}

TEST(Host_conventions, are_read_from_a_line_of_their_own)
{
    const Host_conventions conventions =
        conventions_of("#version 130\n// by // Host: flipped mesh\n"
                       "// Host: flipped textures, rotated cube maps\n// flipped mesh\n");
    EXPECT_TRUE(conventions.flipped_textures);
    EXPECT_FALSE(conventions.flipped_mesh);
    EXPECT_TRUE(conventions.rotated_cube_maps);
    EXPECT_TRUE(conventions_of("// Host: flipped mesh").flipped_mesh);
}

} // namespace

} // namespace reference_host

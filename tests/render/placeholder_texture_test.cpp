#include "reference_host/render/placeholder_texture.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace reference_host
{

namespace
{

// Pixels in which two images differ.
long differing_pixels(const Image& a, const Image& b)
{
    long count = 0;
    for (std::size_t i = 0; i < std::min(a.pixels.size(), b.pixels.size()); ++i)
        count += a.pixels[i] != b.pixels[i] ? 1 : 0;
    return count;
}

TEST(Labelled_checker, shows_its_label_and_nothing_else)
{
    const Image plain = labelled_checker("");
    EXPECT_GT(differing_pixels(plain, labelled_checker("wood")), 100);
    EXPECT_EQ(differing_pixels(labelled_checker("wood"), labelled_checker("WOOD")), 0);
    EXPECT_GT(differing_pixels(labelled_checker("wood"), labelled_checker("mood")), 10);
}

TEST(Labelled_checker, has_fields_of_two_colors)
{
    const Image plain = labelled_checker("");
    EXPECT_NE(plain.at(0, 0), plain.at(32, 0));
    EXPECT_EQ(plain.at(0, 0), plain.at(32, 32));
}

TEST(Labelled_checker, takes_any_label)
{
    const Image plain = labelled_checker("");
    for (const std::string& label :
         {std::string(100000, 'w'), std::string("\0\xff\x80\n", 4), std::string("a/b c.png")})
        EXPECT_EQ(labelled_checker(label).pixels.size(), plain.pixels.size());
}

TEST(Labelled_checker, every_letter_and_digit_looks_different)
{
    const std::string characters = "abcdefghijklmnopqrstuvwxyz0123456789_";
    for (std::size_t i = 0; i < characters.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) {
            const std::string pair = {characters[i], characters[j]};
            EXPECT_NE(differing_pixels(labelled_checker(pair.substr(0, 1)),
                                       labelled_checker(pair.substr(1))),
                      0)
                << pair;
        }
}

TEST(Sky_face, is_blue_above_and_brown_below)
{
    constexpr int up = 2;
    constexpr int down = 3;
    const Pixel zenith = sky_face(up).at(32, 32);
    const Pixel ground = sky_face(down).at(32, 32);
    EXPECT_GT(zenith[2], zenith[0]);
    EXPECT_GT(ground[0], ground[2]);
    // The first row of a side is its upper one.
    EXPECT_GT(sky_face(4).at(32, 0)[2], sky_face(4).at(32, 63)[2]);
}

TEST(Sky_face, of_a_rotated_map_has_its_zenith_at_minus_z)
{
    constexpr int minus_z = 5;
    constexpr int plus_z = 4;
    EXPECT_EQ(sky_face(minus_z, Cube_up::minus_z).at(32, 32), sky_face(2).at(32, 32));
    EXPECT_EQ(sky_face(plus_z, Cube_up::minus_z).at(32, 32), sky_face(3).at(32, 32));
}

TEST(Sky_face, takes_any_number)
{
    EXPECT_EQ(sky_face(-1).pixels, sky_face(0).pixels);
    EXPECT_EQ(sky_face(6).pixels, sky_face(5).pixels);
}

} // namespace

} // namespace reference_host

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

} // namespace

} // namespace reference_host

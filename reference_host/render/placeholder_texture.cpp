#include "reference_host/render/placeholder_texture.h"

#include <algorithm>

namespace reference_host
{

namespace
{

constexpr int checker_side = 256;
constexpr int field_side = checker_side / 8;
constexpr Pixel light_field = {186, 186, 180, 255};
constexpr Pixel dark_field = {124, 126, 134, 255};
constexpr Pixel ink = {24, 28, 40, 255};

// A glyph is five rows of three dots; each octal digit is one row, the first the top, its highest
// bit the left dot.
constexpr unsigned digit_glyphs[] = {
    075557, // 0
    026227, // 1
    071747, // 2
    071317, // 3
    055711, // 4
    074717, // 5
    074757, // 6
    071122, // 7
    075757, // 8
    075717, // 9
};
constexpr unsigned letter_glyphs[] = {
    025755, // A
    065656, // B
    034443, // C
    065556, // D
    074647, // E
    074644, // F
    034553, // G
    055755, // H
    072227, // I
    011152, // J
    055655, // K
    044447, // L
    057755, // M
    065555, // N
    025552, // O
    065644, // P
    025563, // Q
    065655, // R
    034216, // S
    072222, // T
    055557, // U
    055552, // V
    055775, // W
    055255, // X
    055222, // Y
    071247, // Z
};
constexpr unsigned other_glyph = 000007;
constexpr int glyph_columns = 3;
constexpr int glyph_rows = 5;
constexpr int glyph_advance = glyph_columns + 1;

unsigned glyph_of(char character)
{
    if (character >= '0' && character <= '9')
        return digit_glyphs[character - '0'];
    if (character >= 'a' && character <= 'z')
        return letter_glyphs[character - 'a'];
    if (character >= 'A' && character <= 'Z')
        return letter_glyphs[character - 'A'];
    return other_glyph;
}

bool has_dot(unsigned glyph, int column, int row)
{
    const int bit = (glyph_rows - 1 - row) * glyph_columns + (glyph_columns - 1 - column);
    return (glyph >> bit & 1) != 0;
}

void fill(Image& image, int left, int top, int side, Pixel color)
{
    for (int y = std::max(top, 0); y < std::min(top + side, image.height); ++y)
        for (int x = std::max(left, 0); x < std::min(left + side, image.width); ++x)
            image.at(x, y) = color;
}

void draw_glyph(Image& image, unsigned glyph, int left, int top, int dot)
{
    for (int row = 0; row < glyph_rows; ++row)
        for (int column = 0; column < glyph_columns; ++column)
            if (has_dot(glyph, column, row))
                fill(image, left + column * dot, top + row * dot, dot, ink);
}

void draw_label(Image& image, const std::string& label)
{
    constexpr int max_dot = 8;
    constexpr int min_dot = 2;
    constexpr std::size_t most_characters = checker_side / (min_dot * glyph_advance);
    const std::string text = label.substr(0, most_characters);
    const int columns = std::max(static_cast<int>(text.size()) * glyph_advance, 1);
    // A sphere shows the middle of its texture best.
    const int dot = std::clamp(image.width * 5 / 8 / columns, min_dot, max_dot);
    int left = (image.width - columns * dot) / 2;
    for (const char character : text) {
        draw_glyph(image, glyph_of(character), left, (image.height - glyph_rows * dot) / 2, dot);
        left += glyph_advance * dot;
    }
}

} // namespace

Image labelled_checker(const std::string& label)
{
    Image image(checker_side, checker_side);
    for (int y = 0; y < checker_side; ++y)
        for (int x = 0; x < checker_side; ++x)
            image.at(x, y) = (x / field_side + y / field_side) % 2 == 0 ? light_field : dark_field;
    draw_label(image, label);
    return image;
}

} // namespace reference_host

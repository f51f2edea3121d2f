#include "reference_host/render/dot_text.h"

#include <algorithm>

namespace reference_host
{

namespace
{

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
constexpr int glyph_rows = dot_text_height;

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

void draw_glyph(Image& image, unsigned glyph, int left, int top, int dot, Pixel ink)
{
    for (int row = 0; row < glyph_rows; ++row)
        for (int column = 0; column < glyph_columns; ++column)
            if (has_dot(glyph, column, row))
                fill(image, left + column * dot, top + row * dot, dot, ink);
}

} // namespace

void draw_dot_text(Image& image, const std::string& text, int left, int top, int dot, Pixel ink)
{
    for (const char character : text) {
        draw_glyph(image, glyph_of(character), left, top, dot, ink);
        left += dot_text_advance * dot;
    }
}

} // namespace reference_host

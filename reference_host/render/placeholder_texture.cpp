#include "reference_host/render/placeholder_texture.h"

#include "reference_host/render/dot_text.h"

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

void draw_label(Image& image, const std::string& label)
{
    constexpr int max_dot = 8;
    constexpr int min_dot = 2;
    constexpr std::size_t most_characters = checker_side / (min_dot * dot_text_advance);
    const std::string text = label.substr(0, most_characters);
    const int columns = std::max(static_cast<int>(text.size()) * dot_text_advance, 1);
    // A sphere shows the middle of its texture best.
    const int dot = std::clamp(image.width * 5 / 8 / columns, min_dot, max_dot);
    draw_dot_text(image, text, (image.width - columns * dot) / 2,
                  (image.height - dot_text_height * dot) / 2, dot, ink);
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

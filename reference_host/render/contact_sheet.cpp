#include "reference_host/render/contact_sheet.h"

#include "reference_host/render/dot_text.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{

Image contact_sheet(const std::vector<Named_picture>& pictures)
{
    constexpr Pixel paper = {38, 38, 42, 255};
    constexpr Pixel ink = {225, 225, 225, 255};
    constexpr int dot = 2;
    constexpr int gap = 8;
    constexpr int strip = dot * dot_text_height + 2 * gap;
    const int count = static_cast<int>(pictures.size());
    const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
    const int rows = (count + columns - 1) / columns;
    const int side = pictures.front().image.width;
    Image sheet(columns * (side + gap) + gap, rows * (side + strip) + gap);
    std::fill(sheet.pixels.begin(), sheet.pixels.end(), paper);
    for (int i = 0; i < count; ++i) {
        const Named_picture& picture = pictures[static_cast<std::size_t>(i)];
        const int left = gap + i % columns * (side + gap);
        const int top = gap + i / columns * (side + strip);
        for (int y = 0; y < side; ++y)
            std::copy_n(&picture.image.at(0, y), side, &sheet.at(left, top + y));
        const std::string name =
            picture.name.substr(0, static_cast<std::size_t>(side / (dot * dot_text_advance)));
        const int width = static_cast<int>(name.size()) * dot * dot_text_advance;
        draw_dot_text(sheet, name, left + (side - width) / 2, top + side + gap, dot, ink);
    }
    return sheet;
}

} // namespace reference_host

#include "reference_host/render/backdrop.h"

#include "reference_host/render/scene.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{

namespace
{

constexpr int checker_fields = 12; // across the picture

Color checker(int x, int y, int size)
{
    constexpr Color light = {0.3F, 0.3F, 0.3F};
    constexpr Color dark = {0.12F, 0.12F, 0.12F};
    const int side = std::max(size / checker_fields, 1);
    return (x / side + y / side) % 2 == 0 ? light : dark;
}

Color behind(int x, int y, int size, const View& view, const Matrix& to_world,
             const Environment& environment)
{
    if (view.backdrop == Backdrop::plain)
        return view.background;
    if (view.backdrop == Backdrop::checker)
        return checker(x, y, size);
    const double half = half_width(view.camera);
    const double right = (2 * (x + 0.5) / size - 1) * half;
    const double up = (1 - 2 * (y + 0.5) / size) * half;
    const double length = std::sqrt(right * right + up * up + 1);
    return environment.light(turned(to_world, {right / length, up / length, -1 / length}));
}

} // namespace

void put_before_backdrop(Linear_picture& picture, const View& view, const Environment& environment)
{
    const Matrix to_world = view_inverse(view.camera);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            Light_pixel& pixel = picture.at(x, y);
            const float free = 1 - std::clamp(pixel[3], 0.0F, 1.0F);
            if (free == 0)
                continue;
            const Color color = behind(x, y, picture.width, view, to_world, environment);
            for (std::size_t i = 0; i < color.size(); ++i)
                pixel[i] += free * color[i];
        }
}

} // namespace reference_host

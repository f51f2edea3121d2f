#include "reference_host/render/environment.h"

#include "reference_host/render/hdr_image.h"
#include "reference_host/render/image.h"
#include "reference_host/render/linear_picture.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{

namespace
{

constexpr double pi = 3.14159265358979323846;

// The direction through a pixel of a cube face: major axis, and the axes of s and t.
struct Face_axes {
    Direction major;
    Direction s;
    Direction t;
};
// As OpenGL chooses among the images of a cube map.
constexpr Face_axes face_axes[] = {
    {{1, 0, 0}, {0, 0, -1}, {0, -1, 0}}, {{-1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
    {{0, 1, 0}, {1, 0, 0}, {0, 0, 1}},   {{0, -1, 0}, {1, 0, 0}, {0, 0, -1}},
    {{0, 0, 1}, {1, 0, 0}, {0, -1, 0}},  {{0, 0, -1}, {-1, 0, 0}, {0, -1, 0}},
};

Color mix(const Color& a, const Color& b, double part)
{
    Color result = {};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<float>(a[i] + (b[i] - a[i]) * part);
    return result;
}

double smooth_step(double from, double to, double x)
{
    const double part = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return part * part * (3 - 2 * part);
}

// How much of the window at the upper left, behind the camera, lies in a direction.
double window_share(const Direction& d)
{
    constexpr double half = 0.3; // of its sides, at distance 1
    constexpr double edge = 0.06;
    constexpr Direction axis = {-0.55, 0.6, 0.58};
    const double forward = d[0] * axis[0] + d[1] * axis[1] + d[2] * axis[2];
    if (forward <= 0)
        return 0;
    const double flat = std::hypot(axis[0], axis[2]);
    const double x = (d[0] * axis[2] - d[2] * axis[0]) / flat / forward;
    const double y = (d[1] - forward * axis[1]) / flat / forward;
    const auto within = [](double at) { return smooth_step(half + edge, half, std::abs(at)); };
    return within(x) * within(y);
}

Color sky(const Direction& d)
{
    constexpr Color zenith = {0.2F, 0.38F, 0.72F};
    constexpr Color horizon = {0.8F, 0.86F, 0.92F};
    constexpr Color ground = {0.26F, 0.22F, 0.18F};
    constexpr Color window = {4.0F, 3.9F, 3.7F};
    constexpr double haze = 0.08; // the horizon fades into the ground over this height
    const Color base = d[1] >= 0 ? mix(horizon, zenith, std::sqrt(d[1]))
                                 : mix(horizon, ground, std::min(-d[1] / haze, 1.0));
    return mix(base, window, window_share(d));
}

bool is_map_of_directions(int width, int height)
{
    return width >= 2 && height >= 1 && std::abs(width - 2 * height) <= 2;
}

Direction unit(const Direction& d)
{
    const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    return {d[0] / length, d[1] / length, d[2] / length};
}

} // namespace

Environment Environment::gradient(float horizon, float rise)
{
    Environment environment;
    environment.m_gradient = {horizon, rise};
    return environment;
}

std::shared_ptr<const Environment> Environment::read(const std::string& file, std::string& reason)
{
    auto environment = std::make_shared<Environment>();
    if (auto hdr = read_hdr(file)) {
        environment->m_width = hdr->width;
        environment->m_height = hdr->height;
        environment->m_pixels = std::move(hdr->pixels);
    } else if (const auto image = read_image(file)) {
        environment->m_width = image->width;
        environment->m_height = image->height;
        environment->m_is_encoded = true;
        for (const Pixel& pixel : image->pixels)
            environment->m_pixels.push_back(
                {pixel[0] / 255.0F, pixel[1] / 255.0F, pixel[2] / 255.0F});
    } else {
        reason = "no PNG, JPEG or HDR image";
        return nullptr;
    }
    if (is_map_of_directions(environment->m_width, environment->m_height))
        return environment;
    reason = "an environment is an image twice as wide as high";
    return nullptr;
}

Color Environment::value(const Direction& direction) const
{
    if (m_gradient) {
        const float light = (*m_gradient)[0] + (*m_gradient)[1] * static_cast<float>(direction[1]);
        return {light, light, light};
    }
    if (m_width == 0)
        return sky(direction);
    const double u = std::atan2(direction[0], -direction[2]) / (2 * pi) + 0.5;
    const double v = 0.5 - std::asin(std::clamp(direction[1], -1.0, 1.0)) / pi;
    const double x = u * m_width - 0.5;
    const double y = std::clamp(v * m_height - 0.5, 0.0, m_height - 1.0);
    const auto texel = [this](int column, int row) {
        return m_pixels[static_cast<std::size_t>(row) * m_width + (column + m_width) % m_width];
    };
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(y);
    const int bottom = std::min(top + 1, m_height - 1);
    return mix(mix(texel(left, top), texel(left + 1, top), x - left),
               mix(texel(left, bottom), texel(left + 1, bottom), x - left), y - top);
}

Color Environment::light(const Direction& direction) const
{
    Color color = value(direction);
    if (m_is_encoded)
        std::transform(color.begin(), color.end(), color.begin(), srgb_decoded);
    return color;
}

std::vector<Color> Environment::cube_face(int face, int side, Cube_up cube_up) const
{
    const Face_axes& axes = face_axes[std::clamp(face, 0, 5)];
    std::vector<Color> texels;
    texels.reserve(static_cast<std::size_t>(side) * side);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double s = 2 * (x + 0.5) / side - 1;
            const double t = 2 * (y + 0.5) / side - 1;
            Direction d = {};
            for (std::size_t i = 0; i < d.size(); ++i)
                d[i] = axes.major[i] + s * axes.s[i] + t * axes.t[i];
            if (cube_up == Cube_up::minus_z)
                d = {d[0], -d[2], d[1]};
            texels.push_back(value(unit(d)));
        }
    return texels;
}

const std::shared_ptr<const Environment>& own_sky()
{
    static const auto sky = std::make_shared<const Environment>();
    return sky;
}

} // namespace reference_host

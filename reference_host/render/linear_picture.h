// Pictures as light: linear, without limits.
#ifndef REFERENCE_HOST_RENDER_LINEAR_PICTURE_H
#define REFERENCE_HOST_RENDER_LINEAR_PICTURE_H

#include "reference_host/render/image.h"

#include <array>
#include <vector>

namespace reference_host
{

using Light_pixel = std::array<float, 4>; // red, green, blue, multiplied by alpha; alpha

struct Linear_picture {
    int width = 0;
    int height = 0;
    std::vector<Light_pixel> pixels; // rows from top to bottom, each from left to right

    Linear_picture() = default;
    Linear_picture(int picture_width, int picture_height);

    // The pixel must exist.
    Light_pixel& at(int x, int y) { return pixels[static_cast<std::size_t>(y) * width + x]; }
    const Light_pixel& at(int x, int y) const
    {
        return pixels[static_cast<std::size_t>(y) * width + x];
    }
};

enum class Encoding { srgb, linear };

// Eight bits for each channel, clipped to 0..1; what is not a number becomes 0. Alpha is 255.
Image encode(const Linear_picture& picture, Encoding encoding);

// The sRGB curve, from light to the value in a file and back; both 0..1.
float srgb_encoded(float light);
float srgb_decoded(float value);

// How many pixels hold something that is not a finite number.
std::size_t count_bad_pixels(const Linear_picture& picture);

} // namespace reference_host

#endif

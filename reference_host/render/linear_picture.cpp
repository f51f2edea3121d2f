#include "reference_host/render/linear_picture.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{

namespace
{

unsigned char byte_of(float light, Encoding encoding)
{
    if (std::isnan(light))
        return 0;
    const float clipped = std::clamp(light, 0.0F, 1.0F);
    const float value = encoding == Encoding::srgb ? srgb_encoded(clipped) : clipped;
    return static_cast<unsigned char>(std::lround(value * 255));
}

} // namespace

Linear_picture::Linear_picture(int picture_width, int picture_height)
    : width(picture_width),
      height(picture_height),
      pixels(static_cast<std::size_t>(picture_width) * picture_height)
{
}

float srgb_encoded(float light)
{
    return light <= 0.0031308F ? 12.92F * light : 1.055F * std::pow(light, 1 / 2.4F) - 0.055F;
}

float srgb_decoded(float value)
{
    return value <= 0.04045F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
}

Image encode(const Linear_picture& picture, Encoding encoding)
{
    Image image(picture.width, picture.height);
    std::transform(picture.pixels.begin(), picture.pixels.end(), image.pixels.begin(),
                   [encoding](const Light_pixel& pixel) {
                       return Pixel{byte_of(pixel[0], encoding), byte_of(pixel[1], encoding),
                                    byte_of(pixel[2], encoding), 255};
                   });
    return image;
}

std::size_t count_bad_pixels(const Linear_picture& picture)
{
    return static_cast<std::size_t>(
        std::count_if(picture.pixels.begin(), picture.pixels.end(), [](const Light_pixel& pixel) {
            return !std::all_of(pixel.begin(), pixel.end(),
                                [](float number) { return std::isfinite(number); });
        }));
}

} // namespace reference_host

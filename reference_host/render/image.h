// Pictures and image files.
#ifndef REFERENCE_HOST_RENDER_IMAGE_H
#define REFERENCE_HOST_RENDER_IMAGE_H

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

using Pixel = std::array<unsigned char, 4>; // red, green, blue, alpha

struct Image {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels; // rows from top to bottom, each from left to right

    Image() = default;
    Image(int image_width, int image_height);

    // The pixel must exist.
    Pixel& at(int x, int y) { return pixels[static_cast<std::size_t>(y) * width + x]; }
    const Pixel& at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
};

// Turns the rows around, the last one first.
void flip_rows(Image& image);

// Reads a PNG or JPEG file of at most 64 million pixels (8192 x 8192); nothing when it is larger,
// of another format, damaged or not a regular file. The reason is then in `reason`.
std::optional<Image> read_image(const std::string& file, std::string& reason);
std::optional<Image> read_image(const std::string& file);

// Writes a PNG file with red, green and blue, whole or not at all. False when that fails, with the
// reason.
bool write_png(const Image& image, const std::string& file, std::string& reason);
bool write_png(const Image& image, const std::string& file);

// Whether the picture has at most two colors, such as an unlit sphere before its background.
bool is_flat(const Image& image);

// Mean absolute difference of red, green and blue, each 0 to 255. Nothing when the sizes differ.
std::optional<std::array<double, 3>> mean_difference(const Image& a, const Image& b);

} // namespace reference_host

#endif

#include "reference_host/render/image.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>

#include <jpeglib.h>
#include <png.h>

namespace reference_host
{

namespace
{

constexpr unsigned max_side = 16384;

bool acceptable_size(unsigned width, unsigned height)
{
    return width > 0 && height > 0 && width <= max_side && height <= max_side;
}

std::optional<Image> read_png(const std::string& file)
{
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&png, file.c_str()))
        return std::nullopt;
    if (!acceptable_size(png.width, png.height)) {
        png_image_free(&png);
        return std::nullopt;
    }
    png.format = PNG_FORMAT_RGBA;
    Image image(static_cast<int>(png.width), static_cast<int>(png.height));
    if (!png_image_finish_read(&png, nullptr, image.pixels.data(), 0, nullptr))
        return std::nullopt;
    return image;
}

// libjpeg ends the program on an error unless its handler does not come back.
struct Jpeg_errors {
    jpeg_error_mgr handlers; // first, so that the library's pointer is also ours
    std::jmp_buf way_back;
};

void leave_jpeg(j_common_ptr jpeg)
{
    std::longjmp(reinterpret_cast<Jpeg_errors*>(jpeg->err)->way_back, 1);
}

void ignore_message(j_common_ptr) {}

// Everything that a jump back would have to destroy belongs to the caller.
bool read_jpeg_into(std::FILE* file, jpeg_decompress_struct& jpeg, Jpeg_errors& errors,
                    Image& image, std::vector<unsigned char>& row)
{
    if (setjmp(errors.way_back))
        return false;
    jpeg_create_decompress(&jpeg);
    jpeg_stdio_src(&jpeg, file);
    jpeg_read_header(&jpeg, TRUE);
    if (!acceptable_size(jpeg.image_width, jpeg.image_height))
        return false;
    jpeg.out_color_space = JCS_RGB;
    jpeg_start_decompress(&jpeg);
    image = Image(static_cast<int>(jpeg.output_width), static_cast<int>(jpeg.output_height));
    row.resize(std::size_t{3} * jpeg.output_width);
    std::fill(image.pixels.begin(), image.pixels.end(), Pixel{0, 0, 0, 255});
    for (int y = 0; y < image.height; ++y) {
        unsigned char* rows[] = {row.data()};
        jpeg_read_scanlines(&jpeg, rows, 1);
        for (int x = 0; x < image.width; ++x)
            std::copy_n(&row[std::size_t{3} * x], 3, image.at(x, y).begin());
    }
    return true;
}

std::optional<Image> read_jpeg(const std::string& name)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rb"),
                                                               std::fclose);
    if (!file)
        return std::nullopt;
    jpeg_decompress_struct jpeg = {};
    Jpeg_errors errors = {};
    jpeg.err = jpeg_std_error(&errors.handlers);
    errors.handlers.error_exit = leave_jpeg;
    errors.handlers.output_message = ignore_message;
    Image image;
    std::vector<unsigned char> row;
    const bool read = read_jpeg_into(file.get(), jpeg, errors, image, row);
    jpeg_destroy_decompress(&jpeg);
    if (!read)
        return std::nullopt;
    return image;
}

} // namespace

Image::Image(int image_width, int image_height)
    : width(image_width),
      height(image_height),
      pixels(static_cast<std::size_t>(image_width) * image_height)
{
}

void flip_rows(Image& image)
{
    for (int top = 0, bottom = image.height - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(&image.at(0, top), &image.at(0, top) + image.width, &image.at(0, bottom));
}

std::optional<Image> read_image(const std::string& file)
{
    if (auto image = read_png(file))
        return image;
    return read_jpeg(file);
}

bool write_png(const Image& image, const std::string& file)
{
    std::vector<unsigned char> rgb;
    rgb.reserve(image.pixels.size() * 3);
    for (const Pixel& pixel : image.pixels)
        rgb.insert(rgb.end(), pixel.begin(), pixel.begin() + 3);
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&png, file.c_str(), 0, rgb.data(), 0, nullptr) != 0;
}

bool is_flat(const Image& image)
{
    std::set<Pixel> colors;
    return std::all_of(image.pixels.begin(), image.pixels.end(), [&](const Pixel& pixel) {
        colors.insert(pixel);
        return colors.size() <= 2;
    });
}

std::optional<std::array<double, 3>> mean_difference(const Image& a, const Image& b)
{
    if (a.width != b.width || a.height != b.height || a.pixels.empty())
        return std::nullopt;
    std::array<double, 3> sums = {};
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        for (std::size_t channel = 0; channel < sums.size(); ++channel)
            sums[channel] += std::abs(a.pixels[i][channel] - b.pixels[i][channel]);
    for (double& sum : sums)
        sum /= static_cast<double>(a.pixels.size());
    return sums;
}

} // namespace reference_host

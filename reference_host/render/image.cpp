#include "reference_host/render/image.h"

#include "reference_host/system/file_access.h"
#include "reference_host/system/whole_file.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <set>

#include <jpeglib.h>
#include <png.h>

namespace reference_host
{

namespace
{

// What a few kilobytes may unpack to. Larger files than a picture of that size needs are refused,
// too.
constexpr unsigned long long max_pixels = 1ULL << 26;
constexpr std::uintmax_t max_file_size = max_pixels * 4;

constexpr char too_large[] = "larger than 64 million pixels";
constexpr char no_picture[] = "not a PNG or JPEG image, or damaged";

bool acceptable_size(unsigned width, unsigned height)
{
    return width > 0 && height > 0 && 1ULL * width * height <= max_pixels;
}

std::optional<Image> read_png(std::FILE* file, std::string& reason)
{
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_stdio(&png, file))
        return std::nullopt;
    if (!acceptable_size(png.width, png.height)) {
        png_image_free(&png);
        reason = too_large;
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
                    Image& image, std::vector<unsigned char>& row, std::string& reason)
{
    if (setjmp(errors.way_back))
        return false;
    jpeg_create_decompress(&jpeg);
    jpeg_stdio_src(&jpeg, file);
    jpeg_read_header(&jpeg, TRUE);
    if (!acceptable_size(jpeg.image_width, jpeg.image_height)) {
        reason = too_large;
        return false;
    }
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

std::optional<Image> read_jpeg(std::FILE* file, std::string& reason)
{
    jpeg_decompress_struct jpeg = {};
    Jpeg_errors errors = {};
    jpeg.err = jpeg_std_error(&errors.handlers);
    errors.handlers.error_exit = leave_jpeg;
    errors.handlers.output_message = ignore_message;
    Image image;
    std::vector<unsigned char> row;
    const bool read = read_jpeg_into(file, jpeg, errors, image, row, reason);
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

std::optional<Image> read_image(const std::string& file, std::string& reason)
{
    const Opened_file opened = open_to_read(file, max_file_size);
    reason = opened.reason;
    if (!opened.stream)
        return std::nullopt;
    std::optional<Image> image = read_png(opened.stream.get(), reason);
    if (!image && reason.empty()) {
        std::rewind(opened.stream.get());
        image = read_jpeg(opened.stream.get(), reason);
    }
    if (!image && reason.empty())
        reason = no_picture;
    return image;
}

std::optional<Image> read_image(const std::string& file)
{
    std::string ignored;
    return read_image(file, ignored);
}

bool write_png(const Image& image, const std::string& file, std::string& reason)
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
    std::string content(PNG_IMAGE_PNG_SIZE_MAX(png), '\0');
    png_alloc_size_t size = content.size();
    if (!png_image_write_to_memory(&png, content.data(), &size, 0, rgb.data(), 0, nullptr)) {
        reason = png.message;
        return false;
    }
    content.resize(size);
    reason = write_whole_file(file, content);
    return reason.empty();
}

bool write_png(const Image& image, const std::string& file)
{
    std::string ignored;
    return write_png(image, file, ignored);
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

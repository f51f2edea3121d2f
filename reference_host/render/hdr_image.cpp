#include "reference_host/render/hdr_image.h"

#include "reference_host/system/file_access.h"

#include <cstdio>
#include <memory>

#include <stb/stb_image.h>

namespace reference_host
{

namespace
{

constexpr long long max_pixels = 1LL << 25;
constexpr std::uintmax_t max_file_size = max_pixels * 5;

} // namespace

std::optional<Hdr_image> read_hdr(const std::string& file)
{
    const Opened_file opened = open_to_read(file, max_file_size);
    std::FILE* const stream = opened.stream.get();
    if (!stream || !stbi_is_hdr_from_file(stream))
        return std::nullopt;
    Hdr_image image;
    int channels = 0;
    if (!stbi_info_from_file(stream, &image.width, &image.height, &channels) ||
        1LL * image.width * image.height > max_pixels)
        return std::nullopt;
    const std::unique_ptr<float, void (*)(void*)> data(
        stbi_loadf_from_file(stream, &image.width, &image.height, &channels, 3), stbi_image_free);
    if (!data)
        return std::nullopt;
    for (long long i = 0; i < 1LL * image.width * image.height; ++i)
        image.pixels.push_back({data.get()[3 * i], data.get()[3 * i + 1], data.get()[3 * i + 2]});
    return image;
}

} // namespace reference_host

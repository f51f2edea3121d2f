#include "reference_host/output/content_hash.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include <xxhash.h>

namespace reference_host
{
namespace
{

std::string digits(const XXH128_hash_t& hash)
{
    char text[33];
    std::snprintf(text, sizeof text, "%016llx%016llx", static_cast<unsigned long long>(hash.high64),
                  static_cast<unsigned long long>(hash.low64));
    return text;
}

} // namespace

std::string content_hash(std::string_view content)
{
    return digits(XXH3_128bits(content.data(), content.size()));
}

std::string file_hash(const std::string& file)
{
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure))
        return {};
    std::ifstream stream(file, std::ios::binary);
    const std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state(XXH3_createState(),
                                                                         XXH3_freeState);
    XXH3_128bits_reset(state.get());
    char buffer[65536];
    while (stream.read(buffer, sizeof buffer) || stream.gcount() > 0)
        XXH3_128bits_update(state.get(), buffer, static_cast<size_t>(stream.gcount()));
    if (!stream.eof())
        return {};
    return digits(XXH3_128bits_digest(state.get()));
}

} // namespace reference_host

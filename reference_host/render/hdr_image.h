// Images whose light has no limit: Radiance HDR files.
#ifndef REFERENCE_HOST_RENDER_HDR_IMAGE_H
#define REFERENCE_HOST_RENDER_HDR_IMAGE_H

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

struct Hdr_image {
    int width = 0;
    int height = 0;
    std::vector<std::array<float, 3>> pixels; // rows from top to bottom; linear
};

// Nothing when the file is not a Radiance HDR image, damaged, larger than 32 million pixels or not
// there.
std::optional<Hdr_image> read_hdr(const std::string& file);

} // namespace reference_host

#endif

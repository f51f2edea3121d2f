// Any bytes as an image file of each kind.
#include "reference_host/render/hdr_image.h"
#include "reference_host/render/image.h"
#include "reference_host/system/memory_file.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace reference_host;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Memory_file file(std::string(reinterpret_cast<const char*>(data), size));
    read_image(file.path());
    read_hdr(file.path());
    return 0;
}

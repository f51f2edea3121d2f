// Any bytes as a module in the notation: what is accepted is the same after printing and reading.
#include "reference_host/shading/module_text.h"
#include "reference_host/shading/verifier.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

using namespace reference_host;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const std::string printed = module_text(read_module({text, {"input", 1}}));
        if (module_text(read_module({printed, {"printed", 1}})) != printed)
            std::abort();
    } catch (const std::runtime_error&) {
        // refused, with a message
    }
    return 0;
}

#include "reference_host/targets/float_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace reference_host
{

std::string float_text(double number)
{
    constexpr double largest = std::numeric_limits<float>::max();
    const double held = std::isnan(number) ? 0.0 : std::clamp(number, -largest, largest);
    const auto rounded = static_cast<float>(held);
    const float size = std::fabs(rounded);
    const bool plain = size == 0.0F || (size >= 1e-7F && size < 1e12F);
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, size == 0.0F ? 0.0F : rounded,
                                   plain ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    std::string text(buffer, end);
    if (text.find('.') == std::string::npos)
        text.insert(std::min(text.find('e'), text.size()), ".0");
    return text;
}

} // namespace reference_host

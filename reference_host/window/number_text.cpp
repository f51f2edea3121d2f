#include "reference_host/window/number_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace reference_host
{
namespace
{

template<typename... Form>
wxString text_of(float number, Form... form)
{
    std::array<char, 64> buffer = {};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, form...);
    return wxString(buffer.data(), wxConvUTF8, static_cast<size_t>(end.ptr - buffer.data()));
}

} // namespace

wxString number_text(float number)
{
    return text_of(number);
}

wxString number_text(float number, int digits)
{
    return text_of(number, std::chars_format::general, digits);
}

std::optional<float> number_in(const wxString& text)
{
    double number = 0;
    if (!text.ToCDouble(&number) || !std::isfinite(static_cast<float>(number)))
        return std::nullopt;
    return static_cast<float>(number);
}

} // namespace reference_host

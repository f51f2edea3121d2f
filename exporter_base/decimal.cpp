#include "exporter_base/decimal.h"

#include "exporter_base/bytes.h"

#include <charconv>

namespace QZ
{
namespace TOVIRAEXPORT
{

wxString decimal(int value)
{
    return from_bytes(std::to_string(value).c_str());
}

std::string fixed(double value, int precision)
{
    char digits[512]; // the longest double has 309 digits before the point
    const std::to_chars_result end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, precision);
    return std::string(digits, end.ptr);
}

} // namespace TOVIRAEXPORT
} // namespace QZ

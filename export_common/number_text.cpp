#include "export_common/number_text.h"

#include <charconv>

namespace QZ
{
namespace TOVIRAEXPORT
{

std::string fixed(double value, int precision)
{
    char digits[512]; // the longest double has 309 digits before the point
    const std::to_chars_result end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, precision);
    return std::string(digits, end.ptr);
}

} // namespace TOVIRAEXPORT
} // namespace QZ

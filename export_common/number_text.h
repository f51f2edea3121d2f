// Numbers as text for compiler options.
#ifndef EXPORT_COMMON_NUMBER_TEXT_H
#define EXPORT_COMMON_NUMBER_TEXT_H

#include <string>

namespace QZ
{
namespace TOVIRAEXPORT
{

// A number with `precision` (0 to 17) digits after the point, digit for digit as "%.*f" prints it
// in the C locale: the compiler wants a decimal point, whatever the user's locale is.
std::string fixed(double value, int precision);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

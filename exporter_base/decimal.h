// Numbers as text, for option values, setting keys and messages.
//
// None of these goes through a formatter of the toolkit: one that cannot get memory ends the
// process, and all of them follow the user's locale.
#ifndef EXPORTER_BASE_DECIMAL_H
#define EXPORTER_BASE_DECIMAL_H

#include <string>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// A whole number, as "%d" prints it.
wxString decimal(int value);

// A number with `precision` (0 to 17) digits after the point, digit for digit as "%.*f" prints it
// in the C locale: the compiler wants a decimal point, whatever the user's locale is.
std::string fixed(double value, int precision);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

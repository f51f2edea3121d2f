// Numbers as the user sees and types them: with a dot, whatever the locale.
#ifndef REFERENCE_HOST_WINDOW_NUMBER_TEXT_H
#define REFERENCE_HOST_WINDOW_NUMBER_TEXT_H

#include <optional>

#include <wx/string.h>

namespace reference_host
{

// As short as it can be read again.
wxString number_text(float number);

// Rounded to so many digits.
wxString number_text(float number, int digits);

// Nothing when the text is not a finite number.
std::optional<float> number_in(const wxString& text);

} // namespace reference_host

#endif

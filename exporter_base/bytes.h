// Bytes at the host border, text inside: the only conversions between the two.
//
// Whatever 8-bit text crosses the border (settings, node names, file names, generated code) comes
// back and reaches the disk byte for byte, whether it is valid UTF-8 or not, in every locale.
//
// Where wxString is 8-bit (wxWidgets 2.8, ANSI), it holds the bytes themselves. Where it is
// Unicode, valid UTF-8 becomes real Unicode, so that controls show it, and every other byte 80..FF
// becomes the private-use code point U+10FE80..U+10FEFF. Those code points themselves count as
// invalid when they are read, so that the way back is exact for every text.
#ifndef EXPORTER_BASE_BYTES_H
#define EXPORTER_BASE_BYTES_H

#include <string>

#include <wx/string.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

// The text of NUL-terminated bytes. Null counts as empty.
wxString from_bytes(const char* bytes);

// The bytes of a text. The inverse of from_bytes.
std::string to_bytes(const wxString& text);

// A text from the host, with null counted as empty.
inline const char* text_or_empty(const char* text)
{
    return text ? text : "";
}

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

// A text field that returns what it was filled with, byte for byte, unless the user edits it.
//
// Not every text survives in a control: GTK 2 shows bytes that are not UTF-8 as other characters,
// and any GTK ends a text at its first NUL. What the control shows after it was filled is
// remembered, and as long as it still shows that, the original text is returned.
#ifndef EXPORTER_BASE_TEXT_FIELD_H
#define EXPORTER_BASE_TEXT_FIELD_H

#include <wx/string.h>

class wxTextCtrl;

namespace QZ
{
namespace TOVIRAEXPORT
{

class Text_field
{
public:
    // Without a control: tests as false, and must not be filled or read.
    Text_field() = default;

    // `control` was constructed with `text`. It belongs to its panel and must outlive the calls
    // below.
    Text_field(wxTextCtrl* control, const wxString& text);

    explicit operator bool() const { return m_control != nullptr; }

    // Shows a text.
    void fill(const wxString& text);

    // The text that the control was filled with last, or what the user has made of it.
    wxString text() const;

private:
    wxTextCtrl* m_control = nullptr;
    wxString m_filled;
    wxString m_shown; // what the control made of it
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

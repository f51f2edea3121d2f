#include "exporter_base/text_field.h"

#include <wx/textctrl.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

Text_field::Text_field(wxTextCtrl* control, const wxString& text)
    : m_control(control), m_filled(text), m_shown(control->GetValue())
{
}

void Text_field::fill(const wxString& text)
{
    m_control->SetValue(text);
    m_filled = text;
    m_shown = m_control->GetValue();
}

wxString Text_field::text() const
{
    const wxString shown = m_control->GetValue();
    return shown == m_shown ? m_filled : shown;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

// What differs between wxWidgets 2.8 (GTK 2, ANSI: what the host runs) and 3.x, in one place.
#ifndef EXPORTER_BASE_WX_COMPAT_H
#define EXPORTER_BASE_WX_COMPAT_H

#include <wx/app.h>
#include <wx/button.h>
#include <wx/combobox.h>
#include <wx/window.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

#if wxCHECK_VERSION(3, 0, 0)

// Sets a size even when it does not change, and always sends the size event. 3.x sends none for an
// equal size unless told to.
constexpr int force_size_event = wxSIZE_FORCE | wxSIZE_FORCE_EVENT;

// Makes room for the label of a button of a fixed small width, which GTK 3 would fill with padding.
constexpr long narrow_button_style = wxBU_EXACTFIT;

// Keeps debug checks of wx silent while it lives. For the few calls that are right in 2.8 and that
// 3.x complains about in a window of its own, which must never reach the user.
class Assert_silencer
{
public:
    Assert_silencer() : m_previous(wxSetAssertHandler(nullptr)) {}
    ~Assert_silencer() { wxSetAssertHandler(m_previous); }
    Assert_silencer(const Assert_silencer&) = delete;
    Assert_silencer& operator=(const Assert_silencer&) = delete;

private:
    wxAssertHandler_t m_previous;
};

// Gives a choice the width that its entries need. GTK 3 asks for that by itself.
inline void fit_to_entries(wxComboBox*) {}

// The build that the host's wx library must answer to when it starts an application of ours.
#define TOVIRAEXPORT_WX_SIGNATURE WX_BUILD_OPTIONS_SIGNATURE

#else

constexpr int force_size_event = wxSIZE_FORCE;
constexpr long narrow_button_style = 0;

class Assert_silencer
{
public:
    Assert_silencer() {} // user-provided, so that the guard raises no unused-variable warning
};

// GTK 2 asks for the width of a free text field even where only the entries can be chosen; the
// narrowest panels have no room for that.
inline void fit_to_entries(wxComboBox* choice)
{
    constexpr int arrow_and_borders = 36;
    int widest = 0;
    for (unsigned int i = 0; i < choice->GetCount(); ++i) {
        int width = 0;
        int height = 0;
        choice->GetTextExtent(choice->GetString(i), &width, &height);
        if (width > widest)
            widest = width;
    }
    choice->SetMinSize(wxSize(widest + arrow_and_borders, -1));
}

// The signature that the host's own 2.8 library was built with. The compiler of this library would
// put its own ABI number there, and the check ends the process on a mismatch.
#define TOVIRAEXPORT_WX_SIGNATURE                                                                  \
    "2.8 (no debug,ANSI,compiler with C++ ABI 1002,wx containers,compatible with 2.6)"

#endif

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

#include "reference_host/window/search_end.h"

#include <wx/srchctrl.h>

namespace reference_host
{

void end_with_escape(wxSearchCtrl& search, wxWindow& searched)
{
    search.Bind(wxEVT_CHAR_HOOK, [&search, &searched](wxKeyEvent& event) {
        if (event.GetKeyCode() != WXK_ESCAPE || event.HasAnyModifiers())
            return event.Skip();
        search.Clear();
        searched.SetFocus();
    });
}

} // namespace reference_host

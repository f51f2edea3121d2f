// One light of the scene as a row of controls: name, kind, cone, distance limit.
#ifndef REFERENCE_HOST_WINDOW_LIGHT_ROW_H
#define REFERENCE_HOST_WINDOW_LIGHT_ROW_H

#include "reference_host/host/render_settings.h"

#include <functional>

#include <wx/panel.h>

class wxChoice;
class wxTextCtrl;

namespace reference_host
{

class Light_row : public wxPanel
{
public:
    // Calls `changed` when the user edits the light and `removed` when it is taken away.
    Light_row(wxWindow* parent, const Light_request& light, std::function<void()> changed,
              std::function<void()> removed);

    // The light as it stands. A cone or limit that is not a number counts as not given. What has no
    // control stays while the kind does; beside that, only a spot light takes a cone.
    Light_request light() const;

private:
    const Light_request m_given;
    wxTextCtrl* m_name;
    wxChoice* m_kind;
    wxTextCtrl* m_spread;
    wxTextCtrl* m_limit;
};

} // namespace reference_host

#endif

// What surrounds the exported shader: lights, environment, volume, ambient light, and how images
// are named.
#ifndef REFERENCE_HOST_WINDOW_SCENE_VIEW_H
#define REFERENCE_HOST_WINDOW_SCENE_VIEW_H

#include "reference_host/window/light_row.h"
#include "reference_host/window/workspace.h"

#include <vector>

#include <wx/scrolwin.h>

class wxBoxSizer;
class wxChoice;
class wxFlexGridSizer;
class wxTextCtrl;

namespace reference_host
{

class Scene_view : public wxScrolledWindow
{
public:
    // The workspace must outlive the view.
    Scene_view(wxWindow* parent, Workspace& workspace);

    wxTextCtrl& environment() { return *m_environment; }

private:
    wxTextCtrl* add_field(wxFlexGridSizer* grid, const wxString& label, const wxString& hint);
    wxChoice* add_choice(wxFlexGridSizer* grid, const wxString& label,
                         const std::vector<wxString>& entries);
    void show_scene();
    void show_lights(const std::vector<Light_request>& lights);
    void remove_light(size_t index);
    std::vector<Light_request> lights() const;
    void take_scene();

    Workspace& m_workspace;
    bool m_is_showing = false; // changes of the controls are ours then
    wxBoxSizer* m_light_sizer;
    std::vector<Light_row*> m_lights;
    wxTextCtrl* m_environment;
    wxTextCtrl* m_volume;
    wxTextCtrl* m_ambient;
    wxTextCtrl* m_search_path;
    wxTextCtrl* m_kind;
    wxChoice* m_texture_paths;
    wxChoice* m_flip;
};

} // namespace reference_host

#endif

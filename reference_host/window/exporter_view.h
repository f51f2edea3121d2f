// The chosen exporter with its own panel, as the plug-in makes it, in an area that scrolls.
//
// Events of the panel are not relied on: whenever the window is idle, the panel is read, and what
// it shows becomes the choice of the workspace, whatever the plug-in did with the events.
#ifndef REFERENCE_HOST_WINDOW_EXPORTER_VIEW_H
#define REFERENCE_HOST_WINDOW_EXPORTER_VIEW_H

#include "reference_host/desktop/exporter_panel.h"
#include "reference_host/window/workspace.h"

#include <memory>
#include <string>

#include <wx/panel.h>

class wxChoice;
class wxScrolledWindow;

namespace reference_host
{

class Exporter_view : public wxPanel
{
public:
    // Both must outlive the view.
    Exporter_view(wxWindow* parent, Workspace& workspace, const Plugin_library& plugin);
    ~Exporter_view() override;

    wxChoice& exporter() { return *m_exporter_choice; }
    wxPanel& panel_area() { return *m_area; }

private:
    void on_change(Change change);
    void open_panel();
    void show_output();
    void take_choice();
    void fit_panel();

    Workspace& m_workspace;
    wxChoice* m_exporter_choice;
    wxScrolledWindow* m_scrolled;
    wxPanel* m_area;
    const Work_document* m_document = nullptr; // whose panel is open
    Exporter_choice m_shown;                   // what the panel held when it was last looked at
    Kept_exporters m_kept;                     // the panel needs its exporter
    std::unique_ptr<Exporter_panel> m_panel;
};

} // namespace reference_host

#endif

// What would be written, the command line that does the same, and the buttons that export.
#ifndef REFERENCE_HOST_WINDOW_EXPORT_BAR_H
#define REFERENCE_HOST_WINDOW_EXPORT_BAR_H

#include "reference_host/window/workspace.h"

#include <string>

#include <wx/panel.h>

class wxButton;
class wxStaticText;
class wxTextCtrl;

namespace reference_host
{

class Export_bar : public wxPanel
{
public:
    // The workspace must outlive the bar.
    Export_bar(wxWindow* parent, Workspace& workspace);

    // Exports to the named file; what the plug-in asks, the user is asked.
    void export_current();

    // Asks for a folder, and exports through every exporter into folders of its own in it, until
    // the user cancels.
    void export_to_all();
    void export_to_all(const std::string& folder);

    wxButton& export_button() { return *m_export; }
    wxButton& folder_button() { return *m_open_folder; }
    wxTextCtrl& command_line() { return *m_command; }
    wxStaticText& result() { return *m_result; }

private:
    void on_change(Change change);
    void show_plan();
    void open_folder() const;
    Box_policy ask_the_user();

    Workspace& m_workspace;
    wxStaticText* m_plan; // the files that an export would write
    wxTextCtrl* m_command;
    wxButton* m_export;
    wxButton* m_export_all;
    wxButton* m_open_folder;
    wxStaticText* m_result;
    std::string m_written_folder; // of the last export
};

} // namespace reference_host

#endif

// The code that the chosen exporter makes with the options as they stand on its panel.
#ifndef REFERENCE_HOST_WINDOW_CODE_VIEW_H
#define REFERENCE_HOST_WINDOW_CODE_VIEW_H

#include "reference_host/window/text_view.h"
#include "reference_host/window/workspace.h"

#include <wx/panel.h>

class wxButton;
class wxCheckBox;
class wxChoice;

namespace reference_host
{

class Code_view : public wxPanel
{
public:
    // The workspace must outlive the view.
    Code_view(wxWindow* parent, Workspace& workspace);

    Text_view& text() { return *m_text; }
    wxCheckBox& difference() { return *m_difference; }

private:
    void renew();
    void show_file();

    Workspace& m_workspace;
    std::vector<const Code_file*> m_texts; // of the workspace's code
    wxChoice* m_file;                      // which of the exporter's files
    wxCheckBox* m_difference;              // to the file on disk
    Text_view* m_text;
};

} // namespace reference_host

#endif

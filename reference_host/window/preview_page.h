// The exported shader itself, drawn without a GPU: seen from anywhere, on several shapes, with its
// parameters to play with. Values set here change the picture, not the export.
//
// While something changes, small pictures follow it; when it rests, a fine one comes. The plug-in
// runs when the page is in sight, on the user-interface thread; drawing has a thread of its own.
#ifndef REFERENCE_HOST_WINDOW_PREVIEW_PAGE_H
#define REFERENCE_HOST_WINDOW_PREVIEW_PAGE_H

#include "reference_host/window/newest_job.h"
#include "reference_host/window/preview_drawer.h"

#include <memory>
#include <string>

#include <wx/panel.h>
#include <wx/timer.h>

class wxBoxSizer;
class wxChoice;
class wxSizer;
class wxStaticText;

namespace reference_host
{

class Parameter_list;
class Preview_canvas;

class Preview_page : public wxPanel
{
public:
    // The workspace must outlive the page.
    Preview_page(wxWindow* parent, Workspace& workspace);

    Preview_canvas& canvas() { return *m_canvas; }
    Parameter_list& parameters() { return *m_parameters; }
    wxChoice& shape() { return *m_shape; }
    wxChoice& backdrop() { return *m_backdrop; }
    wxStaticText& note() { return *m_note; }

    // What is drawn; null: nothing yet.
    const std::shared_ptr<const Preview_shader>& shader() const { return m_shader; }

    // How many pictures were shown, and whether the last one is the fine one of what is chosen now.
    int picture_count() const { return m_picture_count; }
    bool is_fine() const { return m_is_fine; }

private:
    wxSizer* make_choices();
    void on_change(Change change);
    void renew();
    void request_picture(bool is_fine);
    void request_picture(bool is_fine, const std::map<std::string, std::vector<float>>& values);
    void take_picture(const Preview_picture& picture);
    void arrange();

    Workspace& m_workspace;
    wxChoice* m_shape = nullptr;
    wxChoice* m_backdrop = nullptr;
    Preview_canvas* m_canvas = nullptr;
    Parameter_list* m_parameters = nullptr;
    wxStaticText* m_note = nullptr;
    wxBoxSizer* m_views = nullptr;                  // the picture and the parameters
    bool m_is_stale = true;                         // what is chosen is not what was drawn
    bool m_is_ahead = false;                        // of the code, with the node that is current
    std::string m_subject;                          // document and node whose parameters are shown
    std::shared_ptr<const Preview_shader> m_shader; // null: none
    bool m_is_fine = false;
    int m_picture_count = 0;
    wxTimer m_rest_timer; // runs out when nothing has changed for a moment
    Preview_drawer m_drawer;
    Newest_job<Preview_request, Preview_picture> m_job; // last: it uses the drawer
};

} // namespace reference_host

#endif

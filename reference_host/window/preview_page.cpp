#include "reference_host/window/preview_page.h"

#include "reference_host/window/parameter_list.h"
#include "reference_host/window/preview_canvas.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/wrapsizer.h>

namespace reference_host
{
namespace
{

constexpr int rest_ms = 200;
constexpr int quick_size = 384;    // pixels a side, with one sample each
constexpr int fine_samples = 1024; // across a fine picture, as many a pixel as that leaves
constexpr int most_samples = 3;    // as the command `render` takes
constexpr double wide = 1.15;      // width to height, from which the parameters stand aside

// In the order of Shape and Backdrop.
const wxString shape_names[] = {wxT("Sphere"), wxT("Plane"), wxT("Cube"), wxT("Shader ball")};
const wxString backdrop_names[] = {wxT("Plain"), wxT("Checker"), wxT("Environment")};

template<size_t Count>
wxChoice* add_choice(wxWindow* parent, wxSizer* sizer, const wxString& label,
                     const wxString (&names)[Count])
{
    sizer->Add(new wxStaticText(parent, wxID_ANY, label), 0, wxALIGN_CENTER_VERTICAL | wxALL,
               parent->FromDIP(4));
    wxChoice* choice = new wxChoice(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                    static_cast<int>(Count), names);
    choice->SetSelection(0);
    sizer->Add(choice, 0, wxALIGN_CENTER_VERTICAL);
    return choice;
}

} // namespace

Preview_page::Preview_page(wxWindow* parent, Workspace& workspace)
    : wxPanel(parent),
      m_workspace(workspace),
      m_job(
          *this, [this](const Preview_request& request) { return m_drawer.draw(request); },
          [this](const Preview_picture& picture) { take_picture(picture); })
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(make_choices(), 0, wxEXPAND | wxALL, FromDIP(2));
    m_note = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    m_canvas = new Preview_canvas(
        this, [this] { request_picture(false); },
        [this] {
            if (m_is_stale)
                CallAfter([this] { renew(); });
        });
    m_parameters = new Parameter_list(this, [this] { request_picture(false); });
    m_views = new wxBoxSizer(wxVERTICAL);
    m_views->Add(m_canvas, 4, wxEXPAND);
    m_views->Add(m_parameters, 3, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(m_views, 1, wxEXPAND);
    sizer->Add(m_note, 0, wxEXPAND | wxALL, FromDIP(4));
    SetSizer(sizer);
    m_rest_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { request_picture(true); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        arrange();
    });
    m_workspace.listen([this](Change change) { on_change(change); });
    m_job.start({});
}

wxSizer* Preview_page::make_choices()
{
    wxWrapSizer* row = new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES);
    m_shape = add_choice(this, row, wxT("&Shape"), shape_names);
    m_backdrop = add_choice(this, row, wxT("&Backdrop"), backdrop_names);
    wxButton* reset = new wxButton(this, wxID_ANY, wxT("&Reset"));
    reset->SetToolTip(wxT("The camera and all parameters as they were"));
    row->Add(reset, 0, wxALIGN_CENTER_VERTICAL | wxALL, FromDIP(2));
    reset->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        m_canvas->reset_camera();
        m_parameters->reset();
    });
    for (wxChoice* choice : {m_shape, m_backdrop})
        choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { request_picture(false); });
    return row;
}

// A node that is selected is drawn at once: what the other views do for it goes on meanwhile. What
// is chosen for it is drawn when its code is there.
void Preview_page::on_change(Change change)
{
    switch (change) {
    case Change::current:
        m_is_stale = m_is_ahead = true;
        break;
    case Change::trial:
        m_is_stale = m_is_stale || !m_is_ahead;
        m_is_ahead = false;
        break;
    case Change::exporter:
    case Change::options:
    case Change::scene:
        m_is_ahead = false;
        return;
    default:
        return;
    }
    if (m_is_stale && m_canvas->IsShownOnScreen())
        renew();
}

// Another node's parameters are others, even where the names are the same.
void Preview_page::renew()
{
    if (!m_is_stale)
        return;
    m_is_stale = false;
    const Work_document* current = m_workspace.current();
    const Node* node = current ? current->node() : nullptr;
    const std::string subject = node ? current->scene.document + "\n" + full_name(*node) : "";
    const bool is_other = subject != m_subject;
    m_subject = subject;
    m_shader = std::make_shared<Preview_shader>(make_preview_shader(m_workspace));
    if (is_other) {
        request_picture(false, {}); // before the controls are made: no value is set yet
        m_parameters->show({});
        m_parameters->show(m_shader->parameters);
    } else {
        m_parameters->show(m_shader->parameters);
        request_picture(false);
    }
}

void Preview_page::request_picture(bool is_fine)
{
    request_picture(is_fine, m_parameters->values());
}

void Preview_page::request_picture(bool is_fine,
                                   const std::map<std::string, std::vector<float>>& values)
{
    if (!m_shader) // as long as the page is being made, too
        return;
    const int side = std::max(m_canvas->side(), 1);
    m_is_fine = false;
    Preview_request request;
    request.shader = m_shader;
    request.view.shape = static_cast<Shape>(m_shape->GetSelection());
    request.view.backdrop = static_cast<Backdrop>(m_backdrop->GetSelection());
    request.view.camera = m_canvas->camera();
    request.values = values;
    request.size = std::min(side, is_fine ? fine_samples : quick_size);
    request.view.samples = is_fine ? std::clamp(fine_samples / request.size, 1, most_samples) : 1;
    request.is_fine = is_fine;
    m_job.start(std::move(request));
    if (!is_fine)
        m_rest_timer.StartOnce(rest_ms);
}

void Preview_page::take_picture(const Preview_picture& picture)
{
    if (!picture.shader || picture.shader != m_shader)
        return; // of no node, or of one before
    if (picture.image)
        m_canvas->show(picture.image);
    else
        m_canvas->show_text(picture.error);
    std::string note = picture.shader->note;
    for (const std::string& more : picture.notes)
        note += (note.empty() ? "" : "; ") + more;
    m_note->SetLabelText(to_text(note));
    m_note->SetToolTip(to_text(note));
    m_is_fine = picture.is_fine && !m_rest_timer.IsRunning();
    ++m_picture_count;
}

void Preview_page::arrange()
{
    const wxSize size = GetClientSize();
    m_views->SetOrientation(size.x > size.y * wide ? wxHORIZONTAL : wxVERTICAL);
}

} // namespace reference_host

#include "reference_host/window/welcome_view.h"

#include "reference_host/window/wx_text.h"

#include <filesystem>

#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace reference_host
{
namespace
{

void fill(wxListBox& list, const std::vector<std::string>& files)
{
    list.Clear();
    for (const std::string& file : files) {
        const std::filesystem::path path(file);
        list.Append(to_text(path.filename().string() + "   " + path.parent_path().string()));
    }
}

} // namespace

Welcome_view::Welcome_view(wxWindow* parent, std::function<void()> choose_file,
                           std::function<void(const std::string&)> open)
    : wxPanel(parent), m_open(std::move(open))
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    wxStaticText* title = new wxStaticText(this, wxID_ANY, wxT("Export a shader"));
    title->SetFont(title->GetFont().Scale(1.6f).Bold());
    wxButton* button = new wxButton(this, wxID_OPEN, wxT("&Open a document..."));
    sizer->Add(title, 0, wxALL, FromDIP(12));
    sizer->Add(button, 0, wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(12));
    sizer->Add(new wxStaticText(this, wxID_ANY, wxT("or drop MaterialX documents on the window.")),
               0, wxLEFT | wxBOTTOM, FromDIP(12));
    m_recent = add_list(sizer, wxT("&Recent documents"));
    m_samples = add_list(sizer, wxT("&Samples"));
    SetSizer(sizer);
    button->Bind(wxEVT_BUTTON, [choose_file](wxCommandEvent&) { choose_file(); });
    const auto open_recent = [this] { open_chosen(*m_recent, m_recent_files); };
    const auto open_sample = [this] { open_chosen(*m_samples, m_sample_files); };
    m_recent->Bind(wxEVT_LISTBOX_DCLICK, [open_recent](wxCommandEvent&) { open_recent(); });
    m_samples->Bind(wxEVT_LISTBOX_DCLICK, [open_sample](wxCommandEvent&) { open_sample(); });
}

wxListBox* Welcome_view::add_list(wxSizer* sizer, const wxString& label)
{
    sizer->Add(new wxStaticText(this, wxID_ANY, label), 0, wxLEFT | wxRIGHT, FromDIP(12));
    wxListBox* list = new wxListBox(this, wxID_ANY);
    sizer->Add(list, 1, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(12));
    return list;
}

void Welcome_view::show_files(const std::vector<std::string>& recent,
                              const std::vector<std::string>& samples)
{
    m_recent_files = recent;
    m_sample_files = samples;
    fill(*m_recent, recent);
    fill(*m_samples, samples);
}

void Welcome_view::open_chosen(const wxListBox& list, const std::vector<std::string>& files) const
{
    const int chosen = list.GetSelection();
    if (chosen != wxNOT_FOUND)
        m_open(std::string(files[static_cast<size_t>(chosen)]));
}

} // namespace reference_host

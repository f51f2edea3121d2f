#include "reference_host/window/code_view.h"

#include "reference_host/window/line_difference.h"
#include "reference_host/window/text_file.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <filesystem>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/wrapsizer.h>

namespace reference_host
{

Code_view::Code_view(wxWindow* parent, Workspace& workspace)
    : wxPanel(parent),
      m_workspace(workspace),
      m_file(new wxChoice(this, wxID_ANY)),
      m_difference(new wxCheckBox(this, wxID_ANY, wxT("&Difference to the file on disk")))
{
    wxButton* copy = new wxButton(this, wxID_ANY, wxT("&Copy"));
    m_text = new Text_view(this, Text_kind::shader);
    wxWrapSizer* row = new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES);
    row->Add(m_file, 1, wxALIGN_CENTER_VERTICAL | wxALL, FromDIP(4));
    row->Add(m_difference, 0, wxALIGN_CENTER_VERTICAL | wxALL, FromDIP(4));
    row->Add(copy, 0, wxALIGN_CENTER_VERTICAL | wxALL, FromDIP(4));
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(row, 0, wxEXPAND);
    sizer->Add(m_text, 1, wxEXPAND);
    SetSizer(sizer);
    m_file->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { show_file(); });
    m_difference->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { show_file(); });
    copy->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { m_text->copy_all(); });
    m_text->on_line_click([this](int line) {
        const Work_document* current = m_workspace.current();
        const Node* node = current ? current->node_near(m_text->content(), line) : nullptr;
        if (node)
            m_workspace.point_out(full_name(*node));
    });
    m_text->on_escape([this] { m_workspace.point_out({}); });
    m_workspace.listen([this](Change change) {
        if (change == Change::trial)
            renew();
    });
}

void Code_view::renew()
{
    const int before = std::max(m_file->GetSelection(), 0);
    m_file->Clear();
    m_texts.clear();
    for (const Code_file& file : m_workspace.code()) {
        if (!file.is_text)
            continue;
        m_texts.push_back(&file);
        m_file->Append(to_text(std::filesystem::path(file.path).filename().string()));
    }
    const int count = static_cast<int>(m_texts.size());
    if (count > 0)
        m_file->SetSelection(std::min(before, count - 1));
    show_file();
}

void Code_view::show_file()
{
    const int index = m_file->GetSelection();
    if (index == wxNOT_FOUND)
        return m_text->show("");
    const Code_file& file = *m_texts[static_cast<size_t>(index)];
    if (!m_difference->GetValue())
        return m_text->show(file.text);
    m_text->show_lines(line_difference(read_text(file.path), file.text));
}

} // namespace reference_host

#include "reference_host/window/export_bar.h"

#include "reference_host/window/wx_text.h"

#include <filesystem>

#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/dirdlg.h>
#include <wx/msgdlg.h>
#include <wx/progdlg.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>
#include <wx/wrapsizer.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

wxStaticText* add_label(wxWindow* parent, wxSizer* sizer, const wxString& text)
{
    wxStaticText* label = new wxStaticText(parent, wxID_ANY, text, wxDefaultPosition, wxDefaultSize,
                                           wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_MIDDLE);
    sizer->Add(label, 0, wxEXPAND | wxLEFT | wxRIGHT, parent->FromDIP(4));
    return label;
}

std::string plan_text(const std::vector<Code_file>& files)
{
    if (files.empty())
        return "Nothing to write: see the messages";
    std::string text = "Writes ";
    for (const Code_file& file : files) {
        text += (&file == &files.front() ? "" : ", ") + fs::path(file.path).filename().string();
        std::error_code problem;
        if (fs::exists(file.path, problem))
            text += " (exists)";
    }
    return text;
}

std::string result_text(const Export_outcome& outcome)
{
    if (!outcome.is_success())
        return "Not exported: " + outcome.reasons.front();
    std::string text;
    for (const Exported_file& file : outcome.files) {
        const char* word = file.state == Exported_file::State::written     ? "Written: "
                           : file.state == Exported_file::State::unchanged ? "Unchanged: "
                                                                           : "Left as it was: ";
        text += (text.empty() ? "" : ", ") + (word + fs::path(file.path).filename().string());
    }
    return text;
}

// Asks in a window whether files may be replaced.
class Asked_replacement : public Replacement
{
public:
    explicit Asked_replacement(wxWindow* parent)
        : Replacement({Overwrite::ask, false}), m_parent(parent)
    {
    }

private:
    Decision ask(const std::vector<Existing_file>& files) override
    {
        wxString text;
        for (const Existing_file& file : files)
            text += to_text(file.path) +
                    (file.was_edited ? wxT(" exists, and was edited since\n") : wxT(" exists\n"));
        wxMessageDialog question(m_parent, text + wxT("Replace?"), wxT("Export"),
                                 wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION);
        return question.ShowModal() == wxID_YES ? Decision::replace : Decision::skip;
    }

    wxWindow* m_parent;
};

} // namespace

Export_bar::Export_bar(wxWindow* parent, Workspace& workspace)
    : wxPanel(parent), m_workspace(workspace)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    m_plan = add_label(this, sizer, wxString());
    m_command =
        new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_READONLY);
    m_command->SetToolTip(wxT("The command line that does the same"));
    wxButton* copy = new wxButton(this, wxID_ANY, wxT("Cop&y"));
    copy->SetToolTip(wxT("Copy the command line"));
    wxBoxSizer* command_row = new wxBoxSizer(wxHORIZONTAL);
    command_row->Add(m_command, 1, wxALIGN_CENTER_VERTICAL);
    command_row->Add(copy, 0, wxALIGN_CENTER_VERTICAL | wxLEFT, FromDIP(4));
    sizer->Add(command_row, 0, wxEXPAND | wxALL, FromDIP(4));
    m_export = new wxButton(this, wxID_ANY, wxT("&Export"));
    m_export_all = new wxButton(this, wxID_ANY, wxT("Export to &all..."));
    m_open_folder = new wxButton(this, wxID_ANY, wxT("Open fo&lder"));
    wxWrapSizer* buttons = new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES);
    for (wxButton* button : {m_export, m_export_all, m_open_folder})
        buttons->Add(button, 1, wxRIGHT, FromDIP(4));
    sizer->Add(buttons, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(4));
    m_result = add_label(this, sizer, wxString());
    SetSizer(sizer);
    copy->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        const wxClipboardLocker clipboard;
        if (!!clipboard)
            wxTheClipboard->SetData(new wxTextDataObject(m_command->GetValue()));
    });
    m_export->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { export_current(); });
    m_export_all->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { export_to_all(); });
    m_open_folder->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { open_folder(); });
    m_workspace.listen([this](Change change) { on_change(change); });
    show_plan();
}

void Export_bar::on_change(Change change)
{
    if (change == Change::current)
        m_result->SetLabel(wxString());
    if (change != Change::messages)
        show_plan();
}

void Export_bar::show_plan()
{
    m_plan->SetLabelText(to_text(plan_text(m_workspace.code())));
    m_plan->SetToolTip(
        to_text(m_workspace.current() ? m_workspace.current()->output() : std::string()));
    m_command->ChangeValue(to_text(m_workspace.command_line()));
    const bool can_export = m_workspace.current() && m_workspace.current()->node();
    m_export->Enable(can_export);
    m_export_all->Enable(can_export);
    m_open_folder->Enable(!m_written_folder.empty());
}

// The questions are the plug-in's, in windows of ours: its own never appear.
Box_policy Export_bar::ask_the_user()
{
    Box_policy policy;
    policy.ask_user = [this](const std::string& caption, const std::string& message) {
        wxMessageDialog question(wxGetTopLevelParent(this), to_text(message), to_text(caption),
                                 wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION);
        return question.ShowModal() == wxID_YES ? Box_answer::yes : Box_answer::no;
    };
    return policy;
}

void Export_bar::export_current()
{
    if (!m_export->IsEnabled())
        return;
    Asked_replacement replacement(wxGetTopLevelParent(this));
    const Export_outcome outcome = m_workspace.export_current(ask_the_user(), replacement);
    if (!outcome.files.empty())
        m_written_folder = fs::path(outcome.files.front().path).parent_path().string();
    m_result->SetLabelText(to_text(result_text(outcome)));
    show_plan();
}

void Export_bar::export_to_all()
{
    if (!m_export_all->IsEnabled())
        return;
    wxDirDialog dialog(wxGetTopLevelParent(this),
                       wxT("The folder in which each exporter gets its own"));
    if (dialog.ShowModal() == wxID_OK)
        export_to_all(to_bytes(dialog.GetPath()));
}

void Export_bar::export_to_all(const std::string& folder)
{
    const std::vector<std::string>& exporters = m_workspace.exporters();
    wxProgressDialog progress(wxT("Export to all"), wxString(), static_cast<int>(exporters.size()),
                              wxGetTopLevelParent(this),
                              wxPD_APP_MODAL | wxPD_CAN_ABORT | wxPD_AUTO_HIDE);
    Asked_replacement replacement(wxGetTopLevelParent(this));
    int failures = 0, done = 0;
    for (const std::string& exporter : exporters) {
        if (!progress.Update(done, to_text(exporter)))
            break;
        failures +=
            m_workspace.export_into(folder, exporter, ask_the_user(), replacement).is_success() ? 0
                                                                                                : 1;
        ++done;
    }
    m_written_folder = folder;
    m_result->SetLabelText(to_text("Exported " + std::to_string(done - failures) + " of " +
                                   std::to_string(exporters.size()) +
                                   (progress.WasCancelled() ? ": cancelled" : "")));
    show_plan();
}

void Export_bar::open_folder() const
{
    wxLaunchDefaultApplication(to_text(m_written_folder));
}

} // namespace reference_host

#include "reference_host/window/exporter_view.h"

#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <stdexcept>

#include <wx/choice.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace reference_host
{
namespace
{

constexpr int panel_width = 310; // pixels at scale 1

std::vector<Option_setting> settings_of(wxWindow& panel)
{
    std::vector<Option_setting> settings;
    for (const Panel_option& option : panel_options(panel))
        settings.push_back({"", option.name, option.value});
    return settings;
}

bool operator==(const Option_setting& one, const Option_setting& other)
{
    return one.name == other.name && one.value == other.value;
}

bool is_same(const Exporter_choice& one, const Exporter_choice& other)
{
    return one.output == other.output &&
           std::equal(one.options.begin(), one.options.end(), other.options.begin(),
                      other.options.end(), [](const auto& a, const auto& b) { return a == b; });
}

} // namespace

Exporter_view::Exporter_view(wxWindow* parent, Workspace& workspace, const Plugin_library& plugin)
    : wxPanel(parent), m_workspace(workspace), m_kept(plugin)
{
    wxStaticText* label = new wxStaticText(this, wxID_ANY, wxT("E&xporter"));
    m_exporter_choice = new wxChoice(this, wxID_ANY);
    for (const std::string& name : workspace.exporters())
        m_exporter_choice->Append(to_text(name));
    m_scrolled = new wxScrolledWindow(this, wxID_ANY);
    m_scrolled->SetScrollRate(FromDIP(8), FromDIP(8));
    m_area = new wxPanel(m_scrolled);
    wxBoxSizer* inside = new wxBoxSizer(wxVERTICAL);
    inside->Add(m_area, 1, wxEXPAND);
    m_scrolled->SetSizer(inside);
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(label, 0, wxLEFT | wxRIGHT | wxTOP, FromDIP(4));
    sizer->Add(m_exporter_choice, 0, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(m_scrolled, 1, wxEXPAND);
    SetSizer(sizer);
    m_exporter_choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
        m_workspace.choose_exporter(to_bytes(m_exporter_choice->GetStringSelection()));
    });
    m_area->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        fit_panel();
    });
    Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
        event.Skip();
        take_choice();
    });
    m_workspace.listen([this](Change change) { on_change(change); });
    open_panel();
}

Exporter_view::~Exporter_view()
{
    m_panel.reset();
}

void Exporter_view::on_change(Change change)
{
    const bool is_other_document = change == Change::current && m_document != m_workspace.current();
    if (change == Change::exporter || is_other_document)
        open_panel();
    else if (change == Change::current)
        show_output();
}

void Exporter_view::open_panel()
{
    m_panel.reset();
    m_document = m_workspace.current();
    m_exporter_choice->Enable(m_document != nullptr);
    if (!m_document)
        return;
    m_exporter_choice->SetStringSelection(to_text(m_document->exporter));
    const Kept_exporter& kept = m_kept.get(m_document->exporter);
    m_panel = std::make_unique<Exporter_panel>(*kept.exporter, nullptr, *m_area,
                                               FromDIP(panel_width), m_document->output());
    m_workspace.set_untouched_options(kept.untouched);
    set_panel_options(*m_area, kept.untouched);
    try {
        set_panel_options(*m_area, m_workspace.choice().options);
    } catch (const std::invalid_argument&) {
        // An option of an older plug-in: the panel keeps its own.
    }
    m_area->SetMinSize(m_panel->needed_area());
    m_scrolled->FitInside();
    fit_panel();
    show_output();
}

void Exporter_view::show_output()
{
    if (!m_panel || !m_document)
        return;
    m_panel->set_file_name(m_document->output());
    m_shown = {settings_of(*m_area), m_panel->file_name()};
}

void Exporter_view::take_choice()
{
    if (!m_panel)
        return;
    const Exporter_choice now{settings_of(*m_area), m_panel->file_name()};
    if (is_same(now, m_shown))
        return;
    m_shown = now;
    m_workspace.set_choice(now);
}

void Exporter_view::fit_panel()
{
    if (m_panel)
        m_panel->fit_into(m_area->GetClientSize());
}

} // namespace reference_host

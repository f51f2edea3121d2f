#include "reference_host/app/commands.h"

#include "exporter_base/bytes.h"
#include "reference_host/app/export_job.h"
#include "reference_host/app/messages.h"
#include "reference_host/app/opened_document.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/app/written_files.h"
#include "reference_host/desktop/exporter_panel.h"
#include "reference_host/desktop/wx_runtime.h"

#include <memory>
#include <stdexcept>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>

namespace reference_host
{

using QZ::TOVIRAEXPORT::from_bytes;

namespace
{

constexpr int panel_width = 400; // pixels
constexpr int border = 8;
constexpr int fit_delay_ms = 200; // until GTK knows the real sizes of new controls

// The window: a choice of exporters, the chosen one's panel, the button that exports, and a line
// that tells the result.
class Export_window : public wxFrame
{
public:
    Export_window(const Opened_document& document, const Plugin_library& plugin,
                  Texture_paths texture_paths)
        : wxFrame(nullptr, wxID_ANY, from_bytes(("Export " + document.node().name).c_str())),
          m_document(document),
          m_plugin(plugin),
          m_images(texture_paths, document.images(), {})
    {
        wxPanel* background = new wxPanel(this);
        m_choice = new wxChoice(background, wxID_ANY);
        for (const std::string& name : plugin.exporter_names())
            m_choice->Append(from_bytes(name.c_str()));
        m_area = new wxPanel(background);
        wxButton* button = new wxButton(background, wxID_ANY, wxT("Export"));
        m_result = new wxStaticText(background, wxID_ANY, wxEmptyString);

        m_sizer = new wxBoxSizer(wxVERTICAL);
        m_sizer->Add(m_choice, 0, wxEXPAND | wxALL, border);
        m_sizer->Add(m_area, 1, wxEXPAND);
        m_sizer->Add(button, 0, wxALIGN_RIGHT | wxALL, border);
        m_sizer->Add(m_result, 0, wxEXPAND | wxALL, border);
        background->SetSizer(m_sizer);

        m_choice->Connect(wxEVT_COMMAND_CHOICE_SELECTED,
                          wxCommandEventHandler(Export_window::on_choice), nullptr, this);
        button->Connect(wxEVT_COMMAND_BUTTON_CLICKED,
                        wxCommandEventHandler(Export_window::on_export), nullptr, this);
        m_area->Connect(wxEVT_SIZE, wxSizeEventHandler(Export_window::on_area_size), nullptr, this);
        m_fit_timer.SetOwner(this);
        Connect(wxEVT_TIMER, wxTimerEventHandler(Export_window::on_fit_timer));
        m_choice->SetSelection(0);
        choose(0);
    }

    ~Export_window() override { m_panel.reset(); }

private:
    void on_choice(wxCommandEvent&) { choose(m_choice->GetSelection()); }

    void on_area_size(wxSizeEvent& event)
    {
        if (m_panel)
            m_panel->fit_into(event.GetSize());
        event.Skip();
    }

    // GTK 3 gives controls their real sizes only in a window that is resized while they are on the
    // screen, so the window starts a pixel too high.
    void on_fit_timer(wxTimerEvent&) { SetClientSize(m_sizer->GetMinSize()); }

    void on_export(wxCommandEvent&)
    {
        const Written_files watch(m_panel->file_name());
        m_panel->close();
        m_exporter->export_shader(m_session->application(), m_session->view());
        print_messages(m_session->record().diagnostics);
        m_result->SetLabel(from_bytes(result_of(watch).c_str()));
        open_panel();
    }

    void choose(int index)
    {
        m_panel.reset();
        m_exporter = m_plugin.make_exporter(index);
        m_result->SetLabel(wxEmptyString);
        open_panel();
    }

    std::string result_of(const Written_files& watch) const
    {
        std::string text;
        for (const Written_file& file : watch.changes())
            text += (text.empty() ? "Written: " : "\n") + file.path;
        if (!text.empty())
            return text;
        const Diagnostics& diagnostics = m_session->record().diagnostics;
        return diagnostics.empty() ? "Nothing was written." : diagnostics.back().text;
    }

    // Shows the chosen exporter's panel; a new session each time, as for each export.
    void open_panel()
    {
        m_panel.reset();
        m_session = std::make_unique<Export_session>(m_document.scene(m_images));
        m_panel =
            std::make_unique<Exporter_panel>(*m_exporter, m_session->view(), *m_area, panel_width);
        m_area->SetMinSize(m_panel->needed_area());
        m_sizer->SetSizeHints(this);
        SetClientSize(m_sizer->GetMinSize() + wxSize(0, 1));
        Layout();
        m_fit_timer.Start(fit_delay_ms, wxTIMER_ONE_SHOT);
    }

    const Opened_document& m_document;
    const Plugin_library& m_plugin;
    Image_names m_images;
    wxChoice* m_choice = nullptr;
    wxPanel* m_area = nullptr;
    wxStaticText* m_result = nullptr;
    wxBoxSizer* m_sizer = nullptr;
    wxTimer m_fit_timer;
    // In the order in which they need each other.
    std::unique_ptr<QZ::TSDK::IExporter> m_exporter;
    std::unique_ptr<Export_session> m_session;
    std::unique_ptr<Exporter_panel> m_panel;
};

} // namespace

int show_window(const Scene_request& scene, const std::string& plugin)
{
    const Opened_document document(scene);
    print_messages(document.warnings());
    const Wx_runtime wx(Display_choice::users);
    const Plugin_library library(plugin);
    (new Export_window(document, library, scene.texture_paths))->Show();
    Wx_runtime::run();
    return 0;
}

} // namespace reference_host

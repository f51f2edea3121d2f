// Checks of the exporters' panels.
#include "reference_host/check/check.h"
#include "reference_host/check/check_functions.h"
#include "reference_host/check/scripted_export.h"

#include <fstream>

#include <unistd.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/panel.h>
#include <wx/textctrl.h>
#if wxCHECK_VERSION(3, 0, 0)
#include <wx/modalhook.h>
#endif

namespace reference_host
{
namespace
{

constexpr int panel_width = 400;

// Cancels every dialog before it appears.
#if wxCHECK_VERSION(3, 0, 0)
class Cancelled_dialogs : public wxModalDialogHook
{
public:
    Cancelled_dialogs() { Register(); }

protected:
    int Enter(wxDialog*) override { return wxID_CANCEL; }
};
#else
struct Cancelled_dialogs {
};
#endif

void use_text(wxTextCtrl& field)
{
    for (const wxChar* text : {wxT(""), wxT("a"), wxT("%s%n"), wxT("/"), wxT("no/such/folder/x.")})
        field.SetValue(text);
    field.SetValue(wxString(wxT('x'), 100'000));
    field.SetValue(wxT("out"));
}

void use_control(wxWindow& control)
{
    wxCommandEvent event;
    event.SetId(control.GetId());
    event.SetEventObject(&control);
    if (auto* field = dynamic_cast<wxTextCtrl*>(&control)) {
        use_text(*field);
    } else if (auto* box = dynamic_cast<wxCheckBox*>(&control)) {
        box->SetValue(!box->GetValue());
        event.SetEventType(wxEVT_COMMAND_CHECKBOX_CLICKED);
    } else if (auto* choice = dynamic_cast<wxComboBox*>(&control)) {
        for (unsigned int i = 0; i < choice->GetCount(); ++i)
            choice->SetSelection(static_cast<int>(i));
        event.SetEventType(wxEVT_COMMAND_COMBOBOX_SELECTED);
    } else if (dynamic_cast<wxButton*>(&control)) {
#if !wxCHECK_VERSION(3, 0, 0)
        return; // its dialog cannot be cancelled
#endif
        event.SetEventType(wxEVT_COMMAND_BUTTON_CLICKED);
    }
    if (event.GetEventType() != wxEVT_NULL)
        control.GetEventHandler()->ProcessEvent(event);
}

void use_all_controls(wxWindow& window)
{
    const wxWindowList children = window.GetChildren();
    for (wxWindow* child : children) {
        use_control(*child);
        use_all_controls(*child);
    }
}

int count_controls(const wxWindow& window)
{
    int count = 0;
    for (const wxWindow* child : window.GetChildren())
        count += 1 + count_controls(*child);
    return count;
}

long resident_kilobytes()
{
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

} // namespace

void check_panel_life(Check_run& run)
{
    constexpr int sequences = 20; // for each exporter
    constexpr int length = 12;
    for (const auto& exporter : run.make_exporters()) {
        const std::string name = exporter->get_name();
        for (int i = 0; i < sequences; ++i) {
            Host_window window;
            int open_panels = 0;
            for (int step = 0; step < length; ++step) {
                switch (run.random_number(0, 3)) {
                case 0:
                    run.expect(exporter->create_ui(window.handle(), panel_width, nullptr) > 0,
                               name + ": a panel needs no height");
                    open_panels = 1;
                    break;
                case 1:
                    run.expect(exporter->remove_ui(nullptr, step % 2) == (open_panels > 0),
                               name + ": remove_ui tells another thing than what it did");
                    open_panels = 0;
                    break;
                default:
                    exporter->set_ui_size(run.random_number(1, 900), run.random_number(1, 900));
                }
            }
            exporter->remove_ui(nullptr, true);
        }
    }
}

void check_panel_sizes(Check_run& run)
{
    constexpr int sides[] = {1, 2, 10, 100, 399, 400, 1000, 2160, 3840};
    for (const auto& exporter : run.make_exporters()) {
        Host_window window;
        for (const int width : sides) {
            const int height = exporter->create_ui(window.handle(), width, nullptr);
            run.expect(height > 0 && height < 10'000,
                       std::string(exporter->get_name()) + ": a panel of the width " +
                           std::to_string(width) + " needs " + std::to_string(height) + " pixels");
            for (const int other : sides) {
                exporter->set_ui_size(width, other);
                exporter->set_ui_size(other, width);
            }
            exporter->remove_ui(nullptr, true);
        }
    }
}

void check_panel_controls(Check_run& run)
{
    const Cancelled_dialogs dialogs;
    for (const auto& exporter : run.make_exporters()) {
        const std::string name = exporter->get_name();
        for (int round = 0; round < 3; ++round) {
            Host_window window;
            exporter->create_ui(window.handle(), panel_width, nullptr);
            const int controls = count_controls(window.area());
            run.expect(controls > 1, name + ": the panel is empty");
            use_all_controls(window.area());
            run.expect(count_controls(window.area()) == controls,
                       name + ": controls come or go while they are used");
            exporter->remove_ui(nullptr, round == 1);
            run.expect(count_controls(window.area()) == 0, name + ": the panel stays");
        }
    }
}

void check_destroyed_containers(Check_run& run)
{
    constexpr int rounds = 15;
    for (const auto& exporter : run.make_exporters()) {
        for (int i = 0; i < rounds; ++i) {
            Host_window window;
            exporter->create_ui(window.handle(), panel_width, nullptr);
            window.renew_area();
            exporter->set_ui_size(100, 100);
            run.expect(!exporter->remove_ui(nullptr, i % 2),
                       std::string(exporter->get_name()) +
                           " says that it destroyed a panel that was gone");
            exporter->create_ui(window.handle(), panel_width, nullptr);
            if (i % 3)
                exporter->remove_ui(nullptr, false);
        }
        exporter->remove_ui(nullptr, true);
    }
}

void check_panel_memory(Check_run& run)
{
    constexpr int warm_up = 100;
    constexpr int panels = 1000;
    constexpr long allowed_kilobytes = 20 * 1024;
    const auto exporters = run.make_exporters();
    long before = 0;
    for (int i = 0; i < panels; ++i) {
        if (i == warm_up)
            before = resident_kilobytes();
        QZ::TSDK::IExporter& exporter = *exporters[static_cast<size_t>(i) % exporters.size()];
        Host_window window;
        exporter.create_ui(window.handle(), panel_width, nullptr);
        exporter.remove_ui(nullptr, false);
        wxTheApp->Yield(true);
    }
    const long growth = resident_kilobytes() - before;
    run.expect(growth < allowed_kilobytes,
               "900 panels take " + std::to_string(growth) + " kB more");
}

} // namespace reference_host

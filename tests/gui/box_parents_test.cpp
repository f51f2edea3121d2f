// Which window each message box and file dialog stands on: the host's or the exporter's panel. The
// two are told apart by moving the panel into another window.
#include "exporter_base/control_ids.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/gui/every_exporter.h"
#include "tests/gui/gtk_functions.h"
#include "tests/gui/user_input.h"
#include "tests/gui/window_test.h"
#include "tests/support/exporter_panel.h"
#include "tests/support/message_boxes.h"

#include <wx/event.h>
#include <wx/frame.h>
#include <wx/panel.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;
using Windows = std::vector<wxWindow*>;

class Box_parents : public Window_test
{
protected:
    // Boxes without a parent come to stand on the window that has the focus, which is a third one.
    Box_parents()
        : panel_window(new wxFrame(nullptr, wxID_ANY, wxT("Panel"))),
          m_other_window(new wxFrame(nullptr, wxID_ANY, wxT("Other")))
    {
        panel_window->Show();
        m_other_window->Show();
        take_focus(m_other_window->GetHandle());
        EXPECT_TRUE(wait_until([this] { return has_focus(m_other_window->GetHandle()); }));
        host.add_selected_node("node");
    }
    ~Box_parents() override
    {
        panel_window->Destroy();
        m_other_window->Destroy();
    }

    wxWindow* host_window() const { return container()->GetParent(); }

    // Names the file, and opens a panel that is then moved away from the host's window.
    void open_apart(Exporter_base& exporter, const std::string& file)
    {
        choose_export_file(exporter, file);
        exporter.create_ui(handle(), 400, nullptr);
        exporter.get_top_panel()->Reparent(panel_window);
    }

    std::vector<std::unique_ptr<Exporter_base>> exporters = make_every_exporter();
    Recording_host host;
    wxFrame* panel_window;

private:
    wxFrame* m_other_window;
};

bool has_file_row(const Exporter_base& exporter)
{
    return std::string(exporter.get_name()) != "default exporter";
}

TEST_F(Box_parents, errors_and_warnings_stand_on_the_hosts_window)
{
    for (const auto& exporter : exporters) {
        exporter->create_ui(handle(), 400, nullptr);
        exporter->get_top_panel()->Reparent(panel_window);
        const Message_boxes boxes;
        exporter->show_error(wxT("error"));
        exporter->show_warning(wxT("warning"));
        EXPECT_EQ(boxes.parents(), (Windows{host_window(), host_window()})) << exporter->get_name();
        exporter->remove_ui(nullptr, true);
    }
}

TEST_F(Box_parents, overwrite_question_stands_on_the_panel)
{
    const std::string file = folder.write("there.fx", "");
    for (const auto& exporter : exporters) {
        exporter->create_ui(handle(), 400, nullptr);
        exporter->get_top_panel()->Reparent(panel_window);
        const Message_boxes boxes;
        exporter->can_export(file.c_str());
        EXPECT_EQ(boxes.parents(), Windows{panel_window}) << exporter->get_name();
        exporter->remove_ui(nullptr, true);
    }
}

// The renderer source asks nothing, and CATIA brings its lights: an environment is missing.
TEST_F(Box_parents, question_about_the_scene_stands_on_the_hosts_window_and_its_report_on_the_panel)
{
    host.selection[0]->functions = {"trace"};
    for (const auto& exporter : exporters) {
        const std::string name = exporter->get_name();
        if (!has_file_row(*exporter) || name == "Corvane")
            continue;
        open_apart(*exporter, folder.file("out"));
        const Message_boxes boxes({wxID_NO});
        exporter->export_shader(host.app(), host.view());
        const bool reports = name.find("3ds Max") != std::string::npos || name == "CATIA (CgFX)";
        EXPECT_EQ(boxes.parents(),
                  reports ? (Windows{host_window(), panel_window}) : Windows{host_window()})
            << name;
        exporter->remove_ui(nullptr, true);
    }
}

TEST_F(Box_parents, file_dialogs_stand_on_the_hosts_window)
{
    for (const auto& exporter : exporters) {
        SCOPED_TRACE(exporter->get_name());
        if (!has_file_row(*exporter))
            continue;
        open_apart(*exporter, folder.file("out"));
        for (const int button : {ID_EXPORTFILE_BROWSE, ID_ANNOTATION_MAP_BROWSE}) {
            if (!exporter->get_top_panel()->FindWindow(button))
                continue;
            Dialog_answer answer{Reply::cancel};
            answer.without_folder = button == ID_ANNOTATION_MAP_BROWSE;
            dialogs.answer_next(answer);
            wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, button);
            exporter->get_top_panel()->GetEventHandler()->ProcessEvent(event);
            EXPECT_EQ(shown().parent_title, host_title);
        }
        exporter->remove_ui(nullptr, true);
    }
}

} // namespace
} // namespace TEST
} // namespace QZ

// The life of a panel in the host's window: made, resized, removed, lost.
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporters/exporter_default.h"
#include "exporters/exporter_fxcomposer.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_swrc.h"
#include "tests/gui/chooser_exporter.h"
#include "tests/gui/gtk_functions.h"
#include "tests/gui/window_test.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include <unistd.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;

class Panel_life : public Window_test
{
protected:
    Panel_life() : exporter(std::make_unique<Exporter_generic>(Exporter_generic::TARGET_CGFX))
    {
        exporter->initialize();
    }

    // The number of panels in the container.
    size_t panels() const { return container()->GetChildren().GetCount(); }

    void click_browse_by_event()
    {
        wxWindow* button = control(ID_EXPORTFILE_BROWSE);
        wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, ID_EXPORTFILE_BROWSE);
        event.SetEventObject(button);
        button->GetEventHandler()->ProcessEvent(event);
    }

    std::string file_setting(const char* kind) const
    {
        return to_bytes(exporter->get_own_setting_value(exporter->get_base_setting_key() +
                                                        wxT("_exportfile_") + from_bytes(kind)));
    }

    void type_file_name(const std::string& name)
    {
        control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->SetValue(from_bytes(name.c_str()));
    }

    std::unique_ptr<Exporter_generic> exporter;
};

TEST_F(Panel_life, create_ui_makes_one_panel_in_the_container)
{
    const int height = exporter->create_ui(handle(), 400, nullptr);
    EXPECT_GT(height, 100);
    ASSERT_EQ(panels(), 1u);
    wxPanel* panel = exporter->get_top_panel();
    EXPECT_EQ(exporter->get_window(), container());
    EXPECT_EQ(panel->GetParent(), container());
    EXPECT_EQ(panel->GetWindowStyleFlag(), 0x280000); // tab traversal, no border
    EXPECT_EQ(to_bytes(panel->GetName()), "panel");
    EXPECT_TRUE(exporter->remove_ui(nullptr, false));
    EXPECT_EQ(panels(), 0u);
    EXPECT_EQ(exporter->get_top_panel(), nullptr);
    EXPECT_EQ(exporter->get_window(), nullptr);
}

TEST_F(Panel_life, file_row_shows_the_remembered_file)
{
    exporter->create_ui(handle(), 400, nullptr);
    EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()),
              folder.path() + "/untitled");
    type_file_name("/tmp/b\xC3\xA4r.cgfx");
    exporter->remove_ui(nullptr, false);
    EXPECT_EQ(file_setting("save"), "/tmp/b\xC3\xA4r.cgfx");
    EXPECT_EQ(to_bytes(exporter->get_exportfile_name()), "/tmp/b\xC3\xA4r.cgfx");
    exporter->create_ui(handle(), 400, nullptr);
    EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()),
              "/tmp/b\xC3\xA4r.cgfx");
}

// A field of GTK 2 shows a byte that is not UTF-8 as a character of Latin-1. Unless the user edits
// it, that is never seen.
TEST_F(Panel_life, remembered_file_keeps_its_bytes_in_a_field_that_is_not_edited)
{
    const char* const name = "/tmp/b\xC3\xA4r \xFF.cgfx";
    exporter->set_own_setting_value(exporter->get_base_setting_key() + wxT("_exportfile_save"),
                                    from_bytes(name));
    for (int round = 0; round < 2; ++round) {
        exporter->create_ui(handle(), 400, nullptr);
#if wxCHECK_VERSION(3, 0, 0)
        EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()), name);
#endif
        exporter->remove_ui(nullptr, false);
        EXPECT_EQ(file_setting("save"), name);
        EXPECT_EQ(to_bytes(exporter->get_exportfile_name()), name);
    }
}

TEST_F(Panel_life, discarding_leaves_the_file_name_and_its_setting)
{
    exporter->create_ui(handle(), 400, nullptr);
    type_file_name("/tmp/kept.cgfx");
    exporter->remove_ui(nullptr, false);
    exporter->create_ui(handle(), 400, nullptr);
    type_file_name("/tmp/thrown_away.cgfx");
    EXPECT_TRUE(exporter->remove_ui(nullptr, true));
    EXPECT_EQ(to_bytes(exporter->get_exportfile_name()), "/tmp/kept.cgfx");
    EXPECT_EQ(file_setting("save"), "/tmp/kept.cgfx");
}

TEST_F(Panel_life, empty_file_name_is_remembered_too)
{
    exporter->create_ui(handle(), 400, nullptr);
    type_file_name("");
    exporter->remove_ui(nullptr, false);
    EXPECT_EQ(file_setting("save"), "");
}

// ---- sizes

class Size_recorder : public wxEvtHandler
{
public:
    explicit Size_recorder(wxWindow* window) : m_window(window)
    {
        m_window->Connect(wxEVT_SIZE, wxSizeEventHandler(Size_recorder::on_size), nullptr, this);
    }
    ~Size_recorder() override
    {
        m_window->Disconnect(wxEVT_SIZE, wxSizeEventHandler(Size_recorder::on_size), nullptr, this);
    }
    std::vector<wxSize> sizes;

private:
    void on_size(wxSizeEvent& event)
    {
        event.Skip();
        sizes.push_back(event.GetSize());
    }
    wxWindow* m_window;
};

TEST_F(Panel_life, set_ui_size_sends_exactly_two_size_changes)
{
    open_panel(*exporter, 400);
    const wxSize cases[] = {
        wxSize(400, 500), wxSize(400, 500), // to the size that it has
        wxSize(396, 496),                   // the larger one is the size that it has
        wxSize(300, 200), wxSize(800, 700), wxSize(0, 0),
    };
    for (const wxSize& size : cases) {
        SCOPED_TRACE(std::to_string(size.x) + " x " + std::to_string(size.y));
        const wxPoint before = exporter->get_top_panel()->GetPosition();
        Size_recorder recorder(exporter->get_top_panel());
        exporter->set_ui_size(size.x, size.y);
        ASSERT_EQ(recorder.sizes.size(), 2u);
        EXPECT_EQ(recorder.sizes[0], wxSize(size.x + 4, size.y + 4));
        EXPECT_EQ(recorder.sizes[1], size);
        EXPECT_EQ(exporter->get_top_panel()->GetSize(), size);
        EXPECT_EQ(exporter->get_top_panel()->GetPosition(), before);
    }
}

TEST_F(Panel_life, sizes_without_a_panel_are_ignored)
{
    exporter->set_ui_size(400, 300);
    exporter->create_ui(handle(), 400, nullptr);
    exporter->remove_ui(nullptr, false);
    exporter->set_ui_size(400, 300);
}

TEST_F(Panel_life, width_is_what_the_host_gives_and_the_height_does_not_depend_on_it)
{
    const int height = exporter->create_ui(handle(), 280, nullptr);
    exporter->remove_ui(nullptr, true);
    for (const int width : {0, 1, 400, 800, 5000}) {
        EXPECT_EQ(exporter->create_ui(handle(), width, nullptr), height) << width;
        exporter->remove_ui(nullptr, true);
    }
}

// ---- several panels

TEST_F(Panel_life, second_panel_after_the_first_works_like_it)
{
    for (int round = 0; round < 2; ++round) {
        exporter->create_ui(handle(), 400, nullptr);
        EXPECT_EQ(panels(), 1u);
        dialogs.answer_next({Reply::accept, -1, "round" + std::to_string(round)});
        click_browse_by_event();
        EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()),
                  folder.file("round" + std::to_string(round) + ".cgfx"));
        EXPECT_TRUE(exporter->remove_ui(nullptr, false));
    }
}

TEST_F(Panel_life, second_create_ui_leaves_the_first_panel_where_it_is)
{
    exporter->create_ui(handle(), 400, nullptr);
    wxPanel* first = exporter->get_top_panel();
    exporter->create_ui(handle(), 400, nullptr);
    EXPECT_EQ(panels(), 2u);
    EXPECT_NE(exporter->get_top_panel(), first);
    EXPECT_EQ(first->GetEventHandler(), first); // nothing is pushed on it any more
    EXPECT_TRUE(exporter->remove_ui(nullptr, false));
    EXPECT_EQ(panels(), 1u);
    EXPECT_FALSE(exporter->remove_ui(nullptr, false));
    exporter.reset();
    close_host_window();
}

TEST_F(Panel_life, exporters_with_two_handlers_survive_a_second_create_ui)
{
    Exporter_fxcomposer fxcomposer;
    Exporter_swrc swrc;
    for (Exporter_base* each :
         {static_cast<Exporter_base*>(&fxcomposer), static_cast<Exporter_base*>(&swrc)}) {
        each->initialize();
        each->create_ui(handle(), 400, nullptr);
        each->create_ui(handle(), 400, nullptr);
        EXPECT_TRUE(each->remove_ui(nullptr, false));
    }
    EXPECT_EQ(panels(), 2u);
}

TEST_F(Panel_life, removing_without_or_after_a_panel_does_nothing)
{
    EXPECT_FALSE(exporter->remove_ui(nullptr, false));
    exporter->create_ui(handle(), 400, nullptr);
    EXPECT_TRUE(exporter->remove_ui(nullptr, false));
    EXPECT_FALSE(exporter->remove_ui(nullptr, false));
    EXPECT_FALSE(exporter->remove_ui(nullptr, true));
}

TEST_F(Panel_life, container_that_is_null_gets_no_panel)
{
    EXPECT_EQ(exporter->create_ui(0, 400, nullptr), 0);
    EXPECT_EQ(exporter->get_top_panel(), nullptr);
    exporter->set_ui_size(400, 300);
    EXPECT_FALSE(exporter->remove_ui(nullptr, false));
}

// ---- ends that nobody announced

TEST_F(Panel_life, exporter_may_end_before_its_panel)
{
    exporter->create_ui(handle(), 400, nullptr);
    exporter.reset();
    EXPECT_EQ(panels(), 1u);
    handle_events();
    click_browse_by_event(); // goes nowhere
    wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, ID_ANNOTATION_MAP_BROWSE);
    control(ID_ANNOTATION_MAP_BROWSE)->GetEventHandler()->ProcessEvent(event);
    close_host_window();
}

TEST_F(Panel_life, host_may_close_its_window_with_the_panel_inside)
{
    Exporter_fxcomposer fxcomposer;
    fxcomposer.initialize();
    exporter->create_ui(handle(), 400, nullptr);
    fxcomposer.create_ui(handle(), 400, nullptr);
    close_host_window();
    for (Exporter_base* each :
         {static_cast<Exporter_base*>(exporter.get()), static_cast<Exporter_base*>(&fxcomposer)}) {
        EXPECT_EQ(each->get_top_panel(), nullptr);
        EXPECT_EQ(each->get_window(), nullptr);
        each->set_ui_size(300, 200);
        EXPECT_FALSE(each->remove_ui(nullptr, false));
        dialogs.answer_next({Reply::ok});
        each->show_error(wxT("still there"));
    }
}

class Destroy_counter : public wxEvtHandler
{
public:
    void on_destroy(wxWindowDestroyEvent& event)
    {
        event.Skip();
        destroyed.push_back(event.GetWindow());
    }
    std::vector<wxWindow*> destroyed;
};

// The exporter only listens to the end of its panel: the application hears of it, too.
TEST_F(Panel_life, end_of_a_panel_is_passed_on)
{
    Destroy_counter counter;
    wxTheApp->Connect(wxEVT_DESTROY, wxWindowDestroyEventHandler(Destroy_counter::on_destroy),
                      nullptr, &counter);
    exporter->create_ui(handle(), 400, nullptr);
    wxWindow* panel = exporter->get_top_panel();
    container()->DestroyChildren();
    wxTheApp->Disconnect(wxEVT_DESTROY, wxWindowDestroyEventHandler(Destroy_counter::on_destroy),
                         nullptr, &counter);
    EXPECT_TRUE(std::find(counter.destroyed.begin(), counter.destroyed.end(), panel) !=
                counter.destroyed.end());
    EXPECT_EQ(exporter->get_top_panel(), nullptr);
}

// Asks a panel at its end whether it still has the handlers of its exporter.
class Handler_watch : public wxEvtHandler
{
public:
    void on_destroy(wxWindowDestroyEvent& event)
    {
        event.Skip();
        wxWindow* panel = event.GetWindow();
        had_handlers = panel->GetEventHandler() != panel;
    }
    bool had_handlers = true;
};

TEST_F(Panel_life, removed_panel_ends_without_the_handlers_of_its_exporter)
{
    Handler_watch watch;
    exporter->create_ui(handle(), 400, nullptr);
    exporter->get_top_panel()->Connect(
        wxEVT_DESTROY, wxWindowDestroyEventHandler(Handler_watch::on_destroy), nullptr, &watch);
    exporter->remove_ui(nullptr, true);
    EXPECT_FALSE(watch.had_handlers);
}

TEST_F(Panel_life, exporter_goes_on_in_a_new_window_after_the_old_one_was_closed)
{
    exporter->create_ui(handle(), 400, nullptr);
    container()->DestroyChildren();
    EXPECT_EQ(exporter->get_top_panel(), nullptr);
    exporter->create_ui(handle(), 400, nullptr);
    EXPECT_EQ(panels(), 1u);
    EXPECT_TRUE(exporter->remove_ui(nullptr, false));
}

// ---- growth

long resident_kilobytes()
{
    long pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%*s %ld", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return pages * sysconf(_SC_PAGESIZE) / 1024;
}

TEST_F(Panel_life, two_hundred_openings_and_closings_leave_nothing_behind)
{
    constexpr int warm_up = 50;               // caches of the toolkit fill up
    constexpr long allowed_kilobytes = 16384; // panels that stay would take several times as much
    const auto open_and_close = [this](int times) {
        for (int i = 0; i < times; ++i) {
            open_panel(*exporter, 400);
            exporter->remove_ui(nullptr, i % 2 == 0);
            handle_events();
        }
    };
    open_and_close(warm_up);
    const size_t windows = toplevel_windows().size();
    const long before = resident_kilobytes();
    open_and_close(200);
    EXPECT_EQ(panels(), 0u);
    EXPECT_EQ(toplevel_windows().size(), windows);
#ifndef __SANITIZE_ADDRESS__ // which holds freed memory back
    EXPECT_LT(resident_kilobytes() - before, allowed_kilobytes);
#endif
    RecordProperty("growth_in_kilobytes", static_cast<int>(resident_kilobytes() - before));
}

// ---- browse buttons

TEST_F(Panel_life, browse_button_puts_the_chosen_file_into_the_field)
{
    exporter->create_ui(handle(), 400, nullptr);
    dialogs.answer_next({Reply::accept, -1, "water"});
    click_browse_by_event();
    EXPECT_EQ(shown().caption, "Save a CgFX file");
    EXPECT_EQ(shown().parent_title, host_title);
    EXPECT_EQ(shown().path, folder.file("untitled"));
    EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()),
              folder.file("water.cgfx"));
    EXPECT_EQ(file_setting("save"), folder.file("water.cgfx"));
    EXPECT_EQ(file_setting("filter_index"), "0");
}

TEST_F(Panel_life, cancelled_browsing_leaves_the_field)
{
    exporter->create_ui(handle(), 400, nullptr);
    type_file_name("as typed");
    dialogs.answer_next({Reply::cancel, 1, "water"});
    click_browse_by_event();
    EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()), "as typed");
    EXPECT_EQ(file_setting("save"), folder.path() + "/untitled");
    EXPECT_EQ(file_setting("filter_index"), "0");
}

TEST_F(Panel_life, annotation_map_is_chosen_among_existing_files)
{
    const std::string map = folder.write("map.axml", "");
    exporter->set_own_setting_value(exporter->get_base_setting_key() + wxT("_annotationfile_open"),
                                    from_bytes(map.c_str()));
    open_panel(*exporter, 400);
    wxTextCtrl* field = control<wxTextCtrl>(ID_ANNOTATION_MAP_TEXT);
    for (const Reply reply : {Reply::cancel, Reply::accept}) {
        dialogs.answer_next({reply, -1, "", {map}, map});
        wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, ID_ANNOTATION_MAP_BROWSE);
        control(ID_ANNOTATION_MAP_BROWSE)->GetEventHandler()->ProcessEvent(event);
        EXPECT_EQ(shown().caption, "Choose a CgFX annotation map file");
        EXPECT_FALSE(shown().saves);
        EXPECT_EQ(shown().filters,
                  (std::vector<std::string>{"Annotation map file (*.axml)", "All files (*)"}));
        EXPECT_EQ(to_bytes(field->GetValue()), reply == Reply::accept ? map : "default.axml");
    }
}

// The first annotation map is looked for without a remembered folder.
TEST_F(Panel_life, annotation_map_dialog_opens_without_a_remembered_folder)
{
    const std::string map = folder.write("map.axml", "");
    open_panel(*exporter, 400);
    dialogs.answer_next(select_from_anywhere(map));
    wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, ID_ANNOTATION_MAP_BROWSE);
    control(ID_ANNOTATION_MAP_BROWSE)->GetEventHandler()->ProcessEvent(event);
    EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_ANNOTATION_MAP_TEXT)->GetValue()), map);
}

// The host may send any event to any panel.
TEST_F(Panel_life, annotation_map_event_on_the_panel_of_glsl_changes_nothing)
{
    Exporter_generic glsl(Exporter_generic::TARGET_GLSL);
    glsl.initialize();
    open_panel(glsl, 400);
    dialogs.answer_next(select_from_anywhere(folder.write("map.axml", "")));
    wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, ID_ANNOTATION_MAP_BROWSE);
    EXPECT_TRUE(glsl.get_top_panel()->GetEventHandler()->ProcessEvent(event));
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(glsl.remove_ui(nullptr, false));
}

TEST_F(Panel_life, browse_event_on_a_panel_without_the_file_row_changes_nothing)
{
    Exporter_default sample;
    sample.set_own_setting_value(sample.get_base_setting_key() + wxT("_exportfile_save"),
                                 from_bytes(folder.file("start").c_str()));
    sample.create_ui(handle(), 400, nullptr);
    dialogs.answer_next({Reply::accept, -1, "scene"});
    sample.choose_exportfile();
    EXPECT_TRUE(sample.remove_ui(nullptr, false));
}

TEST_F(Panel_life, forgotten_panel_no_longer_opens_dialogs)
{
    exporter->create_ui(handle(), 400, nullptr);
    wxPanel* forgotten = exporter->get_top_panel();
    exporter->create_ui(handle(), 400, nullptr);
    for (const int button : {ID_ANNOTATION_MAP_BROWSE, ID_EXPORTFILE_BROWSE}) {
        wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, button);
        EXPECT_FALSE(forgotten->GetEventHandler()->ProcessEvent(event)) << button;
    }
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_TRUE(exporter->remove_ui(nullptr, false));
}

// The field cannot show what follows a NUL; it is returned all the same.
TEST_F(Panel_life, text_that_the_user_did_not_edit_comes_back_whole)
{
    const wxString setting = exporter->get_base_setting_key() + wxT("_exportfile_save");
    const wxString whole = wxString(wxT("/a")) + wxChar(0) + wxT("b");
    exporter->set_own_setting_value(setting, whole);
    exporter->create_ui(handle(), 400, nullptr);
    EXPECT_TRUE(exporter->remove_ui(nullptr, false));
    EXPECT_EQ(exporter->get_own_setting_value(setting), whole);
    exporter->create_ui(handle(), 400, nullptr);
    type_file_name("/a2");
    EXPECT_TRUE(exporter->remove_ui(nullptr, false));
    EXPECT_EQ(exporter->get_own_setting_value(setting), wxString(wxT("/a2")));
}

// Neither what is CgFX's alone nor what is HLSL's.
TEST_F(Panel_life, exporter_without_a_target_shows_what_both_effect_languages_have)
{
    Exporter_generic other(static_cast<Exporter_generic::Target_language>(7));
    other.initialize();
    open_panel(other, 400);
    for (int id = ID_ANNOTATION_MAP_TEXT; id <= ID_GLSL_VERSION; ++id) {
        const bool of_one = id == ID_TWO_SIDED || id == ID_USE_INTERFACES || id == ID_EVAL_VOLUME ||
                            id == ID_HLSL_SAS_CONFORMANCE || id == ID_GLSL_VERSION;
        EXPECT_EQ(container()->FindWindow(id) == nullptr, of_one) << id;
    }
    EXPECT_TRUE(other.remove_ui(nullptr, false));
}

} // namespace
} // namespace TEST
} // namespace QZ

// The message boxes and the overwrite question, shown and answered.
#include "exporter_base/bytes.h"
#include "exporters/exporter_default.h"
#include "exporters/exporter_generic.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/gui/window_test.h"
#include "tests/support/exporter_panel.h"

#include <filesystem>

#include <wx/defs.h>

namespace QZ
{
namespace TEST
{
namespace
{

using TOVIRAEXPORT::Exporter_default;
using TOVIRAEXPORT::Exporter_generic;
using Replies = std::vector<Reply>;

// The buttons that Return presses in a box with nothing but OK.
#if wxCHECK_VERSION(3, 0, 0)
const Replies default_of_ok_alone = {Reply::ok};
#else
const Replies default_of_ok_alone = {}; // GTK 2 marks none
#endif

class Message_box_windows : public Window_test
{
protected:
    bool can_export(const std::string& file) { return exporter.can_export(file.c_str()); }

    Exporter_default exporter;
};

TEST_F(Message_box_windows, error_names_the_exporter_and_offers_ok)
{
    open_panel(exporter, 400);
    dialogs.answer_next({Reply::ok});
    exporter.show_error(wxT("It is broken."));
    EXPECT_EQ(shown().caption, "Tovira Error: default exporter");
    EXPECT_EQ(shown().text, "It is broken.");
    EXPECT_EQ(shown().icon, ICON_ERROR);
    EXPECT_EQ(shown().buttons, Replies{Reply::ok});
    EXPECT_EQ(shown().default_buttons, default_of_ok_alone);
    EXPECT_EQ(shown().parent_title, host_title);
}

TEST_F(Message_box_windows, warning_names_the_exporter_and_offers_ok)
{
    open_panel(exporter, 400);
    dialogs.answer_next({Reply::ok});
    exporter.show_warning(wxT("It may break."));
    EXPECT_EQ(shown().caption, "Tovira warning: default exporter");
    EXPECT_EQ(shown().text, "It may break.");
    EXPECT_EQ(shown().icon, ICON_WARNING);
    EXPECT_EQ(shown().buttons, Replies{Reply::ok});
    EXPECT_EQ(shown().default_buttons, default_of_ok_alone);
}

TEST_F(Message_box_windows, boxes_close_by_keys_and_by_the_window_button)
{
    for (const Reply reply : {Reply::return_key, Reply::escape_key, Reply::close_window}) {
        dialogs.answer_next({reply});
        exporter.show_error(wxT("Closed anyway"));
    }
    EXPECT_EQ(dialogs.shown().size(), 3u);
}

TEST_F(Message_box_windows, text_is_shown_as_it_is)
{
    const std::string text = "100 % of <b>a</b> & _b\n%s \xC3\xA9";
    dialogs.answer_next({Reply::ok});
    exporter.show_error(TOVIRAEXPORT::from_bytes(text.c_str()));
    EXPECT_EQ(shown().text, text);
}

TEST_F(Message_box_windows, nothing_is_asked_about_what_is_not_a_file)
{
    std::filesystem::create_symlink(folder.file("nowhere"), folder.file("dangling"));
    EXPECT_FALSE(exporter.can_export(nullptr));
    EXPECT_TRUE(can_export(folder.file("missing.fx")));
    EXPECT_TRUE(can_export(folder.path())); // a folder
    EXPECT_TRUE(can_export(folder.file("dangling")));
    EXPECT_TRUE(can_export(""));
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(Message_box_windows, overwrite_question_names_the_file_and_proposes_no)
{
    open_panel(exporter, 400);
    const std::string file = folder.write("there.fx", "");
    dialogs.answer_next({Reply::no});
    EXPECT_FALSE(can_export(file));
    EXPECT_EQ(shown().caption, "Export Shader");
    EXPECT_EQ(shown().text, file + " already exists.\nDo you want to replace it?");
    EXPECT_EQ(shown().icon, ICON_WARNING);
    EXPECT_EQ(shown().buttons, (Replies{Reply::yes, Reply::no}));
    EXPECT_EQ(shown().default_buttons, Replies{Reply::no});
    EXPECT_EQ(shown().parent_title, host_title);
}

TEST_F(Message_box_windows, overwrite_question_is_refused_by_no_only)
{
    struct {
        Reply reply;
        bool may_export;
    } const cases[] = {
        {Reply::yes, true},          {Reply::no, false},         {Reply::escape_key, true},
        {Reply::close_window, true}, {Reply::return_key, false}, // the default button
    };
    const std::string file = folder.write("there.fx", "");
    for (const auto& row : cases) {
        SCOPED_TRACE(static_cast<int>(row.reply));
        dialogs.answer_next({row.reply});
        EXPECT_EQ(can_export(file), row.may_export);
    }
}

TEST_F(Message_box_windows, overwrite_question_follows_links)
{
    std::filesystem::create_symlink(folder.write("there.fx", ""), folder.file("link.fx"));
    dialogs.answer_next({Reply::no});
    EXPECT_FALSE(can_export(folder.file("link.fx")));
}

TEST_F(Message_box_windows, overwrite_question_shows_a_relative_name_as_it_stands)
{
    folder.write("there.fx", "");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    dialogs.answer_next({Reply::no});
    EXPECT_FALSE(can_export("there.fx"));
    std::filesystem::current_path(before);
    EXPECT_EQ(shown().text, "there.fx already exists.\nDo you want to replace it?");
}

// ---- on the way of an export

class Export_questions : public Window_test
{
protected:
    Export_questions() : exporter(Exporter_generic::TARGET_CGFX) { exporter.initialize(); }

    bool export_to(const std::string& file)
    {
        choose_export_file(exporter, file);
        open_panel(exporter, 400);
        return exporter.export_shader(host.app(), host.view());
    }

    Recording_host host;
    Exporter_generic exporter;
};

TEST_F(Export_questions, missing_file_name_is_an_error_box)
{
    host.add_selected_node("node");
    dialogs.answer_next({Reply::ok});
    EXPECT_FALSE(export_to(""));
    EXPECT_EQ(shown().caption, "Tovira Error: Custom CgFX");
    EXPECT_EQ(shown().text, "Error! no export file name is specified.");
}

TEST_F(Export_questions, no_leaves_the_old_file_and_yes_replaces_it)
{
    host.add_selected_node("node");
    host.codes = {"new"};
    const std::string file = folder.write("there.cgfx", "old");
    dialogs.answer_next({Reply::no});
    EXPECT_TRUE(export_to(file));
    EXPECT_EQ(folder.read("there.cgfx"), "old");
    exporter.remove_ui(nullptr, false);
    dialogs.answer_next({Reply::yes});
    EXPECT_TRUE(export_to(file));
    EXPECT_EQ(folder.read("there.cgfx"), "new");
}

TEST_F(Export_questions, missing_environment_is_a_question_that_only_no_ends)
{
    struct {
        Reply reply;
        bool goes_on;
    } const cases[] = {
        {Reply::yes, true},        {Reply::no, false},          {Reply::return_key, true},
        {Reply::escape_key, true}, {Reply::close_window, true},
    };
    host.add_selected_node("node").functions = {"trace"};
    for (const auto& row : cases) {
        SCOPED_TRACE(static_cast<int>(row.reply));
        dialogs.answer_next({row.reply});
        EXPECT_TRUE(export_to(folder.file("out.cgfx")));
        EXPECT_EQ(shown().caption, "Tovira - Warning");
        EXPECT_EQ(shown().text, "Exported shader requires an environment shader, but there is\n"
                                "not one assigned in the Render Settings Dialog.\n\n"
                                "Are you sure you want to continue?");
        EXPECT_EQ(shown().buttons, (Replies{Reply::yes, Reply::no}));
        EXPECT_EQ(shown().default_buttons, Replies{Reply::yes});
        EXPECT_EQ(shown().parent_title, host_title);
        EXPECT_EQ(std::filesystem::remove(folder.file("out.cgfx")), row.goes_on);
        exporter.remove_ui(nullptr, false);
    }
}

} // namespace
} // namespace TEST
} // namespace QZ

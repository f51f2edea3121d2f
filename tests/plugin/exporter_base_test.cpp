// What every exporter inherits: messages, the overwrite question, fonts, the panel's life.
#include "exporter_base/exporter_base.h"

#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporter_base/file_chooser.h"
#include "tests/plugin/minimal_exporter.h"
#include "tests/support/exporter_panel.h"
#include "tests/support/message_boxes.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wx_test_main.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <wx/defs.h>
#include <wx/frame.h>
#include <wx/panel.h>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Exporter_base_test : public Wx_test
{
};

TEST_F(Exporter_base_test, null_name_counts_as_none)
{
    EXPECT_STREQ(Minimal_exporter(nullptr).get_name(), "none");
    EXPECT_STREQ(Minimal_exporter("").get_name(), "");
    EXPECT_STREQ(Minimal_exporter("gr\xfc\xdf").get_name(), "gr\xfc\xdf");
}

TEST_F(Exporter_base_test, errors_and_warnings_carry_the_exporters_name)
{
    Minimal_exporter exporter("My \xc3\xa9");
    const Message_boxes boxes;
    exporter.show_error(wxT("100% broken & <b>bold</b>"));
    exporter.show_warning(wxT("careful\n"));
    EXPECT_THAT(boxes.shown(),
                ElementsAre(Message_box{"Tovira Error: My \xc3\xa9", "100% broken & <b>bold</b>",
                                        wxICON_ERROR | wxOK},
                            Message_box{"Tovira warning: My \xc3\xa9", "careful\n",
                                        wxICON_EXCLAMATION | wxOK}));
}

// ---- the overwrite question

TEST_F(Exporter_base_test, missing_file_may_be_written_without_a_question)
{
    const Temporary_folder folder;
    Minimal_exporter exporter;
    const Message_boxes boxes({wxID_NO, wxID_NO, wxID_NO, wxID_NO});
    EXPECT_TRUE(exporter.can_export(folder.file("new.fx").c_str()));
    EXPECT_TRUE(exporter.can_export("/no such folder/a.fx"));
    EXPECT_TRUE(exporter.can_export(folder.path().c_str())); // a folder is not a file
    EXPECT_TRUE(exporter.can_export(""));
    EXPECT_FALSE(exporter.can_export(nullptr));
    EXPECT_THAT(boxes.shown(), IsEmpty());
}

TEST_F(Exporter_base_test, existing_file_is_kept_only_for_no)
{
    const Temporary_folder folder;
    const std::string file = folder.write("a.fx", "kept");
    Minimal_exporter exporter;
    const Message_boxes boxes({wxID_YES, wxID_NO, wxID_CANCEL, wxID_OK});
    EXPECT_TRUE(exporter.can_export(file.c_str()));
    EXPECT_FALSE(exporter.can_export(file.c_str()));
    EXPECT_TRUE(exporter.can_export(file.c_str())); // the question was closed
    EXPECT_TRUE(exporter.can_export(file.c_str()));
    const Message_box question = {"Export Shader",
                                  file + " already exists.\nDo you want to replace it?", 0x18A};
    EXPECT_THAT(boxes.shown(), ElementsAre(question, question, question, question));
    EXPECT_EQ(0x18A, wxYES_NO | wxNO_DEFAULT | wxICON_EXCLAMATION);
    EXPECT_EQ(folder.read("a.fx"), "kept");
}

TEST_F(Exporter_base_test, question_follows_links_and_keeps_names_as_they_stand)
{
    const Temporary_folder folder;
    const std::string name = "gr\xfc\xdf %s.fx";
    folder.write(name, "");
    ASSERT_EQ(::symlink(folder.file(name).c_str(), folder.file("link").c_str()), 0);
    ASSERT_EQ(::symlink("nowhere", folder.file("dangling").c_str()), 0);
    ASSERT_EQ(::chdir(folder.path().c_str()), 0);
    Minimal_exporter exporter;
    const Message_boxes boxes({wxID_YES, wxID_YES});
    EXPECT_TRUE(exporter.can_export(name.c_str()));
    EXPECT_TRUE(exporter.can_export("link"));
    EXPECT_TRUE(exporter.can_export("dangling"));
    ASSERT_EQ(::chdir("/"), 0);
    ASSERT_EQ(boxes.shown().size(), 2u);
    EXPECT_EQ(boxes.shown()[0].text, name + " already exists.\nDo you want to replace it?");
    EXPECT_EQ(boxes.shown()[1].text, "link already exists.\nDo you want to replace it?");
}

// ---- fonts

TEST_F(Exporter_base_test, font_has_the_size_and_weight_asked_for)
{
    struct Case {
        int size;
        int points;
    };
    const Case cases[] = {{1, 9}, {2, 10}, {0, 11}, {3, 11}, {-1, 11}};
    Minimal_exporter exporter;
    for (const Case& c : cases) {
        const wxFont font = exporter.get_os_specific_font(c.size, 92);
        EXPECT_EQ(font.GetPointSize(), c.points);
        EXPECT_EQ(font.GetWeight(), wxFONTWEIGHT_BOLD);
        EXPECT_EQ(font.GetStyle(), wxFONTSTYLE_NORMAL);
        EXPECT_FALSE(font.GetUnderlined());
        EXPECT_EQ(font.GetFaceName(), wxString(wxT("DejaVu LGC Sans")));
        EXPECT_EQ(exporter.get_os_specific_font(c.size, 90).GetWeight(), wxFONTWEIGHT_NORMAL);
    }
}

// ---- the panel

std::string saved_file(Exporter_base& exporter)
{
    return to_bytes(
        exporter.get_own_setting_value(exporter.get_base_setting_key() + wxT("_exportfile_save")));
}

TEST_F(Exporter_base_test, closing_the_panel_remembers_the_file_name_unless_discarded)
{
    Minimal_exporter exporter;
    exporter.initialize();
    choose_export_file(exporter, "/d/gr\xc3\xbc\xc3\x9f");
    EXPECT_EQ(to_bytes(exporter.get_exportfile_name()), "/d/gr\xc3\xbc\xc3\x9f");
    EXPECT_EQ(saved_file(exporter), "/d/gr\xc3\xbc\xc3\x9f");
    {
        Exporter_panel panel(exporter);
        EXPECT_EQ(panel.text(ID_EXPORTFILE_TEXT), "/d/gr\xc3\xbc\xc3\x9f");
        panel.set_text(ID_EXPORTFILE_TEXT, "/discarded");
        panel.cancel();
    }
    EXPECT_EQ(to_bytes(exporter.get_exportfile_name()), "/d/gr\xc3\xbc\xc3\x9f");
    EXPECT_EQ(saved_file(exporter), "/d/gr\xc3\xbc\xc3\x9f");
    choose_export_file(exporter, "");
    EXPECT_EQ(saved_file(exporter), "");
}

TEST_F(Exporter_base_test, panel_is_there_between_create_and_remove_only)
{
    Minimal_exporter exporter;
    exporter.initialize();
    EXPECT_EQ(exporter.get_top_panel(), nullptr);
    EXPECT_EQ(exporter.get_window(), nullptr);
    exporter.set_ui_size(100, 100);
    wxFrame window(nullptr, wxID_ANY, wxT("host"));
    const auto handle = reinterpret_cast<unsigned long long>(static_cast<wxWindow*>(&window));
    EXPECT_GT(exporter.create_ui(handle, 400, nullptr), 0);
    EXPECT_EQ(exporter.get_window(), &window);
    ASSERT_NE(exporter.get_top_panel(), nullptr);
    EXPECT_EQ(exporter.get_top_panel()->GetParent(), &window);
    EXPECT_EQ(exporter.get_top_panel()->GetWindowStyleFlag() & 0x280000, 0x280000);
    EXPECT_TRUE(exporter.remove_ui(nullptr, false));
    EXPECT_EQ(exporter.get_top_panel(), nullptr);
    EXPECT_EQ(exporter.get_window(), nullptr);
    exporter.set_ui_size(100, 100);
}

TEST_F(Exporter_base_test, settings_outlive_the_panels)
{
    Minimal_exporter exporter;
    exporter.initialize();
    for (int round = 0; round < 3; ++round)
        choose_export_file(exporter, "/d/" + std::to_string(round));
    EXPECT_EQ(exporter.get_num_settings(), 3u);
    EXPECT_EQ(saved_file(exporter), "/d/2");
}

TEST_F(Exporter_base_test, without_a_container_there_is_no_panel)
{
    Minimal_exporter exporter;
    exporter.initialize();
    EXPECT_EQ(exporter.create_ui(0, 400, nullptr), 0);
    EXPECT_FALSE(exporter.remove_ui(nullptr, false));
}

// ---- the file chooser's memory

TEST_F(Exporter_base_test, file_chooser_remembers_path_and_filter_but_no_empty_path)
{
    Minimal_exporter exporter;
    File_chooser chooser(nullptr, &exporter, wxT("exportfile"));
    EXPECT_EQ(chooser.get_filename(), wxString());
    chooser.store_path_if_not_empty(wxT("save"), wxEmptyString, 3);
    EXPECT_EQ(exporter.get_num_settings(), 0u);
    chooser.store_path_if_not_empty(wxT("save"), from_bytes("/d/\xff.fx"), 1);
    chooser.store_path_if_not_empty(wxT("open"), wxT("/o/b.fx"), -2);
    ASSERT_EQ(exporter.get_num_settings(), 3u);
    const char* const expected[][2] = {
        {"tovira_exporter_minimal_Cg_exportfile_filter_index", "-2"},
        {"tovira_exporter_minimal_Cg_exportfile_open", "/o/b.fx"},
        {"tovira_exporter_minimal_Cg_exportfile_save", "/d/\xff.fx"}};
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_STREQ(exporter.get_setting_name(i), expected[i][0]);
        EXPECT_STREQ(exporter.get_setting_value(i), expected[i][1]);
    }
}

} // namespace TEST
} // namespace QZ

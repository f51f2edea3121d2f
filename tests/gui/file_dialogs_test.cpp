// The save, open and multiple-open dialogs, opened and answered.
#include "exporter_base/bytes.h"
#include "exporter_base/file_chooser.h"
#include "tests/gui/chooser_exporter.h"
#include "tests/gui/window_test.h"

#include <algorithm>
#include <filesystem>

#include <wx/filedlg.h>
#if wxCHECK_VERSION(3, 0, 0)
#include <wx/modalhook.h>
#endif

namespace QZ
{
namespace TEST
{
namespace
{

using TOVIRAEXPORT::Chooser_properties;
using TOVIRAEXPORT::File_chooser;
using TOVIRAEXPORT::from_bytes;
using TOVIRAEXPORT::to_bytes;

const Chooser_properties two_filters = {
    wxT("Effect (*.fx)|*.fx|All files (*)|*"),
    {wxT("fx"), wxT("*")},
    wxT("Choose it"),
    wxT("Save it"),
    true,
};

class File_dialogs : public Window_test
{
protected:
    // Each asks once; the answers are given before.
    bool save(Chooser_exporter& exporter)
    {
        File_chooser chooser(container(), &exporter, wxT("exportfile"));
        const bool confirmed = chooser.get_save_file(m_path);
        m_filename = to_bytes(chooser.get_filename());
        return confirmed;
    }

    bool open(Chooser_exporter& exporter)
    {
        File_chooser chooser(container(), &exporter, wxT("exportfile"));
        const bool confirmed = chooser.get_open_file(m_path);
        m_filename = to_bytes(chooser.get_filename());
        return confirmed;
    }

    bool open_many(Chooser_exporter& exporter)
    {
        File_chooser chooser(container(), &exporter, wxT("exportfile"));
        const bool confirmed = chooser.get_open_files(m_paths);
        m_filename = to_bytes(chooser.get_filename());
        return confirmed;
    }

    std::string chosen() const { return to_bytes(m_path); }
    const std::string& filename() const { return m_filename; }
    std::vector<std::string> all_chosen() const
    {
        std::vector<std::string> paths;
        for (const wxString& path : m_paths)
            paths.push_back(to_bytes(path));
        return paths;
    }

    wxString m_path = wxT("before");
    std::vector<wxString> m_paths;

private:
    std::string m_filename;
};

TEST_F(File_dialogs, save_dialog_shows_what_the_settings_say)
{
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file("scene"));
    exporter.remember("filter_index", "1");
    dialogs.answer_next({Reply::accept});
    EXPECT_TRUE(save(exporter));
    EXPECT_TRUE(shown().is_file_dialog);
    EXPECT_TRUE(shown().saves);
    EXPECT_FALSE(shown().asks_before_overwriting);
    EXPECT_EQ(shown().caption, "Save it");
    EXPECT_EQ(shown().parent_title, host_title);
    EXPECT_EQ(shown().folder, folder.path());
    EXPECT_EQ(shown().path, folder.file("scene")); // without the first filter's extension
    EXPECT_EQ(shown().filters, (std::vector<std::string>{"Effect (*.fx)", "All files (*)"}));
    EXPECT_EQ(shown().filter, 1);
    const std::string wildcard = "Effect (*.fx)|*.fx|All files (*)|*";
    EXPECT_EQ(shown().wildcard.value_or(wildcard), wildcard);
}

struct Extension_case {
    const wxChar* extension; // of the first filter
    bool autoadd;
    int filter;
    const char* typed;
    const char* saved;
};

TEST_F(File_dialogs, save_adds_the_extension_of_the_filter_to_a_name_without_one)
{
    const Extension_case cases[] = {
        {wxT("fx"), true, 0, "scene", "scene.fx"}, {wxT("fx"), true, 0, "scene.txt", "scene.txt"},
        {wxT("fx"), true, 0, "scene.", "scene."},  {wxT("fx"), true, 0, ".hidden", ".hidden.fx"},
        {wxT("fx"), true, 1, "scene", "scene"}, // the second filter's is "*"
        {wxT("fx"), false, 0, "scene", "scene"},   {wxT("*"), true, 0, "scene", "scene"},
    };
    for (const Extension_case& row : cases) {
        SCOPED_TRACE(std::string(row.typed) + " -> " + row.saved);
        Chooser_properties properties = two_filters;
        properties.extensions[0] = row.extension;
        properties.extension_autoadd = row.autoadd;
        Chooser_exporter exporter(properties);
        exporter.remember("save", folder.file("start"));
        dialogs.answer_next({Reply::accept, row.filter, row.typed});
        ASSERT_TRUE(save(exporter));
        EXPECT_EQ(chosen(), folder.file(row.saved));
        EXPECT_EQ(filename(), row.saved);
        EXPECT_EQ(exporter.remembered("save"), folder.file(row.saved));
        EXPECT_EQ(exporter.remembered("filter_index"), std::to_string(row.filter));
    }
}

// An exporter with another text for the property that says whether extensions are added.
class Autoadd_exporter : public Chooser_exporter
{
public:
    explicit Autoadd_exporter(const char* autoadd)
        : Chooser_exporter(two_filters), m_autoadd(from_bytes(autoadd))
    {
    }
    wxString get_exporter_setting(const wxString& key) override
    {
        return key.EndsWith(wxT("::extension_autoadd"))
                   ? m_autoadd
                   : Chooser_exporter::get_exporter_setting(key);
    }

private:
    wxString m_autoadd;
};

TEST_F(File_dialogs, extension_is_added_for_the_text_true_only)
{
    for (const std::string autoadd : {"true", "false", "True", "TRUE", "true ", " true", "truely",
                                      "1", "yes", "<undefined>", ""}) {
        SCOPED_TRACE(autoadd);
        Autoadd_exporter exporter(autoadd.c_str());
        exporter.remember("save", folder.file("start"));
        dialogs.answer_next({Reply::accept, -1, "scene"});
        ASSERT_TRUE(save(exporter));
        EXPECT_EQ(chosen(), folder.file(autoadd == "true" ? "scene.fx" : "scene"));
    }
}

TEST_F(File_dialogs, save_without_extension_properties_adds_none)
{
    Chooser_properties properties = two_filters;
    properties.extensions.clear();
    Chooser_exporter exporter(properties);
    exporter.remember("save", folder.file("start"));
    dialogs.answer_next({Reply::accept, -1, "scene"});
    ASSERT_TRUE(save(exporter));
    EXPECT_EQ(chosen(), folder.file("scene"));
}

TEST_F(File_dialogs, next_dialog_starts_where_the_last_one_was_confirmed)
{
    std::filesystem::create_directory(folder.file("other"));
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file("other/first.fx"));
    dialogs.answer_next({Reply::accept, 1, "second.txt"});
    ASSERT_TRUE(save(exporter));
    dialogs.answer_next({Reply::cancel});
    EXPECT_FALSE(save(exporter));
    EXPECT_EQ(shown().folder, folder.file("other"));
    EXPECT_EQ(shown().path, folder.file("other/second.txt"));
    EXPECT_EQ(shown().filter, 1);
}

TEST_F(File_dialogs, open_and_save_remember_paths_apart_and_share_the_filter)
{
    folder.write("in.fx", "");
    Chooser_exporter exporter(two_filters);
    exporter.remember("open", folder.file("in.fx"));
    exporter.remember("save", folder.file("out"));
    dialogs.answer_next({Reply::accept, 1, "result.fx"});
    ASSERT_TRUE(save(exporter));
    Dialog_answer answer{Reply::accept};
    answer.wait_for_path = folder.file("in.fx");
    dialogs.answer_next(answer);
    ASSERT_TRUE(open(exporter));
    EXPECT_EQ(shown().filter, 1);
    EXPECT_EQ(exporter.remembered("open"), folder.file("in.fx"));
    EXPECT_EQ(exporter.remembered("save"), folder.file("result.fx"));
}

TEST_F(File_dialogs, save_into_an_existing_file_is_not_asked_about_here)
{
    folder.write("there.fx", "");
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file("there.fx"));
    dialogs.answer_next({Reply::accept});
    EXPECT_TRUE(save(exporter));
    EXPECT_EQ(chosen(), folder.file("there.fx"));
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(File_dialogs, cancelling_changes_nothing)
{
    folder.write("in.fx", "");
    for (const Reply reply : {Reply::cancel, Reply::close_window, Reply::escape_key}) {
        Chooser_exporter exporter(two_filters);
        exporter.remember("open", folder.file("in.fx"));
        exporter.remember("save", folder.file("out.fx"));
        exporter.remember("filter_index", "1");
        m_paths.assign(1, wxT("kept"));
        for (int dialog = 0; dialog < 3; ++dialog)
            dialogs.answer_next({reply, 0});
        EXPECT_FALSE(save(exporter));
        EXPECT_EQ(filename(), "");
        EXPECT_FALSE(open(exporter));
        EXPECT_EQ(filename(), "");
        EXPECT_FALSE(open_many(exporter));
        EXPECT_EQ(filename(), "");
        EXPECT_EQ(chosen(), "before");
        EXPECT_EQ(all_chosen(), std::vector<std::string>{"kept"});
        EXPECT_EQ(exporter.remembered("open"), folder.file("in.fx"));
        EXPECT_EQ(exporter.remembered("save"), folder.file("out.fx"));
        EXPECT_EQ(exporter.remembered("filter_index"), "1");
    }
}

TEST_F(File_dialogs, open_dialog_takes_one_existing_file)
{
    folder.write("a.fx", "");
    folder.write("b.fx", "");
    Chooser_exporter exporter(two_filters);
    exporter.remember("open", folder.file("a.fx"));
    dialogs.answer_next({Reply::accept, -1, "", {folder.file("b.fx")}, folder.file("a.fx")});
    ASSERT_TRUE(open(exporter));
    EXPECT_FALSE(shown().saves);
    EXPECT_FALSE(shown().selects_many);
    EXPECT_EQ(shown().caption, "Choose it");
    EXPECT_EQ(shown().folder, folder.path());
    const long style = wxFD_OPEN | wxFD_FILE_MUST_EXIST;
    EXPECT_EQ(shown().style.value_or(style) & (style | wxFD_SAVE | wxFD_MULTIPLE), style);
    EXPECT_EQ(chosen(), folder.file("b.fx"));
    EXPECT_EQ(filename(), "b.fx");
    EXPECT_EQ(exporter.remembered("open"), folder.file("b.fx"));
    EXPECT_EQ(exporter.remembered("filter_index"), "0");
}

TEST_F(File_dialogs, open_dialog_adds_no_extension)
{
    folder.write("plain", "");
    Chooser_exporter exporter(two_filters);
    exporter.remember("open", folder.file("plain"));
    exporter.remember("filter_index", "1");
    dialogs.answer_next({Reply::accept, -1, "", {folder.file("plain")}});
    ASSERT_TRUE(open(exporter));
    EXPECT_EQ(chosen(), folder.file("plain"));
}

TEST_F(File_dialogs, open_dialog_proposes_a_file_that_its_filter_hides)
{
    folder.write("a.txt", "");
    Chooser_exporter exporter(two_filters);
    exporter.remember("open", folder.file("a.txt"));
    dialogs.answer_next({Reply::accept, -1, "", {folder.file("a.txt")}});
    ASSERT_TRUE(open(exporter));
    EXPECT_EQ(chosen(), folder.file("a.txt"));
    EXPECT_EQ(exporter.remembered("filter_index"), "0");
}

TEST_F(File_dialogs, multiple_open_dialog_appends_every_chosen_file)
{
    folder.write("a.fx", "");
    folder.write("b.fx", "");
    folder.write("c.fx", "");
    Chooser_exporter exporter(two_filters);
    exporter.remember("open", folder.file("a.fx"));
    m_paths.assign(1, wxT("first"));
    dialogs.answer_next(
        {Reply::accept, 1, "", {folder.file("b.fx"), folder.file("c.fx")}, folder.file("a.fx")});
    ASSERT_TRUE(open_many(exporter));
    EXPECT_TRUE(shown().selects_many);
    EXPECT_EQ(shown().caption, "Choose it");
    const long style = wxFD_OPEN | wxFD_FILE_MUST_EXIST | wxFD_MULTIPLE;
    EXPECT_EQ(shown().style.value_or(style) & (style | wxFD_SAVE), style);
    std::vector<std::string> expected = {"first", folder.file("b.fx"), folder.file("c.fx")};
    std::vector<std::string> paths = all_chosen();
    std::sort(paths.begin() + 1, paths.end()); // the order is the dialog's
    EXPECT_EQ(paths, expected);
    EXPECT_EQ(filename(), "");
    EXPECT_EQ(exporter.remembered("open"), all_chosen()[1]);
    EXPECT_EQ(exporter.remembered("filter_index"), "1");
}

TEST_F(File_dialogs, start_folder_that_is_missing_becomes_its_nearest_parent)
{
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file("gone/further/scene.fx"));
    dialogs.answer_next({Reply::cancel});
    EXPECT_FALSE(save(exporter));
    EXPECT_EQ(shown().folder, folder.path());
}

TEST_F(File_dialogs, stored_filter_that_does_not_exist_counts_as_the_first)
{
    for (const char* index : {"7", "-1", "2", "", "x", "99999999999999999999"}) {
        SCOPED_TRACE(index);
        Chooser_exporter exporter(two_filters);
        exporter.remember("save", folder.file("scene.fx"));
        exporter.remember("filter_index", index);
        dialogs.answer_next({Reply::accept});
        EXPECT_TRUE(save(exporter));
        EXPECT_EQ(shown().filter, 0);
        EXPECT_EQ(exporter.remembered("filter_index"), "0");
    }
}

TEST_F(File_dialogs, stored_filter_that_is_not_a_number_is_noted_in_the_log)
{
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file("scene.fx"));
    exporter.remember("filter_index", "");
    dialogs.answer_next({Reply::cancel});
    testing::internal::CaptureStderr();
    EXPECT_FALSE(save(exporter));
    const std::string log = testing::internal::GetCapturedStderr();
    const std::string line = "Toviraexport_log: to_int: fail to convert to int from \n";
    const size_t found = log.find(line);
    ASSERT_NE(found, std::string::npos) << log;
    EXPECT_EQ(found, log.rfind(line));
    // It ends there: only another line of the log or a warning of the toolkit may follow.
    const std::string rest = log.substr(found + line.size());
    EXPECT_TRUE(rest.empty() || rest[0] == '\n' || rest.compare(0, 16, line, 0, 16) == 0) << rest;
}

TEST_F(File_dialogs, setting_without_properties_is_shown_as_undefined)
{
    folder.write("a.fx", "");
    Chooser_exporter exporter(two_filters);
    exporter.set_own_setting_value(exporter.get_base_setting_key() + wxT("_other_open"),
                                   from_bytes(folder.file("a.fx").c_str()));
    dialogs.answer_next({Reply::accept, -1, "", {folder.file("a.fx")}});
    File_chooser chooser(container(), &exporter, wxT("other"));
    EXPECT_TRUE(chooser.get_open_file(m_path));
    EXPECT_EQ(shown().caption, "<undefined>");
    EXPECT_EQ(shown().wildcard.value_or("<undefined>"), "<undefined>");
    EXPECT_EQ(shown().filters, std::vector<std::string>{"Files (<undefined>)"});
    EXPECT_EQ(chosen(), folder.file("a.fx"));
}

TEST_F(File_dialogs, names_beyond_ascii_come_back_byte_for_byte)
{
    const std::string name = "sz\xC3\xA9ne \xE2\x82\xAC.fx";
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file(name));
    dialogs.answer_next({Reply::accept});
    ASSERT_TRUE(save(exporter));
    EXPECT_EQ(shown().path, folder.file(name));
    EXPECT_EQ(chosen(), folder.file(name));
    EXPECT_EQ(filename(), name);
}

#if wxCHECK_VERSION(3, 0, 0)

// Under 2.8 such a dialog is confirmed without a path, which counts as cancelled.
TEST_F(File_dialogs, save_stays_in_a_folder_whose_name_is_not_utf8)
{
    const std::string odd = folder.file("d\xFF \xC3\xA9");
    std::filesystem::create_directory(odd);
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", odd + "/n\x80.fx");
    dialogs.answer_next({Reply::accept});
    ASSERT_TRUE(save(exporter));
    EXPECT_EQ(shown().folder, odd);
    EXPECT_EQ(chosen(), odd + "/n\x80.fx");
    EXPECT_EQ(exporter.remembered("save"), odd + "/n\x80.fx");
    EXPECT_EQ(filename(), "n\x80.fx");
}

TEST_F(File_dialogs, open_starts_in_a_folder_whose_name_is_not_utf8)
{
    const std::string odd = folder.file("d\xFF");
    std::filesystem::create_directory(odd);
    Chooser_exporter exporter(two_filters);
    exporter.remember("open", odd + "/none.fx");
    dialogs.answer_next({Reply::cancel});
    EXPECT_FALSE(open(exporter));
    EXPECT_EQ(shown().folder, odd);
}

// The toolkit confirms a dialog without a path when it cannot express it. A dialog that was never
// on the screen is such a one; 2.8 has no hook to confirm it.
class Unseen_confirmation : public wxModalDialogHook
{
public:
    Unseen_confirmation() { Register(); }
    ~Unseen_confirmation() override { Unregister(); }
    int Enter(wxDialog*) override { return wxID_OK; }
};

TEST_F(File_dialogs, confirmation_without_a_path_counts_as_cancelled)
{
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file("scene.fx"));
    exporter.remember("open", folder.file("scene.fx"));
    const Unseen_confirmation confirmation;
    EXPECT_FALSE(save(exporter));
    EXPECT_EQ(filename(), "");
    EXPECT_FALSE(open(exporter));
    EXPECT_EQ(chosen(), "before");
    EXPECT_EQ(exporter.remembered("save"), folder.file("scene.fx"));
}

#endif

TEST_F(File_dialogs, dialog_without_a_parent_works)
{
    Chooser_exporter exporter(two_filters);
    exporter.remember("save", folder.file("scene.fx"));
    dialogs.answer_next({Reply::accept});
    File_chooser chooser(nullptr, &exporter, wxT("exportfile"));
    EXPECT_TRUE(chooser.get_save_file(m_path));
    EXPECT_EQ(chosen(), folder.file("scene.fx"));
}

} // namespace
} // namespace TEST
} // namespace QZ

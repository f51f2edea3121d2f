// Opening documents and finding one's way in them.
#include "tests/window/program_window.h"

#include "reference_host/window/document_tree.h"
#include "reference_host/window/export_bar.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/message_list.h"
#include "reference_host/window/preview_page.h"
#include "reference_host/window/text_view.h"
#include "reference_host/window/welcome_view.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>

#include <malloc.h>

#include <wx/app.h>
#include <wx/dnd.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/simplebook.h>
#include <wx/srchctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using reference_host::to_bytes;
using reference_host::to_text;

struct Rounds {
    size_t count;
    size_t switches; // in each
};

class Documents : public Program_window
{
protected:
    void open_two()
    {
        start();
        open(sample("wood_textured"), "Autodesk Maya (CgFX)");
        open(sample("plastic_two_lights"), "Autodesk Softimage (CgFX)");
    }

    // By how many bytes the memory in use has grown with each switch from one document to the other
    // in the round in which it grew least. Ends when that is less than `enough`.
    size_t least_growth(const Rounds& rounds, size_t enough, const std::function<void()>& look)
    {
        size_t before = switch_documents(rounds.switches, look);
        size_t least = std::numeric_limits<size_t>::max();
        for (size_t round = 0; round < rounds.count && least / rounds.switches >= enough; ++round) {
            const size_t after = switch_documents(rounds.switches, look);
            least = std::min(least, after > before ? after - before : 0);
            before = after;
        }
        return least / rounds.switches;
    }

private:
    size_t switch_documents(size_t count, const std::function<void()>& look)
    {
        for (size_t i = 0; i < count; ++i) {
            const auto& documents = window().workspace().documents();
            window().workspace().select(*documents[i % 2], "");
            window().workspace().run_trial();
            look();
            handle_events();
            wxTheApp->ProcessIdle(); // deletes windows that were closed
        }
        return mallinfo2().uordblks;
    }
};

std::string node_of(const reference_host::Workspace& workspace)
{
    const reference_host::Node* node = workspace.current() ? workspace.current()->node() : nullptr;
    return node ? full_name(*node) : std::string();
}

constexpr const char* broken_document = "<?xml version=\"1.0\"?>\n<materialx version=\"1.38\">\n"
                                        "  <constant name=\"n\" type=float />\n</materialx>\n";

size_t count_windows(const wxWindow& window)
{
    size_t count = 1;
    for (const wxWindow* child : window.GetChildren())
        count += count_windows(*child);
    return count;
}

} // namespace

TEST_F(Documents, a_window_without_a_document_offers_the_samples)
{
    start();
    EXPECT_EQ(window().book().GetSelection(), 0);
    wxListBox& samples = window().welcome().samples();
    EXPECT_EQ(samples.GetCount(), 9u);
    take_picture("welcome");
    focus(samples);
    press_key("Home");
    ASSERT_TRUE(wait_until([&] { return samples.GetSelection() == 0; }));
    press_key("Return");
    EXPECT_TRUE(wait_until([&] { return window().book().GetSelection() == 1; }));
    EXPECT_TRUE(wait_for_code("Marble"));
}

TEST_F(Documents, a_document_is_opened_with_ctrl_o)
{
    start();
    dialogs.answer_next({Reply::accept, -1, {}, {sample("wood_textured")}});
    press_key("Control_L", "o");
    EXPECT_TRUE(wait_for_code("Wood"));
}

TEST_F(Documents, the_search_leaves_the_nodes_that_fit)
{
    start();
    open(sample("marble_procedural"), "Custom GLSL");
    const unsigned all = window().documents().tree().GetCount();
    focus(window().documents().search());
    type_text("mask");
    EXPECT_TRUE(wait_until([&] { return window().documents().tree().GetCount() < all; }));
    EXPECT_EQ(window().documents().tree().GetCount(), 3u); // document, group, node
}

TEST_F(Documents, escape_ends_the_search)
{
    start();
    open(sample("marble_procedural"), "Custom GLSL");
    const unsigned all = window().documents().tree().GetCount();
    focus(window().documents().search());
    type_text("mask");
    ASSERT_TRUE(wait_until([&] { return window().documents().tree().GetCount() < all; }));
    press_key("Escape");
    EXPECT_TRUE(wait_until([&] { return window().documents().tree().GetCount() == all; }));
    EXPECT_TRUE(window().documents().tree().HasFocus());
}

TEST_F(Documents, files_that_are_dropped_on_the_window_are_opened)
{
    start();
    auto* target = dynamic_cast<wxFileDropTarget*>(window().GetDropTarget());
    ASSERT_TRUE(target);
    wxArrayString files;
    files.Add(to_text(sample("wood_textured")));
    files.Add(to_text(sample("marble_procedural")));
    EXPECT_TRUE(target->OnDropFiles(10, 10, files));
    EXPECT_EQ(window().workspace().documents().size(), 2u);
    EXPECT_TRUE(wait_for_code("Marble")) << "the last one is shown";
}

// Names of files come in any language and length; names of nodes are identifiers.
TEST_F(Documents, names_of_every_language_and_length_are_shown)
{
    start(wxSize(1024, 700));
    const std::string folders = folder.path() + "/材質とテクスチャ/Материалы/" +
                                std::string(120, 'x') + "/αβγδ/" + std::string(100, 'y');
    std::filesystem::create_directories(folders);
    const std::string file = folders + "/Дерево_лакированное_木材_خشب.mtlx";
    std::filesystem::copy_file(sample("wood_textured"), file);
    open(file, "Custom CgFX");
    EXPECT_NE(to_bytes(window().GetTitle()).find("木材"), std::string::npos);
    EXPECT_NE(window().workspace().command_line().find("Дерево"), std::string::npos);
    EXPECT_LE(window().export_bar().GetScreenRect().GetRight(),
              window().GetScreenRect().GetRight());
    take_picture("long_names");
    window().export_bar().export_current();
    EXPECT_TRUE(std::filesystem::exists(folders + "/Wood.cgfx"));
}

TEST_F(Documents, the_node_chosen_in_the_tree_is_the_one_exported)
{
    start();
    open(sample("marble_procedural"), "Custom GLSL");
    EXPECT_EQ(node_of(window().workspace()), "Marble");
    focus(window().documents().tree());
    press_key("Down");
    press_key("Down");
    EXPECT_TRUE(wait_until([&] { return node_of(window().workspace()) == "Polished_marble"; }))
        << node_of(window().workspace());
    EXPECT_TRUE(wait_for_code("Shader: Polished_marble"));
}

TEST_F(Documents, the_error_of_an_unreadable_document_leads_to_its_line)
{
    start();
    window().open_files({folder.write("broken.mtlx", broken_document)});
    EXPECT_TRUE(wait_until([&] { return window().messages().GetItemCount() == 1; }));
    focus(window().messages());
    press_key("Home");
    press_key("Return");
    EXPECT_TRUE(wait_until([&] { return window().source().line() == 3; }));
    EXPECT_NE(window().source().selection().find("type=float"), std::string::npos);
    take_picture("broken_document");
}

TEST_F(Documents, a_document_that_changes_on_disk_is_read_again)
{
    start();
    const std::string file = folder.write("doc.mtlx", broken_document);
    window().open_files({file});
    EXPECT_TRUE(wait_until([&] { return window().messages().GetItemCount() == 1; }));
    std::ifstream good(sample("wood_textured"));
    folder.write("doc.mtlx", std::string(std::istreambuf_iterator<char>(good), {}));
    EXPECT_TRUE(wait_for_code("Wood"));
}

TEST_F(Documents, what_was_chosen_for_a_document_is_there_the_next_day)
{
    start();
    open(sample("wood_textured"), "Custom GLSL");
    click(check_box("Two sided"));
    const std::string command = window().workspace().command_line();
    ASSERT_TRUE(wait_until([&] { return window().workspace().command_line() != command; }));
    const std::string chosen = window().workspace().command_line();
    close();
    start();
    EXPECT_EQ(window().welcome().recent().GetCount(), 1u);
    window().open_files({sample("wood_textured")});
    EXPECT_TRUE(wait_until([&] { return window().workspace().command_line() == chosen; }))
        << window().workspace().command_line();
}

// What a document leaves behind, such as a list of texts to undo, grows with every look at it. The
// toolkit's caches grow, too, until they are full: the round in which they grew least counts.
TEST_F(Documents, switching_documents_leaves_no_memory_behind)
{
    // The toolkit fills its caches of fonts and styles in the first rounds.
    const Rounds rounds = {20, 30};
    constexpr size_t of_a_switch = 6u << 10u; // what three exporters would leave takes 8 KiB
    open_two();
    EXPECT_LT(least_growth(rounds, of_a_switch, [] {}), of_a_switch);
}

TEST_F(Documents, switching_documents_leaves_nothing_of_their_pictures_behind)
{
    const Rounds rounds = {6, 6};
    constexpr size_t of_a_switch = 64u << 10u; // a picture alone takes nine times as much
    open_two();
    press_key("Control_L", "2");
    const auto wait_for_picture = [this] {
        EXPECT_TRUE(wait_until([this] { return window().preview().is_fine(); }));
    };
    wait_for_picture();
    EXPECT_LT(least_growth(rounds, of_a_switch, wait_for_picture), of_a_switch);
}

TEST_F(Documents, switching_documents_leaves_no_window_behind)
{
    start();
    open(sample("wood_textured"), "Autodesk Maya (CgFX)");
    open(sample("plastic_two_lights"), "Autodesk Softimage (CgFX)");
    const auto switch_documents = [this](int count) {
        for (int i = 0; i < count; ++i) {
            const auto& documents = window().workspace().documents();
            window().workspace().select(*documents[static_cast<size_t>(i % 2)], "");
            if (i % 10 == 0)
                handle_events();
        }
        handle_events();
    };
    switch_documents(2);
    const size_t windows = count_windows(window());
    switch_documents(20);
    EXPECT_EQ(count_windows(window()), windows);
}

} // namespace TEST
} // namespace QZ

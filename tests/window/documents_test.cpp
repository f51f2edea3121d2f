// Opening documents and finding one's way in them.
#include "tests/window/program_window.h"

#include "reference_host/window/document_tree.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/message_list.h"
#include "reference_host/window/text_view.h"
#include "reference_host/window/welcome_view.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>
#include <fstream>
#include <limits>

#include <malloc.h>

#include <wx/app.h>
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

using Documents = Program_window;

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
    constexpr size_t switches = 30;
    constexpr size_t rounds =
        20; // the toolkit fills its caches of fonts and styles in the first ten
    constexpr size_t of_a_switch = 16u
                                   << 10u; // the settings that two exporters leave take half of it
    start();
    open(sample("wood_textured"), "Autodesk Maya (CgFX)");
    open(sample("plastic_two_lights"), "Autodesk Softimage (CgFX)");
    const auto switch_documents = [this] {
        for (size_t i = 0; i < switches; ++i) {
            const auto& documents = window().workspace().documents();
            window().workspace().select(*documents[i % 2], "");
            window().workspace().run_trial();
            handle_events();
            wxTheApp->ProcessIdle(); // deletes windows that were closed
        }
        return mallinfo2().uordblks;
    };
    size_t before = switch_documents();
    size_t least = std::numeric_limits<size_t>::max();
    for (size_t round = 0; round < rounds && least / switches >= of_a_switch; ++round) {
        const size_t after = switch_documents();
        least = std::min(least, after > before ? after - before : 0);
        before = after;
    }
    EXPECT_LT(least / switches, of_a_switch);
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

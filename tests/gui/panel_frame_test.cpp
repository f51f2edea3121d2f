// What every panel gets from Exporter_base: the calls of the extension points, in their order, and
// the closing steps of the layout.
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/gui/window_test.h"

#include <algorithm>
#include <memory>

#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;

using Areas = std::vector<wxRect>;

// Notes where it is laid out: each time it is measured. It may outlive its exporter.
class Watched_sizer : public wxBoxSizer
{
public:
    explicit Watched_sizer(std::shared_ptr<Areas> areas)
        : wxBoxSizer(wxVERTICAL), m_areas(std::move(areas))
    {
    }
    wxSize CalcMin() override
    {
        m_areas->emplace_back(GetPosition(), GetSize());
        return wxBoxSizer::CalcMin();
    }

private:
    std::shared_ptr<Areas> m_areas;
};

// Notes how its extension points are called.
class Probe_exporter : public Exporter_base
{
public:
    static constexpr int own_height = 4711;

    Probe_exporter() : Exporter_base("Probe") { register_exportfile_setting(); }

    bool export_shader(TSDK::ITovira*, TSDK::IGraph_view*) override { return true; }
    void initialize() override {}
    const char* get_language() const override { return "Test"; }

    int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) override
    {
        EXPECT_EQ(parent, get_top_panel());
        widths.push_back(width);
        views.push_back(view);
        Watched_sizer* sizer = new Watched_sizer(areas);
        create_common_ui(sizer);
        sizer_before = parent->GetSizer();
        fitting_height = lay_out_panel(parent, sizer, width);
        EXPECT_EQ(parent->GetSizer(), sizer);
        return own_height;
    }

    void window_closing(wxWindow* parent, bool discard) override
    {
        EXPECT_EQ(parent, get_top_panel());
        EXPECT_TRUE(get_window()->GetChildren().Find(parent));
        EXPECT_FALSE(parent->IsBeingDeleted());
        EXPECT_NE(parent->GetEventHandler(), parent); // its handler is still there
        discards.push_back(discard);
        stored_names.push_back(stored_name());
        exportfile_names.push_back(to_bytes(get_exportfile_name()));
    }

    std::string stored_name() const
    {
        return to_bytes(get_own_setting_value(get_base_setting_key() + wxT("_exportfile_save")));
    }

    std::vector<int> widths;
    std::vector<TSDK::IGraph_view*> views;
    std::shared_ptr<Areas> areas = std::make_shared<Areas>();
    wxSizer* sizer_before = nullptr;
    int fitting_height = 0;
    std::vector<bool> discards;
    std::vector<std::string> stored_names;
    std::vector<std::string> exportfile_names;
};

class Panel_frame : public Window_test
{
protected:
    Probe_exporter exporter;
    Recording_host host;
};

TEST_F(Panel_frame, create_window_gets_panel_width_and_view_and_its_height_is_the_result)
{
    EXPECT_EQ(exporter.create_ui(handle(), 333, host.view()), Probe_exporter::own_height);
    EXPECT_EQ(exporter.widths, std::vector<int>{333});
    EXPECT_EQ(exporter.views, std::vector<TSDK::IGraph_view*>{host.view()});
    EXPECT_EQ(exporter.sizer_before, nullptr);
    EXPECT_EQ(host.log(), std::vector<std::string>());
}

// The text is stored before the exporter's own options are taken, and the panel is still whole.
TEST_F(Panel_frame, window_closing_comes_after_the_text_is_stored_and_before_the_end)
{
    for (const bool discard : {false, true}) {
        const std::string name = discard ? "/discarded" : "/stored";
        exporter.create_ui(handle(), 400, nullptr);
        control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->SetValue(from_bytes(name.c_str()));
        EXPECT_TRUE(exporter.remove_ui(nullptr, discard));
    }
    EXPECT_EQ(exporter.discards, (std::vector<bool>{false, true}));
    EXPECT_EQ(exporter.stored_names, (std::vector<std::string>{"/stored", "/stored"}));
    EXPECT_EQ(exporter.exportfile_names, (std::vector<std::string>{"/stored", "/stored"}));
}

// First to the host's width and the fitting height, then to what the panel has.
TEST_F(Panel_frame, layout_is_made_for_the_width_given_and_then_for_the_panel)
{
    exporter.create_ui(handle(), 333, nullptr);
    EXPECT_GT(exporter.fitting_height, 40);
    const wxRect given(0, 0, 333, exporter.fitting_height);
    const auto first = std::find(exporter.areas->begin(), exporter.areas->end(), given);
    ASSERT_TRUE(first != exporter.areas->end());
    const wxSize panel = exporter.get_top_panel()->GetClientSize();
    EXPECT_NE(panel, given.GetSize());
    EXPECT_TRUE(std::find(first, exporter.areas->end(), wxRect(wxPoint(0, 0), panel)) !=
                exporter.areas->end());
}

TEST_F(Panel_frame, panel_is_named_and_styled_as_all_of_them)
{
    exporter.create_ui(handle(), 400, nullptr);
    const wxPanel* panel = exporter.get_top_panel();
    EXPECT_EQ(panel->GetWindowStyleFlag(), 0x280000); // tab traversal, no border
    EXPECT_EQ(to_bytes(panel->GetName()), "panel");
    EXPECT_EQ(panel->GetParent(), container());
}

} // namespace
} // namespace TEST
} // namespace QZ

// The save dialog of every exporter: opened by its browse button, with the texts it registered.
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "tests/gui/every_exporter.h"
#include "tests/gui/window_test.h"

#include <wx/event.h>
#include <wx/filedlg.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;
using Texts = std::vector<std::string>;

struct Dialog_row {
    const char* exporter;
    const char* caption;
    const char* wildcard; // also when it ends in a bar
    Texts filters;
    Texts fits;        // of the names x.cgfx, x.fx, x.gl, x.glsl, x.axml, x.txt, x
    const char* saved; // the name "scene", saved with the first filter
};

constexpr const char* everything = "x.cgfx x.fx x.gl x.glsl x.axml x.txt x";

const Dialog_row dialog_rows[] = {
    {"Autodesk 3ds Max legacy (HLSL)",
     "Save a 3ds Max HLSL file",
     "3ds Max HLSL (*.fx)|*.fx|",
     {"3ds Max HLSL (*.fx)"},
     {"x.fx"},
     "scene.fx"},
    {"CATIA (CgFX)",
     "Save a Catia CgFX file",
     "Catia CgFX (*.fx)|*.fx|",
     {"Catia CgFX (*.fx)"},
     {"x.fx"},
     "scene.fx"},
    {"FX Composer (HLSL/CgFX)",
     "Save a FX Composer file",
     "FX Composer files (*.fx;*.cgfx)|*.fx;*.cgfx|",
     {"FX Composer files (*.fx;*.cgfx)"},
     {"x.cgfx x.fx"},
     "scene"},
    {"Autodesk Maya (CgFX)",
     "Save a Maya CgFX file",
     "Maya CgFX (*.cgfx)|*.cgfx|",
     {"Maya CgFX (*.cgfx)"},
     {"x.cgfx"},
     "scene.cgfx"},
    {"Autodesk Softimage (CgFX)",
     "Save a XSI CgFX file",
     "XSI CgFX (*.cgfx)|*.cgfx|",
     {"XSI CgFX (*.cgfx)"},
     {"x.cgfx"},
     "scene.cgfx"},
    {"Custom CgFX",
     "Save a CgFX file",
     "Custom CgFX (*.cgfx)|*.cgfx|All files (*)|*",
     {"Custom CgFX (*.cgfx)", "All files (*)"},
     {"x.cgfx", everything},
     "scene.cgfx"},
    {"Custom HLSL FX",
     "Save a HLSL file",
     "Custom HLSL FX (*.fx)|*.fx|All files (*)|*",
     {"Custom HLSL FX (*.fx)", "All files (*)"},
     {"x.fx", everything},
     "scene.fx"},
    {"Custom GLSL",
     "Save a GLSL file",
     "Custom GLSL (*.gl;*.glsl)|*.gl;*.glsl|All files (*)|*",
     {"Custom GLSL (*.gl;*.glsl)", "All files (*)"},
     {"x.gl x.glsl", everything},
     "scene"},
    {"Corvane",
     "Save a Corvane export file",
     "All files (*)|*",
     {"All files (*)"},
     {everything},
     "scene"},
};

class Exporter_dialogs : public Window_test
{
protected:
    Exporter_dialogs() : exporters(make_every_exporter()) {}

    Exporter_base* find(const std::string& name) const
    {
        for (const auto& exporter : exporters)
            if (exporter->get_name() == name)
                return exporter.get();
        return nullptr;
    }

    void browse()
    {
        wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, ID_EXPORTFILE_BROWSE);
        control(ID_EXPORTFILE_BROWSE)->GetEventHandler()->ProcessEvent(event);
    }

    std::vector<std::unique_ptr<Exporter_base>> exporters;
};

TEST_F(Exporter_dialogs, texts_reach_the_dialog_exactly_as_registered)
{
    for (const Dialog_row& row : dialog_rows) {
        SCOPED_TRACE(row.exporter);
        Exporter_base* exporter = find(row.exporter);
        ASSERT_NE(exporter, nullptr);
        open_panel(*exporter, 400);
        dialogs.answer_next({Reply::accept, -1, "scene"});
        browse();
        EXPECT_EQ(shown().caption, row.caption);
        EXPECT_EQ(shown().filters, row.filters);
        EXPECT_EQ(shown().filter_fits, row.fits);
        EXPECT_EQ(shown().filter, 0);
        EXPECT_EQ(shown().path, folder.file("untitled"));
        EXPECT_TRUE(shown().saves);
        EXPECT_FALSE(shown().asks_before_overwriting);
        EXPECT_EQ(shown().wildcard.value_or(row.wildcard), row.wildcard);
        EXPECT_EQ(shown().style.value_or(wxFD_SAVE) &
                      (wxFD_SAVE | wxFD_OPEN | wxFD_OVERWRITE_PROMPT),
                  wxFD_SAVE);
        EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()),
                  folder.file(row.saved));
        exporter->remove_ui(nullptr, true);
    }
}

// The event goes to the panel itself: its button dies with it, and nothing of wx may outlive that.
TEST_F(Exporter_dialogs, survive_the_panel_that_is_closed_below_them)
{
    for (const int button : {ID_EXPORTFILE_BROWSE, ID_ANNOTATION_MAP_BROWSE}) {
        Exporter_base* exporter = find("Custom CgFX");
        open_panel(*exporter, 400);
        Dialog_answer answer{Reply::accept, -1, "scene"};
        if (button == ID_ANNOTATION_MAP_BROWSE)
            answer = select_from_anywhere(folder.write("map.axml", ""));
        answer.meanwhile = [exporter] { exporter->remove_ui(nullptr, true); };
        dialogs.answer_next(answer);
        wxCommandEvent event(wxEVT_COMMAND_BUTTON_CLICKED, button);
        exporter->get_top_panel()->GetEventHandler()->ProcessEvent(event);
        EXPECT_EQ(exporter->get_top_panel(), nullptr);
    }
}

TEST_F(Exporter_dialogs, cancelling_leaves_every_exporter_as_it_was)
{
    for (const Dialog_row& row : dialog_rows) {
        SCOPED_TRACE(row.exporter);
        Exporter_base* exporter = find(row.exporter);
        ASSERT_NE(exporter, nullptr);
        const auto settings = [exporter] {
            Texts values;
            for (unsigned int i = 0; i < exporter->get_num_settings(); ++i)
                values.push_back(exporter->get_setting_value(i));
            return values;
        };
        const Texts before = settings();
        open_panel(*exporter, 400);
        dialogs.answer_next({Reply::cancel, -1, "scene"});
        browse();
        EXPECT_EQ(to_bytes(control<wxTextCtrl>(ID_EXPORTFILE_TEXT)->GetValue()),
                  folder.file("untitled"));
        EXPECT_EQ(settings(), before);
        exporter->remove_ui(nullptr, true);
    }
}

} // namespace
} // namespace TEST
} // namespace QZ

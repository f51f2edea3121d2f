// The configurable exporter: custom CgFX, custom HLSL FX, custom GLSL.
//
// One class serves the three targets. Its options (generic_controls.h) feed the compiler
// (exporter_generic_export.cpp) and are edited on its panel (exporter_generic_panel.cpp). They
// belong to the object: they are not settings, outlive the panels, and change only when a panel is
// closed normally.
#ifndef EXPORTERS_EXPORTER_GENERIC_H
#define EXPORTERS_EXPORTER_GENERIC_H

#include "exporter_base/exporter_base.h"
#include "exporter_base/text_field.h"
#include "exporters/generic_controls.h"
#include "sdk/itovira_compiler.h"

class wxStaticText;

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_generic : public Exporter_base
{
public:
    // 32 bits wide; a value of none of these makes an exporter without a target.
    enum Target_language : int {
        TARGET_CGFX = 0, // one .cgfx file
        TARGET_HLSL = 1, // one .fx file
        TARGET_GLSL = 2  // a vertex and a fragment file
    };

    // Handles the annotation map's browse button.
    class Event_dispatcher : public wxEvtHandler
    {
    public:
        explicit Event_dispatcher(Exporter_generic* exporter) : m_exporter(exporter) {}
        void on_choose_annotation_map_file(wxCommandEvent& event);

    private:
        Exporter_generic* m_exporter;
    };

    explicit Exporter_generic(Target_language target);

    // False without an export when not exactly one node is selected or no file is named (the user
    // is told the latter); otherwise true, also when the compilation, the generation or a write
    // failed or was refused: none of that is reported.
    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) override;
    void window_closing(wxWindow* parent, bool discard) override;
    void initialize() override;
    const char* get_language() const override; // null for no target of the list

    // slot 23: The wildcard for the target's files and all files.
    virtual wxString get_exportfile_wildcard() const;

    // slot 24: The target's extension with its dot for index 0, "*" for any other.
    virtual wxString get_extension(int index) const;

    // slot 25: The caption of the dialog that opens a file for the mode "open", otherwise of the
    // one that saves.
    virtual wxString get_chooser_caption(const wxString& mode) const;

    // The target paths of export_shader. Each writes what `unit` generates, unless the user refuses
    // to replace a file. export_glsl is false when a file is refused or nothing is generated; the
    // others are always true. A failed write is not reported.
    bool export_cgfx(const wxString& filename, TSDK::ICompilation_unit* unit,
                     TSDK::ITovira_compiler* compiler, TSDK::ITovira* app, TSDK::IGraph_node* node,
                     TSDK::IGraph_view* view);
    bool export_hlsl(const wxString& filename, TSDK::ICompilation_unit* unit,
                     TSDK::ITovira_compiler* compiler, TSDK::ITovira* app);
    bool export_glsl(const wxString& filename, TSDK::ICompilation_unit* unit,
                     TSDK::ITovira_compiler* compiler, TSDK::ITovira* app);

    // The options that CgFX and HLSL FX share.
    void set_common_fx_options(TSDK::ICompiler_options* options);

    // Derives the two GLSL names: "/a/x", "/a/x_f.gl" and "/a/x_v.gl" all give "/a/x_f.gl" and
    // "/a/x_v.gl"; the extension "glsl" is kept, any other stays part of the name.
    static void update_glsl_filename(const wxString& filename, wxString& fragment_file,
                                     wxString& vertex_file);

private:
    // One control of the panel, which owns it; stale after the panel's end.
    struct Shown_control {
        wxWindow* window = nullptr; // null: the panel has none of this row
        Text_field field;           // of a text control
    };

    bool run_export(TSDK::ITovira* app, TSDK::IGraph_view* view);
    void write_fx(const wxString& path, TSDK::ICompilation_unit* unit,
                  TSDK::ICompiler_options* options);

    void create_window_fx(wxWindow* parent, wxBoxSizer* sizer);
    void create_window_glsl(wxWindow* parent, wxBoxSizer* sizer);
    void add_labelled_row(wxWindow* parent, wxBoxSizer* sizer, size_t row);
    wxStaticText* create_label(wxWindow* parent, const wxChar* text);
    wxWindow* create_control(wxWindow* parent, size_t row);
    void fill_controls();
    void choose_annotation_map_file();

    Target_language m_target;
    Shown_control m_controls[generic_control_count]; // by row of generic_controls
    Generic_options m_options;

    // Never deleted, on purpose: whatever still points to it stays valid until the process ends.
    Event_dispatcher* m_event_dispatcher;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

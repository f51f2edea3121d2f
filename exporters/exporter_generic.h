// The configurable exporter: custom CgFX, custom HLSL FX, custom GLSL.
//
// One class serves the three targets. Its option fields feed the compiler
// (exporter_generic_export.cpp) and are edited on its panel (exporter_generic_panel.cpp). They
// belong to the object: they are no settings, outlive the panels, and change only when a panel is
// closed normally.
#ifndef EXPORTERS_EXPORTER_GENERIC_H
#define EXPORTERS_EXPORTER_GENERIC_H

#include "exporter_base/exporter_base.h"
#include "sdk/itovira_compiler.h"

class wxButton;
class wxCheckBox;
class wxComboBox;

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

    // The switches, in the order in which they are sent to the compiler.
    enum Flag {
        FLAG_TWO_SIDED,
        FLAG_FACE_FORWARD,
        FLAG_ROTATE_CUBE_MAP,
        FLAG_FLIP_TEX2D_V,
        FLAG_GENERATE_SAMPLER_STATES,
        FLAG_ALPHA_TRANSPARENCY,
        FLAG_USE_OIT, // order-independent transparency
        FLAG_DEPTH_TEST,
        FLAG_DEPTH_WRITE,
        FLAG_HLSL_SAS_CONFORMANCE, // Microsoft SAS
        FLAG_USE_INTERFACES,       // CgFX only
        FLAG_EVAL_VOLUME,          // CgFX only, and only together with the interfaces
        FLAG_COUNT
    };

    // Handles the annotation map's browse button.
    class Event_dispatcher : public wxEvtHandler
    {
    public:
        void set_exporter(Exporter_generic* exporter);
        void on_choose_annotation_map_file(wxCommandEvent& event);

    private:
        Exporter_generic* m_exporter = nullptr;
    };

    explicit Exporter_generic(Target_language target);
    ~Exporter_generic() override;

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
    bool run_export(TSDK::ITovira* app, TSDK::IGraph_view* view);
    void write_fx(const wxString& path, TSDK::ICompilation_unit* unit,
                  TSDK::ICompiler_options* options);
    const char* flag_text(Flag flag) const;

    void create_window_fx(wxWindow* parent, wxBoxSizer* sizer);
    void create_window_glsl(wxWindow* parent, wxBoxSizer* sizer);
    void create_profile_box(wxWindow* parent, wxBoxSizer* sizer);
    void create_space_box(wxWindow* parent, wxBoxSizer* sizer);
    void create_flag_box(wxWindow* parent, wxBoxSizer* sizer, const wxChar* title);
    wxCheckBox* create_check_box(wxWindow* parent, Flag flag);
    void fill_controls();
    void choose_annotation_map_file();

    Target_language m_target;

    // The controls of the panel, which owns them; null when the target's panel has none, stale
    // after the panel's end.
    wxTextCtrl* m_annotation_map_text = nullptr;
    wxTextCtrl* m_glsl_version_text = nullptr;
    wxButton* m_annotation_map_button = nullptr;
    wxTextCtrl* m_vertex_profile_text = nullptr;
    wxTextCtrl* m_fragment_profile_text = nullptr;
    wxComboBox* m_vertex_space_combo = nullptr;
    wxComboBox* m_internal_space_combo = nullptr;
    wxCheckBox* m_check_boxes[FLAG_COUNT] = {};

    wxString m_annotation_map;
    wxString m_vertex_profile;
    wxString m_fragment_profile;
    int m_vertex_space;   // 0 object, 1 world, 2 camera, 3 screen
    int m_internal_space; // 0 world, 1 camera
    bool m_flags[FLAG_COUNT];
    wxString m_glsl_version;

    // Never deleted: the panel may outlive the exporter, and its button still points here then.
    Event_dispatcher* m_event_dispatcher;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

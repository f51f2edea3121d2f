// Exports a surface shader for FX Composer: an HLSL effect (.fx), a CgFX effect (.cgfx), or both
// from one compilation, named after the one file that the user chooses.
#ifndef EXPORTERS_EXPORTER_FXCOMPOSER_H
#define EXPORTERS_EXPORTER_FXCOMPOSER_H

#include "exporter_base/exporter_base.h"

class wxCheckBox;

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_fxcomposer;

// On the panel's handler chain while the panel exists. Handles nothing so far: the boxes are read
// when the panel closes.
class Exporter_fxcomposer_eventhandler : public wxEvtHandler
{
public:
    explicit Exporter_fxcomposer_eventhandler(Exporter_fxcomposer* exporter);

private:
    [[maybe_unused]] Exporter_fxcomposer* m_exporter;

    DECLARE_EVENT_TABLE()
};

class Exporter_fxcomposer : public Exporter_base
{
public:
    Exporter_fxcomposer();
    ~Exporter_fxcomposer() override;

    // True once something is to be written and the node is a surface, also when the compilation,
    // the generation or a write failed or the user declined to go on without lights: none of that
    // is reported.
    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) override;
    void window_closing(wxWindow* parent, bool cancelled) override;
    void initialize() override;
    const char* get_language() const override;

    // Derives both output names from the chosen one: "/d/x", "/d/x.fx" and "/d/x.cgfx" all give
    // "/d/x.cgfx" and "/d/x.fx"; any other extension stays part of the name. Always true.
    static bool update_filename(const wxString& chosen, wxString& cgfx_name, wxString& fx_name);

private:
    bool run_export(TSDK::ITovira* app, TSDK::IGraph_view* view);

    Exporter_fxcomposer_eventhandler m_eventhandler;
    wxCheckBox* m_hlsl_checkbox = nullptr; // owned by the panel
    wxCheckBox* m_cgfx_checkbox = nullptr; // owned by the panel
    bool m_export_hlsl = true;
    bool m_export_cgfx = true;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

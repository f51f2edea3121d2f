// Exports a shader as source for the Corvane renderer: a scene text (.qz) and a C++ source (.cpp),
// named after the one file that the user chooses.
//
// Built with the plug-in, but not on offer in its registry.
#ifndef EXPORTERS_EXPORTER_SWRC_H
#define EXPORTERS_EXPORTER_SWRC_H

#include "exporter_base/exporter_base.h"
#include "sdk/itovira_compiler.h"

class wxCheckBox;

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_swrc;

// On the panel's handler chain while the panel exists. Handles nothing so far: the boxes are read
// when the panel closes.
class Exporter_swrc_eventhandler : public wxEvtHandler
{
public:
    explicit Exporter_swrc_eventhandler(Exporter_swrc* exporter);

private:
    [[maybe_unused]] Exporter_swrc* m_exporter;

    DECLARE_EVENT_TABLE()
};

class Exporter_swrc : public Exporter_base
{
public:
    Exporter_swrc();
    ~Exporter_swrc() override;

    // Compiles the selected node by itself, whatever its kind, without lights or environment. True
    // when code was generated, also when a write failed.
    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) override;
    void window_closing(wxWindow* parent, bool discard) override;
    void initialize() override;
    const char* get_language() const override;

    // Shows the two flags in the check boxes.
    void init_ui();

    // Derives both output names from the chosen one: "/p/x", "/p/x.qz" and "/p/x.cpp" all give
    // "/p/x.qz" and "/p/x.cpp"; any other extension stays part of the name.
    static void update_filename(const wxString& filename, wxString& qz_filename,
                                wxString& cpp_filename);

    // The generated text of a type, "cppfile" or "qzfile". For any other type: a message, which
    // also goes to standard error.
    static wxString get_src(TSDK::IGenerated_shader* shader, wxString code_type);

private:
    bool run_export(TSDK::ITovira* app, TSDK::IGraph_view* view);

    Exporter_swrc_eventhandler m_eventhandler;
    wxCheckBox* m_qz_checkbox = nullptr;  // owned by the panel
    wxCheckBox* m_cpp_checkbox = nullptr; // owned by the panel
    bool m_export_qz = true;
    bool m_export_cpp = true;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

// What the exporters for one application share: a panel with nothing but the export-file row, and
// two ways to export.
#ifndef EXPORTERS_APPLICATION_EXPORTER_H
#define EXPORTERS_APPLICATION_EXPORTER_H

#include "export_common/compiler_options.h"
#include "exporter_base/exporter_base.h"
#include "exporters/exporter_table.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// The texts of an application's export-file dialogs: filter 0 has the extension `extension`, which
// is added to a name without one; filter 1 is for any file.
struct Application_dialog {
    const wxChar* wildcard; // ends in a bar; handed to the dialog as it stands
    const wxChar* extension;
    const wxChar* caption_open;
    const wxChar* caption_save;
};

class Application_exporter : public Exporter_base
{
public:
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) override;
    void initialize() override;
    const char* get_language() const override;

protected:
    // Both arguments outlive the exporter.
    Application_exporter(const Exporter_facts& facts, const Application_dialog& dialog);

    // The export itself, of an exporter that reports its failures: writes to `path` and returns
    // true, or returns false with a message in `error`. `parent` and `interactive` are
    // compile_group's.
    using Export_function = bool (*)(TSDK::ITovira* app, TSDK::IGraph_view* view,
                                     const wxString& path, wxWindow* parent, bool interactive,
                                     wxString& error);

    // Finds the output's path, exports to it, and shows the message of a failed export in a box.
    // False without a box when not exactly one node is selected or the file must not be replaced;
    // the user is told when no file is named.
    bool export_and_report(TSDK::ITovira* app, TSDK::IGraph_view* view,
                           Export_function export_function);

    // The whole export of a surface shader as one CgFX file, with `options` as what differs between
    // the applications. False as above, and for a shader of another kind. Otherwise true, also when
    // the compilation, the generation or the write failed or the user declined to go on without
    // lights: none of that is reported.
    bool export_cgfx_surface(TSDK::ITovira* app, TSDK::IGraph_view* view,
                             const Option_table& options);

private:
    const Exporter_facts& m_facts;
    const Application_dialog& m_dialog;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

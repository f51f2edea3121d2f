// What the exporters for one application share: settings from a row of texts, the way from the
// selection to the output's name, and the report of a failed export.
#ifndef EXPORTERS_APPLICATION_EXPORT_H
#define EXPORTERS_APPLICATION_EXPORT_H

#include "export_common/compiler_options.h"
#include "exporter_base/exporter_base.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

// The texts of an application exporter's export-file dialogs: filter 0 has the extension
// `extension`, which is added to a name without one; filter 1 is for any file.
struct Application_dialog {
    const wxChar* wildcard; // ends in a bar; handed to the dialog as it stands
    const wxChar* extension;
    const wxChar* caption_open;
    const wxChar* caption_save;
};

Chooser_properties chooser_properties(const Application_dialog& dialog);

// Finds the output's path: exactly one node is selected, an export file is named (the user is told
// when not), its name gets `extension`, and the user lets an existing file be replaced. False, with
// `path` unspecified, as soon as one of these fails.
bool choose_output(Exporter_base& exporter, TSDK::ITovira* app, TSDK::IGraph_view* view,
                   const wxString& extension, wxString& path);

// The export proper of an exporter that reports its failures: writes to `path` and returns true, or
// returns false with a message in `error`. `parent` and `interactive` are compile_group's.
using Export_function = bool (*)(TSDK::ITovira* app, TSDK::IGraph_view* view, const wxString& path,
                                 wxWindow* parent, bool interactive, wxString& error);

// Chooses the output, exports to it, and shows the message of a failed export in a box.
bool export_and_report(Exporter_base& exporter, TSDK::ITovira* app, TSDK::IGraph_view* view,
                       const wxString& extension, Export_function export_function);

// The whole export of the applications that take one CgFX file of a surface shader, with `options`
// as what differs between them. Once the output is chosen and the node is a surface it is true,
// also when the compilation, the generation or the write failed or the user declined to go on
// without lights: none of that is reported.
bool export_cgfx_surface(Exporter_base& exporter, TSDK::ITovira* app, TSDK::IGraph_view* view,
                         const Option_table& options);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

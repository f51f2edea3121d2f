// The folder and the chosen path of a save dialog, byte for byte.
//
// A folder need not have a name in UTF-8, nor one that the user's locale can express. The toolkit
// loses such a folder on its way through text: the dialog would open elsewhere, and the save would
// silently go there.
#ifndef EXPORTER_BASE_DIALOG_PATHS_H
#define EXPORTER_BASE_DIALOG_PATHS_H

#include <wx/string.h>

class wxFileDialog;

namespace QZ
{
namespace TOVIRAEXPORT
{

// Makes a dialog that was constructed with `folder` open there, if the toolkit has not understood
// the name. 2.8 hands the bytes on as they are.
void set_start_folder(wxFileDialog& dialog, const wxString& folder);

// The path that a confirmed save dialog holds; empty when it holds none.
wxString get_saved_path(const wxFileDialog& dialog);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

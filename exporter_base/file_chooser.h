// Asks for the files of one file setting of an exporter.
//
// Made on the stack for one question. What it shows comes from the exporter's static settings, what
// it remembers goes into the exporter's settings. With base = the exporter's base setting key:
//   base + "_" + setting + "_open" / "_save"    last path of the open and of the save dialogs
//   base + "_" + setting + "_filter_index"      last filter, shared by both
//   base + "::" + setting + "::caption::open" / "::caption::save" / "::wildcard"
//   base + "::" + setting + "::extension::%d"   the extension of a filter, without the dot
//   base + "::" + setting + "::extension_autoadd"  "true": a saved name without one gets it
#ifndef EXPORTER_BASE_FILE_CHOOSER_H
#define EXPORTER_BASE_FILE_CHOOSER_H

#include <memory>
#include <vector>

#include <wx/string.h>

class wxFileDialog;
class wxWindow;

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_base;

class File_chooser
{
public:
    // `parent` (may be null) is the dialog's parent, `name` the file setting. Neither the window
    // nor the exporter is owned.
    File_chooser(wxWindow* parent, Exporter_base* exporter, const wxString& name);

    // Each shows a modal dialog. On OK they return true with the chosen path or paths and remember
    // path (of several: the first) and filter; otherwise they return false and change nothing. OK
    // without a path, which GTK gives for a file that it cannot express, counts as cancelled where
    // one file is asked for. `paths` is appended to. A save dialog asks no question about existing
    // files.
    bool get_save_file(wxString& path);
    bool get_open_file(wxString& path);
    bool get_open_files(std::vector<wxString>& paths);

    // The start file name of the dialog, then the chosen file's name without its folder; empty
    // after a cancelled dialog and after one for several files.
    wxString get_filename() const;

    // Remembers a path under `kind` ("open" or "save") together with its filter. An empty path is
    // not remembered.
    void store_path_if_not_empty(const wxString& kind, const wxString& path, int filter_index);

private:
    wxString setting_key(const wxString& suffix) const;
    wxString property(const wxString& suffix) const;
    std::unique_ptr<wxFileDialog> create_dialog(const wxString& kind, long style);
    wxString with_filter_extension(const wxString& path, int filter_index) const;

    wxWindow* m_parent;
    Exporter_base* m_exporter;
    wxString m_filename;
    wxString m_setting_name;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

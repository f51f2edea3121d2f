#include "exporter_base/file_chooser.h"

#include "exporter_base/decimal.h"
#include "exporter_base/dialog_paths.h"
#include "exporter_base/exporter_base.h"
#include "exporter_base/toviraexport_log.h"
#include "exporter_base/wx_compat.h"

#include <wx/filedlg.h>
#include <wx/filename.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

// A stored number; a text that is not a number counts as 0.
long to_int(const wxString& text)
{
    long value = 0;
    if (text.ToLong(&value, 10))
        return value;
    Toviraexport_log::instance()->out(wxT("to_int: fail to convert to int from ") + text +
                                      wxT("\n"));
    return 0;
}

// The number of filters in a wildcard text: pairs separated by bars; a last bar ends the text.
long count_filters(const wxString& wildcard)
{
    long bars = 0;
    for (size_t i = 0; i < wildcard.length(); ++i)
        if (wildcard[i] == wxT('|'))
            ++bars;
    return bars == 0 ? 1 : (bars + 1) / 2;
}

// 3.x checks here that the wildcard does not end in a bar and that a filter is selected; GTK
// selects none when the preset file fits no filter. The answer is right all the same.
int selected_filter(const wxFileDialog& dialog)
{
    const Assert_silencer quiet;
    return dialog.GetFilterIndex();
}

} // namespace

File_chooser::File_chooser(wxWindow* parent, Exporter_base* exporter, const wxString& name)
    : m_parent(parent), m_exporter(exporter), m_setting_name(name)
{
}

bool File_chooser::get_save_file(wxString& path)
{
    const std::unique_ptr<wxFileDialog> dialog = create_dialog(wxT("save"), wxFD_SAVE);
    const bool confirmed = dialog->ShowModal() == wxID_OK;
    const wxString saved = confirmed ? get_saved_path(*dialog) : wxString();
    if (saved.empty()) {
        m_filename.Clear();
        return false;
    }
    const int filter_index = selected_filter(*dialog);
    path = with_filter_extension(saved, filter_index);
    m_filename = wxFileName(path).GetFullName();
    store_path_if_not_empty(wxT("save"), path, filter_index);
    return true;
}

bool File_chooser::get_open_file(wxString& path)
{
    const std::unique_ptr<wxFileDialog> dialog =
        create_dialog(wxT("open"), wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog->ShowModal() != wxID_OK || dialog->GetPath().empty()) {
        m_filename.Clear();
        return false;
    }
    path = dialog->GetPath();
    m_filename = dialog->GetFilename();
    store_path_if_not_empty(wxT("open"), path, selected_filter(*dialog));
    return true;
}

bool File_chooser::get_open_files(std::vector<wxString>& paths)
{
    const std::unique_ptr<wxFileDialog> dialog =
        create_dialog(wxT("open"), wxFD_OPEN | wxFD_FILE_MUST_EXIST | wxFD_MULTIPLE);
    const bool confirmed = dialog->ShowModal() == wxID_OK;
    m_filename.Clear();
    if (!confirmed)
        return false;

    wxArrayString chosen;
    dialog->GetPaths(chosen);
    const size_t first_new = paths.size();
    for (size_t i = 0; i < chosen.GetCount(); ++i)
        if (!chosen[i].empty())
            paths.push_back(chosen[i]);
    if (first_new < paths.size())
        store_path_if_not_empty(wxT("open"), paths[first_new], selected_filter(*dialog));
    return true;
}

wxString File_chooser::get_filename() const
{
    return m_filename;
}

void File_chooser::store_path_if_not_empty(const wxString& kind, const wxString& path,
                                           int filter_index)
{
    if (path.empty())
        return;
    m_exporter->set_own_setting_value(setting_key(kind), path);
    m_exporter->set_own_setting_value(setting_key(wxT("filter_index")), decimal(filter_index));
}

wxString File_chooser::setting_key(const wxString& suffix) const
{
    return m_exporter->get_base_setting_key() + wxT("_") + m_setting_name + wxT("_") + suffix;
}

wxString File_chooser::property(const wxString& suffix) const
{
    return m_exporter->get_exporter_setting(m_exporter->get_base_setting_key() + wxT("::") +
                                            m_setting_name + wxT("::") + suffix);
}

// The dialog for `kind` ("open" or "save") as it is shown: in the folder, with the name and with
// the filter that were used last.
std::unique_ptr<wxFileDialog> File_chooser::create_dialog(const wxString& kind, long style)
{
    const wxFileName start(m_exporter->get_own_setting_value(setting_key(kind)));
    m_filename = start.GetFullName();
    const long filter_index =
        to_int(m_exporter->get_own_setting_value(setting_key(wxT("filter_index"))));
    const wxString folder = start.GetPath(wxPATH_GET_VOLUME);
    const wxString caption = property(wxT("caption::") + kind);
    const wxString wildcard = property(wxT("wildcard"));

    // Several wildcards end in a bar, which 2.8 takes as it is and 3.x complains about.
    const Assert_silencer quiet;
    std::unique_ptr<wxFileDialog> dialog(
        new wxFileDialog(m_parent, caption, folder, m_filename, wildcard, style));
    set_start_folder(*dialog, folder);
    // By now 3.x has added the first filter's extension to the name.
    if (style & wxFD_SAVE)
        dialog->SetFilename(m_filename);
    if (filter_index >= 0 && filter_index < count_filters(wildcard))
        dialog->SetFilterIndex(static_cast<int>(filter_index));
    return dialog;
}

// The path of a saved file, with the extension of its filter if the name has none and the setting
// wants it.
wxString File_chooser::with_filter_extension(const wxString& path, int filter_index) const
{
    wxFileName file(path);
    const wxString extension = property(wxT("extension::") + decimal(filter_index));
    const bool known = extension != wxT("<undefined>") && extension != wxT("*");
    if (property(wxT("extension_autoadd")) == wxT("true") && known && !file.HasExt())
        file.SetExt(extension);
    return file.GetFullPath();
}

} // namespace TOVIRAEXPORT
} // namespace QZ

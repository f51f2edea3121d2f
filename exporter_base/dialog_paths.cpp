#include "exporter_base/dialog_paths.h"

#include "exporter_base/bytes.h"

#include <memory>
#include <string>

#include <dlfcn.h>

#include <wx/filedlg.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

#if wxUSE_UNICODE

namespace
{

// A function of GTK or GLib, which the toolkit has loaded; null when it runs on something else.
template<typename Function>
Function* find_function(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_DEFAULT, name));
}

// The bytes of the path that the dialog's widget holds; empty when it holds none.
std::string widget_path(const wxFileDialog& dialog)
{
    const auto get_filename = find_function<char*(void*)>("gtk_file_chooser_get_filename");
    const auto free_text = find_function<void(void*)>("g_free");
    if (!get_filename || !free_text)
        return std::string();
    const std::unique_ptr<char, void (*)(void*)> path(get_filename(dialog.GetHandle()), free_text);
    return text_or_empty(path.get());
}

} // namespace

void set_start_folder(wxFileDialog& dialog, const wxString& folder)
{
    const std::string bytes = to_bytes(folder);
    const auto set_folder =
        find_function<int(void*, const char*)>("gtk_file_chooser_set_current_folder");
    if (set_folder && bytes != text_or_empty(folder.fn_str()))
        set_folder(dialog.GetHandle(), bytes.c_str());
}

// The widget has the folder's bytes, and the name as the dialog shows it: text in UTF-8, in which
// the bytes that are not UTF-8 are the characters of from_bytes.
wxString get_saved_path(const wxFileDialog& dialog)
{
    const std::string path = widget_path(dialog);
    const size_t separator = path.rfind('/');
    if (separator == std::string::npos)
        return dialog.GetPath();
    const std::string name = path.substr(separator + 1);
    const wxString shown_name = wxString::FromUTF8(name.c_str());
    return from_bytes(path.substr(0, separator + 1).c_str()) +
           (shown_name.empty() ? from_bytes(name.c_str()) : shown_name);
}

#else

void set_start_folder(wxFileDialog&, const wxString&) {}

wxString get_saved_path(const wxFileDialog& dialog)
{
    return dialog.GetPath();
}

#endif

} // namespace TOVIRAEXPORT
} // namespace QZ

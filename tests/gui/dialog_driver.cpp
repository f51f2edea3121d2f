#include "tests/gui/dialog_driver.h"

#include "exporter_base/bytes.h"
#include "tests/gui/gtk_functions.h"
#include "tests/gui/user_input.h"

#include <algorithm>

#include <wx/filedlg.h>
#if wxCHECK_VERSION(3, 0, 0)
#include <wx/modalhook.h>
#endif

namespace QZ
{
namespace TEST
{

using TOVIRAEXPORT::to_bytes;

namespace
{

constexpr unsigned int tick_ms = 10;
constexpr std::chrono::seconds patience(30);
constexpr std::chrono::milliseconds between_attempts(300);

constexpr int response_delete_event = -4;

struct Button {
    Reply reply;
    int response; // the toolkit's number
};

constexpr Button buttons[] = {
    {Reply::accept, -3}, {Reply::ok, -5}, {Reply::cancel, -6}, {Reply::yes, -8}, {Reply::no, -9},
};

int response_of(Reply reply)
{
    for (const Button& button : buttons)
        if (button.reply == reply)
            return button.response;
    return response_delete_event;
}

// Whether a dialog that was given no folder loads one.
#if wxCHECK_VERSION(3, 0, 0)
constexpr bool loads_some_folder = true;
#else
constexpr bool loads_some_folder = false; // GTK 2 lists the files used last
#endif

// File names that tell the plug-in's filters apart.
constexpr const char* probe_names[] = {"x.cgfx", "x.fx", "x.gl", "x.glsl", "x.axml", "x.txt", "x"};

// GtkFileFilterInfo.
struct Filter_question {
    int contains;
    const char* filename;
    const char* uri;
    const char* display_name;
    const char* mime_type;
};

bool lets_through(void* filter, const char* name)
{
    const int needed = gtk_function<int(void*)>("gtk_file_filter_get_needed")(filter);
    const Filter_question question = {needed, name, nullptr, name, nullptr};
    return gtk_function<int(void*, const Filter_question*)>("gtk_file_filter_filter")(filter,
                                                                                      &question);
}

std::vector<void*> filters_of(void* dialog)
{
    return take_single_list(gtk_function<void*(void*)>("gtk_file_chooser_list_filters")(dialog));
}

std::string current_path(void* dialog)
{
    return take_text(gtk_function<char*(void*)>("gtk_file_chooser_get_filename")(dialog));
}

std::string current_folder(void* dialog)
{
    return take_text(gtk_function<char*(void*)>("gtk_file_chooser_get_current_folder")(dialog));
}

std::vector<std::string> selected_files(void* dialog)
{
    std::vector<std::string> files =
        take_texts(gtk_function<void*(void*)>("gtk_file_chooser_get_filenames")(dialog));
    std::sort(files.begin(), files.end());
    return files;
}

// Selecting one file ends the selection of the others, so several are what is left of all.
void select_files(void* dialog, const std::vector<std::string>& files)
{
    if (files.size() == 1) {
        gtk_function<int(void*, const char*)>("gtk_file_chooser_select_filename")(dialog,
                                                                                  files[0].c_str());
    } else if (!files.empty()) {
        gtk_function<void(void*)>("gtk_file_chooser_select_all")(dialog);
        for (const std::string& file : selected_files(dialog))
            if (std::find(files.begin(), files.end(), file) == files.end())
                gtk_function<void(void*, const char*)>("gtk_file_chooser_unselect_filename")(
                    dialog, file.c_str());
    }
}

bool is_file_dialog(void* dialog)
{
    return class_of(dialog) == "GtkFileChooserDialog";
}

bool is_dialog(void* window)
{
    static const unsigned long dialog_type = gtk_function<unsigned long()>("gtk_dialog_get_type")();
    return gtk_function<int(void*, unsigned long)>("g_type_check_instance_is_a")(window,
                                                                                 dialog_type);
}

// What wx was given for the file dialog that is about to appear.
std::optional<std::string> wx_wildcard;
std::optional<long> wx_style;

#if wxCHECK_VERSION(3, 0, 0)
class File_dialog_hook : public wxModalDialogHook
{
    int Enter(wxDialog* dialog) override
    {
        if (const auto* file_dialog = dynamic_cast<const wxFileDialog*>(dialog)) {
            wx_wildcard = to_bytes(file_dialog->GetWildcard());
            wx_style = file_dialog->GetWindowStyleFlag();
        }
        return wxID_NONE; // goes on to show it
    }
};
#else
struct File_dialog_hook {
    void Register() {}
    void Unregister() {}
};
#endif

File_dialog_hook file_dialog_hook;

std::string title_of(void* window)
{
    return window ? text_property(window, "title") : std::string();
}

void describe_file_dialog(void* dialog, Shown_dialog& shown)
{
    enum { ACTION_SAVE = 1 };
    shown.saves = number_property(dialog, "action") == ACTION_SAVE;
    shown.selects_many = number_property(dialog, "select-multiple") != 0;
    shown.asks_before_overwriting = number_property(dialog, "do-overwrite-confirmation") != 0;
    shown.folder = current_folder(dialog);
    shown.path = current_path(dialog);
    void* chosen = gtk_function<void*(void*)>("gtk_file_chooser_get_filter")(dialog);
    const std::vector<void*> filters = filters_of(dialog);
    for (size_t i = 0; i < filters.size(); ++i) {
        shown.filters.push_back(
            gtk_function<const char*(void*)>("gtk_file_filter_get_name")(filters[i]));
        std::string fits;
        for (const char* name : probe_names)
            if (lets_through(filters[i], name))
                fits += (fits.empty() ? "" : " ") + std::string(name);
        shown.filter_fits.push_back(fits);
        if (filters[i] == chosen)
            shown.filter = static_cast<int>(i);
    }
    shown.wildcard = wx_wildcard;
    shown.style = wx_style;
}

void describe_message_box(void* dialog, Shown_dialog& shown)
{
    shown.text = text_property(dialog, "text");
    shown.icon = number_property(dialog, "message-type");
    void* default_button = gtk_function<void*(void*)>("gtk_window_get_default_widget")(dialog);
    for (const Button& button : buttons) {
        void* widget = gtk_function<void*(void*, int)>("gtk_dialog_get_widget_for_response")(
            dialog, button.response);
        if (!widget)
            continue;
        shown.buttons.push_back(button.reply);
        if (widget == default_button)
            shown.default_buttons.push_back(button.reply);
    }
}

} // namespace

Dialog_answer select_from_anywhere(const std::string& file)
{
    Dialog_answer answer{Reply::accept};
    answer.files = {file};
    answer.without_folder = true;
    return answer;
}

Dialog_driver::Dialog_driver()
    : m_timer(gtk_function<unsigned int(unsigned int, int (*)(void*), void*)>("g_timeout_add")(
          tick_ms,
          [](void* driver) {
              static_cast<Dialog_driver*>(driver)->advance();
              return 1; // go on
          },
          this))
{
    file_dialog_hook.Register();
}

Dialog_driver::~Dialog_driver()
{
    file_dialog_hook.Unregister();
    gtk_function<int(unsigned int)>("g_source_remove")(m_timer);
    if (m_dialog)
        gtk_function<void(void*, void**)>("g_object_remove_weak_pointer")(m_dialog, &m_dialog);
}

void Dialog_driver::answer_next(const Dialog_answer& answer)
{
    m_answers.push_back(answer);
}

void Dialog_driver::advance()
{
    if (!m_dialog)
        return look_for_dialog();
    if (is_late() && m_step != Step::leaving) {
        complain("the dialog does not get ready for its answer");
        return leave();
    }
    switch (m_step) {
    case Step::appearing:
        return appear();
    case Step::preparing:
        return prepare();
    case Step::focusing:
        return focus();
    case Step::leaving:
        if (is_late())
            leave();
    }
}

void Dialog_driver::look_for_dialog()
{
    for (void* window : toplevel_windows()) {
        if (!is_dialog(window) || !is_mapped(window))
            continue;
        m_dialog = window;
        gtk_function<void(void*, void**)>("g_object_add_weak_pointer")(m_dialog, &m_dialog);
        enter(Step::appearing);
        if (m_answers.empty()) {
            complain("nothing was to appear");
            return leave();
        }
        m_answer = m_answers.front();
        m_answers.pop_front();
        return;
    }
}

void Dialog_driver::appear()
{
    if (!is_settled())
        return;
    m_shown.push_back(describe());
    apply_answer();
    enter(Step::preparing);
}

// A folder that is still being read may undo a selection: it is made again.
void Dialog_driver::prepare()
{
    if (is_prepared())
        return reply();
    if (std::chrono::steady_clock::now() - m_last_attempt > between_attempts)
        apply_answer();
}

// Keys go to the window that has the focus.
void Dialog_driver::focus()
{
    if (!has_focus(m_dialog))
        return;
    enter(Step::leaving);
    press_key(m_answer.reply == Reply::return_key ? "Return" : "Escape");
}

// Closes the dialog in any way that works.
void Dialog_driver::leave()
{
    enter(Step::leaving);
    gtk_function<void(void*, int)>("gtk_dialog_response")(m_dialog, response_delete_event);
}

void Dialog_driver::enter(Step step)
{
    m_step = step;
    m_step_start = std::chrono::steady_clock::now();
}

bool Dialog_driver::is_late() const
{
    return std::chrono::steady_clock::now() - m_step_start > patience;
}

void Dialog_driver::complain(const std::string& what)
{
    const Shown_dialog shown = describe();
    m_complaints.push_back(what + ": '" + shown.caption + "' " + shown.text + shown.path);
}

bool Dialog_driver::is_settled() const
{
    if (!is_file_dialog(m_dialog))
        return true;
    if (current_folder(m_dialog).empty())
        return m_answer.without_folder && !loads_some_folder;
    return m_answer.wait_for_path.empty() || current_path(m_dialog) == m_answer.wait_for_path;
}

void Dialog_driver::apply_answer()
{
    m_last_attempt = std::chrono::steady_clock::now();
    if (m_answer.filter >= 0) {
        const std::vector<void*> filters = filters_of(m_dialog);
        const size_t filter = static_cast<size_t>(m_answer.filter);
        if (filter < filters.size())
            gtk_function<void(void*, void*)>("gtk_file_chooser_set_filter")(m_dialog,
                                                                            filters[filter]);
    }
    if (!m_answer.name.empty())
        gtk_function<void(void*, const char*)>("gtk_file_chooser_set_current_name")(
            m_dialog, m_answer.name.c_str());
    select_files(m_dialog, m_answer.files);
}

bool Dialog_driver::is_prepared() const
{
    if (m_answer.filter >= 0) {
        const std::vector<void*> filters = filters_of(m_dialog);
        const size_t filter = static_cast<size_t>(m_answer.filter);
        void* chosen = gtk_function<void*(void*)>("gtk_file_chooser_get_filter")(m_dialog);
        if (filter >= filters.size() || filters[filter] != chosen)
            return false;
    }
    if (!m_answer.name.empty() &&
        current_path(m_dialog) != current_folder(m_dialog) + "/" + m_answer.name)
        return false;
    std::vector<std::string> files = m_answer.files;
    std::sort(files.begin(), files.end());
    return files.empty() || selected_files(m_dialog) == files;
}

void Dialog_driver::reply()
{
    if (m_answer.meanwhile)
        m_answer.meanwhile();
    if (m_answer.reply == Reply::escape_key || m_answer.reply == Reply::return_key) {
        take_focus(m_dialog);
        return enter(Step::focusing);
    }
    enter(Step::leaving);
    gtk_function<void(void*, int)>("gtk_dialog_response")(m_dialog, response_of(m_answer.reply));
}

Shown_dialog Dialog_driver::describe() const
{
    Shown_dialog shown;
    shown.is_file_dialog = is_file_dialog(m_dialog);
    shown.caption = title_of(m_dialog);
    shown.parent_title =
        title_of(gtk_function<void*(void*)>("gtk_window_get_transient_for")(m_dialog));
    if (shown.is_file_dialog)
        describe_file_dialog(m_dialog, shown);
    else if (class_of(m_dialog) == "GtkMessageDialog")
        describe_message_box(m_dialog, shown);
    return shown;
}

} // namespace TEST
} // namespace QZ

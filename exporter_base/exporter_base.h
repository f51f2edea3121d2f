// What every exporter inherits: its settings, its option panel's frame, its message boxes.
//
// Life of an exporter:
//   1. Constructed with its name; no settings yet.
//   2. initialize (slot 19): registers settings and chooser properties. The registry does this.
//   3. create_ui: makes the panel in the host's window; create_window (slot 16) fills it.
//   4. set_ui_size, any number of times.
//   5. remove_ui: unless discarding, takes the export file's name from its field; window_closing
//      (slot 17) takes the exporter's own options; the panel is destroyed. Back to 3, any number of
//      times; the settings outlive the panels.
//   6. Destroyed by the host. A panel that is still there stays where it is.
// The host may also destroy its window, and the panel with it, at any time between 3 and 5.
//
// Slots 0 to 15 are those of IExporter; 16 to 22 are added here. Their order is a binary contract
// and never changes. Everything runs on the host's user-interface thread.
#ifndef EXPORTER_BASE_EXPORTER_BASE_H
#define EXPORTER_BASE_EXPORTER_BASE_H

#include "exporter_base/exporter_base_eventhandler.h"
#include "exporter_base/text_field.h"
#include "plugin/iexporter.h"

#include <map>
#include <string>
#include <vector>

#include <wx/font.h>
#include <wx/string.h>

class wxBoxSizer;
class wxButton;
class wxPanel;
class wxSizer;
class wxWindow;

namespace QZ
{
namespace TOVIRAEXPORT
{

// What the dialogs of one file setting show and do (exporter_base/file_chooser.h).
struct Chooser_properties {
    wxString wildcard;                // descriptions and patterns, all separated by "|"
    std::vector<wxString> extensions; // by filter index, without the dot; "*" stands for any
    wxString caption_open;
    wxString caption_save;
    bool extension_autoadd; // a saved name without an extension gets that of its filter
};

class Exporter_base : public TSDK::IExporter
{
public:
    // One setting. The byte mirrors are what the host is lent; they are written only together with
    // their texts, so that a pointer stays valid until the text is next assigned.
    struct Setting_record {
        Setting_record(const wxString& setting_name, const wxString& setting_value);
        void set_value(const wxString& new_value);

        wxString name;
        wxString value;
        wxString default_value;
        std::string name_bytes;
        std::string value_bytes;
        std::string default_bytes;
    };

    // A null name counts as "none".
    explicit Exporter_base(const char* name);
    ~Exporter_base() override;
    Exporter_base(const Exporter_base&) = delete;
    Exporter_base& operator=(const Exporter_base&) = delete;

    // ---- IExporter ----

    // This exporter for INTERFACE_EXPORTER, null for any other id.
    TSDK::Interface* get_interface(int id) override;
    int get_interface_target() const override;
    int create_ui(unsigned long long container, int width, TSDK::IGraph_view* view) override;
    bool remove_ui(TSDK::IGraph_view* view, bool discard) override;
    void set_ui_size(int width, int height) override;
    unsigned int get_num_settings() override;
    const char* get_setting_name(unsigned int index) override;
    const char* get_setting_default(unsigned int index) override;
    const char* get_setting_value(unsigned int index) override;
    void set_setting_value(unsigned int index, const char* value) override;
    const char* get_name() const override;

    // ---- extension points ----

    // slot 16: Fills the panel `parent`, which is `width` pixels wide, and returns the height in
    // pixels that it needs.
    virtual int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) = 0;

    // slot 17: Takes the options from the controls of `parent` before it is destroyed, or leaves
    // them alone when `discard` is true. Does nothing here.
    virtual void window_closing(wxWindow* parent, bool discard);

    // slot 18: A static exporter setting, or "<undefined>" for an unknown key.
    virtual wxString get_exporter_setting(const wxString& key);

    // slot 19: Registers the settings and the chooser properties.
    virtual void initialize() = 0;

    // slot 20: Prints the static exporter settings to standard error.
    virtual void debug_dump_exporter_setting() const;

    // slot 21: The wildcard's tail for all files.
    virtual wxString get_exportfile_wildcard_all() const;

    // slot 22: The target shading language. Static text; null counts as empty.
    virtual const char* get_language() const = 0;

    // ---- own settings ----

    // Sets a setting; the first time registers it, with `value` as its default.
    void set_own_setting_value(const wxString& key, const wxString& value);

    // A setting's value. An unknown key is logged and returns the empty text.
    wxString get_own_setting_value(const wxString& key) const;

    // The prefix of all keys of this exporter: "tovira_exporter_" + name + "_" + language, with
    // spaces replaced by "_".
    wxString get_base_setting_key() const;

    // ---- panel and messages ----

    // The text of the export-file field when the panel was last closed normally; empty before.
    const wxString& get_exportfile_name() const;

    // The host's container window, and the exporter's panel in it; null while there is no panel.
    wxWindow* get_window() const;
    wxPanel* get_top_panel() const;

    // Adds the export-file row to `sizer`: a label above a text field and a browse button.
    void create_common_ui(wxBoxSizer* sizer);

    // The panels' font: 9 points for `size` 1, 10 for 2, otherwise 11; `weight` is 90 (normal) or
    // 92 (bold).
    wxFont get_os_specific_font(int size, int weight);

    // Modal message boxes.
    void show_error(const wxString& msg);
    void show_warning(const wxString& msg);

    // Whether the user has named an export file; shows `message` as an error when not.
    bool require_exportfile_name(const wxString& message);

    // Whether `file` may be written: true when no regular file of that name exists, otherwise the
    // user's answer to the question (closing it counts as yes). False for null.
    bool can_export(const char* file);

    // ---- for the event handler ----

    // Asks for the export file and puts its path into the text field. A panel without that field
    // stays as it is.
    void choose_exportfile();

    // Lets go of the panel if it is the given window.
    void forget_panel(wxWindow* panel);

protected:
    // Registers the three settings of a remembered file, base key + "_" + setting + "_open",
    // "_save" and "_filter_index", with both paths at `default_path` and the filter 0.
    void register_file_setting(const wxString& setting, const wxString& default_path);

    // The same for the export file, which starts at HOME + "/untitled". An unset HOME counts as
    // empty.
    void register_exportfile_setting();

    // Adds the static exporter settings under base key + "::" + setting + "::". A key that is there
    // already keeps its value.
    void register_chooser_properties(const wxString& setting, const Chooser_properties& properties);

    // Makes a button "...", 24 pixels wide, which opens the file dialog beside a text field.
    wxButton* create_browse_button(wxWindow* parent, int id);

    // Builds the panel that holds nothing but the export-file row; returns its height.
    int create_exportfile_panel(wxWindow* parent, int width);

    // The closing step of every panel: gives `sizer` to `parent`, lays out for `width` and returns
    // the fitting height. Pixels.
    static int lay_out_panel(wxWindow* parent, wxSizer* sizer, int width);

    // Lets `sink` handle an event that the control `id` (or wxID_ANY) sends to the panel, until the
    // exporter lets go of the panel. `sink` must live until then.
    void connect_to_panel(int id, wxEventType type, wxObjectEventFunction function,
                          wxEvtHandler* sink);

    // Takes every connected and every pushed handler off the panel. The destructor of an exporter
    // that pushes a handler calls this first, in case the panel is still open.
    void detach_from_panel();

private:
    // A handler connected to the panel.
    struct Panel_connection {
        int id;
        wxEventType type;
        wxObjectEventFunction function;
        wxEvtHandler* sink;
    };

    // Keys are compared as bytes, so that the order of the settings is the same in every build.
    struct Key_less {
        bool operator()(const wxString& left, const wxString& right) const;
    };

    Setting_record* find_setting(unsigned int index) const;
    void add_exporter_setting(const wxString& key, const wxString& value);

    void create_new_container(unsigned long long container);
    void create_new_container_linux(unsigned long long container);
    void create_new_container_win_nt(unsigned long long container);
    void create_new_container_macosx(unsigned long long container);
    void show_message(const wxString& caption, const wxString& msg, long style);

    std::map<wxString, Setting_record*, Key_less> m_settings;
    Text_field m_exportfile_field; // its control is the panel's; stale after the panel's end
    wxString m_exportfile_name;
    std::map<wxString, wxString, Key_less> m_exporter_settings;
    wxWindow* m_window = nullptr;   // the host's
    int m_container_marker;         // for a debugger; nothing reads it
    wxPanel* m_top_panel = nullptr; // owned by m_window
    Exporter_base_eventhandler m_eventhandler;
    wxString m_name;
    std::string m_name_bytes; // lent to the host
    std::vector<Panel_connection> m_panel_connections;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

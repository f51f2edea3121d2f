#include "exporter_base/exporter_base.h"

#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporter_base/file_chooser.h"
#include "exporter_base/files.h"
#include "exporter_base/wx_compat.h"
#include "sdk/interface_ids.h"

#include <algorithm>
#include <limits>

#include <wx/button.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace QZ
{
namespace TOVIRAEXPORT
{

namespace
{

// Values of the container marker, to be recognised in a debugger.
enum Container_marker { MARKER_NONE = 123456, MARKER_CONTAINER = 0, MARKER_DESTRUCTED = 7890 };

// wxCENTRE has no meaning in a sizer, but stays in the flags.
constexpr int low_bit = 0x1;
constexpr int margin = 5;

// Under GTK 3 a text field on the screen asks for more than the size that it was given. It keeps
// its first size, so that a later layout takes no room from the controls below.
void keep_field_sizes(wxWindow* panel)
{
    for (wxWindowList::compatibility_iterator node = panel->GetChildren().GetFirst(); node;
         node = node->GetNext())
        if (wxTextCtrl* field = dynamic_cast<wxTextCtrl*>(node->GetData()))
            field->SetMinSize(field->GetBestSize());
}

// Adds 4 pixels, saturating at INT_MAX.
int enlarged(int pixels)
{
    constexpr int extra = 4;
    return std::min(pixels, std::numeric_limits<int>::max() - extra) + extra;
}

} // namespace

Exporter_base::Exporter_base(const char* name)
    : m_container_marker(MARKER_NONE),
      m_eventhandler(this),
      m_name(from_bytes(name ? name : "none")),
      m_name_bytes(to_bytes(m_name))
{
}

// The texts left behind show in a debugger that the object is gone. The records of the settings are
// not freed: the host may still hold texts that it was lent. The panel belongs to the host's
// window.
Exporter_base::~Exporter_base()
{
    detach_from_panel();
    m_exportfile_name = wxT("<destructed>");
    m_window = nullptr;
    m_top_panel = nullptr;
    m_container_marker = MARKER_DESTRUCTED;
    m_name = wxT("destructed");
}

TSDK::Interface* Exporter_base::get_interface(int id)
{
    if (id != TSDK::INTERFACE_EXPORTER)
        return nullptr;
    reference();
    return this;
}

int Exporter_base::get_interface_target() const
{
    return TSDK::INTERFACE_EXPORTER;
}

const char* Exporter_base::get_name() const
{
    return m_name_bytes.c_str();
}

// ---- panel ----

int Exporter_base::create_ui(unsigned long long container, int width, TSDK::IGraph_view* view)
{
    if (container == 0)
        return 0;
    return at_border(0, [&] {
        create_new_container(container);
        return create_window(m_top_panel, width, view);
    });
}

bool Exporter_base::remove_ui(TSDK::IGraph_view*, bool discard)
{
    if (!m_top_panel)
        return false;
    return at_border(false, [&] {
        if (!discard && m_exportfile_field) {
            m_exportfile_name = m_exportfile_field.text();
            set_own_setting_value(get_base_setting_key() + wxT("_exportfile_save"),
                                  m_exportfile_name);
        }
        window_closing(m_top_panel, discard);
        detach_from_panel();
        const bool destroyed = m_top_panel->Destroy();
        m_top_panel = nullptr;
        m_window = nullptr;
        m_container_marker = MARKER_CONTAINER;
        return destroyed;
    });
}

// The first, larger size is deliberate: the host's area relies on the panel seeing two changes,
// also when the final size is the one it has already.
void Exporter_base::set_ui_size(int width, int height)
{
    if (!m_window || !m_top_panel)
        return;
    at_border([&] {
        const wxPoint at = m_top_panel->GetPosition();
        m_top_panel->SetSize(at.x, at.y, enlarged(width), enlarged(height), force_size_event);
        m_top_panel->SetSize(at.x, at.y, width, height, force_size_event);
    });
}

void Exporter_base::window_closing(wxWindow*, bool) {}

void Exporter_base::create_new_container(unsigned long long container)
{
    create_new_container_linux(container);

    wxBoxSizer* main_sizer = new wxBoxSizer(wxVERTICAL);
    wxBoxSizer* inner_sizer = new wxBoxSizer(wxHORIZONTAL);
    main_sizer->Add(inner_sizer, 1, wxEXPAND | wxALL | low_bit, margin);
    inner_sizer->Add(m_top_panel, 1, wxEXPAND | low_bit, 0);
    m_window->SetSizer(main_sizer, true);
}

// A panel that was not removed before is forgotten, not destroyed: it belongs to the host's window.
void Exporter_base::create_new_container_linux(unsigned long long container)
{
    detach_from_panel();
    m_exportfile_field = Text_field();                 // the new panel need not have one
    m_window = reinterpret_cast<wxWindow*>(container); // NOLINT(performance-no-int-to-ptr)
    m_container_marker = MARKER_CONTAINER;
    m_top_panel = new wxPanel(m_window, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                              wxTAB_TRAVERSAL | wxNO_BORDER);
    m_top_panel->PushEventHandler(&m_eventhandler);
    connect_to_panel(wxID_ANY, wxEVT_DESTROY,
                     wxWindowDestroyEventHandler(Exporter_base_eventhandler::on_panel_destroyed),
                     &m_eventhandler);
}

// The plug-in is delivered for Linux only; the hosts of other systems make no container.
void Exporter_base::create_new_container_win_nt(unsigned long long) {}
void Exporter_base::create_new_container_macosx(unsigned long long) {}

void Exporter_base::connect_to_panel(int id, wxEventType type, wxObjectEventFunction function,
                                     wxEvtHandler* sink)
{
    m_panel_connections.push_back({id, type, function, sink});
    m_top_panel->Connect(id, type, function, nullptr, sink);
}

void Exporter_base::detach_from_panel()
{
    if (!m_top_panel)
        return;
    for (const Panel_connection& connection : m_panel_connections)
        m_top_panel->Disconnect(connection.id, connection.type, connection.function, nullptr,
                                connection.sink);
    m_panel_connections.clear();
    while (m_top_panel->GetEventHandler() != m_top_panel)
        m_top_panel->PopEventHandler(false);
}

void Exporter_base::forget_panel(wxWindow* panel)
{
    if (panel != m_top_panel)
        return;
    detach_from_panel();
    m_top_panel = nullptr;
    m_window = nullptr;
}

wxWindow* Exporter_base::get_window() const
{
    return m_window;
}

wxPanel* Exporter_base::get_top_panel() const
{
    return m_top_panel;
}

void Exporter_base::create_common_ui(wxBoxSizer* sizer)
{
    const wxFont font = get_os_specific_font(1, 90);
    const wxString initial_text =
        get_own_setting_value(get_base_setting_key() + wxT("_exportfile_save"));

    wxStaticText* label = new wxStaticText(m_top_panel, wxID_ANY, wxT("File name:"));
    label->SetFont(font);
    wxTextCtrl* field = new wxTextCtrl(m_top_panel, ID_EXPORTFILE_TEXT, initial_text);
    field->SetFont(font);
    m_exportfile_field = Text_field(field, initial_text);
    wxButton* browse = create_browse_button(m_top_panel, ID_EXPORTFILE_BROWSE);

    wxBoxSizer* label_row = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(label_row, 0, wxEXPAND | wxLEFT, margin);
    label_row->Add(label, 1, wxALL, 0);

    wxBoxSizer* field_row = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(field_row, 0, wxEXPAND | wxALL, margin);
    field_row->Add(field, 1, wxEXPAND | wxLEFT | wxTOP | wxBOTTOM | low_bit, margin);
    field_row->Add(browse, 0, wxALL | low_bit, margin);
}

wxButton* Exporter_base::create_browse_button(wxWindow* parent, int id)
{
    wxButton* button = new wxButton(parent, id, wxT("..."), wxDefaultPosition, wxSize(24, -1),
                                    narrow_button_style);
    button->SetWindowStyleFlag(0); // only the look was wanted
    button->SetFont(get_os_specific_font(1, 90));
    return button;
}

int Exporter_base::create_exportfile_panel(wxWindow* parent, int width)
{
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    create_common_ui(sizer);
    return lay_out_panel(parent, sizer, width);
}

int Exporter_base::lay_out_panel(wxWindow* parent, wxSizer* sizer, int width)
{
    keep_field_sizes(parent);
    parent->SetSizer(sizer, true);
    const int height = sizer->ComputeFittingWindowSize(parent).GetHeight();
    sizer->SetDimension(0, 0, width, height);
    parent->Layout();
    return height;
}

void Exporter_base::choose_exportfile()
{
    at_border([&] {
        wxString path;
        File_chooser chooser(m_window, this, wxT("exportfile"));
        // The host may have closed the panel below the dialog, or sent the event to a panel that
        // has no such field.
        if (chooser.get_save_file(path) && m_top_panel && m_exportfile_field)
            m_exportfile_field.fill(path);
    });
}

const wxString& Exporter_base::get_exportfile_name() const
{
    return m_exportfile_name;
}

wxFont Exporter_base::get_os_specific_font(int size, int weight)
{
    const int points = size == 1 ? 9 : size == 2 ? 10 : 11;
    return wxFont(points, wxFONTFAMILY_SWISS, wxFONTSTYLE_NORMAL, static_cast<wxFontWeight>(weight),
                  false, wxT("DejaVu LGC Sans"));
}

// ---- messages ----

void Exporter_base::show_error(const wxString& msg)
{
    show_message(wxT("Tovira Error: ") + m_name, msg, wxICON_ERROR);
}

void Exporter_base::show_warning(const wxString& msg)
{
    show_message(wxT("Tovira warning: ") + m_name, msg, wxICON_EXCLAMATION);
}

void Exporter_base::show_message(const wxString& caption, const wxString& msg, long style)
{
    wxMessageDialog dialog(m_window, msg, caption, style);
    dialog.ShowModal();
}

bool Exporter_base::require_exportfile_name(const wxString& message)
{
    if (!m_exportfile_name.empty())
        return true;
    show_error(message);
    return false;
}

bool Exporter_base::can_export(const char* file)
{
    if (!file)
        return false;
    if (!is_regular_file(file))
        return true;
    const wxString question = wxFileName(from_bytes(file)).GetFullPath() +
                              wxT(" already exists.\nDo you want to replace it?");
    wxMessageDialog dialog(m_top_panel, question, wxT("Export Shader"),
                           wxYES_NO | wxNO_DEFAULT | wxICON_EXCLAMATION);
    return dialog.ShowModal() != wxID_NO;
}

} // namespace TOVIRAEXPORT
} // namespace QZ

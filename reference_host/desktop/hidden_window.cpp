#include "reference_host/desktop/hidden_window.h"

#include <cstddef>

#include <dlfcn.h>

#include <wx/frame.h>
#include <wx/panel.h>

namespace reference_host
{

namespace
{

// A function of GTK, by its type and name; null where the toolkit is not GTK 3.
template<typename Signature>
Signature* gtk_function(const char* name)
{
    return reinterpret_cast<Signature*>(dlsym(RTLD_DEFAULT, name));
}

// Nobody sees the check marks and arrows of the window's controls, and GTK 3 reads the picture of
// each again for each control: a fifth of the time of a batch.
void leave_out_icons(const wxWindow& frame)
{
    constexpr unsigned int application_priority = 600; // GTK_STYLE_PROVIDER_PRIORITY_APPLICATION
    constexpr const char* style = "#unseen * { -gtk-icon-source: none; }";
    const auto set_name = gtk_function<void(void*, const char*)>("gtk_widget_set_name");
    const auto make_provider = gtk_function<void*()>("gtk_css_provider_new");
    const auto load = gtk_function<int(void*, const char*, std::ptrdiff_t, void*)>(
        "gtk_css_provider_load_from_data");
    const auto screen = gtk_function<void*()>("gdk_screen_get_default");
    const auto add =
        gtk_function<void(void*, void*, unsigned int)>("gtk_style_context_add_provider_for_screen");
    const auto release = gtk_function<void(void*)>("g_object_unref");
    if (!set_name || !make_provider || !load || !screen || !add || !release)
        return;
    void* provider = make_provider();
    load(provider, style, -1, nullptr);
    add(screen(), provider, application_priority);
    release(provider); // the screen has taken its own reference
    set_name(frame.GetHandle(), "unseen");
}

// The only one, which belongs to the toolkit.
wxWindow* hidden_frame()
{
    const wxString name = wxT("shader-export hidden");
    wxWindow* known = wxWindow::FindWindowByName(name);
    if (known)
        return known;
    auto* frame = new wxFrame(nullptr, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                              wxDEFAULT_FRAME_STYLE, name);
    leave_out_icons(*frame);
    return frame;
}

} // namespace

Hidden_window::Hidden_window() : m_area(new wxPanel(hidden_frame())) {}

Hidden_window::~Hidden_window()
{
    m_area->Destroy();
}

wxWindow& Hidden_window::area()
{
    return *m_area;
}

} // namespace reference_host

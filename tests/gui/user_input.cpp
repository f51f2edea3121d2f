#include "tests/gui/user_input.h"

#include "tests/gui/gtk_functions.h"
#include "tests/gui/waiting.h"

#include <stdexcept>

#include <wx/window.h>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace QZ
{
namespace TEST
{

namespace
{

// A connection of its own, so that the toolkit sees events like those of a device.
Display* server()
{
    static Display* connection = XOpenDisplay(nullptr);
    if (!connection)
        throw std::runtime_error("the display cannot be opened");
    return connection;
}

constexpr unsigned int left_button = 1;

void send_key(unsigned int code, bool down)
{
    XTestFakeKeyEvent(server(), code, down, CurrentTime);
}

// Presses what makes the symbol on the server's keyboard, together with Shift where it takes it.
void press_symbol(KeySym symbol)
{
    const unsigned int code = XKeysymToKeycode(server(), symbol);
    const unsigned int shift = XKeysymToKeycode(server(), XK_Shift_L);
    const bool shifted = XkbKeycodeToKeysym(server(), static_cast<KeyCode>(code), 0, 0) != symbol;
    if (shifted)
        send_key(shift, true);
    send_key(code, true);
    send_key(code, false);
    if (shifted)
        send_key(shift, false);
    XSync(server(), False);
}

} // namespace

void take_focus(void* window)
{
    gtk_function<void(void*)>("gtk_window_present")(window);
}

bool has_focus(void* window)
{
    return number_property(window, "has-toplevel-focus") != 0;
}

void press_key(const std::string& key)
{
    press_symbol(XStringToKeysym(key.c_str()));
}

void press_key(const std::string& held, const std::string& key)
{
    const unsigned int modifier = XKeysymToKeycode(server(), XStringToKeysym(held.c_str()));
    send_key(modifier, true);
    press_key(key);
    send_key(modifier, false);
    XSync(server(), False);
}

// The symbols of ASCII have the numbers of the characters.
void type_text(const std::string& text)
{
    for (const char character : text)
        press_symbol(static_cast<KeySym>(static_cast<unsigned char>(character)));
}

void point_at(wxWindow* window, const wxPoint& at)
{
    constexpr int current_screen = -1;
    const wxPoint on_screen = window->ClientToScreen(at);
    XTestFakeMotionEvent(server(), current_screen, on_screen.x, on_screen.y, CurrentTime);
    XSync(server(), False);
}

bool is_pointed_at(wxWindow* window)
{
    int x = 0;
    int y = 0;
    void* widget = nullptr;
    if (void* inner = gtk_function<void*(int*, int*)>("gdk_window_at_pointer")(&x, &y))
        gtk_function<void(void*, void**)>("gdk_window_get_user_data")(inner, &widget);
    void* control = window->GetHandle();
    return widget && (widget == control ||
                      gtk_function<int(void*, void*)>("gtk_widget_is_ancestor")(widget, control));
}

void press_button()
{
    XTestFakeButtonEvent(server(), left_button, True, CurrentTime);
    XTestFakeButtonEvent(server(), left_button, False, CurrentTime);
    XSync(server(), False);
}

void drag(wxWindow* control, const wxPoint& from, const wxPoint& to)
{
    constexpr int steps = 8;
    point_at(control, from);
    XTestFakeButtonEvent(server(), left_button, True, CurrentTime);
    for (int step = 1; step <= steps; ++step) {
        handle_events(); // a hand takes its time, too
        point_at(control, from + (to - from) * step / steps);
    }
    handle_events();
    XTestFakeButtonEvent(server(), left_button, False, CurrentTime);
    XSync(server(), False);
}

void turn_wheel(Wheel direction)
{
    const unsigned int button = direction == Wheel::up ? 4 : 5; // as X has it
    XTestFakeButtonEvent(server(), button, True, CurrentTime);
    XTestFakeButtonEvent(server(), button, False, CurrentTime);
    XSync(server(), False);
}

} // namespace TEST
} // namespace QZ

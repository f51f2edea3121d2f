// Mouse and keyboard of a user, as the X server sends them: the events take the same way through
// the toolkit as a person's.
#ifndef TESTS_GUI_USER_INPUT_H
#define TESTS_GUI_USER_INPUT_H

#include <string>

#include <wx/gdicmn.h>

class wxWindow;

namespace QZ
{
namespace TEST
{

// Makes a window of the toolkit (a GtkWindow) the one that gets the keys; it has them as soon as
// has_focus says so. No window manager is needed.
void take_focus(void* window);
bool has_focus(void* window);

// Presses and releases a key by its X name, such as "Escape", "Down" or "a"; the second form holds
// another one down meanwhile.
void press_key(const std::string& key);
void press_key(const std::string& held, const std::string& key);

// Types ASCII letters, digits and the signs in use in file names.
void type_text(const std::string& text);

// Moves the pointer `at` pixels from the upper left corner of a control. The toolkit puts what has
// been laid out in its place later: a click hits the control as soon as is_pointed_at says so.
void point_at(wxWindow* control, const wxPoint& at);
bool is_pointed_at(wxWindow* control);

// Presses and releases the left button where the pointer is.
void press_button();

// Holds the left button down while the pointer moves over the control, in several steps.
void drag(wxWindow* control, const wxPoint& from, const wxPoint& to);

// Turns the wheel one notch where the pointer is.
enum class Wheel { up, down };
void turn_wheel(Wheel direction);

} // namespace TEST
} // namespace QZ

#endif

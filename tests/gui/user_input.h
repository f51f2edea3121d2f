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

// Clicks with the left button, `at` pixels from the upper left corner of a window.
void click(wxWindow* window, const wxPoint& at);

// Clicks into the middle.
void click(wxWindow* window);

} // namespace TEST
} // namespace QZ

#endif

// The functions of GTK and GLib that the tests use, looked up at run time: the same source works
// with GTK 2 and GTK 3 and needs the headers of neither. Objects are `void*`.
#ifndef TESTS_GUI_GTK_FUNCTIONS_H
#define TESTS_GUI_GTK_FUNCTIONS_H

#include <string>
#include <vector>

namespace QZ
{
namespace TEST
{

// The address of a function of the toolkit that wx runs on. Ends the program with a message when
// there is none of that name.
void* find_gtk_function(const char* name);

// The same with its signature: gtk_function<int(void*)>("gtk_widget_get_visible")(widget).
template<typename Signature>
Signature* gtk_function(const char* name)
{
    return reinterpret_cast<Signature*>(find_gtk_function(name));
}

// The name of an object's class, such as "GtkMessageDialog".
std::string class_of(void* object);

// A property of type text or enumeration. A null text is empty.
std::string text_property(void* object, const char* name);
int number_property(void* object, const char* name);

// Takes over a text that the toolkit allocated. Null is empty.
std::string take_text(char* text);

// The members of a list. The lists themselves are freed; `take_texts` takes over the texts, too.
std::vector<void*> take_list(void* double_linked_list);
std::vector<void*> take_single_list(void* single_linked_list);
std::vector<std::string> take_texts(void* single_linked_list);

// The top-level windows of the program, shown or not.
std::vector<void*> toplevel_windows();

// Whether a widget is on the screen.
bool is_mapped(void* widget);

} // namespace TEST
} // namespace QZ

#endif

#include "tests/gui/gtk_functions.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace QZ
{
namespace TEST
{

namespace
{

// The beginnings of GList and GSList, which are alike.
struct List_member {
    void* data;
    List_member* next;
};

std::vector<void*> members_of(void* list)
{
    std::vector<void*> members;
    for (auto* member = static_cast<List_member*>(list); member; member = member->next)
        members.push_back(member->data);
    return members;
}

} // namespace

void* find_gtk_function(const char* name)
{
    if (void* function = dlsym(RTLD_DEFAULT, name))
        return function;
    std::fprintf(stderr, "GTK has no function '%s'\n", name);
    std::abort();
}

std::string class_of(void* object)
{
    return gtk_function<const char*(void*)>("g_type_name_from_instance")(object);
}

std::string text_property(void* object, const char* name)
{
    char* text = nullptr;
    gtk_function<void(void*, const char*, ...)>("g_object_get")(object, name, &text, nullptr);
    return take_text(text);
}

int number_property(void* object, const char* name)
{
    int number = 0;
    gtk_function<void(void*, const char*, ...)>("g_object_get")(object, name, &number, nullptr);
    return number;
}

std::string take_text(char* text)
{
    const std::string copy = text ? text : "";
    gtk_function<void(void*)>("g_free")(text);
    return copy;
}

std::vector<void*> take_list(void* double_linked_list)
{
    const std::vector<void*> members = members_of(double_linked_list);
    gtk_function<void(void*)>("g_list_free")(double_linked_list);
    return members;
}

std::vector<void*> take_single_list(void* single_linked_list)
{
    const std::vector<void*> members = members_of(single_linked_list);
    gtk_function<void(void*)>("g_slist_free")(single_linked_list);
    return members;
}

std::vector<std::string> take_texts(void* single_linked_list)
{
    std::vector<std::string> texts;
    for (void* text : take_single_list(single_linked_list))
        texts.push_back(take_text(static_cast<char*>(text)));
    return texts;
}

std::vector<void*> toplevel_windows()
{
    return take_list(gtk_function<void*()>("gtk_window_list_toplevels")());
}

bool is_mapped(void* widget)
{
    return gtk_function<int(void*)>("gtk_widget_get_mapped")(widget) != 0;
}

} // namespace TEST
} // namespace QZ

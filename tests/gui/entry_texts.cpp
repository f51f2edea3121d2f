#include "tests/gui/entry_texts.h"

#include <dlfcn.h>

namespace QZ
{
namespace TEST
{

namespace
{

Entry_text_watch* active = nullptr;

} // namespace

Entry_text_watch::Entry_text_watch()
{
    active = this;
}

Entry_text_watch::~Entry_text_watch()
{
    active = nullptr;
}

void Entry_text_watch::note(std::string_view text)
{
    if (!text.empty())
        m_texts.emplace_back(text);
}

} // namespace TEST
} // namespace QZ

// These stand before the functions of GTK, to which they pass everything on. wx calls the one or
// the other, depending on its version.

extern "C" __attribute__((visibility("default"))) void gtk_entry_set_text(void* entry,
                                                                          const char* text)
{
    if (QZ::TEST::active)
        QZ::TEST::active->note(text);
    static const auto original =
        reinterpret_cast<void (*)(void*, const char*)>(dlsym(RTLD_NEXT, "gtk_entry_set_text"));
    original(entry, text);
}

extern "C" __attribute__((visibility("default"))) void
gtk_editable_insert_text(void* entry, const char* text, int length, int* position)
{
    if (QZ::TEST::active)
        QZ::TEST::active->note(length < 0 ? std::string_view(text)
                                          : std::string_view(text, length));
    static const auto original = reinterpret_cast<void (*)(void*, const char*, int, int*)>(
        dlsym(RTLD_NEXT, "gtk_editable_insert_text"));
    original(entry, text, length, position);
}

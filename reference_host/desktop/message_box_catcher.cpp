#include "reference_host/desktop/message_box_catcher.h"

#include "exporter_base/bytes.h"
#include "reference_host/desktop/message_boxes.h"

#include <wx/msgdlg.h>

#if wxCHECK_VERSION(3, 0, 0)

#include <wx/modalhook.h>

namespace reference_host
{

using QZ::TOVIRAEXPORT::to_bytes;

struct Message_box_catcher::Hook : wxModalDialogHook {
    explicit Hook(Message_box_answers& to) : answers(to) { Register(); }

    // A result other than wxID_NONE takes the place of showing the dialog.
    int Enter(wxDialog* dialog) override
    {
        const auto* box = dynamic_cast<wxMessageDialogBase*>(dialog);
        if (!box || answers.is_asking())
            return wxID_NONE;
        switch (answers.answer(to_bytes(box->GetCaption()), to_bytes(box->GetMessage()))) {
        case Box_answer::yes:
            return wxID_YES;
        case Box_answer::no:
            return wxID_NO;
        case Box_answer::ok:
            break;
        }
        return wxID_OK;
    }

    Message_box_answers& answers;
};

} // namespace reference_host

#else

#include <cstring>

#include <dlfcn.h>

namespace reference_host
{

namespace
{

Message_box_answers* active_answers = nullptr; // where the replaced function below finds them

} // namespace

struct Message_box_catcher::Hook {
    explicit Hook(Message_box_answers& answers) { active_answers = &answers; }
    ~Hook() { active_answers = nullptr; }
};

namespace
{

template<typename Function>
Function in_gtk(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

std::string text_property(void* object, const char* property)
{
    using Get = void (*)(void*, const char*, char**, void*);
    using Free = void (*)(void*);
    char* text = nullptr;
    in_gtk<Get>("g_object_get")(object, property, &text, nullptr);
    const std::string result = text ? text : "";
    in_gtk<Free>("g_free")(text);
    return result;
}

bool is_message_dialog(void* dialog)
{
    using Type_name = const char* (*)(void*);
    const char* type = in_gtk<Type_name>("g_type_name_from_instance")(dialog);
    return type && std::strcmp(type, "GtkMessageDialog") == 0;
}

} // namespace
} // namespace reference_host

// Takes the place of GTK's function of this name for the whole program (linked with -rdynamic).
extern "C" int gtk_dialog_run(void* dialog)
{
    using namespace reference_host;
    using Run = int (*)(void*);
    if (!active_answers || active_answers->is_asking() || !is_message_dialog(dialog))
        return in_gtk<Run>("gtk_dialog_run")(dialog);
    switch (active_answers->answer(text_property(dialog, "title"), text_property(dialog, "text"))) {
    case Box_answer::yes:
        return -8; // GTK_RESPONSE_YES
    case Box_answer::no:
        return -9; // GTK_RESPONSE_NO
    case Box_answer::ok:
        break;
    }
    return -5; // GTK_RESPONSE_OK
}

#endif

namespace reference_host
{

Message_box_catcher::Message_box_catcher(Message_box_answers& answers)
    : m_hook(std::make_unique<Hook>(answers))
{
}

Message_box_catcher::~Message_box_catcher() = default;

} // namespace reference_host

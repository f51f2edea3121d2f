#include "tests/support/message_boxes.h"

#include "exporter_base/bytes.h"

#include <ostream>

#include <wx/msgdlg.h>
#if wxCHECK_VERSION(3, 0, 0)
#include <wx/modalhook.h>
#else
#include <dlfcn.h>
#endif

namespace QZ
{
namespace TEST
{

using TOVIRAEXPORT::to_bytes;

bool operator==(const Message_box& left, const Message_box& right)
{
    return left.caption == right.caption && left.text == right.text && left.style == right.style;
}

void PrintTo(const Message_box& box, std::ostream* stream)
{
    *stream << "[" << box.caption << "] " << box.text << " (style 0x" << std::hex << box.style
            << std::dec << ")";
}

// What is to be answered, and what was shown.
struct Message_boxes::Script {
    int answer(const Message_box& box, wxWindow* parent)
    {
        if (watcher)
            watcher();
        shown.push_back(box);
        parents.push_back(wxGetTopLevelParent(parent));
        return shown.size() <= answers.size() ? answers[shown.size() - 1] : wxID_OK;
    }

    std::vector<int> answers;
    std::vector<Message_box> shown;
    std::vector<wxWindow*> parents;
    std::function<void()> watcher;
};

#if wxCHECK_VERSION(3, 0, 0)

class Message_boxes::Answerer : public wxModalDialogHook
{
public:
    explicit Answerer(Script& script) : m_script(script) { Register(); }

protected:
    int Enter(wxDialog* dialog) override
    {
        const auto* box = dynamic_cast<wxMessageDialog*>(dialog);
        if (!box)
            return wxID_NONE;
        return m_script.answer({to_bytes(box->GetCaption()), to_bytes(box->GetMessage()),
                                box->GetMessageDialogStyle()},
                               box->GetParent());
    }

private:
    Script& m_script;
};

#else

// 2.8 has no hooks. This program's own wxMessageDialog::ShowModal, below, stands before the
// library's and asks the answerer.
class Message_boxes::Answerer
{
public:
    explicit Answerer(Script& script) : m_script(script), m_before(current) { current = this; }
    ~Answerer() { current = m_before; }
    Answerer(const Answerer&) = delete;
    Answerer& operator=(const Answerer&) = delete;

    // 3.x adds OK to a style that names no button; so does this.
    int answer(const wxString& caption, const wxString& text, long style, wxWindow* parent)
    {
        const long buttons = wxOK | wxYES_NO | wxCANCEL;
        return m_script.answer(
            {to_bytes(caption), to_bytes(text), style & buttons ? style : style | wxOK}, parent);
    }

    static Answerer* current; // null: the boxes are shown

private:
    Script& m_script;
    Answerer* m_before;
};

Message_boxes::Answerer* Message_boxes::Answerer::current = nullptr;

#endif

Message_boxes::Message_boxes(std::vector<int> answers) : m_script(std::make_unique<Script>())
{
    m_script->answers = std::move(answers);
    m_answerer = std::make_unique<Answerer>(*m_script);
}

Message_boxes::~Message_boxes() = default;

const std::vector<Message_box>& Message_boxes::shown() const
{
    return m_script->shown;
}

const std::vector<wxWindow*>& Message_boxes::parents() const
{
    return m_script->parents;
}

void Message_boxes::watch(std::function<void()> watcher)
{
    m_script->watcher = std::move(watcher);
}

} // namespace TEST
} // namespace QZ

#if !wxCHECK_VERSION(3, 0, 0)

int wxMessageDialog::ShowModal()
{
    if (QZ::TEST::Message_boxes::Answerer* answerer = QZ::TEST::Message_boxes::Answerer::current)
        return answerer->answer(m_caption, m_message, GetMessageDialogStyle(), GetParent());
    using Show_modal = int (*)(wxMessageDialog*);
    static const Show_modal show_modal =
        reinterpret_cast<Show_modal>(dlsym(RTLD_NEXT, "_ZN15wxMessageDialog9ShowModalEv"));
    return show_modal(this);
}

#endif

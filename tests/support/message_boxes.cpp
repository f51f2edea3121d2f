// With wx 3.x. Under 2.8, which has no hooks, the boxes have to be answered from inside their own
// modal loop.
#include "tests/support/message_boxes.h"

#include "exporter_base/bytes.h"

#include <ostream>

#include <wx/modalhook.h>
#include <wx/msgdlg.h>

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

class Message_boxes::Hook : public wxModalDialogHook
{
public:
    explicit Hook(std::vector<int> answers) : m_answers(std::move(answers)) { Register(); }

    std::vector<Message_box> shown;

protected:
    int Enter(wxDialog* dialog) override
    {
        const auto* box = dynamic_cast<wxMessageDialog*>(dialog);
        if (!box)
            return wxID_NONE;
        shown.push_back({to_bytes(box->GetCaption()), to_bytes(box->GetMessage()),
                         box->GetMessageDialogStyle()});
        return shown.size() <= m_answers.size() ? m_answers[shown.size() - 1] : wxID_OK;
    }

private:
    std::vector<int> m_answers;
};

Message_boxes::Message_boxes(std::vector<int> answers)
    : m_hook(std::make_unique<Hook>(std::move(answers)))
{
}

Message_boxes::~Message_boxes() = default;

const std::vector<Message_box>& Message_boxes::shown() const
{
    return m_hook->shown;
}

} // namespace TEST
} // namespace QZ

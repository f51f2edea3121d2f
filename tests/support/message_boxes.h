// Answers message boxes instead of a user, without showing them.
//
// While one lives, every modal message box ends at once with the next scripted answer, and what it
// was given is written down. Boxes beyond the script are answered with OK.
#ifndef TESTS_SUPPORT_MESSAGE_BOXES_H
#define TESTS_SUPPORT_MESSAGE_BOXES_H

#include <memory>
#include <string>
#include <vector>

namespace QZ
{
namespace TEST
{

struct Message_box {
    std::string caption;
    std::string text;
    long style; // wx's flags; wx itself adds wxOK to a style that names no button
};

bool operator==(const Message_box& left, const Message_box& right);

// Prints a box when a comparison fails.
void PrintTo(const Message_box& box, std::ostream* stream);

class Message_boxes
{
public:
    // `answers` are ids: wxID_YES, wxID_NO, wxID_OK, wxID_CANCEL (Escape, the window's close
    // button).
    explicit Message_boxes(std::vector<int> answers = {});
    ~Message_boxes();
    Message_boxes(const Message_boxes&) = delete;
    Message_boxes& operator=(const Message_boxes&) = delete;

    // The boxes that were to be shown, in order.
    const std::vector<Message_box>& shown() const;

private:
    class Hook;
    std::unique_ptr<Hook> m_hook;
};

} // namespace TEST
} // namespace QZ

#endif

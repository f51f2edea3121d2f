// Answers message boxes instead of a user, without showing them.
//
// While one lives, every modal message box ends at once with the next scripted answer, and what it
// was given is written down. Boxes beyond the script are answered with OK.
#ifndef TESTS_SUPPORT_MESSAGE_BOXES_H
#define TESTS_SUPPORT_MESSAGE_BOXES_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxWindow;

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

    // For each of them the top-level window that it was to stand on; null: none.
    const std::vector<wxWindow*>& parents() const;

    // Calls `watcher` each time before a box is answered.
    void watch(std::function<void()> watcher);

    class Answerer; // the toolkit's side

private:
    struct Script;

    std::unique_ptr<Script> m_script;
    std::unique_ptr<Answerer> m_answerer;
};

} // namespace TEST
} // namespace QZ

#endif

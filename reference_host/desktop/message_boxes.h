// Answers the plug-in's message boxes in place of a user.
#ifndef REFERENCE_HOST_DESKTOP_MESSAGE_BOXES_H
#define REFERENCE_HOST_DESKTOP_MESSAGE_BOXES_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

class Message_box_catcher;

enum class Missing { proceed, cancel }; // lights or an environment that the shader needs
enum class Box_answer { ok, yes, no };

struct Box_policy {
    Missing missing = Missing::proceed;
    // The answer when an exporter asks whether it may replace a file. In an export it asks about
    // its own ones only: it writes into an empty stage.
    Box_answer replace = Box_answer::yes;

    // Asks the user a question of the plug-in, given its caption and text: yes or no. `missing`
    // counts where this is empty. It may show windows.
    std::function<Box_answer(const std::string&, const std::string&)> ask_user = {};
};

// The button's text.
const char* word_of(Box_answer answer);

struct Answered_box {
    std::string caption;
    std::string message;
    Box_answer answer = Box_answer::ok;
    bool is_missing_question = false;
};

// While it lives, no message box appears: each is answered at once. One at a time.
class Message_box_answers
{
public:
    explicit Message_box_answers(const Box_policy& policy);
    ~Message_box_answers();
    Message_box_answers(const Message_box_answers&) = delete;
    Message_box_answers& operator=(const Message_box_answers&) = delete;

    // The boxes so far, in order.
    const std::vector<Answered_box>& boxes() const { return m_boxes; }

    // Whether the user is being asked: a box that appears meanwhile is the host's own.
    bool is_asking() const { return m_is_asking; }

    // Decides on one box and notes it. Called by what catches the boxes.
    Box_answer answer(const std::string& caption, const std::string& message);

private:
    Box_answer answer_about_missing(const std::string& caption, const std::string& message);

    Box_policy m_policy;
    bool m_is_asking = false;
    std::vector<Answered_box> m_boxes;
    std::unique_ptr<Message_box_catcher> m_catcher;
};

} // namespace reference_host

#endif

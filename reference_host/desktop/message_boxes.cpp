#include "reference_host/desktop/message_boxes.h"

#include "reference_host/desktop/message_box_catcher.h"

namespace reference_host
{
namespace
{

constexpr const char* overwrite_question = "Do you want to replace it?";
constexpr const char* missing_question = "Are you sure you want to continue?";

bool contains(const std::string& text, const char* part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

const char* word_of(Box_answer answer)
{
    switch (answer) {
    case Box_answer::yes:
        return "Yes";
    case Box_answer::no:
        return "No";
    case Box_answer::ok:
        break;
    }
    return "OK";
}

Message_box_answers::Message_box_answers(const Box_policy& policy)
    : m_policy(policy), m_catcher(std::make_unique<Message_box_catcher>(*this))
{
}

Message_box_answers::~Message_box_answers() = default;

Box_answer Message_box_answers::answer_about_missing(const std::string& caption,
                                                     const std::string& message)
{
    if (!m_policy.ask_user)
        return m_policy.missing == Missing::cancel ? Box_answer::no : Box_answer::yes;
    m_is_asking = true;
    const Box_answer answer = m_policy.ask_user(caption, message);
    m_is_asking = false;
    return answer;
}

Box_answer Message_box_answers::answer(const std::string& caption, const std::string& message)
{
    Answered_box box{caption, message};
    box.is_missing_question = contains(message, missing_question);
    if (contains(message, overwrite_question))
        box.answer = m_policy.replace;
    else if (box.is_missing_question)
        box.answer = answer_about_missing(caption, message);
    m_boxes.push_back(box);
    return box.answer;
}

} // namespace reference_host

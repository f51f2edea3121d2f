#include "reference_host/app/message_boxes.h"

#include "reference_host/app/message_box_catcher.h"

#include <cstdio>
#include <iostream>

#include <unistd.h>

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

bool ask_on_terminal(const std::string& message)
{
    if (!isatty(STDIN_FILENO))
        return false;
    std::cerr << message << " [y/N] " << std::flush;
    std::string line;
    std::getline(std::cin, line);
    return !line.empty() && (line[0] == 'y' || line[0] == 'Y');
}

bool may_overwrite(Overwrite policy, const std::string& message)
{
    return policy == Overwrite::ask ? ask_on_terminal(message) : policy == Overwrite::yes;
}

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

// A message of several lines as one.
std::string on_one_line(const std::string& message)
{
    std::string line;
    for (const char c : message) {
        const bool is_blank = c == '\n' || c == ' ';
        if (!is_blank)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

} // namespace

Message_box_answers::Message_box_answers(const Box_policy& policy)
    : m_policy(policy), m_catcher(std::make_unique<Message_box_catcher>(*this))
{
}

Message_box_answers::~Message_box_answers() = default;

Box_answer Message_box_answers::answer(const std::string& caption, const std::string& message)
{
    Answered_box box{caption, message};
    box.is_overwrite_question = contains(message, overwrite_question);
    box.is_missing_question = contains(message, missing_question);
    if (box.is_overwrite_question)
        box.answer = may_overwrite(m_policy.overwrite, message) ? Box_answer::yes : Box_answer::no;
    else if (box.is_missing_question)
        box.answer = m_policy.missing == Missing::cancel ? Box_answer::no : Box_answer::yes;
    std::fprintf(stderr, "[%s] %s -> %s\n", caption.c_str(), on_one_line(message).c_str(),
                 word_of(box.answer));
    m_boxes.push_back(box);
    return box.answer;
}

} // namespace reference_host

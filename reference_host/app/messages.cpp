#include "reference_host/app/messages.h"

#include <cstdio>

namespace reference_host
{

std::string line_of(const Message& message)
{
    std::string place = message.place.file.empty() ? "shader-export" : message.place.file;
    if (message.place.line > 0)
        place += ":" + std::to_string(message.place.line);
    return place + (message.severity == Severity::error ? ": error: " : ": warning: ") +
           message.text;
}

void print_messages(const std::vector<Message>& messages)
{
    for (const Message& message : messages)
        std::fprintf(stderr, "%s\n", line_of(message).c_str());
}

void print_warning(const std::string& text)
{
    print_messages({{Severity::warning, text, {}}});
}

Failure::Failure(std::vector<Message> messages)
    : std::runtime_error(messages.empty() ? "" : messages.front().text),
      m_messages(std::move(messages))
{
}

} // namespace reference_host

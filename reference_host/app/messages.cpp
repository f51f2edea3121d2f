#include "reference_host/app/messages.h"

#include <cstdio>

namespace reference_host
{

std::string printable(std::string text)
{
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool is_second_set = byte == 0xc2 && next >= 0x80 && next < 0xa0; // in UTF-8
        if (is_second_set)
            text.erase(i + 1, 1);
        if (is_second_set || byte == 0x7f || (byte < 0x20 && byte != '\n' && byte != '\t'))
            text[i] = '?';
    }
    return text;
}

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
        std::fprintf(stderr, "%s\n", printable(line_of(message)).c_str());
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

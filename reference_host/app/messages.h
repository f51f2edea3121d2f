// What the program says on standard error, always in one form:
//
//   FILE:LINE: error: TEXT             about a place in a document
//   shader-export: warning: TEXT       about anything else
#ifndef REFERENCE_HOST_APP_MESSAGES_H
#define REFERENCE_HOST_APP_MESSAGES_H

#include "reference_host/options/generation.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace reference_host
{

using Message = Diagnostic;

// A text for a terminal: control characters in it, which could steer the terminal, are question
// marks. Names in documents may have any. Ends of lines and tabs stay.
std::string printable(std::string text);

std::string line_of(const Message& message);

// Each message on a line of standard error.
void print_messages(const std::vector<Message>& messages);

void print_warning(const std::string& text);

// What ends a command or an item of a batch: several messages, about documents for example.
class Failure : public std::runtime_error
{
public:
    explicit Failure(std::vector<Message> messages);

    const std::vector<Message>& messages() const { return m_messages; }

private:
    std::vector<Message> m_messages;
};

} // namespace reference_host

#endif

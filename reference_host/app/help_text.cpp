#include "reference_host/app/help_text.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <sys/ioctl.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

constexpr size_t left_column = 30;
constexpr size_t narrowest = 50;
constexpr size_t widest = 120;

// The words of a text on lines that end before `width`; the first one begins at `column`, the
// others at `indent`.
std::string wrapped(const std::string& text, size_t column, size_t indent, size_t width)
{
    std::istringstream words(text);
    std::string result;
    bool is_first = true;
    for (std::string word; words >> word; is_first = false) {
        if (!is_first && column + 1 + word.size() > width) {
            result += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (!is_first) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
    }
    return result;
}

std::string row(const std::string& head, const std::string& text, size_t width)
{
    std::string line = "  " + head;
    if (line.size() + 2 > left_column)
        line += "\n" + std::string(left_column, ' ');
    else
        line += std::string(left_column - line.size(), ' ');
    return line + wrapped(text, left_column, left_column, width) + "\n";
}

std::string rows(const char* title, const std::vector<Option_words>& options, bool arguments,
                 size_t width)
{
    std::string text;
    for (const Option_words& option : options) {
        if (option.is_argument == arguments)
            text +=
                row(heading_of(option),
                    option.help + (option.is_required && !arguments ? " (required)" : ""), width);
    }
    return text.empty() ? text : std::string("\n") + title + ":\n" + text;
}

std::string ending(const Command_words& command, size_t width)
{
    std::string text = "\nExit status:\n";
    for (const Exit_status& row_of_status : exit_statuses)
        text += row(row_of_status.status, row_of_status.meaning, width);
    return command.footer.empty() ? text : text + "\nExamples:\n" + command.footer + "\n";
}

} // namespace

size_t output_width()
{
    constexpr size_t usual = 80;
    winsize size = {};
    size_t width = usual;
    if (const char* columns = std::getenv("COLUMNS"); columns && std::atoi(columns) > 0)
        width = static_cast<size_t>(std::atoi(columns));
    else if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        width = size.ws_col;
    return std::clamp(width, narrowest, widest);
}

std::string heading_of(const Option_words& option)
{
    std::string text;
    for (const std::string& name : option.names)
        text += (text.empty() ? "" : ", ") + name;
    if (!option.is_argument && !option.value.empty())
        text += " " + option.value;
    return text + (option.is_repeated ? " ..." : "");
}

std::string usage_of(const Command_words& command)
{
    std::string text = command.name + " [OPTIONS]";
    for (const Option_words& option : command.options) {
        if (option.is_argument) {
            const std::string name = option.names.front() + (option.is_repeated ? "..." : "");
            text += option.is_required ? " " + name : " [" + name + "]";
        }
    }
    return text;
}

std::string help_of_command(const Command_words& command, const Command_words& shared, size_t width)
{
    std::string usage = "shader-export " + usage_of(command);
    for (const Option_words& option : command.options) {
        if (option.is_required && !option.is_argument)
            usage += " " + option.names.back() + " " + option.value;
    }
    return wrapped(command.help, 0, 0, width) + "\n\nUsage: " + wrapped(usage, 7, 9, width) + "\n" +
           rows("Arguments", command.options, true, width) +
           rows("Options", command.options, false, width) +
           rows("Options of all commands", shared.options, false, width) + ending(command, width);
}

std::string help_of_program(const Program_words& words, size_t width)
{
    std::string text = wrapped(words.program.help, 0, 0, width) +
                       "\n\nUsage: shader-export COMMAND [OPTIONS]...\n\nCommands:\n";
    for (const Command_words& command : words.commands)
        text += row(command.name, command.help, width);
    return text + rows("Options", words.program.options, false, width) +
           ending(words.program, width);
}

} // namespace reference_host

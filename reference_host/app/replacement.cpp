#include "reference_host/app/replacement.h"

#include <algorithm>
#include <cctype>
#include <iostream>

#include <unistd.h>

namespace reference_host
{
namespace
{

std::string question(const std::vector<Existing_file>& files)
{
    std::string text;
    for (const Existing_file& file : files) {
        text += (text.empty() ? "'" : ", '") + file.path + "'";
        text += file.was_edited ? " (edited since it was exported)" : "";
    }
    return text + (files.size() == 1 ? " exists" : " exist") +
           ". Replace? [y]es, [n]o, [a]ll, [s]kip all, [q]uit: ";
}

// The first letter of the answer in lower case; "q" at the end of the input.
char read_answer()
{
    std::string line;
    if (!std::getline(std::cin, line))
        return 'q';
    return line.empty() ? ' '
                        : static_cast<char>(std::tolower(static_cast<unsigned char>(line[0])));
}

} // namespace

Replacement::Decision Replacement::decide(const std::vector<Existing_file>& files)
{
    const bool is_edited = std::any_of(files.begin(), files.end(),
                                       [](const Existing_file& file) { return file.was_edited; });
    switch (m_policy.overwrite) {
    case Overwrite::yes:
        return is_edited && !m_policy.edited ? ask(files) : Decision::replace;
    case Overwrite::backup:
        return Decision::back_up;
    case Overwrite::skip:
        return Decision::skip;
    case Overwrite::no:
        return Decision::refuse;
    case Overwrite::ask:
        break;
    }
    return ask(files);
}

Replacement::Decision Replacement::ask(const std::vector<Existing_file>& files)
{
    while (isatty(STDIN_FILENO) && !m_has_quit) {
        std::cerr << question(files) << std::flush;
        switch (read_answer()) {
        case 'a':
            m_policy = {Overwrite::yes, true};
            return Decision::replace;
        case 'y':
            return Decision::replace;
        case 's':
            m_policy = {Overwrite::skip, false};
            return Decision::skip;
        case 'n':
            return Decision::skip;
        case 'q':
            m_has_quit = true;
            break;
        default: // asked again
            break;
        }
    }
    return Decision::refuse;
}

} // namespace reference_host

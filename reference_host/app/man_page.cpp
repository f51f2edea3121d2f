#include "reference_host/app/man_page.h"

#include "reference_host/app/help_text.h"
#include "reference_host/output/write_failure.h"

#include <cctype>
#include <sstream>

namespace reference_host
{
namespace
{

// A text as troff reads it: dashes stay dashes, and no line begins with a request.
std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else if ((c == '.' || c == '\'') && (result.empty() || result.back() == '\n'))
            result += std::string("\\&") + c;
        else
            result += c;
    }
    return result;
}

std::string upper_case(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string section(const char* title, const std::string& text)
{
    return text.empty() ? text : std::string(".SH ") + title + "\n" + text;
}

std::string item(const std::string& head, const std::string& text)
{
    return ".TP\n" + head + "\n" + escaped(text) + "\n";
}

std::string head_of(const Option_words& option)
{
    std::string text;
    for (const std::string& name : option.names)
        text += (text.empty() ? "" : ", ") + ("\\fB" + escaped(name) + "\\fR");
    if (!option.is_argument && !option.value.empty())
        text += " \\fI" + escaped(option.value) + "\\fR";
    return text;
}

std::string items(const std::vector<Option_words>& options)
{
    std::string text;
    for (const Option_words& option : options)
        text += item(head_of(option), option.help + (option.is_required ? " (required)." : ".") +
                                          (option.is_repeated ? " May be repeated." : ""));
    return text;
}

std::string title(const std::string& name)
{
    return ".TH " + upper_case(name) + " 1 \"\" \"shader\\-export " TOVIRAEXPORT_VERSION "\"\n";
}

std::string exit_status_section()
{
    std::string text;
    for (const Exit_status& row : exit_statuses)
        text += item(std::string("\\fB") + row.status + "\\fR", std::string(row.meaning) + ".");
    return section("EXIT STATUS", text);
}

std::string examples(const Command_words& command)
{
    return command.footer.empty()
               ? ""
               : section("EXAMPLES", ".nf\n" + escaped(command.footer) + "\n.fi\n");
}

std::string configuration_sections()
{
    const std::string file = escaped(usual_configuration);
    return section("ENVIRONMENT",
                   "Every option has a variable: \\fB" + escaped(variable_of("--texture-paths")) +
                       "\\fR is the default of \\fB\\-\\-texture\\-paths\\fR. The configuration "
                       "comes before the environment, the command line before both.\n") +
           section("FILES", ".TP\n\\fI" + file +
                                "\\fR\nThe configuration: \\fIOPTION = VALUE\\fR for every command "
                                "that has the option, in sections \\fB[COMMAND]\\fR for one, in "
                                "sections \\fB[preset.NAME]\\fR and \\fB[preset.NAME.COMMAND]\\fR "
                                "where \\fB\\-\\-preset NAME\\fR is given.\n");
}

std::string see_also(const Program_words& words, const std::string& but)
{
    std::string text;
    if (!but.empty())
        text = ".BR shader\\-export (1)";
    for (const Command_words& command : words.commands) {
        if (command.name != but)
            text += (text.empty() ? "" : ",\n") +
                    (".BR shader\\-export\\-" + escaped(command.name)) + " (1)";
    }
    return section("SEE ALSO", text + "\n");
}

} // namespace

void write_man_pages(const Program_words& words, const std::string& folder)
{
    const std::string start = folder + "/shader-export";
    write_text(start + ".1", man_page_of_program(words));
    for (const Command_words& command : words.commands)
        write_text(start + "-" + command.name + ".1", man_page_of_command(words, command));
}

std::string man_page_of_program(const Program_words& words)
{
    std::string commands;
    for (const Command_words& command : words.commands)
        commands += item("\\fB" + escaped(command.name) + "\\fR", command.help + ".");
    return title("shader\\-export") +
           section("NAME", "shader\\-export \\- export MaterialX documents as shaders\n") +
           section("SYNOPSIS", ".B shader\\-export\n\\fICOMMAND\\fR [\\fIOPTIONS\\fR]\n") +
           section("DESCRIPTION", escaped(words.program.help) + ".\n") +
           section("COMMANDS", commands) + section("OPTIONS", items(words.program.options)) +
           configuration_sections() + exit_status_section() + examples(words.program) +
           see_also(words, {});
}

std::string man_page_of_command(const Program_words& words, const Command_words& command)
{
    const std::string name = "shader\\-export\\-" + escaped(command.name);
    return title(name) + section("NAME", name + " \\- " + escaped(command.help) + "\n") +
           section("SYNOPSIS", ".B shader\\-export\n" + escaped(usage_of(command)) + "\n") +
           section("DESCRIPTION", escaped(command.help) + ".\n") +
           section("OPTIONS", items(command.options) + items(words.program.options)) +
           exit_status_section() + examples(command) + see_also(words, command.name);
}

} // namespace reference_host

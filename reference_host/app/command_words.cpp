#include "reference_host/app/command_words.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <iterator>

namespace reference_host
{
namespace
{

constexpr const char* path_values[] = {"FILE",        "FOLDER",    "DIR",     "PATH",
                                       "INPUT",       "FILE.json", "LIBRARY", "FILE.png",
                                       "NAME[:FILE]", "PICTURE",   "FILE.xml"};

bool is_hidden(const CLI::Option& option)
{
    return option.get_group().empty();
}

Option_words words_of_option(const CLI::Option& option)
{
    Option_words words;
    words.is_argument = option.get_positional();
    if (words.is_argument) {
        words.names = {option.get_name()};
        const std::string type = option.get_type_name();
        words.value = type.find('|') != std::string::npos ? type : words.names.front();
    }
    for (const std::string& name : option.get_snames())
        words.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        words.names.push_back("--" + name);
    if (!words.is_argument && option.get_expected_max() > 0)
        words.value = option.get_type_name();
    words.help = option.get_description();
    const bool depends_on_user = !option.get_configurable(); // where the configuration lies
    if (!option.get_default_str().empty() && !depends_on_user)
        words.help += " (default: " + option.get_default_str() + ")";
    words.is_required = option.get_required();
    words.is_repeated = option.get_expected_max() > 1;
    return words;
}

void add_options(const CLI::App& app, bool arguments, std::vector<Option_words>& list)
{
    for (const CLI::Option* option : app.get_options()) {
        const bool is_shared = app.get_parent() && option == app.get_help_ptr();
        if (!is_hidden(*option) && !is_shared && option->get_positional() == arguments)
            list.push_back(words_of_option(*option));
    }
}

} // namespace

std::vector<std::string> Option_words::choices() const
{
    std::vector<std::string> words;
    const bool is_choice = value.find('|') != std::string::npos && value.find('=') > value.size();
    for (size_t start = 0; is_choice && start <= value.size();) {
        const size_t end = std::min(value.find('|', start), value.size());
        words.push_back(value.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

bool Option_words::is_path() const
{
    return std::find(std::begin(path_values), std::end(path_values), value) !=
           std::end(path_values);
}

std::string variable_of(const std::string& option)
{
    std::string name = variable_prefix;
    for (const char c : option.substr(option.find_first_not_of('-')))
        name += c == '-' ? '_' : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return name;
}

Command_words words_of(const CLI::App& command)
{
    Command_words words;
    words.name = command.get_name();
    words.help = command.get_description();
    words.footer = command.get_footer();
    add_options(command, true, words.options);
    add_options(command, false, words.options);
    return words;
}

Program_words words_of_program(const CLI::App& app)
{
    Program_words words;
    words.program = words_of(app);
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        words.commands.push_back(words_of(*command));
    return words;
}

} // namespace reference_host

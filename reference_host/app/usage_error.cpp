#include "reference_host/app/usage_error.h"

#include "reference_host/system/suggestion.h"

#include <CLI/CLI.hpp>

#include <stdexcept>
#include <vector>

namespace reference_host
{
namespace
{

bool is_option(const std::string& word)
{
    return word.size() > 1 && word.front() == '-' && word != "--";
}

std::vector<const CLI::App*> all_commands(const CLI::App& app)
{
    return app.get_subcommands([](const CLI::App*) { return true; });
}

std::string unknown_command(const CLI::App& app, const std::string& word)
{
    std::vector<std::string> names;
    for (const CLI::App* command : all_commands(app))
        names.push_back(command->get_name());
    return "unknown command '" + word + "'" + suggestion(word, names);
}

std::string unknown_option(const CLI::App& app, const CLI::App& command, const std::string& word)
{
    std::vector<std::string> names;
    for (const CLI::App* holder : {&command, &app}) {
        for (const CLI::Option* option : holder->get_options()) {
            for (const std::string& name : option->get_lnames())
                names.push_back("--" + name);
        }
    }
    const std::string name = word.substr(0, word.find('='));
    return "unknown option '" + name + "'" + suggestion(name, names);
}

} // namespace

const CLI::App& find_command(const CLI::App& app, const std::string& name)
{
    for (const CLI::App* command : all_commands(app)) {
        if (command->get_name() == name)
            return *command;
    }
    throw std::invalid_argument(unknown_command(app, name));
}

std::string usage_error(const CLI::App& app, const CLI::ParseError& error)
{
    const std::vector<CLI::App*> given = app.get_subcommands();
    const CLI::App& command = given.empty() ? app : *given.front();
    for (const std::string& word : app.remaining(true)) {
        if (is_option(word))
            return unknown_option(app, command, word);
        if (given.empty())
            return unknown_command(app, word);
    }
    return error.what();
}

} // namespace reference_host

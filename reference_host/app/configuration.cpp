#include "reference_host/app/configuration.h"

#include "reference_host/app/command_words.h"
#include "reference_host/system/file_access.h"
#include "reference_host/system/suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>

namespace reference_host
{
namespace
{

constexpr const char* preset_section = "preset";

std::string variable(const std::string& name)
{
    const char* value = std::getenv(name.c_str());
    return value ? value : "";
}

std::string configuration_file()
{
    const std::string named = variable(variable_of("--config"));
    if (!named.empty()) {
        if (const std::string reason = why_not_readable(named); !reason.empty())
            throw std::runtime_error("the configuration '" + named + "' cannot be read: " + reason);
        return named;
    }
    const std::string folder = variable("XDG_CONFIG_HOME");
    return (folder.empty() ? variable("HOME") + "/.config" : folder) + "/shader-export/config.toml";
}

// Why an existing file cannot be the configuration. A missing one is reported later.
std::string why_not_a_configuration(const std::string& file)
{
    constexpr std::uintmax_t max_size = 1 << 20;
    std::error_code failure;
    return std::filesystem::exists(file, failure) ? open_to_read(file, max_size).reason : "";
}

bool has_option(const CLI::App& command, const std::string& name)
{
    return command.get_option_no_throw("--" + name) != nullptr;
}

// Reads the file as CLI11 does, and keeps what is meant for the running command.
class Configuration_reader : public CLI::ConfigTOML
{
public:
    explicit Configuration_reader(const CLI::App& app) : m_app(app) {}

    void set_preset(const CLI::Option& preset) { m_preset = &preset; }

    std::vector<CLI::ConfigItem> from_config(std::istream& stream) const override
    {
        std::map<Rank, std::vector<CLI::ConfigItem>> ranks;
        const std::string chosen = chosen_preset();
        for (CLI::ConfigItem& item : CLI::ConfigTOML::from_config(stream)) {
            const bool is_section = item.name == "++" || item.name == "--";
            const bool has_preset = item.parents.size() > 1 && item.parents[0] == preset_section;
            const std::string preset = has_preset ? item.parents[1] : chosen;
            if (has_preset) {
                m_presets.insert(preset);
                item.parents.erase(item.parents.begin(), item.parents.begin() + 2);
            }
            const bool is_general = item.parents.empty();
            if (is_section || !is_for_command(item) || preset != chosen)
                continue;
            item.parents = {m_app.get_subcommands().front()->get_name()};
            ranks[{!has_preset, is_general}].push_back(item);
        }
        std::vector<CLI::ConfigItem> items;
        for (const auto& rank : ranks)
            items.insert(items.end(), rank.second.begin(), rank.second.end());
        return items;
    }

    void check_preset(const std::string& name) const
    {
        if (m_presets.count(name) == 0)
            throw std::invalid_argument("there is no preset '" + name + "'" +
                                        suggestion(name, {m_presets.begin(), m_presets.end()}));
    }

private:
    // Of several values the first one counts: that of the preset, and that of the command's
    // section.
    using Rank = std::pair<bool, bool>; // of no preset, of no section

    std::string chosen_preset() const
    {
        return m_preset->count() > 0 ? m_preset->results().front()
                                     : variable(variable_of("--preset"));
    }

    // Whether the running command has the option, in its own section or in none. Throws when no
    // command has it.
    bool is_for_command(const CLI::ConfigItem& item) const
    {
        const auto commands = m_app.get_subcommands([](const CLI::App*) { return true; });
        std::vector<std::string> sections;
        bool is_known = false;
        for (const CLI::App* command : commands) {
            sections.push_back(command->get_name());
            const bool is_meant = item.parents.empty() || item.parents[0] == command->get_name();
            is_known = is_known || (is_meant && has_option(*command, item.name));
        }
        if (!item.parents.empty() &&
            std::find(sections.begin(), sections.end(), item.parents[0]) == sections.end())
            throw std::invalid_argument("the configuration has an unknown section '" +
                                        item.parents[0] + "'" +
                                        suggestion(item.parents[0], sections));
        if (!is_known)
            throw std::invalid_argument("the configuration has an unknown option '" +
                                        item.fullname() + "'");
        const auto at_work = m_app.get_subcommands();
        return !at_work.empty() && has_option(*at_work.front(), item.name) &&
               (item.parents.empty() || item.parents[0] == at_work.front()->get_name());
    }

    const CLI::App& m_app;
    const CLI::Option* m_preset = nullptr;
    mutable std::set<std::string> m_presets; // that the file has
};

// Those of other commands must not run: commands may share what their options fill.
void add_variables(CLI::App& app)
{
    for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; }))
        command->preparse_callback([command](size_t) {
            for (CLI::Option* option : command->get_options()) {
                if (option != command->get_help_ptr() && !option->get_lnames().empty())
                    option->envname(variable_of("--" + option->get_lnames().front()));
            }
        });
}

} // namespace

void add_configuration(CLI::App& app)
{
    const auto reader = std::make_shared<Configuration_reader>(app);
    app.set_config("--config", configuration_file(),
                   "The configuration (default: shader-export/config.toml in ~/.config)")
        ->check(CLI::Validator(why_not_a_configuration, ""))
        ->type_name("FILE");
    app.config_formatter(reader);
    CLI::Option* preset = app.add_option_function<std::string>(
        "--preset", [reader](const std::string& name) { reader->check_preset(name); },
        "The options that the configuration has under this name");
    preset->type_name("NAME")->configurable(false)->envname(variable_of("--preset"));
    reader->set_preset(*preset);
    add_variables(app);
}

} // namespace reference_host

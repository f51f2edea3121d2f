// Options that come from the environment, from the configuration and from its presets.
#include "tests/host/program.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace
{

class Configuration : public Program
{
protected:
    // Plans a batch with a configuration, in an environment "NAME=VALUE ...", and returns which of
    // the volumes it asks for.
    std::string volume(const std::string& configuration, const std::string& environment,
                       const std::vector<std::string>& more = {})
    {
        m_folder.write("config.toml", configuration);
        std::vector<std::string> arguments = {"plan",     sample("wood_textured"),
                                              "-e",       "5",
                                              "-o",       "plan.json",
                                              "--format", "json",
                                              "--output", "x",
                                              "--plugin", PLUGIN,
                                              "--config", "config.toml"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        run(arguments, environment);
        EXPECT_EQ(0, m_status) << m_errors;
        const std::string plan = m_folder.read("plan.json");
        const std::string option = "--volume=";
        const size_t at = plan.find(option);
        return at == std::string::npos
                   ? ""
                   : plan.substr(at + option.size(), plan.find('"', at) - at - option.size());
    }
};

} // namespace

TEST_F(Configuration, of_the_command_line_beats_the_file_and_that_the_environment)
{
    const std::string variable = "TOVIRAEXPORT_VOLUME=environment";
    EXPECT_EQ("", volume("", ""));
    EXPECT_EQ("environment", volume("", variable));
    EXPECT_EQ("file", volume("volume = \"file\"", variable));
    EXPECT_EQ("line", volume("volume = \"file\"", variable, {"--volume", "line"}));
}

TEST_F(Configuration, of_the_environment_is_that_of_the_command_at_work)
{
    run({"list", "--plugin", PLUGIN}, "TOVIRAEXPORT_PLUGIN=none.so TOVIRAEXPORT_SEARCH_PATH=none");
    EXPECT_EQ(0, m_status);
    EXPECT_EQ("", m_errors);
}

TEST_F(Configuration, is_for_all_commands_or_in_sections_for_one)
{
    EXPECT_EQ("plan", volume("volume = \"all\"\n[plan]\nvolume = \"plan\"\n"
                             "[export]\nvolume = \"export\"\n",
                             ""));
    EXPECT_EQ("all", volume("volume = \"all\"\njobs = 2\n[export]\nvolume = \"export\"\n", ""))
        << "plan has no jobs";
}

TEST_F(Configuration, has_presets_with_names)
{
    const std::string file = "volume = \"all\"\n[plan]\nvolume = \"plan\"\n"
                             "[preset.night]\nvolume = \"night\"\n"
                             "[preset.day]\nvolume = \"day\"\n"
                             "[preset.day.plan]\nvolume = \"day plan\"\n";
    EXPECT_EQ("plan", volume(file, ""));
    EXPECT_EQ("night", volume(file, "", {"--preset", "night"}));
    EXPECT_EQ("day plan", volume(file, "", {"--preset", "day"}));
    EXPECT_EQ("night", volume(file, "TOVIRAEXPORT_PRESET=night"));
    EXPECT_EQ("line", volume(file, "", {"--preset", "night", "--volume", "line"}));
}

TEST_F(Configuration, may_hold_lists_and_flags)
{
    volume("light = [\"key:spot\", \"fill\"]\noverwrite-edited = true\n", "");
    EXPECT_THAT(m_folder.read("plan.json"), HasSubstr("\"--light=key:spot\""));
    EXPECT_THAT(m_folder.read("plan.json"), HasSubstr("\"--light=fill\""));
    EXPECT_THAT(m_folder.read("plan.json"), HasSubstr("\"--overwrite-edited\""));
}

TEST_F(Configuration, is_found_where_the_user_has_it)
{
    m_folder.write("home/.config/shader-export/config.toml", "[export]\nkind = \"soft\"\n");
    m_folder.write("xdg/shader-export/config.toml", "[export]\nkind = \"warm\"\n");
    m_folder.write("mine.toml", "[export]\nkind = \"cold\"\n");
    const struct {
        const char* environment;
        const char* kind;
    } rows[] = {
        {"env -u XDG_CONFIG_HOME HOME=home", "'soft'"},
        {"XDG_CONFIG_HOME=xdg HOME=home", "'warm'"},
        {"TOVIRAEXPORT_CONFIG=mine.toml XDG_CONFIG_HOME=xdg", "'cold'"},
    };
    for (const auto& row : rows) {
        run({"export", sample("wood_textured"), "-e", "5", "-o", "x"}, row.environment);
        EXPECT_EQ(2, m_status);
        EXPECT_THAT(m_errors, HasSubstr(row.kind));
    }
}

TEST_F(Configuration, that_makes_no_sense_is_an_error)
{
    const struct {
        const char* file;
        std::vector<std::string> arguments;
        const char* error;
    } rows[] = {
        {"jbos = 2", {}, "error: the configuration has an unknown option 'jbos'"},
        {"[batch]\njobs = 2\n[bacht]\njobs = 2",
         {},
         "error: the configuration has an unknown section 'bacht'; did you mean 'batch'?"},
        {"[preset.night]\njobs = 2",
         {"--preset", "nihgt"},
         "error: there is no preset 'nihgt'; did you mean 'night'?"},
        {"", {"--config", "none.toml"}, "none.toml"},
        {"overwrite = \"maybe\"", {}, "'maybe' is not ask|yes|no|skip|backup"},
    };
    for (const auto& row : rows) {
        m_folder.write("config.toml", row.file);
        std::vector<std::string> arguments = {
            "batch", sample("wood_textured"), "-o", "x", "--plugin", PLUGIN};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        run(arguments, row.arguments.empty() || row.arguments[0] != "--config"
                           ? "TOVIRAEXPORT_CONFIG=config.toml"
                           : "");
        EXPECT_EQ(2, m_status) << m_errors;
        EXPECT_THAT(m_errors, HasSubstr(row.error));
    }
    run({"list"}, "TOVIRAEXPORT_CONFIG=none.toml");
    EXPECT_EQ(1, m_status);
    EXPECT_THAT(m_errors, HasSubstr("the configuration 'none.toml' cannot be read"));
}

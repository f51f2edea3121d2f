// What the command line understands, in words: the help, the man pages and the completions of
// shells are all made of this, and this of the declaration of the commands.
#ifndef REFERENCE_HOST_APP_COMMAND_WORDS_H
#define REFERENCE_HOST_APP_COMMAND_WORDS_H

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace reference_host
{

struct Option_words {
    std::vector<std::string>
        names;         // "-o", "--output"; of an argument without name its place: "FILE"
    std::string value; // "FILE", "yes|no"; empty: a flag
    std::string help;
    bool is_argument = false; // without name
    bool is_required = false;
    bool is_repeated = false;

    // The words to choose the value from; none: any value.
    std::vector<std::string> choices() const;

    // Whether the value is the name of a file or folder.
    bool is_path() const;
};

struct Command_words {
    std::string name;
    std::string help;
    std::string footer;                // examples, each on a line
    std::vector<Option_words> options; // the arguments first
};

struct Program_words {
    Command_words program; // with the options that all commands share
    std::vector<Command_words> commands;
};

struct Exit_status {
    const char* status;
    const char* meaning;
};

constexpr Exit_status exit_statuses[] = {
    {"0", "Done"},
    {"1", "Not done; standard error says why"},
    {"2", "Wrong usage; nothing was done"},
    {"128+N", "Ended by the signal N, for example 130 by Ctrl-C"},
};

// Where the configuration is looked for, and the beginning of the names of all variables.
constexpr const char* usual_configuration = "~/.config/shader-export/config.toml";
constexpr const char* variable_prefix = "TOVIRAEXPORT_";

// "--texture-paths" -> "TOVIRAEXPORT_TEXTURE_PATHS".
std::string variable_of(const std::string& option);

Command_words words_of(const CLI::App& command);
Program_words words_of_program(const CLI::App& app);

} // namespace reference_host

#endif

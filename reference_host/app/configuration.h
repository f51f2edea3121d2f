// Where options come from besides the command line:
//
//   defaults < environment < configuration file < preset of the file < command line
//
// The environment has a variable for every option ("--light": TOVIRAEXPORT_LIGHT). The file holds
//
//   jobs = 2                            for every command that has the option
//   [batch]                             for one command
//   report = "night.json"
//   [preset.night]                      where --preset night is given
//   light = ["key:directional", "fill:point"]
//   [preset.night.batch]
//   exporter = ["Maya", "Custom GLSL"]
#ifndef REFERENCE_HOST_APP_CONFIGURATION_H
#define REFERENCE_HOST_APP_CONFIGURATION_H

namespace CLI
{
class App;
}

namespace reference_host
{

// Adds --config and --preset, and the variables of all options. Called when the program has all its
// commands. While the command line is parsed, std::invalid_argument is thrown for words in the file
// that no command knows and for a preset that it does not have. Throws std::runtime_error for a
// file that TOVIRAEXPORT_CONFIG names and that cannot be read.
void add_configuration(CLI::App& app);

} // namespace reference_host

#endif

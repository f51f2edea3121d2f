// What is wrong with a command line, with the word that may have been meant.
#ifndef REFERENCE_HOST_APP_USAGE_ERROR_H
#define REFERENCE_HOST_APP_USAGE_ERROR_H

#include <string>

namespace CLI
{
class App;
class ParseError;
} // namespace CLI

namespace reference_host
{

// The command of that name. Throws std::invalid_argument, with the nearest one, when there is none.
const CLI::App& find_command(const CLI::App& app, const std::string& name);

// The message for a command line that `app` could not parse: the first command or option that does
// not exist, where there is one; else what the parser says.
std::string usage_error(const CLI::App& app, const CLI::ParseError& error);

} // namespace reference_host

#endif

// The help of the program and of its commands, wrapped to the terminal.
#ifndef REFERENCE_HOST_APP_HELP_TEXT_H
#define REFERENCE_HOST_APP_HELP_TEXT_H

#include "reference_host/app/command_words.h"

#include <string>

namespace reference_host
{

// How many columns a text for standard output may have: what COLUMNS says, else the terminal, else
// 80.
size_t output_width();

std::string help_of_program(const Program_words& words, size_t width);

// `shared` are the options of the program that the command takes too.
std::string help_of_command(const Command_words& command, const Command_words& shared,
                            size_t width);

// "export [OPTIONS] FILE".
std::string usage_of(const Command_words& command);

// "-o, --output PATH".
std::string heading_of(const Option_words& option);

} // namespace reference_host

#endif

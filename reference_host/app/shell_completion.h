// Scripts that complete the command line of the program in shells.
#ifndef REFERENCE_HOST_APP_SHELL_COMPLETION_H
#define REFERENCE_HOST_APP_SHELL_COMPLETION_H

#include "reference_host/app/command_words.h"

#include <string>

namespace reference_host
{

enum class Shell { bash, zsh, fish };

std::string completion_script(const Program_words& words, Shell shell);

} // namespace reference_host

#endif

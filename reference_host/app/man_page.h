// The man pages: one of the program, one of each command.
#ifndef REFERENCE_HOST_APP_MAN_PAGE_H
#define REFERENCE_HOST_APP_MAN_PAGE_H

#include "reference_host/app/command_words.h"

#include <string>

namespace reference_host
{

std::string man_page_of_program(const Program_words& words);
std::string man_page_of_command(const Program_words& words, const Command_words& command);

// Writes all pages into a folder: "shader-export.1", "shader-export-COMMAND.1". Throws
// Write_failure.
void write_man_pages(const Program_words& words, const std::string& folder);

} // namespace reference_host

#endif

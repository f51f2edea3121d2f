// Names for files that come from texts that nobody checked: names of nodes and exporters.
#ifndef REFERENCE_HOST_OUTPUT_FILE_NAMES_H
#define REFERENCE_HOST_OUTPUT_FILE_NAMES_H

#include <string>

namespace reference_host
{

// A name of one file in one folder, whatever the text is: it holds no separator, is neither "." nor
// "..", is not hidden, is not taken for an option, and leaves room for extensions. What a name
// cannot hold becomes "_":
//   "Wood" -> "Wood"    "Planks/grain" -> "Planks_grain"    "../../x" -> "_._.._x"    "" -> "_"
// Different texts may give the same name.
std::string safe_file_name(const std::string& text);

// A short name in lower case for a folder: "Custom CgFX (.cgfx)" -> "custom_cgfx_cgfx". As safe.
std::string folder_name(const std::string& text);

} // namespace reference_host

#endif

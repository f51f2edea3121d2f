// What the user's --output means.
#ifndef REFERENCE_HOST_APP_OUTPUT_PLACE_H
#define REFERENCE_HOST_APP_OUTPUT_PLACE_H

#include <string>

namespace reference_host
{

// The word that stands for standard output.
constexpr const char* standard_output = "-";

// The export file name for a node:
//   "folder/wood"    as it stands, also with an extension
//   "folder/", "."   a folder: the node's name in it; one that ends in a slash is made when missing
// Throws std::invalid_argument when it is empty, and Write_failure when the folder cannot be made.
std::string export_file_name(const std::string& output, const std::string& node_name);

// Makes a folder and those above it. Throws Write_failure.
void make_folder(const std::string& folder);

} // namespace reference_host

#endif

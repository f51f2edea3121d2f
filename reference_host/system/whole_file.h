// Files that are replaced at once.
#ifndef REFERENCE_HOST_SYSTEM_WHOLE_FILE_H
#define REFERENCE_HOST_SYSTEM_WHOLE_FILE_H

#include <string>

namespace reference_host
{

// Writes a file. Whatever ends the program meanwhile, either the old file or the whole new one is
// there, and nothing beside it. A file that is replaced keeps its permissions; what a link names is
// replaced, not the link. Returns why the file cannot be written; empty when it is.
//
// Where the disk has no files without a name, or the folder takes no new ones, the file is written
// in its place instead, and may be cut short.
std::string write_whole_file(const std::string& path, const std::string& content);

} // namespace reference_host

#endif

// The files that the library reads and writes. Names are bytes, as the system has them.
//
// Nothing here waits: a name may be that of a pipe that nobody reads or writes, of a device or of a
// folder, and the host's user-interface thread must not hang on it.
#ifndef EXPORTER_BASE_FILES_H
#define EXPORTER_BASE_FILES_H

#include <initializer_list>
#include <string>
#include <string_view>

namespace QZ
{
namespace TOVIRAEXPORT
{

// Whether there is a regular file of that name, links followed.
bool is_regular_file(const char* name);

// Reads a regular file up to its end or its first NUL, whichever comes first. False, with `text`
// unspecified, when the name is that of anything else, or the file cannot be opened or read.
bool read_text_file(const std::string& name, std::string& text);

enum Write_result { WRITE_DONE, WRITE_OPEN_FAILED, WRITE_FAILED };

// Creates or truncates a file and writes the pieces one after the other. Succeeds only when all
// bytes have reached the file and closing it succeeded: a full quota or a network disk reports only
// then. What was written before a failure stays.
//
// A pipe that nobody reads fails to open; one whose reader stops reading fails after a second.
Write_result write_file(const std::string& name, std::initializer_list<std::string_view> pieces);

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

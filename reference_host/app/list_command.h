// What the plug-in has on offer.
#ifndef REFERENCE_HOST_APP_LIST_COMMAND_H
#define REFERENCE_HOST_APP_LIST_COMMAND_H

#include <string>

namespace reference_host
{

// Prints the exporters of a plug-in (empty: the usual one), one per line: index, name. As JSON it
// is an array with what the project's table of exporters knows besides, which is nothing of an
// exporter of another name: the folder that batch gives it, language, kinds of shaders, and files,
// each with suffix, text and the kind by which scripts/accept.sh knows its checkers. Returns 0.
int list_exporters(const std::string& plugin, bool as_json);

} // namespace reference_host

#endif

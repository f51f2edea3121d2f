// What there is: the exporters of the plug-in, the nodes of a document.
#ifndef REFERENCE_HOST_APP_LIST_COMMAND_H
#define REFERENCE_HOST_APP_LIST_COMMAND_H

#include <string>
#include <vector>

namespace reference_host
{

// Prints the exporters of a plug-in (empty: the usual one), one per line: index, name; below each
// the options of its panel. As JSON it is an array that adds what the project's table of exporters
// knows, which is nothing about an exporter of another name: the folder that batch gives it,
// language, kinds of shaders, and files, each with suffix, text and the kind by which
// scripts/accept.sh knows its checkers. Returns 0.
int list_exporters(const std::string& plugin, bool as_json);

struct Nodes_command {
    std::string document;
    std::vector<std::string> search_path;
    bool as_json = false;
};

// Prints the nodes of the document, one per line: name, category, type, file and line. As JSON it
// is an array of the same. Returns 0.
int list_nodes(const Nodes_command& command);

} // namespace reference_host

#endif

// What goes into a generation besides the graph, and what comes out besides the texts.
#ifndef REFERENCE_HOST_OPTIONS_GENERATION_H
#define REFERENCE_HOST_OPTIONS_GENERATION_H

#include "reference_host/document/shader_graph.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace reference_host
{

// Options by name. Texts are bytes.
using Option_set = std::map<std::string, std::string>;

enum class Severity { warning, error };

struct Diagnostic {
    Severity severity;
    std::string text; // one line without its end; names the node, its category and the reason
    Place place;      // empty file: not about a place in a document
};

using Diagnostics = std::vector<Diagnostic>;

// Whether one of them is an error.
bool has_errors(const Diagnostics& diagnostics);

struct Generator_settings {
    // How the file name of an image stands in the text. Receives the name as the reader resolved it
    // (prefix applied). Empty: the name as it is.
    std::function<std::string(const std::string&)> texture_path;
};

} // namespace reference_host

#endif

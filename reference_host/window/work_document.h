// One document in the window, with what the user has chosen for it.
#ifndef REFERENCE_HOST_WINDOW_WORK_DOCUMENT_H
#define REFERENCE_HOST_WINDOW_WORK_DOCUMENT_H

#include "reference_host/app/export_request.h"
#include "reference_host/document/materialx_reader.h"

#include <map>
#include <string>
#include <vector>

namespace reference_host
{

// What the user has set on one exporter's panel.
struct Exporter_choice {
    std::vector<Option_setting> options; // none: as the panel comes
    std::string output;                  // the export file name; empty: see Work_document::output
};

struct Work_document {
    Scene_request scene;  // the document's file, the chosen node, what surrounds it
    std::string exporter; // its name; empty: the plug-in's first
    std::map<std::string, Exporter_choice> choices; // by the exporter's name
    Read_result content;                            // without graph when the file cannot be read

    // The node that is exported; null when the document cannot be read or has none to export.
    const Node* node() const;

    // The export file name of the chosen exporter: the user's, else the node's name beside the
    // document.
    std::string output() const;
    std::string usual_output() const;

    // The node's file and line are all that a message knows: the node there, or null.
    const Node* node_at(const Place& place) const;

    // The node that a line of code came from, the first line being 1: code names variables and
    // functions after nodes, so it is the one named there, else in the nearest line above, else
    // below. Null when there is none.
    const Node* node_near(const std::string& code, int line) const;
};

} // namespace reference_host

#endif

// What the commands of the program do. All return the program's exit status: 0 done, 1 not done,
// with the reason on standard error. They throw std::invalid_argument for what the user asked
// wrongly and std::runtime_error for what went wrong, each with a message.
#ifndef REFERENCE_HOST_APP_COMMANDS_H
#define REFERENCE_HOST_APP_COMMANDS_H

#include "reference_host/app/export_request.h"

#include <string>
#include <vector>

namespace reference_host
{

// Prints the nodes of the document, one per line: name, category, type, file and line.
int list_nodes(const std::string& document, const std::vector<std::string>& search_path);

struct Export_command {
    Scene_request scene;
    std::string plugin; // empty: the usual place
    std::string exporter;
    std::string output;
};

// Exports one node through one exporter.
int export_document(const Export_command& command);

struct Batch_command {
    Scene_request scene;
    std::string plugin;
    std::vector<std::string> exporters; // none: all
    std::string folder;                 // made when missing
};

// Exports one node through several exporters. Each writes into a folder of its own below `folder`,
// named after it, so that equal file names do not meet. Prints one line per exporter.
int export_batch(const Batch_command& command);

struct Panel_command {
    std::string plugin;
    std::string exporter;
    std::string screenshot; // PNG file; empty: none
    int width = 400;        // of the host's area, in pixels
};

// Shows an exporter's panel, prints the height it asks for and its options, takes a picture.
int show_panel(const Panel_command& command);

// Opens a window on the document: choice of exporter, its panel, a button that exports. Returns
// when the window is closed.
int show_window(const Scene_request& scene, const std::string& plugin);

} // namespace reference_host

#endif

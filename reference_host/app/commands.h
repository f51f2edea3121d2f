// What the commands of the program do. All return the program's exit status: 0 done, 1 not done,
// with the reason on standard error. They throw std::invalid_argument for wrong usage and
// std::runtime_error for any other failure, each with a message.
#ifndef REFERENCE_HOST_APP_COMMANDS_H
#define REFERENCE_HOST_APP_COMMANDS_H

#include "reference_host/app/export_request.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Export_command {
    Scene_request scene;
    std::string plugin; // empty: the usual place
    std::string exporter;
    std::string output;
    std::string depfile;       // lists what the export read, as compilers do; empty: none
    bool makes_folder = false; // of the output, when it is missing
};

// Exports one node through one exporter.
int export_document(const Export_command& command);

struct Verbosity {
    bool is_quiet = false;   // only what went wrong
    bool is_verbose = false; // also each item with its time
};

struct Batch_command {
    Scene_request scene; // of all items; its document and node are not used
    std::string plugin;
    std::vector<std::string> inputs; // documents, folders, "-" for a list on standard input
    bool is_recursive = false;
    std::vector<std::string> materials; // none: all of each document
    std::vector<std::string> exporters; // none: all
    std::string name = "{exporter}/{material}";
    std::string folder; // made when missing
    int jobs = 1;
    std::string overwrite_word = "ask"; // as given, for plans
    bool is_forced = false;             // exports also what is unchanged
    std::string report;                 // JSON file; empty: none
    std::string junit;                  // XML file; empty: none
    Verbosity verbosity;
};

// The exit status of an export or of several: as shells have it after a signal.
int exit_status(bool is_success);

// Exports materials of many documents through several exporters. One that fails does not stop the
// others. What did not change since the last time is left out. Prints one line per file, and at
// last how many were written, unchanged, skipped and failed.
int export_batch(const Batch_command& command);

enum class Plan_format { ninja, make, json };

struct Plan_command {
    Batch_command batch;
    Plan_format format = Plan_format::ninja;
    std::string file; // empty: standard output
};

// Writes a batch as independent commands for a build system. Items that cannot be exported are left
// out and reported.
int plan_batch(const Plan_command& command);

struct Panel_command {
    std::string plugin;
    std::string exporter;
    std::string screenshot; // PNG file; empty: none
    int width = 400;        // of the host's area, in pixels
    bool as_json = false;
};

// Shows an exporter's panel, prints the height it asks for and its options, takes a picture.
int show_panel(const Panel_command& command);

struct Window_command {
    std::vector<std::string> documents; // none: the window welcomes the user
    Scene_request scene;                // that documents start with, but for the document
    std::string plugin;
};

// Opens the window. Returns when it is closed. The window stands above the commands, so the program
// names this function to them.
using Show_window = int (*)(const Window_command& command);

} // namespace reference_host

#endif

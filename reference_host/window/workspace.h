// What the window works on: the open documents, what is chosen for each, and what comes of it. The
// views show it, change it, and are told of every change; they do not know each other.
//
// Code is made by a trial: the export that the command line would run with --dry-run. So the code
// on the screen is the code of the files, whatever the exporter does.
#ifndef REFERENCE_HOST_WINDOW_WORKSPACE_H
#define REFERENCE_HOST_WINDOW_WORKSPACE_H

#include "reference_host/app/export_job.h"
#include "reference_host/window/kept_exporters.h"
#include "reference_host/window/work_document.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

class Document_memory;

enum class Change {
    documents, // opened, closed or read again
    current,   // another document or node
    exporter,  // another exporter
    options,   // the exporter's options or the export file name
    scene,     // lights, environment and the rest of the surroundings
    pointed,   // another node is pointed out
    trial,     // new code
    messages
};

enum class Message_kind { error, warning, note };

struct Listed_message {
    Message_kind kind = Message_kind::note;
    std::string text;
    Place place;      // empty file: none
    std::string node; // its full name; empty: none
};

struct Code_file {
    std::string path; // of the file that an export would write
    std::string text;
    bool is_text = true; // otherwise the copy of an image
};

// What became of one run of the plug-in.
struct Run_result {
    Export_outcome outcome;
    std::vector<Message> messages; // also those about the document
};

class Workspace
{
public:
    // Both must outlive the workspace. `usual` is the scene that documents start with.
    Workspace(const Plugin_library& plugin, Document_memory& memory, Scene_request usual);
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    // Calls back after every change, in the order of the listeners.
    void listen(std::function<void(Change)> listener);

    // ---- documents

    const std::vector<std::unique_ptr<Work_document>>& documents() const { return m_documents; }
    const Work_document* current() const { return m_current; }

    // Opens a document, or goes to it when it is open, and makes it the current one.
    void open(const std::string& file);
    void close_current();

    // Reads a document again. The choices stay.
    void reload(const Work_document& document);

    void select(const Work_document& document, const std::string& node);

    // Shows the user a node without exporting it: the one that a message or a line of code is
    // about.
    void point_out(const std::string& node);
    const std::string& pointed_out() const { return m_pointed_out; }

    // ---- choices for the current document

    const std::vector<std::string>& exporters() const { return m_exporters; }
    void choose_exporter(const std::string& name);
    const Exporter_choice& choice() const;
    void set_choice(const Exporter_choice& choice);
    void set_scene(const Scene_request& scene);

    // The panel's options before anyone touches it, by which a choice is shown as its difference.
    void set_untouched_options(const std::vector<Option_setting>& options);

    // The words of the command line that exports what is chosen now.
    std::string command_line() const;

    // ---- what comes of it

    // Makes the code of what is chosen now. Runs the plug-in: on the user-interface thread only.
    void run_trial();
    const std::vector<Code_file>& code() const { return m_code; }

    // What an exporter makes of the chosen node to be drawn: in the light that the command `render`
    // gives it, with images where they are. Writes nothing. Runs the plug-in.
    Run_result run_for_picture(const std::string& exporter);

    // Exports to the chosen file. What is asked meanwhile goes to the two arguments.
    Export_outcome export_current(const Box_policy& boxes, Replacement& replacement);

    // Exports through one exporter into a folder of its own below `folder`, with the options that
    // were chosen for it.
    Export_outcome export_into(const std::string& folder, const std::string& exporter,
                               const Box_policy& boxes, Replacement& replacement);

    const std::vector<Listed_message>& messages() const { return m_messages; }

private:
    void read(Work_document& document);
    void tell(Change change);
    void remember() const;
    Scene_request request(const std::string& exporter) const;
    Run_result run(const std::string& exporter, const std::string& output, Scene_request request,
                   Replacement& replacement);
    Listed_message listed(const Message& message) const;
    void report_export(const std::string& exporter, const Run_result& result);
    void renew_messages();

    Kept_exporters m_kept;
    Document_memory& m_memory;
    Scene_request m_usual;
    std::vector<std::string> m_exporters;
    std::vector<std::function<void(Change)>> m_listeners;
    std::vector<std::unique_ptr<Work_document>> m_documents;
    Work_document* m_current = nullptr;
    std::map<std::string, std::vector<Option_setting>> m_untouched; // by the exporter's name
    std::string m_pointed_out; // full name of a node; empty: none
    std::vector<Code_file> m_code;
    std::vector<Listed_message> m_trial_messages;
    std::vector<Listed_message> m_export_messages;
    std::vector<Listed_message> m_messages;
};

} // namespace reference_host

#endif

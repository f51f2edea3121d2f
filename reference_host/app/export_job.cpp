#include "reference_host/app/export_job.h"

#include "reference_host/app/exporter_panel.h"

#include <algorithm>
#include <cstdio>

#include <wx/frame.h>
#include <wx/panel.h>

namespace reference_host
{
namespace
{

constexpr int panel_width = 400; // pixels; any would do where nobody looks

// A window that is never shown, with an area for the panel. Gone at the end of its scope.
class Hidden_window
{
public:
    Hidden_window()
        : m_frame(new wxFrame(nullptr, wxID_ANY, wxT("shader-export"))),
          m_area(new wxPanel(m_frame))
    {
    }
    ~Hidden_window() { m_frame->Destroy(); }
    Hidden_window(const Hidden_window&) = delete;
    Hidden_window& operator=(const Hidden_window&) = delete;

    wxWindow& area() { return *m_area; }

private:
    wxFrame* m_frame;
    wxPanel* m_area;
};

void add_reasons_of_boxes(const std::vector<Answered_box>& boxes, std::vector<std::string>& reasons)
{
    for (const Answered_box& box : boxes) {
        if (box.is_overwrite_question && box.answer == Box_answer::no)
            reasons.push_back("refused: " + box.message.substr(0, box.message.find('\n')));
        else if (box.is_missing_question && box.answer == Box_answer::no)
            reasons.push_back("cancelled: the scene lacks what the shader requires");
        else if (box.answer == Box_answer::ok)
            reasons.push_back("the exporter reported an error");
    }
}

// A text that was generated must stand in a file, whole, whatever the exporter adds after it.
bool is_written(const std::string& text, const std::vector<Written_file>& files)
{
    return std::any_of(files.begin(), files.end(), [&](const Written_file& file) {
        return file.content.compare(0, text.size(), text) == 0;
    });
}

Export_events events_of(const std::vector<Answered_box>& boxes, const std::string& output)
{
    Export_events events;
    events.file_name_empty = output.empty();
    events.overwrite_refused = std::any_of(boxes.begin(), boxes.end(), [](const Answered_box& box) {
        return box.is_overwrite_question && box.answer == Box_answer::no;
    });
    return events;
}

} // namespace

Export_outcome run_export(const Opened_document& document, QZ::TSDK::IExporter& exporter,
                          const std::string& output, const Scene_request& request)
{
    Export_session session(document.scene(output));
    const Written_files watch(output);
    const Message_box_answers answers(request.boxes);
    {
        Hidden_window window;
        Exporter_panel panel(exporter, session.view(), window.area(), panel_width);
        set_panel_options(window.area(), request.options);
        panel.set_file_name(
            output); // last: the output is what the user named, whatever the options
        panel.close();
    }
    const bool returned = exporter.export_shader(session.application(), session.view());

    const Compiler_record& record = session.record();
    Export_outcome outcome;
    outcome.files = watch.changes();
    outcome.diagnostics = record.diagnostics;
    if (has_errors(record.diagnostics))
        outcome.reasons.push_back("the shader could not be compiled");
    add_reasons_of_boxes(answers.boxes(), outcome.reasons);
    if (!returned && outcome.reasons.empty())
        outcome.reasons.push_back("the exporter refused, without saying why");
    for (const std::string& text : record.texts) {
        if (!is_written(text, outcome.files))
            outcome.reasons.push_back("a generated text did not reach its file for '" + output +
                                      "': is the folder there and writable, the disk not full?");
    }
    if (outcome.files.empty() && outcome.reasons.empty())
        outcome.reasons.push_back("no file was written");
    for (const std::string& use : record.wrong_uses)
        outcome.reasons.push_back("the plug-in used the host wrongly: " + use);
    for (const std::string& finding :
         session.reference_findings(events_of(answers.boxes(), output)))
        outcome.reasons.push_back("the plug-in used the host wrongly: " + finding);
    return outcome;
}

void print_diagnostics(const Diagnostics& diagnostics)
{
    for (const Diagnostic& diagnostic : diagnostics) {
        std::string place = diagnostic.place.file.empty() ? "shader-export" : diagnostic.place.file;
        if (diagnostic.place.line > 0)
            place += ":" + std::to_string(diagnostic.place.line);
        std::fprintf(stderr, "%s: %s: %s\n", place.c_str(),
                     diagnostic.severity == Severity::error ? "error" : "warning",
                     diagnostic.text.c_str());
    }
}

} // namespace reference_host

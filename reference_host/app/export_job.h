// One export, driven as Tovira drives it: panel, file name, options, panel closed, export.
#ifndef REFERENCE_HOST_APP_EXPORT_JOB_H
#define REFERENCE_HOST_APP_EXPORT_JOB_H

#include "plugin/iexporter.h"
#include "reference_host/app/opened_document.h"
#include "reference_host/app/replacement.h"
#include "reference_host/desktop/message_boxes.h"
#include "reference_host/host/export_session.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Exported_file {
    enum class State {
        written,
        unchanged, // it was there with the same content
        skipped    // it was there, and stays as it was
    };
    std::string path;
    std::string content; // as the exporter wrote it
    State state = State::written;
};

struct Export_outcome {
    std::vector<Exported_file> files; // none after a failure
    Diagnostics diagnostics;
    std::vector<Answered_box> boxes;
    std::vector<std::string> reasons; // why it failed; empty: it succeeded

    bool is_success() const { return reasons.empty(); }
};

// Exports the document's node to the file name through the exporter, in a window that is never
// shown, and judges by what can be seen: the files, the diagnostics, the boxes, the references.
// Exporters return true after many failures. The files get to their place all together after a
// success, and not at all after a failure.
//
// Throws std::invalid_argument for panel options that do not exist, and Write_failure when there is
// no place for files. Needs a Wx_runtime.
Export_outcome run_export(const Opened_document& document, QZ::TSDK::IExporter& exporter,
                          const std::string& output, const Scene_request& request,
                          Replacement& replacement);

} // namespace reference_host

#endif

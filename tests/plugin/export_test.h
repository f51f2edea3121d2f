// The fixture of the export tests: a host with one selected surface shader, and a folder to export
// into.
#ifndef TESTS_PLUGIN_EXPORT_TEST_H
#define TESTS_PLUGIN_EXPORT_TEST_H

#include "exporter_base/exporter_base.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/support/exporter_panel.h"
#include "tests/support/message_boxes.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wx_test_main.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include <wx/defs.h>

namespace QZ
{
namespace TEST
{

class Export_test : public Wx_test
{
protected:
    Export_test() : shader(host.add_selected_node("wood")) {}

    // Initialises the exporter, names the export file in the folder, and exports.
    bool export_as(TOVIRAEXPORT::Exporter_base& exporter, const std::string& name)
    {
        exporter.initialize();
        choose_export_file(exporter, folder.file(name));
        return exporter.export_shader(host.app(), host.view());
    }

    // The last releases of the export, as many as there are names.
    std::vector<std::string> last_releases(size_t count) const
    {
        const std::vector<std::string> releases = host.releases();
        return {releases.end() - static_cast<long>(std::min(count, releases.size())),
                releases.end()};
    }

    Temporary_folder folder;
    Recording_host host;
    Scripted_node& shader;
};

// The question about an existing file.
inline Message_box overwrite_question(const std::string& file)
{
    return {"Export Shader", file + " already exists.\nDo you want to replace it?",
            wxYES_NO | wxNO_DEFAULT | wxICON_EXCLAMATION};
}

// An exporter's error box; wx adds the button.
inline Message_box error_box(const std::string& exporter, const std::string& text)
{
    return {"Tovira Error: " + exporter, text, wxICON_ERROR | wxOK};
}

} // namespace TEST
} // namespace QZ

#endif

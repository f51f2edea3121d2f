// An exporter whose file settings a test chooses.
#ifndef TESTS_GUI_CHOOSER_EXPORTER_H
#define TESTS_GUI_CHOOSER_EXPORTER_H

#include "exporter_base/bytes.h"
#include "exporter_base/exporter_base.h"

#include <string>

namespace QZ
{
namespace TEST
{

// Its panel holds the export-file row. The setting is named "exportfile".
class Chooser_exporter : public TOVIRAEXPORT::Exporter_base
{
public:
    explicit Chooser_exporter(const TOVIRAEXPORT::Chooser_properties& properties)
        : Exporter_base("Chooser")
    {
        register_file_setting(wxT("exportfile"), wxEmptyString);
        register_chooser_properties(wxT("exportfile"), properties);
    }

    bool export_shader(TSDK::ITovira*, TSDK::IGraph_view*) override { return true; }
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view*) override
    {
        return create_exportfile_panel(parent, width);
    }
    void initialize() override {}
    const char* get_language() const override { return "Test"; }

    // The settings of the file by the ends of their keys: "open", "save", "filter_index".
    void remember(const char* kind, const std::string& value)
    {
        set_own_setting_value(key(kind), TOVIRAEXPORT::from_bytes(value.c_str()));
    }
    std::string remembered(const char* kind) const
    {
        return TOVIRAEXPORT::to_bytes(get_own_setting_value(key(kind)));
    }

private:
    wxString key(const char* kind) const
    {
        return get_base_setting_key() + wxT("_exportfile_") + TOVIRAEXPORT::from_bytes(kind);
    }
};

} // namespace TEST
} // namespace QZ

#endif

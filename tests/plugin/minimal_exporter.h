// The least that an exporter can be: everything but its name and language is Exporter_base's.
#ifndef TESTS_PLUGIN_MINIMAL_EXPORTER_H
#define TESTS_PLUGIN_MINIMAL_EXPORTER_H

#include "exporter_base/exporter_base.h"

namespace QZ
{
namespace TEST
{

class Minimal_exporter : public TOVIRAEXPORT::Exporter_base
{
public:
    // The language may be null and must outlive the exporter.
    explicit Minimal_exporter(const char* name = "minimal", const char* language = "Cg")
        : Exporter_base(name), m_language(language)
    {
    }

    bool export_shader(TSDK::ITovira*, TSDK::IGraph_view*) override { return true; }
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view*) override
    {
        return create_exportfile_panel(parent, width);
    }
    void initialize() override { register_exportfile_setting(); }
    const char* get_language() const override { return m_language; }

private:
    const char* m_language;
};

} // namespace TEST
} // namespace QZ

#endif

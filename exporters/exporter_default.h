// A sample exporter, which shows how an exporter's panel is made. It exports nothing.
//
// Built with the plug-in, but not on offer in its registry.
#ifndef EXPORTERS_EXPORTER_DEFAULT_H
#define EXPORTERS_EXPORTER_DEFAULT_H

#include "exporter_base/exporter_base.h"

namespace QZ
{
namespace TOVIRAEXPORT
{

class Exporter_default : public Exporter_base
{
public:
    Exporter_default();

    // Does nothing and returns true.
    bool export_shader(TSDK::ITovira* app, TSDK::IGraph_view* view) override;

    // Builds a panel of controls that do nothing; it has no export-file row.
    int create_window(wxWindow* parent, int width, TSDK::IGraph_view* view) override;

    // Registers nothing.
    void initialize() override;
    const char* get_language() const override;
};

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif

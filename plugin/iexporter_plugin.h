// The interface of a plug-in that offers exporters.
//
// The order of the operations is a binary contract and never changes.
#ifndef PLUGIN_IEXPORTER_PLUGIN_H
#define PLUGIN_IEXPORTER_PLUGIN_H

#include "plugin/plugin.h"

namespace QZ
{
namespace TSDK
{

class IExporter;

class IExporter_plugin : public qz::base::Plugin
{
public:
    // slot 9: The number of exporters on offer.
    virtual int get_num_exporters() const = 0;

    // slot 10: A new exporter, which the caller owns and deletes, or null when there is none of
    // that index. Each call makes an object of its own.
    virtual IExporter* get_exporter(int index) = 0;
};

} // namespace TSDK
} // namespace QZ

#endif

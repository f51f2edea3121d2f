// The interface of a plug-in that offers exporters.
//
// Slots 0 to 8 are those of plugin/plugin.h, which describes the object's life. The order of the
// operations is a binary contract and never changes.
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
    // slot 9: The number of exporters on offer, at least 0. The same for the life of the process.
    virtual int get_num_exporters() const = 0;

    // slot 10: A new exporter, ready to use, or null when `index` (counted from 0) is not below the
    // count. The caller owns it and deletes it. Each call makes one of its own, with settings of
    // its own; it does not depend on the plug-in object. Memory running out is the one exception
    // that reaches the host.
    virtual IExporter* get_exporter(int index) = 0;
};

} // namespace TSDK
} // namespace QZ

#endif

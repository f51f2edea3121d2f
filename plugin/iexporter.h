// The interface through which the host drives one exporter.
//
// Life of an exporter, as the host calls it:
//   1. The registry (plugin/tovira_exporter_plugin.h) creates it, ready to use.
//   2. Settings (slots 8 to 12) and the name (slot 13) may be used at any time.
//   3. create_ui, any number of set_ui_size, remove_ui: the option panel. May be repeated.
//   4. export_shader: one export.
//   5. The host, its only owner, deletes it. reference() and release() do nothing.
//
// The order of the operations is a binary contract and never changes.
#ifndef PLUGIN_IEXPORTER_H
#define PLUGIN_IEXPORTER_H

#include "plugin/interface.h"

namespace QZ
{
namespace TSDK
{

class ITovira;
class IGraph_view;

class IExporter : public Interface
{
public:
    // slot 4: Exports the node that is selected in `view`. Returns true on success; what counts as
    // success is told by each exporter. The user sees failures in message boxes.
    virtual bool export_shader(ITovira* app, IGraph_view* view) = 0;

    // slot 5: Builds the option panel inside the host's window. `container` is a wxWindow* as an
    // integer, `width` the width of the host's area in pixels. Returns the height in pixels that
    // the panel needs.
    virtual int create_ui(unsigned long long container, int width, IGraph_view* view) = 0;

    // slot 6: Closes the option panel. `discard` true throws away what was edited on it. Returns
    // true when the panel was destroyed.
    virtual bool remove_ui(IGraph_view* view, bool discard) = 0;

    // slot 7: Resizes the option panel, in pixels. Ignored while there is no panel.
    virtual void set_ui_size(int width, int height) = 0;

    // slot 8: The number of settings.
    virtual unsigned int get_num_settings() = 0;

    // slots 9 to 11: Name, default and value of the setting at `index` (ordered by name); null when
    // the index is not below the count. The text belongs to the exporter and is valid until that
    // text is next assigned.
    virtual const char* get_setting_name(unsigned int index) = 0;
    virtual const char* get_setting_default(unsigned int index) = 0;
    virtual const char* get_setting_value(unsigned int index) = 0;

    // slot 12: Assigns the value of the setting at `index`; null counts as the empty text. An index
    // out of range is ignored.
    virtual void set_setting_value(unsigned int index, const char* value) = 0;

    // slot 13: The exporter's name for people. Valid as long as the exporter.
    virtual const char* get_name() const = 0;

    // slots 14 and 15
    virtual ~IExporter() = default;
};

} // namespace TSDK
} // namespace QZ

#endif

// The interface through which the host drives one exporter.
//
// Life of an exporter, as the host calls it:
//   1. The registry (plugin/tovira_exporter_plugin.h) creates it, ready to use.
//   2. Settings (slots 8 to 12) and the name (slot 13) may be used at any time from now on.
//   3. create_ui, any number of set_ui_size, remove_ui: the option panel. May be repeated. What the
//      user chose on it is taken over by remove_ui, so the host closes the panel before it exports.
//   4. export_shader: one export; any number of them, with or without a panel.
//   5. The host, its only owner, deletes it, best without a panel: one that is still there stays in
//      the host's window and does nothing more. reference() and release() do nothing.
//
// The order of the operations is a binary contract and never changes. Everything runs on the host's
// user-interface thread; slots 4 to 6 may show modal dialogs, and the host keeps running
// under them. No operation throws.
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
    // slot 4: Exports the node that is selected in `view`. Both arguments are lent for the call; a
    // null one counts as no selection. Returns true on success; each exporter documents what
    // it counts as success. Failures that an exporter reports are shown in message boxes.
    virtual bool export_shader(ITovira* app, IGraph_view* view) = 0;

    // slot 5: Builds the option panel. `container` is a wxWindow* of the host as an integer, which
    // outlives the panel or destroys it; 0 makes no panel and returns 0. `width` is the width of
    // the host's area in pixels. `view` may be null. Returns the height in pixels that the panel
    // needs. A panel that is still open is forgotten: it stays in its window and does nothing more.
    virtual int create_ui(unsigned long long container, int width, IGraph_view* view) = 0;

    // slot 6: Closes the option panel, which is gone afterwards. `discard` true throws away what
    // was edited on it, false keeps it. `view` may be null. Returns true when a panel was
    // destroyed; false when there was none.
    virtual bool remove_ui(IGraph_view* view, bool discard) = 0;

    // slot 7: Resizes the option panel, in pixels. Ignored while no panel is open.
    virtual void set_ui_size(int width, int height) = 0;

    // slot 8: The number of settings. It may grow when a dialog of the exporter is confirmed.
    virtual unsigned int get_num_settings() = 0;

    // slots 9 to 11: Name, default and value of the setting at `index`, which counts the settings
    // by name from 0; null when it is not below the count. The text belongs to the exporter and is
    // valid until that text is next assigned: names and defaults never are.
    virtual const char* get_setting_name(unsigned int index) = 0;
    virtual const char* get_setting_default(unsigned int index) = 0;
    virtual const char* get_setting_value(unsigned int index) = 0;

    // slot 12: Assigns the value of the setting at `index` and leaves its default. The text is
    // copied; null counts as empty. An index that is not below the count is ignored.
    virtual void set_setting_value(unsigned int index, const char* value) = 0;

    // slot 13: The exporter's name for people. Never null; belongs to the exporter and is valid as
    // long as it.
    virtual const char* get_name() const = 0;

    // slots 14 and 15: Complete and deleting destructor.
    virtual ~IExporter() = default;
};

} // namespace TSDK
} // namespace QZ

#endif

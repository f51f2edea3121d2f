// One exporter's option panel inside a window of the host.
//
// Life: construction creates the panel (create_ui), any number of settings, close() reads it back
// (remove_ui). A panel that is not closed is discarded.
#ifndef REFERENCE_HOST_DESKTOP_EXPORTER_PANEL_H
#define REFERENCE_HOST_DESKTOP_EXPORTER_PANEL_H

#include "plugin/iexporter.h"

#include <string>

#include <wx/gdicmn.h>

class wxWindow;

namespace reference_host
{

class Exporter_panel
{
public:
    // Builds the panel into `container`, whose sizer it may replace, for a width in pixels. All
    // three must outlive the panel. The export-file field shows `file`, which the plug-in puts
    // there from its setting: it knows how to get any bytes through a field. Empty: what the
    // setting says.
    Exporter_panel(QZ::TSDK::IExporter& exporter, QZ::TSDK::IGraph_view* view, wxWindow& container,
                   int width, const std::string& file = {});
    ~Exporter_panel();
    Exporter_panel(const Exporter_panel&) = delete;
    Exporter_panel& operator=(const Exporter_panel&) = delete;

    // The height in pixels that the exporter asks for.
    int height() const { return m_height; }

    // The size of the container at which the panel has its full size: the plug-in leaves a border
    // between the two.
    wxSize needed_area() const;

    // Fits the panel into a container of that size.
    void fit_into(const wxSize& area);

    // The name in the export-file field, empty on a panel without it; and another one.
    std::string file_name() const;
    void set_file_name(const std::string& name);

    // Shows the first file name again, if anything has changed it.
    void restore_file_name();

    // Keeps what was edited and destroys the panel.
    void close();

private:
    void remove(bool discard);
    int both_borders() const;

    QZ::TSDK::IExporter& m_exporter;
    QZ::TSDK::IGraph_view* m_view;
    wxWindow& m_container;
    int m_width;
    int m_height = 0;
    bool m_is_open = true;
    std::string m_first_name; // as the field showed it
};

} // namespace reference_host

#endif

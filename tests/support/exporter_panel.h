// An exporter's option panel, as the host shows it: in a window of the host's.
#ifndef TESTS_SUPPORT_EXPORTER_PANEL_H
#define TESTS_SUPPORT_EXPORTER_PANEL_H

#include "plugin/iexporter.h"

#include <string>

class wxFrame;

namespace QZ
{
namespace TEST
{

// Opens the panel and closes it again, normally unless cancel() was called. wx must have been
// started.
class Exporter_panel
{
public:
    explicit Exporter_panel(TSDK::IExporter& exporter);
    ~Exporter_panel();
    Exporter_panel(const Exporter_panel&) = delete;
    Exporter_panel& operator=(const Exporter_panel&) = delete;

    // Close with the discard flag.
    void cancel() { m_discard = true; }

    // Controls by their ids. A control that does not exist fails the test.
    void set_text(int id, const std::string& text);
    void set_check_box(int id, bool on);
    void select(int id, int index); // in a combo box
    bool has_control(int id) const;
    std::string text(int id) const;
    bool check_box(int id) const;

private:
    template<typename Control>
    Control* find(int id) const;

    TSDK::IExporter& m_exporter;
    wxFrame* m_window;
    bool m_discard = false;
};

// Names the export file, the way a user does.
void choose_export_file(TSDK::IExporter& exporter, const std::string& path);

} // namespace TEST
} // namespace QZ

#endif

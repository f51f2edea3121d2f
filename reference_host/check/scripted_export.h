// Exports through the recording host, as the checks need them.
#ifndef REFERENCE_HOST_CHECK_SCRIPTED_EXPORT_H
#define REFERENCE_HOST_CHECK_SCRIPTED_EXPORT_H

#include "plugin/iexporter.h"
#include "reference_host/desktop/message_boxes.h"
#include "reference_host/recording_host/recording_host.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class wxFrame;
class wxPanel;

namespace reference_host
{

// A window of the host that is never shown, with an area for a panel.
class Host_window
{
public:
    Host_window();
    ~Host_window();
    Host_window(const Host_window&) = delete;
    Host_window& operator=(const Host_window&) = delete;

    wxPanel& area() { return *m_area; }
    unsigned long long handle() const;

    // Destroys the area at once, with what is in it, and makes a new one.
    void renew_area();

private:
    wxFrame* m_frame;
    wxPanel* m_area;
};

// A surface shader that is selected, what it is connected to, two lights, an environment.
std::unique_ptr<QZ::TEST::Recording_host> make_scene(const std::string& search_path = {});

// Names the export file as a user does, on the exporter's panel.
void name_export_file(QZ::TSDK::IExporter& exporter, const std::string& file);

struct Scripted_result {
    bool returned = false;
    std::string exception; // what left the exporter; empty: none
    std::vector<Answered_box> boxes;
    std::vector<std::string> problems; // of the recording host
};

Scripted_result export_scene(QZ::TSDK::IExporter& exporter, QZ::TEST::Recording_host& host,
                             Box_answer replace = Box_answer::yes);

// The files of a folder and their contents; those that are not regular files with what they are.
std::map<std::string, std::string> folder_contents(const std::string& folder);

// Removes everything in a folder.
void empty_folder(const std::string& folder);

} // namespace reference_host

#endif

#include "reference_host/app/commands.h"

#include "exporter_base/bytes.h"
#include "reference_host/app/exporter_options.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/desktop/exporter_panel.h"
#include "reference_host/desktop/wx_runtime.h"
#include "reference_host/system/whole_file.h"

#include <cstdio>
#include <stdexcept>
#include <string>

#include <nlohmann/json.hpp>
#include <wx/bitmap.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/mstream.h>
#include <wx/panel.h>

namespace reference_host
{
namespace
{

void save_picture(wxWindow& window, const std::string& file)
{
    const wxSize size = window.GetClientSize();
    wxBitmap picture(size.GetWidth(), size.GetHeight());
    wxClientDC source(&window);
    wxMemoryDC target(picture);
    target.Blit(0, 0, size.GetWidth(), size.GetHeight(), &source, 0, 0);
    target.SelectObject(wxNullBitmap);
    wxMemoryOutputStream stream;
    if (!picture.ConvertToImage().SaveFile(stream, wxBITMAP_TYPE_PNG))
        throw std::runtime_error("the panel cannot be made a picture");
    std::string content(stream.GetSize(), '\0');
    stream.CopyTo(content.data(), content.size());
    if (const std::string reason = write_whole_file(file, content); !reason.empty())
        throw std::runtime_error("the picture '" + file + "' cannot be written: " + reason);
}

void describe(const Panel_command& command, const std::string& exporter, int height,
              const std::vector<Panel_option>& options)
{
    if (command.as_json) {
        const nlohmann::ordered_json facts = {{"exporter", exporter},
                                              {"width", command.width},
                                              {"height", height},
                                              {"options", json_of(options)}};
        std::puts(
            facts.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace).c_str());
        return;
    }
    std::printf("%s: %d pixels high at a width of %d\n", exporter.c_str(), height, command.width);
    for (const Panel_option& option : options)
        std::printf("  %s\n", line_of(option).c_str());
}

} // namespace

int show_panel(const Panel_command& command)
{
    const Wx_runtime wx;
    const Plugin_library plugin(command.plugin);
    const auto exporter = plugin.make_exporter(plugin.find_exporter(command.exporter));
    wxFrame* frame =
        new wxFrame(nullptr, wxID_ANY, QZ::TOVIRAEXPORT::from_bytes(exporter->get_name()));
    wxPanel* area = new wxPanel(frame);
    frame->Show();
    Wx_runtime::settle(); // only windows on the screen know their fonts and themes
    {
        Exporter_panel panel(*exporter, nullptr, *area, command.width);
        describe(command, exporter->get_name(), panel.height(), panel_options(*area));
        if (!command.screenshot.empty()) {
            frame->SetClientSize(panel.needed_area());
            Wx_runtime::settle();
            panel.fit_into(area->GetClientSize());
            Wx_runtime::settle();
            save_picture(*area, command.screenshot);
        }
    }
    frame->Destroy();
    return 0;
}

} // namespace reference_host

#include "reference_host/check/scripted_export.h"

#include "reference_host/desktop/exporter_panel.h"
#include "reference_host/system/file_access.h"

#include <cstdint>
#include <exception>
#include <filesystem>

#include <wx/frame.h>
#include <wx/panel.h>

namespace reference_host
{

namespace fs = std::filesystem;

using QZ::TEST::Recording_host;
using QZ::TEST::Scripted_node;

Host_window::Host_window()
    : m_frame(new wxFrame(nullptr, wxID_ANY, wxT("check"))), m_area(new wxPanel(m_frame))
{
}

Host_window::~Host_window()
{
    delete m_frame; // at once: thousands may follow before the next event
}

unsigned long long Host_window::handle() const
{
    return static_cast<unsigned long long>(
        reinterpret_cast<std::uintptr_t>(static_cast<wxWindow*>(m_area)));
}

void Host_window::renew_area()
{
    delete m_area;
    m_area = new wxPanel(m_frame);
}

std::unique_ptr<Recording_host> make_scene(const std::string& search_path)
{
    auto host = std::make_unique<Recording_host>();
    Scripted_node& shader = host->add_selected_node("wood");
    Scripted_node& noise = host->add_node("noise");
    Scripted_node& sky = host->add_node("sky");
    noise.functions = {"direct_light"};
    sky.functions = {"environment"};
    shader.parameters = {"lights"};
    shader.connect(&noise);
    shader.connect(nullptr);
    noise.connect(&sky);
    host->environment = &sky;
    host->add_light("key");
    host->add_light("lamp", 2, 60.0F, 20.0F);
    host->search_paths = {search_path};
    return host;
}

void name_export_file(QZ::TSDK::IExporter& exporter, const std::string& file)
{
    constexpr int width = 400;
    Host_window window;
    Exporter_panel panel(exporter, nullptr, window.area(), width, file);
    panel.close();
}

Scripted_result export_scene(QZ::TSDK::IExporter& exporter, Recording_host& host,
                             Box_answer replace)
{
    Scripted_result result;
    const Message_box_answers answers({Missing::proceed, replace});
    try {
        result.returned = exporter.export_shader(host.app(), host.view());
    } catch (const std::exception& exception) {
        result.exception = exception.what();
    } catch (...) {
        result.exception = "an exception of unknown type";
    }
    result.boxes = answers.boxes();
    result.problems = host.problems();
    return result;
}

std::map<std::string, std::string> folder_contents(const std::string& folder)
{
    constexpr std::uintmax_t max_size = std::uintmax_t{1} << 24;
    std::map<std::string, std::string> contents;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        std::string reason;
        const auto text = read_whole_file(entry.path().string(), max_size, reason);
        contents[entry.path().filename().string()] = text ? *text : "<" + reason + ">";
    }
    return contents;
}

void empty_folder(const std::string& folder)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        fs::remove_all(entry.path());
}

} // namespace reference_host

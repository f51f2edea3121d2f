#include "tests/window/program_window.h"

#include "reference_host/render/offscreen_context.h"
#include "reference_host/window/code_view.h"
#include "reference_host/window/exporter_view.h"
#include "reference_host/window/wx_text.h"
#include "tests/gui/gtk_functions.h"
#include "tests/window/screen_picture.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/image.h>
#include <wx/stopwatch.h>

namespace QZ
{
namespace TEST
{

namespace fs = std::filesystem;
using reference_host::to_bytes;
using reference_host::to_text;

namespace
{

// All windows of a class below one, in their order.
template<typename Control>
std::vector<Control*> find_all(const wxWindow& parent)
{
    std::vector<Control*> found;
    for (wxWindow* child : parent.GetChildren()) {
        if (auto* control = dynamic_cast<Control*>(child))
            found.push_back(control);
        for (Control* deeper : find_all<Control>(*child))
            found.push_back(deeper);
    }
    return found;
}

} // namespace

Program_window::Program_window()
{
    setenv("HOME", folder.path().c_str(), 1);
    reference_host::prefer_early_pictures();
    m_plugin = std::make_unique<reference_host::Plugin_library>(PLUGIN);
}

Program_window::~Program_window()
{
    close();
}

void Program_window::TearDown()
{
    for (const std::string& complaint : dialogs.complaints())
        ADD_FAILURE() << complaint;
    EXPECT_EQ(dialogs.unused_answers(), 0u) << "a dialog did not appear";
}

void Program_window::start(const wxSize& size)
{
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxInitAllImageHandlers();
    m_config = std::make_unique<wxFileConfig>(wxEmptyString, wxEmptyString,
                                              to_text(folder.file("settings")), wxEmptyString,
                                              wxCONFIG_USE_LOCAL_FILE);
    m_window = new reference_host::Main_window(*m_plugin, *m_config, {});
    m_window->SetSize(wxRect(wxPoint(0, 0), size));
    m_window->Show();
    take_focus(m_window->GetHandle());
    ASSERT_TRUE(wait_until([this] { return has_focus(m_window->GetHandle()); }));
}

void Program_window::close()
{
    if (!m_window)
        return;
    m_window->Close();
    m_window = nullptr;
    handle_events();
    m_config.reset();
}

std::string Program_window::sample(const std::string& name) const
{
    const fs::path place = folder.file(name + ".mtlx");
    if (!fs::exists(place))
        fs::copy_file(SOURCE_FOLDER "/samples/" + name + ".mtlx", place);
    const fs::path images = folder.file("images");
    if (!fs::exists(images))
        fs::copy(SOURCE_FOLDER "/samples/images", images);
    return place.string();
}

void Program_window::open(const std::string& file, const std::string& exporter)
{
    m_window->open_files({file});
    reference_host::Scene_request scene = m_window->workspace().current()->scene;
    if (scene.render.lights.empty())
        scene.render.lights.push_back({"key", reference_host::Light_kind::directional, {}, {}, {}});
    scene.render.environment = "sky";
    m_window->workspace().set_scene(scene);
    m_window->workspace().choose_exporter(exporter);
    EXPECT_TRUE(wait_for_code("Shader: ")) << file;
}

void Program_window::click(wxWindow& control)
{
    click(control, wxPoint(control.GetSize().x / 2, control.GetSize().y / 2));
}

void Program_window::click(wxWindow& control, const wxPoint& at)
{
    EXPECT_TRUE(wait_until([&] {
        point_at(&control, at);
        return is_pointed_at(&control);
    }));
    press_button();
}

void Program_window::focus(wxWindow& control)
{
    control.SetFocus();
    EXPECT_TRUE(wait_until([&] {
        const wxWindow* focused = wxWindow::FindFocus();
        return focused && (focused == &control || control.IsDescendant(wxWindow::FindFocus()));
    }));
}

void Program_window::replace_text(const std::string& text)
{
    press_key("Control_L", "a");
    type_text(text);
}

void Program_window::choose(wxWindow& choice, int steps_down)
{
    focus(choice);
    for (int step = 0; step < steps_down; ++step)
        press_key("Down");
}

std::string Program_window::code() const
{
    return m_window->code().text().content();
}

bool Program_window::wait_for_code(const std::string& part)
{
    return wait_until([&] { return code().find(part) != std::string::npos; },
                      std::chrono::seconds(10));
}

bool Program_window::has_message(const std::string& part) const
{
    for (const reference_host::Listed_message& message : m_window->workspace().messages()) {
        if (message.text.find(part) != std::string::npos)
            return true;
    }
    return false;
}

bool Program_window::wait_for_message(const std::string& part)
{
    return wait_until([&] { return has_message(part); }, std::chrono::seconds(10));
}

wxWindow& Program_window::check_box(const std::string& label) const
{
    for (wxCheckBox* box : find_all<wxCheckBox>(m_window->exporter().panel_area())) {
        if (to_bytes(box->GetLabelText()) == label)
            return *box;
    }
    throw std::runtime_error("no check box '" + label + "'");
}

wxWindow& Program_window::combo_box(int position) const
{
    return *find_all<wxComboBox>(m_window->exporter().panel_area())
                .at(static_cast<size_t>(position));
}

void Program_window::take_picture(const std::string& name) const
{
    const char* pictures = std::getenv("TOVIRAEXPORT_PICTURES");
    if (!pictures)
        return;
    const wxStopWatch watch;
    wait_until([&] { return watch.Time() > 300; }); // what GTK takes for drawing
    wxRect place = m_window->GetScreenRect();
    const double scale = m_window->GetContentScaleFactor(); // of the toolkit's pixels
    place = wxRect(place.GetPosition() * scale, place.GetSize() * scale);
    picture_of_screen(place).SaveFile(to_text(std::string(pictures) + "/" + name + ".png"),
                                      wxBITMAP_TYPE_PNG);
}

} // namespace TEST
} // namespace QZ

#include "reference_host/window/scene_view.h"

#include "reference_host/document/value_parser.h"
#include "reference_host/window/command_text.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tokenzr.h>

namespace reference_host
{
namespace
{

constexpr const char* flip_preference = "cg_flip_tex2d_v";

enum Flip_choice { not_set, flipped, not_flipped, no_preferences };

int flip_choice(const Preferences& preferences)
{
    if (!preferences.exist)
        return no_preferences;
    const auto value = preferences.values.find(flip_preference);
    return value == preferences.values.end() ? not_set : value->second ? flipped : not_flipped;
}

void set_flip(Preferences& preferences, int choice)
{
    preferences.exist = choice != no_preferences;
    preferences.values.erase(flip_preference);
    if (choice == flipped || choice == not_flipped)
        preferences.values[flip_preference] = choice == flipped;
}

std::string kind_text(const Shader_kind_answer& kind)
{
    return kind.from == Shader_kind_answer::From::node   ? std::string()
           : kind.from == Shader_kind_answer::From::none ? "none"
                                                         : kind.text;
}

Shader_kind_answer kind_from(const std::string& text)
{
    if (text.empty())
        return {};
    return {text == "none" ? Shader_kind_answer::From::none : Shader_kind_answer::From::fixed,
            text};
}

} // namespace

Scene_view::Scene_view(wxWindow* parent, Workspace& workspace)
    : wxScrolledWindow(parent, wxID_ANY), m_workspace(workspace)
{
    SetScrollRate(FromDIP(8), FromDIP(8));
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(new wxStaticText(this, wxID_ANY, wxT("Lights, besides those of the document")), 0,
               wxALL, FromDIP(4));
    m_light_sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_light_sizer, 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(4));
    wxButton* add = new wxButton(this, wxID_ADD, wxT("A&dd a light"));
    sizer->Add(add, 0, wxALL, FromDIP(4));
    wxFlexGridSizer* grid = new wxFlexGridSizer(2, FromDIP(4), FromDIP(4));
    grid->AddGrowableCol(1);
    m_environment = add_field(grid, wxT("En&vironment"), wxT("a node, or a new name"));
    m_volume = add_field(grid, wxT("Vol&ume"), wxT("a node, or a new name"));
    m_ambient = add_field(grid, wxT("A&mbient"), wxT("red, green, blue, alpha"));
    m_texture_paths = add_choice(grid, wxT("&Image names"),
                                 {wxT("relative"), wxT("absolute"), wxT("as is"), wxT("copies")});
    m_search_path = add_field(grid, wxT("Search &path"), wxT("folders, separated by ;"));
    m_kind = add_field(grid, wxT("&Kind"), wxT("as the node says"));
    m_flip = add_choice(grid, wxT("&Flip textures"),
                        {wxT("not set"), wxT("on"), wxT("off"), wxT("no preferences")});
    sizer->Add(grid, 0, wxEXPAND | wxALL, FromDIP(4));
    SetSizer(sizer);
    add->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        std::vector<Light_request> more = lights();
        more.push_back(
            {"light" + std::to_string(more.size() + 1), Light_kind::directional, {}, {}, {}});
        show_lights(more);
        take_scene();
    });
    Bind(wxEVT_TEXT, [this](wxCommandEvent&) { take_scene(); });
    Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { take_scene(); });
    m_workspace.listen([this](Change change) {
        if (change == Change::current)
            show_scene();
    });
    show_scene();
}

wxTextCtrl* Scene_view::add_field(wxFlexGridSizer* grid, const wxString& label,
                                  const wxString& hint)
{
    grid->Add(new wxStaticText(this, wxID_ANY, label), 0, wxALIGN_CENTER_VERTICAL);
    wxTextCtrl* field = new wxTextCtrl(this, wxID_ANY);
    field->SetHint(hint);
    grid->Add(field, 0, wxEXPAND);
    return field;
}

wxChoice* Scene_view::add_choice(wxFlexGridSizer* grid, const wxString& label,
                                 const std::vector<wxString>& entries)
{
    grid->Add(new wxStaticText(this, wxID_ANY, label), 0, wxALIGN_CENTER_VERTICAL);
    wxChoice* choice = new wxChoice(this, wxID_ANY);
    for (const wxString& entry : entries)
        choice->Append(entry);
    grid->Add(choice, 0, wxEXPAND);
    return choice;
}

void Scene_view::show_scene()
{
    Enable(m_workspace.current() != nullptr);
    if (!m_workspace.current())
        return;
    const Scene_request& scene = m_workspace.current()->scene;
    m_is_showing = true;
    show_lights(scene.render.lights);
    m_environment->ChangeValue(to_text(scene.render.environment));
    m_volume->ChangeValue(to_text(scene.render.volume));
    m_ambient->ChangeValue(to_text(color_text(scene.render.ambient)));
    std::string folders;
    for (const std::string& folder : scene.search_path)
        folders += (folders.empty() ? "" : ";") + folder;
    m_search_path->ChangeValue(to_text(folders));
    m_kind->ChangeValue(to_text(kind_text(scene.kind)));
    m_texture_paths->SetSelection(static_cast<int>(scene.texture_paths));
    m_flip->SetSelection(flip_choice(scene.preferences));
    m_is_showing = false;
}

void Scene_view::show_lights(const std::vector<Light_request>& lights)
{
    m_light_sizer->Clear(true);
    m_lights.clear();
    for (size_t i = 0; i < lights.size(); ++i) {
        Light_row* row = new Light_row(
            this, lights[i], [this] { take_scene(); },
            [this, i] { CallAfter([this, i] { remove_light(i); }); });
        m_light_sizer->Add(row, 0, wxEXPAND | wxBOTTOM, FromDIP(2));
        m_lights.push_back(row);
    }
    Layout();
    FitInside();
}

// Called when the button's own event is over: the row goes with its button.
void Scene_view::remove_light(size_t index)
{
    std::vector<Light_request> fewer = lights();
    if (index >= fewer.size())
        return;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(index));
    show_lights(fewer);
    take_scene();
}

std::vector<Light_request> Scene_view::lights() const
{
    std::vector<Light_request> lights;
    for (const Light_row* row : m_lights)
        lights.push_back(row->light());
    return lights;
}

void Scene_view::take_scene()
{
    if (m_is_showing || !m_workspace.current())
        return;
    Scene_request scene = m_workspace.current()->scene;
    scene.render.lights = lights();
    scene.render.environment = to_bytes(m_environment->GetValue());
    scene.render.volume = to_bytes(m_volume->GetValue());
    if (const auto color = parse_value(Value_type::color4, to_bytes(m_ambient->GetValue())))
        std::copy_n(color->numbers.begin(), 4, scene.render.ambient.begin());
    scene.search_path.clear();
    for (wxStringTokenizer folders(m_search_path->GetValue(), wxT(";")); folders.HasMoreTokens();)
        scene.search_path.push_back(to_bytes(folders.GetNextToken()));
    scene.kind = kind_from(to_bytes(m_kind->GetValue()));
    scene.texture_paths = static_cast<Texture_paths>(m_texture_paths->GetSelection());
    set_flip(scene.preferences, m_flip->GetSelection());
    m_workspace.set_scene(scene);
}

} // namespace reference_host

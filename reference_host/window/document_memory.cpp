#include "reference_host/window/document_memory.h"

#include "reference_host/document/value_parser.h"
#include "reference_host/window/command_text.h"
#include "reference_host/window/wx_text.h"

#include <algorithm>

#include <wx/config.h>

namespace reference_host
{
namespace
{

// A name as one step of a path: '/' separates steps, and '%' marks what stands for another sign.
std::string step(const std::string& name)
{
    std::string text;
    for (const char c : name)
        text += c == '%' ? "%25" : c == '/' ? "%2F" : std::string(1, c);
    return text;
}

std::string name_of_step(const wxString& encoded)
{
    wxString name = encoded;
    name.Replace(wxT("%2F"), wxT("/"));
    name.Replace(wxT("%25"), wxT("%"));
    return to_bytes(name);
}

wxString group_of(const Work_document& document)
{
    return to_text("/documents/" + step(document.scene.document));
}

// A list is a group of numbered entries.
std::vector<std::string> read_list(const wxConfigBase& store, const wxString& group)
{
    std::vector<std::string> list;
    wxString value;
    for (int i = 0; store.Read(wxString::Format(wxT("%s/%d"), group, i), &value); ++i)
        list.push_back(to_bytes(value));
    return list;
}

void write_list(wxConfigBase& store, const wxString& group, const std::vector<std::string>& list)
{
    for (size_t i = 0; i < list.size(); ++i)
        store.Write(wxString::Format(wxT("%s/%d"), group, static_cast<int>(i)), to_text(list[i]));
}

void read_lights(const wxConfigBase& store, const wxString& group, Lighting_request& render)
{
    if (!store.Exists(group))
        return;
    render.lights.clear();
    std::string reason;
    for (const std::string& text : read_list(store, group + wxT("/lights"))) {
        if (const auto light = parse_light(text, reason))
            render.lights.push_back(*light);
    }
    render.environment = to_bytes(store.Read(group + wxT("/environment"), wxString()));
    render.volume = to_bytes(store.Read(group + wxT("/volume"), wxString()));
    const auto color =
        parse_value(Value_type::color4,
                    to_bytes(store.Read(group + wxT("/ambient"), wxString(wxT("0,0,0,1")))));
    if (color)
        std::copy_n(color->numbers.begin(), 4, render.ambient.begin());
}

void read_choices(wxConfigBase& store, const wxString& group, Work_document& document)
{
    const wxConfigPathChanger inside(&store, group + wxT("/"));
    std::vector<wxString> names;
    wxString name;
    long position = 0;
    for (bool more = store.GetFirstGroup(name, position); more;
         more = store.GetNextGroup(name, position))
        names.push_back(name);
    for (const wxString& exporter : names) {
        Exporter_choice& choice = document.choices[name_of_step(exporter)];
        choice.output = to_bytes(store.Read(exporter + wxT("/output"), wxString()));
        const std::vector<std::string> options = read_list(store, exporter + wxT("/options"));
        const std::vector<std::string> values = read_list(store, exporter + wxT("/values"));
        for (size_t i = 0; i < std::min(options.size(), values.size()); ++i)
            choice.options.push_back({"", options[i], values[i]});
    }
}

void write_choices(wxConfigBase& store, const wxString& group, const Work_document& document)
{
    for (const auto& [exporter, choice] : document.choices) {
        const wxString own = group + wxT("/") + to_text(step(exporter));
        store.Write(own + wxT("/output"), to_text(choice.output));
        std::vector<std::string> options, values;
        for (const Option_setting& option : choice.options) {
            options.push_back(option.name);
            values.push_back(option.value);
        }
        write_list(store, own + wxT("/options"), options);
        write_list(store, own + wxT("/values"), values);
    }
}

} // namespace

void Document_memory::load(Work_document& document) const
{
    const wxString group = group_of(document);
    if (!m_store.Exists(group))
        return;
    document.scene.node = to_bytes(m_store.Read(group + wxT("/node"), wxString()));
    document.exporter = to_bytes(m_store.Read(group + wxT("/exporter"), wxString()));
    document.scene.texture_paths =
        static_cast<Texture_paths>(m_store.ReadLong(group + wxT("/texture_paths"), 0) % 4);
    read_lights(m_store, group + wxT("/scene"), document.scene.render);
    read_choices(m_store, group + wxT("/exporters"), document);
}

void Document_memory::store(const Work_document& document)
{
    const wxString group = group_of(document);
    m_store.DeleteGroup(group);
    m_store.Write(group + wxT("/node"), to_text(document.scene.node));
    m_store.Write(group + wxT("/exporter"), to_text(document.exporter));
    m_store.Write(group + wxT("/texture_paths"), static_cast<long>(document.scene.texture_paths));
    const Lighting_request& render = document.scene.render;
    std::vector<std::string> lights;
    for (const Light_request& light : render.lights)
        lights.push_back(light_text(light));
    write_list(m_store, group + wxT("/scene/lights"), lights);
    m_store.Write(group + wxT("/scene/environment"), to_text(render.environment));
    m_store.Write(group + wxT("/scene/volume"), to_text(render.volume));
    m_store.Write(group + wxT("/scene/ambient"), to_text(color_text(render.ambient)));
    write_choices(m_store, group + wxT("/exporters"), document);
}

} // namespace reference_host

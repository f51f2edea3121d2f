// The settings store of Exporter_base: the settings that the host sees, by index and by key, and
// the static exporter settings that it never sees.
#include "exporter_base/exporter_base.h"

#include "exporter_base/border.h"
#include "exporter_base/bytes.h"
#include "exporter_base/decimal.h"
#include "exporter_base/toviraexport_log.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace QZ
{
namespace TOVIRAEXPORT
{

Exporter_base::Setting_record::Setting_record(const wxString& setting_name,
                                              const wxString& setting_value)
    : name(setting_name),
      value(setting_value),
      default_value(setting_value),
      name_bytes(to_bytes(setting_name)),
      value_bytes(to_bytes(setting_value)),
      default_bytes(value_bytes)
{
}

void Exporter_base::Setting_record::set_value(const wxString& new_value)
{
    value = new_value;
    value_bytes = to_bytes(new_value);
}

bool Exporter_base::Key_less::operator()(const wxString& left, const wxString& right) const
{
    return to_bytes(left) < to_bytes(right);
}

// ---- by index ----

unsigned int Exporter_base::get_num_settings()
{
    return static_cast<unsigned int>(m_settings.size());
}

Exporter_base::Setting_record* Exporter_base::find_setting(unsigned int index) const
{
    if (index >= m_settings.size())
        return nullptr;
    return std::next(m_settings.begin(), index)->second;
}

const char* Exporter_base::get_setting_name(unsigned int index)
{
    const Setting_record* record = find_setting(index);
    return record ? record->name_bytes.c_str() : nullptr;
}

const char* Exporter_base::get_setting_value(unsigned int index)
{
    const Setting_record* record = find_setting(index);
    return record ? record->value_bytes.c_str() : nullptr;
}

const char* Exporter_base::get_setting_default(unsigned int index)
{
    const Setting_record* record = find_setting(index);
    return record ? record->default_bytes.c_str() : nullptr;
}

void Exporter_base::set_setting_value(unsigned int index, const char* value)
{
    at_border([&] {
        if (Setting_record* record = find_setting(index))
            record->set_value(from_bytes(value));
    });
}

// ---- by key ----

void Exporter_base::set_own_setting_value(const wxString& key, const wxString& value)
{
    const auto found = m_settings.find(key);
    if (found != m_settings.end())
        found->second->set_value(value);
    else
        m_settings[key] = new Setting_record(key, value);
}

wxString Exporter_base::get_own_setting_value(const wxString& key) const
{
    const auto found = m_settings.find(key);
    if (found != m_settings.end())
        return found->second->value;
    Toviraexport_log::instance()->out(wxT("Warning: can not find the key in setting [") + key +
                                      wxT("]\n"));
    return wxString();
}

wxString Exporter_base::get_base_setting_key() const
{
    wxString key =
        wxT("tovira_exporter_") + from_bytes(get_name()) + wxT("_") + from_bytes(get_language());
    key.Replace(wxT(" "), wxT("_"));
    return key;
}

void Exporter_base::register_file_setting(const wxString& setting, const wxString& default_path)
{
    const wxString prefix = get_base_setting_key() + wxT("_") + setting;
    set_own_setting_value(prefix + wxT("_open"), default_path);
    set_own_setting_value(prefix + wxT("_save"), default_path);
    set_own_setting_value(prefix + wxT("_filter_index"), wxT("0"));
}

void Exporter_base::register_exportfile_setting()
{
    register_file_setting(wxT("exportfile"), from_bytes(std::getenv("HOME")) + wxT("/untitled"));
}

// ---- static exporter settings ----

void Exporter_base::add_exporter_setting(const wxString& key, const wxString& value)
{
    m_exporter_settings.insert(std::make_pair(key, value));
}

void Exporter_base::register_chooser_properties(const wxString& setting,
                                                const Chooser_properties& properties)
{
    const wxString prefix = get_base_setting_key() + wxT("::") + setting + wxT("::");
    add_exporter_setting(prefix + wxT("wildcard"), properties.wildcard);
    for (size_t i = 0; i < properties.extensions.size(); ++i)
        add_exporter_setting(prefix + wxT("extension::") + decimal(static_cast<int>(i)),
                             properties.extensions[i]);
    add_exporter_setting(prefix + wxT("caption::open"), properties.caption_open);
    add_exporter_setting(prefix + wxT("caption::save"), properties.caption_save);
    add_exporter_setting(prefix + wxT("extension_autoadd"),
                         properties.extension_autoadd ? wxT("true") : wxT("false"));
}

wxString Exporter_base::get_exporter_setting(const wxString& key)
{
    const auto found = m_exporter_settings.find(key);
    return found != m_exporter_settings.end() ? found->second : wxString(wxT("<undefined>"));
}

void Exporter_base::debug_dump_exporter_setting() const
{
    std::fprintf(stderr, "DEBUG: Exporter_base::debug_dump_exporter_setting: # of entries = %u\n",
                 static_cast<unsigned int>(m_exporter_settings.size()));
    for (const auto& entry : m_exporter_settings)
        std::fprintf(stderr, "DEBUG: key = %s, val = %s\n", to_bytes(entry.first).c_str(),
                     to_bytes(entry.second).c_str());
}

wxString Exporter_base::get_exportfile_wildcard_all() const
{
    return wxT("All files (*)|*");
}

} // namespace TOVIRAEXPORT
} // namespace QZ

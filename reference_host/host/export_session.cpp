#include "reference_host/host/export_session.h"

#include "sdk/interface_ids.h"

namespace reference_host
{

using QZ::TSDK::Interface;
using QZ::TSDK::IPreferences;
using QZ::TSDK::ITovira;

namespace
{

class Preferences_object : public Host_object<IPreferences>
{
public:
    explicit Preferences_object(const Preferences& preferences)
        : Host_object("preferences", ""), m_values(preferences.values)
    {
    }

    int get_interface_target() const override { return QZ::TSDK::INTERFACE_PREFERENCES; }

    bool get_bool_preference(const char* name, bool* value) override
    {
        used("get_bool_preference");
        const auto found = m_values.find(name ? name : "");
        if (found == m_values.end() || !value)
            return false;
        *value = found->second;
        return true;
    }

private:
    const std::map<std::string, bool>& m_values;
};

class Application : public Host_object<ITovira>
{
public:
    Application(Graph_objects& objects, Compiler_record& record)
        : Host_object("application", ""),
          m_compiler(objects.ledger().make<Compiler>(objects, record)),
          m_preferences(objects.ledger().make<Preferences_object>(objects.scene().preferences)),
          m_has_preferences(objects.scene().preferences.exist)
    {
        for (const std::string& folder : objects.scene().search_paths)
            m_search_paths.push_back(folder.c_str());
    }

    Interface* get_interface(int id) override
    {
        used("get_interface");
        if (id == QZ::TSDK::INTERFACE_COMPILER) {
            m_compiler.hand_out();
            return &m_compiler;
        }
        if (id == QZ::TSDK::INTERFACE_PREFERENCES && m_has_preferences) {
            m_preferences.hand_out();
            return &m_preferences;
        }
        return nullptr;
    }
    const char** get_search_paths(int& count) override
    {
        used("get_search_paths");
        count = static_cast<int>(m_search_paths.size());
        return m_search_paths.data();
    }

private:
    Compiler& m_compiler;
    Preferences_object& m_preferences;
    bool m_has_preferences;
    std::vector<const char*> m_search_paths;
};

} // namespace

Export_session::Export_session(Export_scene scene)
    : m_scene(std::move(scene)),
      m_objects(m_ledger, m_scene),
      m_view(m_ledger.make<Graph_view>(m_objects, m_ledger.make<Graph_handle>())),
      m_application(m_ledger.make<Application>(m_objects, m_record))
{
}

Export_session::~Export_session() = default;

ITovira* Export_session::application()
{
    m_ledger.find<Application>(&m_application)->lend();
    return &m_application;
}

QZ::TSDK::IGraph_view* Export_session::view()
{
    m_view.lend();
    return &m_view;
}

std::vector<std::string> Export_session::reference_findings(const Export_events& events) const
{
    // Exporters do not release these two on purpose; the session owns the memory anyway.
    const std::vector<Kept_reference> kept = {
        {"graph node", events.file_name_empty},         // the generic exporter's selected node
        {"generated shader", events.overwrite_refused}, // FX Composer's, one of its two
    };
    return m_ledger.findings(kept);
}

} // namespace reference_host

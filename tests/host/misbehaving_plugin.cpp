// A plug-in whose exporters each do one thing wrong, to see whether the host notices.
#include "plugin/iexporter.h"
#include "plugin/iexporter_plugin.h"
#include "sdk/igraph_node.h"
#include "sdk/igraph_view.h"
#include "sdk/interface_ids.h"
#include "sdk/itovira.h"
#include "sdk/itovira_compiler.h"

#include <csignal>
#include <iterator>

using namespace QZ::TSDK;

namespace
{

struct Misdeed {
    const char* name;
    bool (*commit)(ITovira* app, IGraph_view* view);
};

const Misdeed misdeeds[] = {
    {"forgets a reference",
     [](ITovira*, IGraph_view* view) {
         view->get_selected_node(0);
         return true;
     }},
    {"releases twice",
     [](ITovira*, IGraph_view* view) {
         IGraph_node* node = view->get_selected_node(0);
         node->release();
         node->release();
         return true;
     }},
    {"uses what it released",
     [](ITovira*, IGraph_view* view) {
         IGraph_node* node = view->get_selected_node(0);
         node->release();
         node->get_name();
         return true;
     }},
    {"compiles nothing",
     [](ITovira* app, IGraph_view*) {
         auto* compiler = static_cast<ITovira_compiler*>(app->get_interface(INTERFACE_COMPILER));
         compiler->compile(nullptr, nullptr, nullptr);
         compiler->release();
         return true;
     }},
    {"writes nothing", [](ITovira*, IGraph_view*) { return true; }},
    {"crashes",
     [](ITovira*, IGraph_view*) {
         std::signal(SIGSEGV, SIG_DFL); // a sanitizer's runtime turns a crash into an exit
         return std::raise(SIGSEGV) == 0;
     }},
    {"is interrupted", [](ITovira*, IGraph_view*) { return std::raise(SIGINT) == 0; }},
    {"refuses", [](ITovira*, IGraph_view*) { return false; }},
};

class Misbehaving_exporter : public IExporter
{
public:
    explicit Misbehaving_exporter(const Misdeed& misdeed) : m_misdeed(misdeed) {}

    Interface* get_interface(int) override { return nullptr; }
    int get_interface_target() const override { return INTERFACE_EXPORTER; }
    bool export_shader(ITovira* app, IGraph_view* view) override
    {
        return m_misdeed.commit(app, view);
    }
    int create_ui(unsigned long long, int, IGraph_view*) override { return 0; }
    bool remove_ui(IGraph_view*, bool) override { return true; }
    void set_ui_size(int, int) override {}
    unsigned int get_num_settings() override { return 0; }
    const char* get_setting_name(unsigned int) override { return nullptr; }
    const char* get_setting_default(unsigned int) override { return nullptr; }
    const char* get_setting_value(unsigned int) override { return nullptr; }
    void set_setting_value(unsigned int, const char*) override {}
    const char* get_name() const override { return m_misdeed.name; }

private:
    const Misdeed& m_misdeed;
};

class Misbehaving_plugin : public IExporter_plugin
{
public:
    const char* get_name() const override { return "Misbehaving_plugin"; }
    const char* get_type() const override { return "Exporter_plugin"; }
    int get_num_exporters() const override { return static_cast<int>(std::size(misdeeds)); }
    IExporter* get_exporter(int index) override
    {
        return new Misbehaving_exporter(misdeeds[index]);
    }
};

} // namespace

extern "C" qz::base::Plugin* initializer(unsigned int)
{
    return new Misbehaving_plugin;
}

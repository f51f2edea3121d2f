// The plug-in with one of its exporters and one deliberate defect: the one that the check named by
// the environment variable TOVIRAEXPORT_DEFECT must find. Without it, without defect.
#include "exporters/make_exporter.h"
#include "plugin/init_library.h"
#include "plugin/tovira_exporter_plugin.h"
#include "sdk/igraph_node.h"
#include "sdk/igraph_view.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace QZ::TSDK;

namespace
{

bool has_defect(const char* check)
{
    const char* const defect = std::getenv("TOVIRAEXPORT_DEFECT");
    return defect && std::strcmp(defect, check) == 0;
}

// The folder of the check's files.
std::string home(const char* name)
{
    return std::string(std::getenv("HOME")) + "/" + name;
}

// ---- defects of an export, before the real one ----

void forget_reference(IGraph_view* view)
{
    view->get_selected_node(0);
}

void release_twice(IGraph_view* view)
{
    if (IGraph_node* node = view->get_selected_node(0)) {
        node->release();
        node->release();
    }
}

void trust_the_host(IGraph_view* view)
{
    IGraph_node* node = view->get_selected_node(0);
    const std::string name = node->get_name();
    node->release();
}

void let_exceptions_out(IGraph_view*)
{
    std::vector<std::unique_ptr<int>> numbers;
    for (int i = 0; i < 3; ++i)
        numbers.push_back(std::make_unique<int>(i));
}

void ignore_failed_writing(IGraph_view*)
{
    const std::string text(1000, 'x');
    const int file = open(home("note").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (write(file, text.data(), text.size()) < 0)
        errno = 0;
    close(file);
}

void let_read_errors_out(IGraph_view*)
{
    std::FILE* const file = std::fopen(home("texts/user_copyright.txt").c_str(), "r");
    char byte;
    const bool fails = file && std::fread(&byte, 1, 1, file) == 0 && std::ferror(file);
    if (file)
        std::fclose(file);
    if (fails)
        throw std::runtime_error("unreadable");
}

// Follows the first connection of each last input; looks at each input of a node.
void take_quadratic_time(IGraph_view* view)
{
    IGraph_node* const root = view->get_selected_node(0);
    IGraph_node* node = root;
    root->reference();
    unsigned long long steps = 0;
    while (node) {
        IGraph_node* next = nullptr;
        IInput_iterator* inputs = node->get_input_iterator(0);
        for (inputs->reset(); !inputs->at_end(); inputs->next(1), ++steps) {
            if (next)
                next->release();
            IConnection_iterator* connections = inputs->get_connections();
            connections->reset();
            next = connections->get_source_node();
            connections->release();
        }
        inputs->release();
        node->release();
        node = next == root ? nullptr : next;
    }
    volatile unsigned long long sum = 0;
    for (unsigned long long i = 0; i < steps * steps / 500; ++i)
        sum = sum + i;
}

void replace_what_is_no_file(IGraph_view*)
{
    struct stat status;
    const std::string file = home("out.fx");
    if (lstat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        std::remove(file.c_str());
}

void wait_for_texts(IGraph_view*)
{
    constexpr unsigned long too_long_us = 5'200'000;
    static bool has_waited = false;
    if (!has_waited && access(home("texts").c_str(), F_OK) == 0)
        has_waited = usleep(too_long_us) == 0;
}

struct Export_defect {
    const char* check;
    void (*commit)(IGraph_view* view);
};

constexpr Export_defect export_defects[] = {
    {"interface.sequences", release_twice},         {"faults.none", forget_reference},
    {"faults.host_calls", trust_the_host},          {"faults.allocations", let_exceptions_out},
    {"faults.system_calls", ignore_failed_writing}, {"faults.reads", let_read_errors_out},
    {"graphs.chains", take_quadratic_time},         {"graphs.cycles", take_quadratic_time},
    {"graphs.sharing", take_quadratic_time},        {"graphs.inputs", take_quadratic_time},
    {"files.output", replace_what_is_no_file},      {"files.copyright", wait_for_texts},
};

// Hands every call on to a real exporter, but for the defect.
class Defective_exporter : public IExporter
{
public:
    Interface* get_interface(int id) override
    {
        if (has_defect("interface.ids") && id == 0)
            return this;
        return m_exporter->get_interface(id) ? this : nullptr;
    }
    int get_interface_target() const override { return m_exporter->get_interface_target(); }

    bool export_shader(ITovira* app, IGraph_view* view) override
    {
        for (const Export_defect& defect : export_defects) {
            if (has_defect(defect.check))
                defect.commit(view);
        }
        return m_exporter->export_shader(app, view);
    }

    int create_ui(unsigned long long container, int width, IGraph_view* view) override
    {
        m_removals = 0;
        if (has_defect("panels.memory")) {
            constexpr size_t lost = 64 * 1024;
            m_lost.emplace_back(lost, 'x');
        }
        const int height = m_exporter->create_ui(container, width, view);
        return has_defect("panels.sizes") && width > 2000 ? 0 : height;
    }
    bool remove_ui(IGraph_view* view, bool discard) override
    {
        if (has_defect("panels.controls"))
            return true;
        if (has_defect("interface.pairs") && ++m_removals > 1)
            std::abort();
        const bool removed = m_exporter->remove_ui(view, discard);
        return (removed && !has_defect("panels.life")) || has_defect("panels.destroyed_containers");
    }
    void set_ui_size(int width, int height) override { m_exporter->set_ui_size(width, height); }

    unsigned int get_num_settings() override { return m_exporter->get_num_settings(); }
    const char* get_setting_name(unsigned int index) override
    {
        return m_exporter->get_setting_name(index);
    }
    const char* get_setting_default(unsigned int index) override
    {
        return m_exporter->get_setting_default(index);
    }
    const char* get_setting_value(unsigned int index) override
    {
        const char* const value = m_exporter->get_setting_value(index);
        return value || !has_defect("interface.settings") ? value : "";
    }
    void set_setting_value(unsigned int index, const char* value) override
    {
        m_exporter->set_setting_value(index, value);
    }
    const char* get_name() const override { return m_exporter->get_name(); }

private:
    static std::vector<std::string> m_lost;

    std::unique_ptr<IExporter> m_exporter = QZ::TOVIRAEXPORT::make_exporter(0);
    int m_removals = 0;
};

std::vector<std::string> Defective_exporter::m_lost;

class Defective_plugin : public QZ::TOVIRAEXPORT::Tovira_exporter_plugin
{
public:
    const char* get_type() const override
    {
        return has_defect("interface.plugin") ? "Other_plugin" : "Exporter_plugin";
    }
    int get_num_exporters() const override { return 1; }
    IExporter* get_exporter(int index) override
    {
        const bool is_there = index == 0 || (index < 0 && has_defect("interface.exporters"));
        return is_there ? new Defective_exporter : nullptr;
    }
};

__attribute__((destructor)) void on_unloading()
{
    if (has_defect("interface.loadings"))
        std::abort();
}

} // namespace

qz::base::Plugin* init_library(unsigned int selector)
{
    const bool is_there = selector == 0 || has_defect("interface.entries");
    return is_there ? new Defective_plugin : nullptr;
}

qz::base::Plugin* initializer(unsigned int selector)
{
    return init_library(selector);
}

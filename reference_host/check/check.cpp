#include "reference_host/check/check.h"

#include "reference_host/check/entries.h"

#include <cstdio>
#include <stdexcept>

#include <dlfcn.h>

namespace reference_host
{
namespace
{

constexpr int max_printed_findings = 10;

} // namespace

Check_run::Check_run(std::string plugin_file, std::string folder, unsigned seed)
    : m_plugin_file(std::move(plugin_file)), m_folder(std::move(folder)), m_random(seed)
{
}

int Check_run::random_number(int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(m_random);
}

void Check_run::expect(bool holds, const std::string& finding)
{
    if (holds)
        return;
    if (++m_findings <= max_printed_findings)
        std::printf("%s\n", finding.c_str());
    std::fflush(stdout); // what comes next may crash
}

QZ::TSDK::IExporter_plugin& Check_run::plugin()
{
    if (m_plugin)
        return *m_plugin;
    const auto initializer =
        reinterpret_cast<Entry_function>(find_entry(m_plugin_file, unmangled_entry));
    qz::base::Plugin* plugin = initializer ? initializer(plugin_selector) : nullptr;
    if (!plugin)
        throw std::runtime_error("the library gives no plug-in");
    m_plugin.reset(static_cast<QZ::TSDK::IExporter_plugin*>(plugin));
    return *m_plugin;
}

std::vector<std::unique_ptr<QZ::TSDK::IExporter>> Check_run::make_exporters()
{
    std::vector<std::unique_ptr<QZ::TSDK::IExporter>> exporters;
    for (int index = 0; index < plugin().get_num_exporters(); ++index) {
        exporters.emplace_back(plugin().get_exporter(index));
        if (!exporters.back())
            throw std::runtime_error("there is no exporter " + std::to_string(index));
    }
    return exporters;
}

void* find_entry(const std::string& plugin_file, const char* symbol)
{
    void* library = dlopen(plugin_file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw std::runtime_error(std::string("the library cannot be loaded: ") + dlerror());
    return dlsym(library, symbol);
}

} // namespace reference_host

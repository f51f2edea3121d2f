// Checks of what the library and its objects promise by their interface.
#include "reference_host/check/check.h"
#include "reference_host/check/check_functions.h"
#include "reference_host/check/entries.h"

#include "sdk/interface_ids.h"

#include <climits>
#include <cstring>
#include <set>
#include <string>

#include <dlfcn.h>

namespace reference_host
{
namespace
{

constexpr int wrong_indices[] = {-1, INT_MIN, INT_MAX, 1000};

} // namespace

void check_entries(Check_run& run)
{
    for (const char* symbol : {unmangled_entry, mangled_entry}) {
        const auto entry = reinterpret_cast<Entry_function>(find_entry(run.plugin_file(), symbol));
        run.expect(entry != nullptr, std::string("the library has no function ") + symbol);
        if (!entry)
            continue;
        qz::base::Plugin* first = entry(plugin_selector);
        qz::base::Plugin* second = entry(plugin_selector);
        run.expect(first && second, std::string(symbol) + " gives no object for the selector 0");
        run.expect(first != second, std::string(symbol) + " gives the same object twice");
        for (const unsigned int selector : {1U, 2U, 0x7fffffffU, 0xffffffffU})
            run.expect(!entry(selector), std::string(symbol) +
                                             " gives an object for the selector " +
                                             std::to_string(selector));
    }
}

void check_plugin_object(Check_run& run)
{
    QZ::TSDK::IExporter_plugin& plugin = run.plugin();
    run.expect(plugin.get_name() && *plugin.get_name(), "the plug-in has no name");
    run.expect(plugin.get_type() && std::strcmp(plugin.get_type(), "Exporter_plugin") == 0,
               "the plug-in's type is not Exporter_plugin");
    run.expect(plugin.get_plugin_system_version() == 2, "the plug-in system version is not 2");
    run.expect(plugin.get_version() >= 1, "the plug-in's version is below 1");
    run.expect(plugin.get_compiler() != nullptr, "the compiler's name is null");
    for (const int index : wrong_indices) {
        const char* const untouched = "untouched";
        const char* value = untouched;
        if (plugin.get_string_property(index, &value) == 0)
            run.expect(value == untouched, "a property that does not exist changes the value");
    }
    plugin.release();
    plugin.release();
    run.expect(plugin.get_name() && *plugin.get_name(), "the plug-in ends with its release");
}

void check_exporter_indices(Check_run& run)
{
    QZ::TSDK::IExporter_plugin& plugin = run.plugin();
    const int count = plugin.get_num_exporters();
    run.expect(count > 0, "there is no exporter");
    std::set<std::string> names;
    for (int index = 0; index < count; ++index) {
        const std::unique_ptr<QZ::TSDK::IExporter> first(plugin.get_exporter(index));
        const std::unique_ptr<QZ::TSDK::IExporter> second(plugin.get_exporter(index));
        const std::string which = "exporter " + std::to_string(index);
        run.expect(first && second, which + " is null");
        if (!first || !second)
            continue;
        run.expect(first != second, which + " is the same object twice");
        run.expect(first->get_name() && names.insert(first->get_name()).second,
                   which + " has no name of its own");
    }
    for (const int index : {count, -1, INT_MIN, INT_MAX})
        run.expect(!plugin.get_exporter(index),
                   "the index " + std::to_string(index) + " gives an exporter");
}

void check_exporter_interfaces(Check_run& run)
{
    for (const auto& exporter : run.make_exporters()) {
        const std::string name = exporter->get_name();
        run.expect(exporter->get_interface_target() == QZ::TSDK::INTERFACE_EXPORTER,
                   name + ": wrong id of its interface");
        run.expect(exporter->get_interface(QZ::TSDK::INTERFACE_EXPORTER) == exporter.get(),
                   name + " does not give itself");
        for (const int id : {0, 1, 2, 10, 25, 27, -1, INT_MIN, INT_MAX})
            run.expect(!exporter->get_interface(id),
                       name + " gives an interface of the id " + std::to_string(id));
        exporter->reference();
        exporter->release();
        exporter->release();
        run.expect(name == exporter->get_name(), name + " ends with its release");
    }
}

namespace
{

void check_settings_of(Check_run& run, QZ::TSDK::IExporter& exporter)
{
    const std::string name = exporter.get_name();
    const unsigned int count = exporter.get_num_settings();
    std::string before;
    for (unsigned int index = 0; index < count; ++index) {
        const char* const key = exporter.get_setting_name(index);
        const std::string which = name + ", setting " + std::to_string(index);
        run.expect(key != nullptr && exporter.get_setting_default(index) != nullptr &&
                       exporter.get_setting_value(index) != nullptr,
                   which + " is null");
        run.expect(key && before < key, which + " is not ordered by name");
        before = key ? key : "";
        for (const char* value : {"", "a", "\xff\xfe", "%s%n", "two\nlines"}) {
            exporter.set_setting_value(index, value);
            const char* const kept = exporter.get_setting_value(index);
            run.expect(kept && std::strcmp(kept, value) == 0, which + " does not keep its value");
        }
        exporter.set_setting_value(index, nullptr);
        const char* const kept = exporter.get_setting_value(index);
        run.expect(kept && !*kept, which + " is not empty after null");
    }
    for (const unsigned int index : {count, count + 1, 0x7fffffffU, 0xffffffffU}) {
        exporter.set_setting_value(index, "x");
        exporter.set_setting_value(index, nullptr);
        run.expect(!exporter.get_setting_name(index) && !exporter.get_setting_default(index) &&
                       !exporter.get_setting_value(index),
                   name + " has a setting " + std::to_string(index));
    }
    run.expect(count == exporter.get_num_settings(), name + ": the number of settings changes");
}

} // namespace

void check_settings(Check_run& run)
{
    for (const auto& exporter : run.make_exporters())
        check_settings_of(run, *exporter);
}

namespace
{

void use_and_delete(QZ::TSDK::IExporter_plugin* plugin)
{
    for (int index = 0; index < plugin->get_num_exporters(); ++index)
        delete plugin->get_exporter(index);
    delete plugin;
}

} // namespace

void check_loadings(Check_run& run)
{
    constexpr int loadings = 1000;
    for (int i = 0; i < loadings && !run.has_findings(); ++i) {
        void* library = dlopen(run.plugin_file().c_str(), RTLD_NOW | RTLD_LOCAL);
        run.expect(library != nullptr, "loading " + std::to_string(i + 1) + " fails");
        if (!library)
            return;
        const auto entry = reinterpret_cast<Entry_function>(dlsym(library, unmangled_entry));
        use_and_delete(static_cast<QZ::TSDK::IExporter_plugin*>(entry(plugin_selector)));
        run.expect(dlclose(library) == 0, "the library cannot be unloaded");
    }
}

} // namespace reference_host

// What a check of a plug-in library is.
#ifndef REFERENCE_HOST_CHECK_CHECK_H
#define REFERENCE_HOST_CHECK_CHECK_H

#include "plugin/iexporter.h"
#include "plugin/iexporter_plugin.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace reference_host
{

class Check_run;

enum class Severity {
    error,  // the host would crash, hang or lose something
    warning // the host or its user would be surprised
};

struct Check {
    const char* id;       // "group.name"; never changes
    const char* sentence; // what it proves
    Severity severity;
    int seconds; // that it may take; a check that takes longer fails
    bool needs_fault_library;
    void (*run)(Check_run&);
};

// One run of one check, in a process of its own. Not copied, used by one thread.
class Check_run
{
public:
    // `folder` is an empty folder for its files.
    Check_run(std::string plugin_file, std::string folder, unsigned seed);
    Check_run(const Check_run&) = delete;
    Check_run& operator=(const Check_run&) = delete;

    const std::string& plugin_file() const { return m_plugin_file; }
    const std::string& folder() const { return m_folder; }
    std::mt19937& random() { return m_random; }

    // A number from `low` to `high`, both included.
    int random_number(int low, int high);

    // Prints the finding unless `holds`. Only the first few are printed; one is enough to fail.
    void expect(bool holds, const std::string& finding);
    bool has_findings() const { return m_findings > 0; }

    // The plug-in object, loaded when first asked for. Throws std::runtime_error when there is
    // none.
    QZ::TSDK::IExporter_plugin& plugin();

    // One new exporter for each index. Throws std::runtime_error when one is missing.
    std::vector<std::unique_ptr<QZ::TSDK::IExporter>> make_exporters();

private:
    std::string m_plugin_file;
    std::string m_folder;
    std::mt19937 m_random;
    std::unique_ptr<QZ::TSDK::IExporter_plugin> m_plugin;
    int m_findings = 0;
};

// The address of a function of the plug-in library, which is loaded and stays so; null: it has
// none.
void* find_entry(const std::string& plugin_file, const char* symbol);

} // namespace reference_host

#endif

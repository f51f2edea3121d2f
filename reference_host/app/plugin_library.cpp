#include "reference_host/app/plugin_library.h"

#include "reference_host/system/file_access.h"
#include "reference_host/system/suggestion.h"

#include <dlfcn.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace reference_host
{

using QZ::TSDK::IExporter;
using QZ::TSDK::IExporter_plugin;

namespace
{

namespace fs = std::filesystem;

constexpr const char* library_name = "toviraexport.so";

// Where the library may lie, seen from the folder of this program: built together, in the build
// tree, installed under one prefix.
constexpr const char* usual_folders[] = {".", "../plugin", "../../plugin", INSTALLED_PLUGIN_FOLDER,
                                         "../lib"};

constexpr const char* plugin_variable = "TOVIRAEXPORT_PLUGIN";

// The file that the environment names, or the first that there is in a usual folder.
std::string usual_file()
{
    const char* named = std::getenv(plugin_variable);
    if (named && *named)
        return named;
    std::error_code failure;
    const fs::path program = fs::read_symlink("/proc/self/exe", failure);
    std::string looked_at;
    for (const char* folder : usual_folders) {
        const fs::path file = (program.parent_path() / folder / library_name).lexically_normal();
        if (fs::exists(file, failure))
            return file.string();
        looked_at += "\n  " + file.string();
    }
    throw std::runtime_error(std::string(library_name) +
                             " was not found; name it with --plugin or " + plugin_variable +
                             ". It would be one of these:" + looked_at);
}

std::string lower_case(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string listing(const std::vector<std::string>& names)
{
    std::string text;
    for (size_t i = 0; i < names.size(); ++i)
        text += "\n  " + std::to_string(i) + "  " + names[i];
    return text;
}

// The names, and the words of which they consist: a part of a name is enough.
std::vector<std::string> with_their_words(const std::vector<std::string>& names)
{
    std::vector<std::string> all = names;
    for (std::string name : names) {
        std::replace_if(
            name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, ' ');
        std::istringstream words(name);
        all.insert(all.end(), std::istream_iterator<std::string>(words), {});
    }
    return all;
}

} // namespace

Plugin_library::Plugin_library(const std::string& file)
{
    std::string path = file.empty() ? usual_file() : file;
    if (path.find('/') == std::string::npos)
        path.insert(0, "./"); // a bare name would be searched among the system's libraries
    const std::string reason = why_not_readable(path);
    if (!reason.empty())
        throw std::runtime_error("the plug-in cannot be loaded: " + path + ": " + reason);
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw std::runtime_error(std::string("the plug-in cannot be loaded: ") + dlerror());
    using Initializer = qz::base::Plugin* (*)(unsigned int);
    const auto initializer = reinterpret_cast<Initializer>(dlsym(library, "initializer"));
    if (!initializer)
        throw std::runtime_error("'" + path +
                                 "' is not a plug-in: it has no function 'initializer'");
    constexpr unsigned int plugin_selector = 0; // the only one there is
    qz::base::Plugin* plugin = initializer(plugin_selector);
    if (!plugin)
        throw std::runtime_error("'" + path + "' returned no plug-in");
    if (std::strcmp(plugin->get_type(), "Exporter_plugin") != 0)
        throw std::runtime_error("'" + path + "' is not an exporter plug-in, but a '" +
                                 plugin->get_type() + "'");
    m_file = path;
    m_plugin.reset(static_cast<IExporter_plugin*>(plugin));
    for (int index = 0; index < m_plugin->get_num_exporters(); ++index)
        m_names.emplace_back(make_exporter(index)->get_name());
}

int Plugin_library::find_exporter(const std::string& wanted) const
{
    std::vector<int> fitting;
    for (int index = 0; index < static_cast<int>(m_names.size()); ++index) {
        const std::string name = lower_case(m_names[static_cast<size_t>(index)]);
        if (wanted == std::to_string(index) || lower_case(wanted) == name)
            return index;
        if (!wanted.empty() && name.find(lower_case(wanted)) != std::string::npos)
            fitting.push_back(index);
    }
    if (fitting.size() == 1)
        return fitting.front();
    const std::string near = suggestion(wanted, with_their_words(m_names));
    throw std::invalid_argument(
        (fitting.empty() ? "no exporter fits '" : "several exporters fit '") + wanted + "'" +
        (near.empty() ? "; there are:" : near + " There are:") + listing(m_names));
}

bool Plugin_library::fits(const std::string& wanted, int index) const
{
    const std::string& name = m_names[static_cast<size_t>(index)];
    return wanted == std::to_string(index) ||
           lower_case(name).find(lower_case(wanted)) != std::string::npos;
}

std::unique_ptr<IExporter> Plugin_library::make_exporter(int index) const
{
    std::unique_ptr<IExporter> exporter(m_plugin->get_exporter(index));
    if (!exporter)
        throw std::runtime_error("the plug-in returned no exporter " + std::to_string(index));
    return exporter;
}

} // namespace reference_host

// The options that several commands share: the plug-in, the document, the scene, the answers.
#ifndef REFERENCE_HOST_APP_SCENE_OPTIONS_H
#define REFERENCE_HOST_APP_SCENE_OPTIONS_H

#include "reference_host/app/export_request.h"

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace reference_host
{

void add_plugin(CLI::App& app, std::string& plugin);
void add_exporter(CLI::App& app, std::string& exporter);
void add_search_path(CLI::App& app, std::vector<std::string>& search_path);

// The node that is exported; the same with its document.
void add_node(CLI::App& app, Scene_request& scene);
void add_document(CLI::App& app, Scene_request& scene);

// Lights, environment, volume, ambient light, search path.
void add_surroundings(CLI::App& app, Scene_request& scene);

// The same, and how the shader tells its kind and names its images.
void add_scene_options(CLI::App& app, Scene_request& scene);

// The answers where a user would be asked. `exporter` is the exporter of settings that name none;
// empty: all, strictly; "*": all that have the option.
void add_answers(CLI::App& app, Scene_request& scene, const std::string& exporter);

// What was given of the options that decide what is in the files, "--option=value".
std::vector<std::string> given_arguments(const CLI::App& app,
                                         const std::vector<Option_setting>& settings);

} // namespace reference_host

#endif

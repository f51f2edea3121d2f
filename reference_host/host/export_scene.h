// What the host shows to the plug-in during one export.
#ifndef REFERENCE_HOST_HOST_EXPORT_SCENE_H
#define REFERENCE_HOST_HOST_EXPORT_SCENE_H

#include "reference_host/document/shader_graph.h"
#include "reference_host/generator/generator.h"
#include "reference_host/host/render_settings.h"

#include <map>
#include <string>
#include <vector>

namespace reference_host
{

struct Preferences {
    bool exist = true; // false: the host has no preferences interface
    std::map<std::string, bool> values;
};

// How the selected node tells its kind.
struct Shader_kind_answer {
    enum class From { node, fixed, none }; // the generator's answer, `text`, or no answer at all
    From from = From::node;
    std::string text;
};

struct Export_scene {
    const Shader_graph* graph = nullptr; // never null during an export
    std::vector<const Node*> selection;
    Shader_kind_answer kind; // of the selected nodes
    Render_settings render_settings;
    Generator_settings generator;
    std::vector<std::string> search_paths;
    Preferences preferences;
};

} // namespace reference_host

#endif

#include "reference_host/app/render_export.h"

#include "reference_host/app/export_item.h"
#include "reference_host/app/export_job.h"
#include "reference_host/app/plugin_library.h"
#include "reference_host/desktop/wx_runtime.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* key_and_fill[] = {
    "render_key:directional:intensity=0.9,color=1,0.97,0.92",
    "render_fill:directional:intensity=0.25,color=0.85,0.92,1",
};
constexpr char surroundings[] = "render_surroundings";

Light_request light_of(const std::string& text)
{
    std::string reason;
    if (const auto light = parse_light(text, reason))
        return *light;
    throw std::invalid_argument("'" + text + "': " + reason);
}

bool is_light(const Node& node)
{
    return node.scope.empty() && node.type == Value_type::lightshader;
}

Scene_request scene_of(const Document_request& request, const Shader_graph& graph)
{
    Scene_request scene;
    scene.document = request.document;
    scene.node = request.node;
    scene.search_path = request.search_path;
    for (const std::string& light : request.lights)
        scene.render.lights.push_back(light_of(light));
    if (!request.environment_file.empty())
        scene.render.environment =
            surroundings + (":" + fs::absolute(request.environment_file).string());
    light_for_picture(scene, graph);
    scene.options.push_back({"", "alpha_transparency", "true"}); // a picture shows what is behind
    return scene;
}

std::string exporter_of(const std::string& target)
{
    const std::map<std::string, std::string> exporters = {
        {"glsl", "Custom GLSL"}, {"cgfx", "Custom CgFX"}, {"hlsl", "Custom HLSL FX"}};
    return exporters.at(target);
}

Exported_shader export_shader(const Scene_request& scene, QZ::TSDK::IExporter& exporter,
                              const std::string& folder)
{
    const Opened_document document(scene);
    fs::create_directories(folder);
    Replacement replacement(scene.overwrite);
    const Export_outcome outcome =
        run_export(document, exporter, folder + "/shader", scene, replacement);
    print_messages(messages_of(outcome)); // the renderer itself tells which images are missing
    Exported_shader shader;
    shader.name = document.node().name;
    for (const Shader_source& text : drawable_texts(outcome))
        shader.files.push_back(text.name);
    return shader;
}

} // namespace

void light_for_picture(Scene_request& scene, const Shader_graph& graph)
{
    const bool has_lights = std::any_of(graph.nodes.begin(), graph.nodes.end(),
                                        [](const auto& node) { return is_light(*node); });
    if (scene.render.lights.empty() && !has_lights)
        for (const char* light : key_and_fill)
            scene.render.lights.push_back(light_of(light));
    if (scene.render.environment.empty())
        scene.render.environment = surroundings;
    scene.texture_paths = Texture_paths::absolute;
}

// The vertex shader of a pair first: its name ends with "_v.gl", the other one's with "_f.gl".
std::vector<Shader_source> drawable_texts(const Export_outcome& outcome)
{
    std::vector<Shader_source> texts;
    size_t effects = 0;
    for (const Exported_file& file : outcome.files) {
        const std::string kind = fs::path(file.path).extension().string();
        const bool is_effect = kind == ".cgfx" || kind == ".fx";
        effects += is_effect ? 1 : 0;
        if (is_effect || kind == ".gl")
            texts.push_back({file.path, file.content});
    }
    std::sort(texts.begin(), texts.end(),
              [](const auto& one, const auto& other) { return one.name > other.name; });
    const bool is_drawable =
        (texts.size() == 1 && effects == 1) || (texts.size() == 2 && effects == 0);
    return is_drawable ? texts : std::vector<Shader_source>();
}

std::vector<Exported_shader> export_for_renderer(const Document_request& request,
                                                 const std::string& folder)
{
    const auto graph = open_document(request.document, request.search_path);
    Scene_request scene = scene_of(request, *graph);
    std::vector<std::string> nodes = {request.node};
    if (request.all) {
        nodes.clear();
        for (const Node* node : shown_nodes(*graph))
            nodes.push_back(node->name);
        if (nodes.empty())
            throw std::invalid_argument(request.document + " has no materials");
    }
    const Wx_runtime wx;
    const Plugin_library plugin("");
    const int exporter = plugin.find_exporter(exporter_of(request.target));
    std::vector<Exported_shader> shaders;
    for (const std::string& node : nodes) {
        scene.node = node;
        shaders.push_back(export_shader(scene, *plugin.make_exporter(exporter),
                                        folder + "/" + std::to_string(shaders.size())));
    }
    return shaders;
}

} // namespace reference_host

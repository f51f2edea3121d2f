#include "reference_host/app/opened_document.h"

#include "reference_host/app/suggestion.h"
#include "reference_host/document/materialx_reader.h"

#include <filesystem>
#include <set>
#include <stdexcept>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

std::string message(const Read_result& result)
{
    const std::string line = result.place.line > 0 ? ":" + std::to_string(result.place.line) : "";
    return result.place.file + line + ": error: " + result.error;
}

const Node* first_of(const Shader_graph& graph, bool (*fits)(const Node&))
{
    for (const auto& node : graph.nodes) {
        if (node->scope.empty() && fits(*node))
            return node.get();
    }
    return nullptr;
}

const Node& chosen_node(const Shader_graph& graph, const Scene_request& request)
{
    if (request.node.empty()) {
        if (const Node* node = default_node(graph))
            return *node;
        throw Document_failure(request.document + ": error: there is no surface material and no "
                                                  "surface shader; choose a node with --node");
    }
    if (const Node* node = graph.find_node(request.node))
        return *node;
    throw std::invalid_argument(no_such_node(graph, request.node));
}

// Where an image lies: in the document's folder or one of the search path; as if in the document's
// folder when nowhere.
fs::path find_image(const std::string& name, const std::string& folder,
                    const std::vector<std::string>& search_path)
{
    fs::path usual = fs::absolute(fs::path(folder) / name).lexically_normal();
    std::error_code failure;
    if (fs::exists(usual, failure))
        return usual;
    for (const std::string& other : search_path) {
        fs::path candidate = fs::absolute(fs::path(other) / name).lexically_normal();
        if (fs::exists(candidate, failure))
            return candidate;
    }
    return usual;
}

} // namespace

std::string no_such_node(const Shader_graph& graph, const std::string& name)
{
    std::vector<std::string> names;
    for (const auto& node : graph.nodes)
        names.push_back(full_name(*node));
    std::string text = "the document has no node '" + name + "'" + suggestion(name, names);
    for (const auto& node : graph.nodes) {
        if (node->category == "surfacematerial" || node->type == Type::surfaceshader)
            text += "\n  " + full_name(*node) + "  " + node->category;
    }
    return text + "\n  (the command 'nodes' lists all " + std::to_string(names.size()) + ")";
}

std::unique_ptr<Shader_graph> open_document(const std::string& file,
                                            const std::vector<std::string>& search_path)
{
    Read_result result = read_materialx(file, search_path);
    if (!result.graph)
        throw Document_failure(message(result));
    return std::move(result.graph);
}

const Node* default_node(const Shader_graph& graph)
{
    const Node* material =
        first_of(graph, [](const Node& node) { return node.category == "surfacematerial"; });
    if (material)
        return material;
    return first_of(graph, [](const Node& node) { return node.type == Type::surfaceshader; });
}

Opened_document::Opened_document(const Scene_request& request)
    : Opened_document(request, open_document(request.document, request.search_path))
{
}

Opened_document::Opened_document(const Scene_request& request, std::shared_ptr<Shader_graph> graph)
    : m_request(request),
      m_graph(std::move(graph)),
      m_node(&chosen_node(*m_graph, m_request)),
      m_render_settings(make_render_settings(*m_graph, request.render))
{
}

std::vector<std::string> Opened_document::inputs() const
{
    std::set<std::string> images;
    const auto add = [&](const Value& value) {
        if (value.type == Type::filename && !value.text.empty())
            images.insert(find_image(value.text, m_graph->folder, m_request.search_path).string());
    };
    for (const auto& node : m_graph->nodes) {
        for (const Input& input : node->inputs) {
            if (input.value)
                add(*input.value);
        }
    }
    for (const auto& parameter : m_graph->parameters)
        add(parameter->value);
    std::vector<std::string> files = m_graph->files;
    files.insert(files.end(), images.begin(), images.end());
    for (const std::string& folder : m_request.search_path)
        files.push_back((fs::path(folder) / "user_copyright.txt").string());
    return files;
}

Export_scene Opened_document::scene(const std::string& output) const
{
    Export_scene scene;
    scene.graph = m_graph.get();
    scene.selection = {m_node};
    scene.kind = m_request.kind;
    scene.render_settings = m_render_settings;
    scene.search_paths = m_request.search_path;
    scene.preferences = m_request.preferences;
    if (m_request.texture_paths == Texture_paths::as_is)
        return scene;
    const fs::path base = fs::absolute(output).parent_path().lexically_normal();
    const bool is_relative = m_request.texture_paths == Texture_paths::relative;
    scene.generator.texture_path = [this, base, is_relative](const std::string& name) {
        if (name.empty())
            return name;
        const fs::path image = find_image(name, m_graph->folder, m_request.search_path);
        return (is_relative ? image.lexically_relative(base) : image).generic_string();
    };
    return scene;
}

} // namespace reference_host

#include "reference_host/app/opened_document.h"

#include "reference_host/document/materialx_reader.h"
#include "reference_host/system/suggestion.h"

#include <filesystem>
#include <set>
#include <stdexcept>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

// The document that may be meant by the name of a file that does not exist.
std::string document_suggestion(const fs::path& file)
{
    std::vector<std::string> names;
    std::error_code failure;
    if (fs::exists(file, failure))
        return {};
    const fs::path folder = file.parent_path().empty() ? "." : file.parent_path();
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        if (entry->path().extension() == ".mtlx")
            names.push_back(entry->path().filename().string());
    }
    return suggestion(file.filename().string(), names);
}

std::vector<Message> messages_of(const Read_result& result)
{
    std::vector<Message> messages;
    for (const Document_problem& problem : result.problems)
        messages.push_back({Severity::error, problem.text, problem.place});
    return messages;
}

const Node& chosen_node(const Shader_graph& graph, const Scene_request& request)
{
    if (request.node.empty()) {
        if (const Node* node = default_node(graph))
            return *node;
        std::vector<Message> messages;
        for (const Missing_file& missing : graph.missing_files)
            messages.push_back({Severity::error, missing.text, missing.place});
        messages.push_back({Severity::error,
                            "there is no surface material and no surface shader; choose a node "
                            "with --node",
                            {request.document, 0}});
        throw Failure(messages);
    }
    if (const Node* node = graph.find_node(request.node))
        return *node;
    throw std::invalid_argument(no_such_node(graph, request.node));
}

// The name of the image that the input holds; empty when it holds none.
std::string image_of(const Input& input)
{
    const Value* value = input.value       ? &*input.value
                         : input.parameter ? &input.parameter->value
                                           : nullptr;
    return value && value->type == Value_type::filename ? value->text : std::string();
}

// The node and all that it reads, itself or through others.
std::vector<const Node*> nodes_below(const Node& start)
{
    std::set<const Node*> seen{&start};
    std::vector<const Node*> nodes{&start};
    for (size_t next = 0; next < nodes.size(); ++next) {
        for (const Input& input : nodes[next]->inputs) {
            if (input.source && seen.insert(input.source).second)
                nodes.push_back(input.source);
        }
    }
    return nodes;
}

} // namespace

std::string no_such_node(const Shader_graph& graph, const std::string& name)
{
    std::vector<std::string> names;
    for (const auto& node : graph.nodes)
        names.push_back(full_name(*node));
    std::string text = "the document has no node '" + name + "'" + suggestion(name, names);
    for (const auto& node : graph.nodes) {
        if (node->category == "surfacematerial" || node->type == Value_type::surfaceshader)
            text += "\n  " + full_name(*node) + "  " + node->category;
    }
    return text + "\n  (the command 'nodes' lists all " + std::to_string(names.size()) + ")";
}

std::unique_ptr<Shader_graph> open_document(const std::string& file,
                                            const std::vector<std::string>& search_path)
{
    Read_result result = read_materialx(file, search_path);
    if (!result.graph) {
        std::vector<Message> messages = messages_of(result);
        messages.front().text += document_suggestion(file);
        throw Failure(messages);
    }
    return std::move(result.graph);
}

std::vector<const Node*> shown_nodes(const Shader_graph& graph)
{
    std::vector<const Node*> materials;
    std::vector<const Node*> surfaces;
    for (const auto& node : graph.nodes) {
        if (node->scope.empty() && node->category == "surfacematerial")
            materials.push_back(node.get());
        else if (node->scope.empty() && node->type == Value_type::surfaceshader)
            surfaces.push_back(node.get());
    }
    return materials.empty() ? surfaces : materials;
}

const Node* default_node(const Shader_graph& graph)
{
    const std::vector<const Node*> shown = shown_nodes(graph);
    return shown.empty() ? nullptr : shown.front();
}

Opened_document::Opened_document(const Scene_request& request)
    : Opened_document(request, open_document(request.document, request.search_path))
{
}

Opened_document::Opened_document(const Scene_request& request, std::shared_ptr<Shader_graph> graph)
    : m_request(request),
      m_graph(std::move(graph)),
      m_node(&chosen_node(*m_graph, m_request)),
      m_images(m_graph->folder, request.search_path),
      m_render_settings(make_render_settings(*m_graph, request.render))
{
    for (const Missing_file& missing : m_graph->missing_files)
        warn(missing.text + "; what it holds is left out", missing.place);
    warn_of_missing_images(*m_node);
    if (const Node* environment = m_render_settings.environment)
        warn_of_missing_images(*environment);
    const Node* volume = m_render_settings.volume;
    if (volume && is_made(*volume))
        warn("the document has no volume '" + volume->name + "'; a fog of that name is made", {});
}

bool Opened_document::is_made(const Node& node)
{
    return node.place.file.empty();
}

void Opened_document::warn(const std::string& text, const Place& place)
{
    m_warnings.push_back({Severity::warning, text, place});
}

void Opened_document::warn_of_missing_images(const Node& start)
{
    for (const Node* node : nodes_below(start)) {
        for (const Input& input : node->inputs) {
            const std::string image = image_of(input);
            if (image.empty() || !m_images.find(image).empty())
                continue;
            if (is_made(*node))
                warn("the document has no environment '" + node->name +
                         "', and there is no image '" + image + "' for a new one",
                     {});
            else
                warn("node '" + full_name(*node) + "' (" + node->category + "), input '" +
                         input.name + "': the image '" + image + "' is missing",
                     node->place);
        }
    }
}

std::vector<std::string> Opened_document::inputs() const
{
    std::set<std::string> images;
    for (const auto& node : m_graph->nodes) {
        for (const Input& input : node->inputs) {
            const std::string image = image_of(input);
            if (!image.empty())
                images.insert(m_images.expect(image));
        }
    }
    std::vector<std::string> files = m_graph->files;
    files.insert(files.end(), images.begin(), images.end());
    for (const std::string& folder : m_request.search_path)
        files.push_back((fs::path(folder) / "user_copyright.txt").string());
    return files;
}

Export_scene Opened_document::scene(Image_names& images) const
{
    Export_scene scene;
    scene.graph = m_graph.get();
    scene.selection = {m_node};
    scene.kind = m_request.kind;
    scene.render_settings = m_render_settings;
    scene.search_paths = m_request.search_path;
    scene.preferences = m_request.preferences;
    scene.generator.texture_path = [&images](const std::string& name) {
        return images.name_of(name);
    };
    return scene;
}

} // namespace reference_host

#include "reference_host/document/materialx_reader.h"

#include "reference_host/document/connection_resolver.h"
#include "reference_host/document/document_error.h"
#include "reference_host/document/document_files.h"
#include "reference_host/document/graph_checks.h"
#include "reference_host/document/graph_scopes.h"
#include "reference_host/nodes/units.h"

#include <filesystem>
#include <new>

namespace reference_host
{
namespace
{

constexpr const char* default_color_space = "lin_rec709";

// What a node counts in, its definition says.
void convert_units(Node& node)
{
    for (Input& input : node.inputs) {
        const Input_definition* defined =
            node.definition ? node.definition->find_input(input.name) : nullptr;
        if (input.value && !input.unit.empty())
            convert_unit(*input.value, input.unit, defined ? defined->unit : "");
    }
}

std::unique_ptr<Shader_graph> build_graph(const std::string& file, const Document_files& files,
                                          Document_problems& problems)
{
    const std::filesystem::path path(file);
    auto graph = std::make_unique<Shader_graph>();
    graph->document = path.filename().string();
    graph->folder = path.parent_path().string();
    for (const auto& source : files.files)
        graph->files.push_back(source->path);
    graph->color_space = files.root().color_space();
    if (graph->color_space.empty())
        graph->color_space = default_color_space;
    const Scopes scopes = make_scopes(files, *graph, problems);
    Connection_resolver(scopes, *graph, problems).connect();
    for (const auto& node : graph->nodes) {
        node->definition = find_definition(*node);
        convert_units(*node);
    }
    check_graph(*graph, problems);
    graph->missing_files = files.missing;
    end_if_any(problems, files);
    return graph;
}

std::vector<Document_problem> about_file(const std::string& file, const std::string& text)
{
    Document_problem problem;
    problem.place.file = file;
    problem.text = text;
    return {problem};
}

} // namespace

Read_result read_materialx(const std::string& file, const std::vector<std::string>& search_path)
{
    Read_result result;
    Document_problems problems;
    try {
        result.graph = build_graph(file, load_document(file, search_path, problems), problems);
    } catch (const Reading_ended&) {
        result.problems = problems.all();
    } catch (const std::filesystem::filesystem_error& error) {
        result.problems = about_file(file, error.code().message());
    } catch (const std::bad_alloc&) {
        result.problems = about_file(file, "the document is too large for the memory");
    }
    return result;
}

} // namespace reference_host

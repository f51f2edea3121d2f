#include "reference_host/window/work_document.h"

#include "reference_host/app/opened_document.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <sstream>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

bool is_word_character(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// Where the word begins in the text; npos when it is not there.
size_t find_word(const std::string& text, const std::string& word)
{
    for (size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const size_t end = at + word.size();
        if ((at == 0 || !is_word_character(text[at - 1])) &&
            (end == text.size() || !is_word_character(text[end])))
            return at;
    }
    return std::string::npos;
}

// The node whose name comes first in the line; null when none does.
const Node* first_named(const Shader_graph& graph, const std::string& line)
{
    const Node* first = nullptr;
    size_t first_at = std::string::npos;
    for (const auto& candidate : graph.nodes) {
        const size_t at = find_word(line, candidate->name);
        if (at < first_at) {
            first = candidate.get();
            first_at = at;
        }
    }
    return first;
}

} // namespace

const Node* Work_document::node() const
{
    if (!content.graph)
        return nullptr;
    const Node* chosen = scene.node.empty() ? nullptr : content.graph->find_node(scene.node);
    return chosen ? chosen : default_node(*content.graph);
}

std::string Work_document::usual_output() const
{
    const Node* exported = node();
    const std::string name = exported ? exported->name : "untitled";
    return (fs::absolute(scene.document).parent_path() / name).lexically_normal().string();
}

std::string Work_document::output() const
{
    const auto choice = choices.find(exporter);
    return choice == choices.end() || choice->second.output.empty() ? usual_output()
                                                                    : choice->second.output;
}

const Node* Work_document::node_at(const Place& place) const
{
    if (!content.graph)
        return nullptr;
    for (const auto& candidate : content.graph->nodes) {
        if (candidate->place.line == place.line && candidate->place.file == place.file)
            return candidate.get();
    }
    return nullptr;
}

const Node* Work_document::node_near(const std::string& code, int line) const
{
    if (!content.graph)
        return nullptr;
    std::vector<std::string> lines;
    std::istringstream text(code);
    for (std::string each; std::getline(text, each);)
        lines.push_back(std::move(each));
    const auto clicked =
        lines.begin() + std::clamp<std::ptrdiff_t>(line, 0, static_cast<int>(lines.size()));
    for (auto at = clicked; at != lines.begin();) {
        if (const Node* node = first_named(*content.graph, *--at))
            return node;
    }
    for (auto at = clicked; at != lines.end(); ++at) {
        if (const Node* node = first_named(*content.graph, *at))
            return node;
    }
    return nullptr;
}

} // namespace reference_host

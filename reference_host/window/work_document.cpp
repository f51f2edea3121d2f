#include "reference_host/window/work_document.h"

#include "reference_host/app/opened_document.h"

#include <cctype>
#include <filesystem>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

bool is_word_character(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

bool has_word(const std::string& text, const std::string& word)
{
    for (size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const size_t end = at + word.size();
        if ((at == 0 || !is_word_character(text[at - 1])) &&
            (end == text.size() || !is_word_character(text[end])))
            return true;
    }
    return false;
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

const Node* Work_document::node_named_in(const std::string& text) const
{
    if (!content.graph)
        return nullptr;
    for (const auto& candidate : content.graph->nodes) {
        if (has_word(text, candidate->name))
            return candidate.get();
    }
    return nullptr;
}

} // namespace reference_host

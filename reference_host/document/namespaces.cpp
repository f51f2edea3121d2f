#include "reference_host/document/namespaces.h"

#include <cstring>
#include <string>
#include <unordered_set>

namespace reference_host
{
namespace
{

using Names = std::unordered_set<std::string>;

// Attributes that name an outermost element wherever they stand.
constexpr const char* references[] = {"nodegraph", "nodedef", "inherit"};

void qualify(pugi::xml_attribute attribute, const std::string& prefix, const Names& names)
{
    if (attribute && names.count(attribute.value()))
        attribute.set_value((prefix + attribute.value()).c_str());
}

// What an element of the file, and those within it, refer to. Nothing below the inputs of a node in
// a node graph counts. Nodes of a node graph name each other.
void qualify_references(pugi::xml_node element, const std::string& prefix, const Names& names,
                        bool in_graph, int depth)
{
    constexpr int deepest = 3;
    for (const char* key : references)
        qualify(element.attribute(key), prefix, names);
    if (!in_graph)
        qualify(element.attribute("nodename"), prefix, names);
    const bool is_graph = std::strcmp(element.name(), "nodegraph") == 0;
    if (depth < deepest)
        for (pugi::xml_node child : element.children())
            qualify_references(child, prefix, names, in_graph || is_graph, depth + 1);
}

} // namespace

void apply_namespace(pugi::xml_node root)
{
    const pugi::xml_attribute space = root.attribute("namespace");
    if (!space || !*space.value())
        return;
    const std::string prefix = std::string(space.value()) + ":";
    Names names;
    for (pugi::xml_node child : root.children())
        if (const pugi::xml_attribute name = child.attribute("name"))
            names.insert(name.value());
    for (pugi::xml_node child : root.children()) {
        qualify_references(child, prefix, names, false, 1);
        qualify(child.attribute("name"), prefix, names);
    }
}

} // namespace reference_host

#include "reference_host/lowering/lowering_context.h"

namespace reference_host
{

const Origin* Lowering_context::origin_of(const Node& node)
{
    const Origin*& known = known_origins[&node];
    if (!known)
        known = &origins->emplace_back(Origin{described(node), node.place});
    return known;
}

void Lowering_context::add_function(Function function)
{
    for (const Library_instance* used : library.used())
        add_with_callees(*used, module.functions);
    module.functions.push_back(std::move(function));
}

std::string described(const Node& node)
{
    return "node \"" + node.name + "\" (" + node.category + ")";
}

} // namespace reference_host

// What all parts of one lowering share.
#ifndef REFERENCE_HOST_LOWERING_LOWERING_CONTEXT_H
#define REFERENCE_HOST_LOWERING_LOWERING_CONTEXT_H

#include "reference_host/document/shader_graph.h"
#include "reference_host/library/library_scope.h"
#include "reference_host/lowering/uniforms.h"
#include "reference_host/options/generation.h"

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>

namespace reference_host
{

struct Lowering_context {
    explicit Lowering_context(bool ignores_literal_parameters)
        : ignores_literal(ignores_literal_parameters)
    {
    }

    const Origin* origin_of(const Node& node);

    // Takes over what the library has been asked for since the last time, then the function.
    void add_function(Function function);

    const bool ignores_literal; // literal parameters are ordinary ones
    Module module;
    Module_names names{module};
    Uniforms uniforms{module, names};
    Library_scope library;
    Diagnostics warnings;
    std::shared_ptr<std::deque<Origin>> origins = std::make_shared<std::deque<Origin>>();
    std::unordered_map<const Node*, const Origin*> known_origins;
};

// "node "wood" (image)".
std::string described(const Node& node);

} // namespace reference_host

#endif

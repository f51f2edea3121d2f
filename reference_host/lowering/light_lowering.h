// The lights of a scene.
#ifndef REFERENCE_HOST_LOWERING_LIGHT_LOWERING_H
#define REFERENCE_HOST_LOWERING_LIGHT_LOWERING_H

#include "reference_host/lowering/graph_builder.h"
#include "reference_host/lowering/shader_lowering.h"

#include <functional>
#include <string>

namespace reference_host
{

// The statements of a function that returns what one light sends to the state's point. The
// light's parameters begin with the prefix.
Statements light_body(const Node& light, const std::string& prefix, Lowering_context& context);

// What a surface does with the light, a Light_iterator, that arrives.
using Response = std::function<Statements(const Expr& light)>;

// The statements for one light, and for all lights in the list of the scene.
Statements lit_by(const Scene_light& light, const Response& response, Lowering_context& context);
Statements lit_by_list(const Response& response);

// A loop over a list of the interface; `element` is the list's one at the place of the loop.
Statement loop_over(const std::string& interface, const std::string& list,
                    const std::function<Statements(const Expr& element)>& body);

} // namespace reference_host

#endif

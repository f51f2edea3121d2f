// How the surface models of documents feed the generator's own surface model (library_surface.cpp).
#ifndef REFERENCE_HOST_LOWERING_SURFACE_MODELS_H
#define REFERENCE_HOST_LOWERING_SURFACE_MODELS_H

#include "reference_host/document/shader_graph.h"

#include <string>
#include <vector>

namespace reference_host
{

// A slot of the generator's model and its value: an expression in the shading notation over the
// inputs of the document's model.
struct Surface_slot {
    const char* slot;
    const char* expression;
};

struct Surface_model {
    const char* category;
    std::vector<Surface_slot> slots; // a missing slot has the default of slot_defaults()
    bool lit = true;                 // false: emission and opacity only
};

// Null for categories that are no surface models.
const Surface_model* find_surface_model(const std::string& category);

// The expression of a slot, the default where the model does not have it.
std::string slot_expression(const Surface_model& model, const std::string& slot);

// Inputs that the document sets to something else than their default and that no slot of the model
// reads.
std::vector<std::string> inputs_without_counterpart(const Node& node, const Surface_model& model);

// Whether a slot is anything but a constant zero: what is connected or exposed may be.
bool slot_contributes(const Node& node, const Surface_model& model, const std::string& slot);

} // namespace reference_host

#endif

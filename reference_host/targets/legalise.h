// Spells out in a module what a language lacks, so that the printer has nothing to decide.
#ifndef REFERENCE_HOST_TARGETS_LEGALISE_H
#define REFERENCE_HOST_TARGETS_LEGALISE_H

#include "reference_host/targets/text_plan.h"

namespace reference_host
{

// The view matrix under the name that texts for lists of lights share.
constexpr const char* shared_view_matrix = "__world_to_camera";

// The module's last function takes what it reads of the scene as the plan's language hands it over.
// Throws Refusal for what the language cannot do at all.
void legalise(Module& module, const Text_plan& plan);

// A matrix of the host as the language has it.
Expr host_matrix(Host_value value, const Text_plan& plan);

// The eye in world space.
Expr eye(const Text_plan& plan);

// The matrix that turns directions of camera space into world space.
Expr camera_rotation(const Text_plan& plan);

} // namespace reference_host

#endif

// What lies between the eye and a surface.
#ifndef REFERENCE_HOST_LOWERING_VOLUME_LOWERING_H
#define REFERENCE_HOST_LOWERING_VOLUME_LOWERING_H

#include "reference_host/lowering/graph_builder.h"

namespace reference_host
{

struct Volume_effect {
    Expr color;  // float3: of the volume itself
    Expr passed; // the share of light that passes it, a float or float3
};

// Of a fog, or of the standard's volume, whose extinction adds up along the way to the eye.
Volume_effect volume_effect(const Node& volume, Graph_builder& builder, Lowering_context& context);

} // namespace reference_host

#endif

#include "reference_host/lowering/volume_lowering.h"

#include "reference_host/lowering/scene_values.h"
#include "reference_host/nodes/node_library.h"

namespace reference_host
{

Volume_effect volume_effect(const Node& volume, Graph_builder& builder, Lowering_context& context)
{
    if (volume.definition && volume.definition->find_input("vdf")) {
        const Expr depth = binary(Operator::multiply, builder.shader_input("vdf"),
                                  state_field(State_field::eye_distance));
        return {builder.shader_input("edf"), call(Builtin::exp, {negate(depth)})};
    }
    if (!volume.definition || !volume.definition->find_input("density"))
        throw Refusal(context.origin_of(volume), "no text can be made of such a volume");
    const Expr color = builder.shader_input("color");
    const Expr density = builder.shader_input("density");
    return {color, context.library.call("fog_transmittance", {state_variable(), density})};
}

} // namespace reference_host

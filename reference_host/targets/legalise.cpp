#include "reference_host/targets/legalise.h"

#include "reference_host/passes/uses.h"

#include <set>

namespace reference_host
{
namespace
{

// Directions and positions between world and camera space, by the host's matrices.
void spell_out_spaces(Module& module, const Text_plan& plan)
{
    const auto spelled = [&](const Expr& e) {
        if (e->op == Op::variable && e->name == name_of(Host_value::view_matrix))
            return host_matrix(Host_value::view_matrix, plan);
        if (e->op != Op::builtin)
            return e;
        const Expr& value = e->operands[0];
        switch (e->builtin) {
        case Builtin::camera_to_world:
            return call(Builtin::host_transform, {camera_rotation(plan), value});
        case Builtin::world_to_camera: {
            // The inverse of a rotation is its transpose: no second matrix is passed for it.
            if (plan.dialect.passes_rotations)
                return call(Builtin::host_untransform, {camera_rotation(plan), value});
            const Expr view = host_matrix(Host_value::view_matrix, plan);
            return call(Builtin::host_transform, {construct(Base_type::matrix3, {view}), value});
        }
        case Builtin::world_to_camera_at: {
            const Expr position = construct(Base_type::float4, {value, literal(1.0)});
            const Expr view = host_matrix(Host_value::view_matrix, plan);
            return swizzle(call(Builtin::host_transform, {view, position}), "xyz");
        }
        default:
            return e;
        }
    };
    for (Function& function : module.functions)
        if (!function.of_library)
            replace(function.body, spelled);
}

// Effects have textures and samplers, with two names.
void split_textures(Module& module)
{
    std::set<std::string> textures;
    for (const Module_texture& texture : module.textures)
        textures.insert(texture.name);
    const auto split = [&](const Expr& e) {
        const bool is_texture = e->op == Op::variable && is_sampler(e->type);
        return is_texture && textures.count(e->name) ? variable(e->type, e->name + "_sampler") : e;
    };
    for (Function& function : module.functions)
        if (!function.of_library)
            replace(function.body, split);
}

// The list of lights under the name that the options give it, or as an argument.
void pass_lights(Module& module, const Text_plan& plan)
{
    Function& entry = module.functions.back();
    if (plan.dialect.lists == Lists::arguments) {
        Uses uses;
        uses.add(entry.body);
        if (uses.variables.count("lights"))
            entry.parameters.push_back({Code_type("Light_list"), "lights", ""});
        return;
    }
    replace(entry.body, [&](const Expr& e) {
        const bool is_list = e->op == Op::variable && e->type == Code_type("Light[]");
        return is_list ? variable(e->type, plan.options.light_list_name) : e;
    });
}

// Derivatives stand in functions of the library; the node that calls them is to blame.
void check_derivatives(const Module& module)
{
    std::set<std::string> lacking;
    for (const Function& function : module.functions)
        visit(function.body, [&](const Expression& e) {
            const bool lacks =
                (e.op == Op::builtin && (e.builtin == Builtin::ddx || e.builtin == Builtin::ddy)) ||
                (e.op == Op::call && lacking.count(e.name));
            if (!lacks)
                return;
            if (!function.of_library)
                throw Refusal(e.origin, "it needs derivatives, which the target does not have");
            lacking.insert(function.name);
        });
}

} // namespace

Expr host_matrix(Host_value value, const Text_plan& plan)
{
    if (value == Host_value::view_matrix && plan.has_light_interface())
        return variable(Base_type::matrix4, shared_view_matrix);
    // The matrix for normals has no other use, so that its rotation alone may be passed.
    if (value == Host_value::world_view_it && plan.dialect.passes_rotations)
        return variable(Base_type::matrix3, name_of(value));
    return host_variable(value);
}

Expr eye(const Text_plan& plan)
{
    const Expr origin = literal(Base_type::float4, {0.0, 0.0, 0.0, 1.0});
    const Expr view_inverse = host_matrix(Host_value::view_inverse, plan);
    return swizzle(call(Builtin::host_transform, {view_inverse, origin}), "xyz");
}

Expr camera_rotation(const Text_plan& plan)
{
    if (plan.dialect.passes_rotations)
        return variable(Base_type::matrix3, "camera_to_world");
    return construct(Base_type::matrix3, {host_matrix(Host_value::view_inverse, plan)});
}

void legalise(Module& module, const Text_plan& plan)
{
    spell_out_spaces(module, plan);
    if (plan.dialect.splits_textures && plan.options.generate_texture_parameters)
        split_textures(module);
    if (plan.lights_in_list)
        pass_lights(module, plan);
    if (!plan.passes.switches.at(Switch::has_derivatives))
        check_derivatives(module);
}

} // namespace reference_host

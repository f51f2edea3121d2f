#include "reference_host/targets/text_plan.h"

#include "reference_host/targets/legalise.h"

namespace reference_host
{
namespace
{

// Renderers and passes that cover the screen work in world space.
Space internal_space_of(const Dialect& dialect, const Group_options& group,
                        const Text_options& options)
{
    if (dialect.shades_in_world || covers_screen(options))
        return Space::world;
    return options.internal_space.value_or(group.internal_space);
}

bool wants_list(const Dialect& dialect, const Group_options& group, const Text_options& options,
                Diagnostics& diagnostics)
{
    if (dialect.lists == Lists::arguments)
        return true;
    const bool wanted = options.interfaces || group.preserve_light_loop;
    if (!wanted || group.resolve_unsized_arrays)
        return false;
    if (dialect.lists == Lists::interfaces)
        return true;
    diagnostics.push_back({Severity::warning,
                           "the language has no interfaces: the shader gets the lights of the "
                           "scene in place of a list",
                           {}});
    return false;
}

const Fragment_profile* profile_of(const Dialect& dialect, const Text_options& options)
{
    if (!dialect.fragment_profile)
        return nullptr;
    const std::string& wanted = options.fragment_shader_profile;
    return find_fragment_profile(wanted.empty() ? dialect.fragment_profile : wanted);
}

// A light, a volume, or else something to look at.
void check_role(const Module& module, const Text_options& options)
{
    const std::string& type = options.shader_type;
    if (type == "light" && module.role != Shader_role::light)
        throw Refusal(nullptr, "it is not a light");
    if (type == "volume" && module.role != Shader_role::volume)
        throw Refusal(nullptr, "it is not a volume");
    const bool is_shown = module.role == Shader_role::pattern ||
                          (module.role == Shader_role::surface && type == "surface");
    if (type != "light" && type != "volume" && !is_shown)
        throw Refusal(nullptr, "cannot be exported: its output is not a colour");
}

} // namespace

Text_plan make_plan(Language language, const Group_options& group, const Text_options& options,
                    const Generator_settings& settings, Diagnostics& diagnostics)
{
    const Dialect& dialect = dialect_of(language);
    Text_plan plan{dialect,
                   options,
                   settings,
                   internal_space_of(dialect, group, options),
                   false,
                   {},
                   profile_of(dialect, options)};
    const Fragment_profile any;
    const Fragment_profile& profile = plan.profile ? *plan.profile : any;
    plan.lights_in_list = wants_list(dialect, group, options, diagnostics);
    const bool all =
        plan.has_light_interface() && options.interfaces && !options.light_interfaces_only;
    plan.passes.switches = {
        {Switch::light_list, plan.lights_in_list},
        {Switch::environment_list, all},
        {Switch::volume_list, all && options.eval_volume},
        {Switch::world_space, plan.internal_space == Space::world},
        {Switch::has_ambient, !options.scene_ambient.empty()},
        {Switch::has_alpha, options.alpha_transparency},
        {Switch::has_derivatives, dialect.has_derivatives && profile.has_derivatives},
        {Switch::has_integers, dialect.has_integers},
        {Switch::has_wide_lookups, dialect.has_wide_lookups && profile.has_wide_lookups},
        {Switch::flips_images, options.flip_tex2d_v},
        {Switch::turns_cube_maps, options.rotate_cube_map},
    };
    plan.passes.reserved = &reserved_names();
    plan.passes.entry_name = options.shader_name;
    if (plan.lights_in_list)
        plan.passes.further_names = {options.light_interface_name, options.light_list_name};
    return plan;
}

Module planned(Module module, const Text_plan& plan)
{
    check_role(module, plan.options);
    run_passes(module, plan.passes);
    legalise(module, plan);
    return module;
}

} // namespace reference_host

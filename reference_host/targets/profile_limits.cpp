#include "reference_host/targets/profile_limits.h"

#include "reference_host/targets/program_cost.h"

#include <cmath>

namespace reference_host
{
namespace
{

std::string whole(double number)
{
    return std::to_string(std::lround(number));
}

// The estimates against what a compiler of Cg says of all materials of the samples and of others
// that are larger, with one to eight lights: instructions lie between 0.9 and 1.4 of the truth,
// those of long programs above 0.95; temporaries, where they are many, between 0.8 and 1.4;
// constants between 0.85 and 1.1.
constexpr double instruction_doubt = 1.05;
constexpr double temporary_doubt = 0.85;
constexpr double constant_doubt = 1.03;

struct Need {
    double amount; // with what is in doubt
    double estimate;
    int limit;
    const char* what;
};

void refuse(const Need& need, const Program_cost& cost, const Fragment_profile& profile)
{
    std::string reason = "the shader needs about " + whole(need.estimate) + " " + need.what + ", " +
                         profile.name + " has " + std::to_string(need.limit) +
                         "; no node takes more than this one, " + whole(cost.dearest_instructions) +
                         " of " + whole(cost.instructions) + " instructions";
    if (!cost.dearest)
        reason += " with all lights";
    throw Refusal(cost.dearest, reason);
}

} // namespace

void check_limits(const Module& module, const Fragment_profile& profile, Diagnostics& diagnostics)
{
    Line_settings settings;
    settings.repeats_loops = !profile.has_jumps;
    const Program_cost cost = cost_of(straight_line(module, settings));
    const double choices = profile.jumps_for_choices ? cost.choices : 0.0;
    const double instructions = cost.instructions - (profile.lookups != 0 ? cost.lookups : 0.0);
    const Need needs[] = {
        {cost.lookups, cost.lookups, profile.lookups, "lookups of textures"},
        {instructions * instruction_doubt, instructions, profile.instructions, "instructions"},
        {cost.temporaries * temporary_doubt + choices, cost.temporaries + choices,
         profile.temporaries, "temporary registers"},
        {cost.constants * constant_doubt, cost.constants, profile.constants,
         "registers for parameters and numbers"},
    };
    for (const Need& need : needs)
        if (need.limit != 0 && need.amount > need.limit)
            refuse(need, cost, profile);
    const int promised = profile.promised_instructions;
    if (promised != 0 && instructions > promised)
        diagnostics.push_back({Severity::warning,
                               "\"" + module.name + "\" needs about " + whole(instructions) +
                                   " instructions; " + profile.name + " promises " +
                                   std::to_string(promised) + ", which most graphics cards exceed",
                               {}});
}

} // namespace reference_host

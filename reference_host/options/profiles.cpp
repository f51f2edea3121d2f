#include "reference_host/options/profiles.h"

#include <algorithm>
#include <iterator>

namespace reference_host
{
namespace
{

constexpr const char* vertex_profiles[] = {
    // Cg: OpenGL
    "arbvp1", "vp20", "vp30", "vp40", "gp4vp", "gp5vp", "glslv", "hlslv",
    // Direct3D
    "vs_1_1", "vs_2_0", "vs_2_a", "vs_2_sw", "vs_2_x", "vs_3_0", "vs_3_sw", "vs_4_0",
    "vs_4_0_level_9_1", "vs_4_0_level_9_3", "vs_4_1", "vs_5_0"};

// The limits are those that compilers have by default. Columns: instructions, those promised,
// lookups, temporaries, constants, interpolators; wide lookups, derivatives, jumps, also
// for choices.
constexpr Fragment_profile fragment_profiles[] = {
    // Cg: OpenGL
    {"arbfp1", 1024, 0, 0, 32, 32, 8, false, false, false},
    {"fp20", 8, 0, 4, 2, 0, 4, false, false, false},
    {"fp30", 1024, 0, 0, 32, 0, 8, false, true, false},
    {"fp40", 4096, 0, 0, 32, 0, 8, true, true, true, true},
    {"gp4fp"},
    {"gp5fp"},
    {"glslf"},
    {"hlslf"},
    // Direct3D
    {"ps_1_1", 8, 0, 4, 2, 8, 4, false, false, false},
    {"ps_1_2", 8, 0, 4, 2, 8, 4, false, false, false},
    {"ps_1_3", 8, 0, 4, 2, 8, 4, false, false, false},
    {"ps_1_4", 16, 0, 12, 6, 8, 6, false, false, false},
    {"ps_2_0", 64, 0, 32, 12, 32, 8, false, false, false},
    {"ps_2_a", 512, 0, 0, 22, 32, 8, false, true, false},
    {"ps_2_b", 512, 0, 0, 32, 32, 8, false, false, false},
    {"ps_2_sw", 512, 0, 0, 32, 224, 8, false, true, false},
    {"ps_2_x", 512, 0, 0, 32, 32, 8, false, true, false},
    {"ps_3_0", 32768, 512, 0, 32, 224, 10, true, true, true},
    {"ps_3_sw", 32768, 512, 0, 32, 224, 10, true, true, true},
    {"ps_4_0"},
    {"ps_4_0_level_9_1", 64, 0, 32, 12, 32, 8, true, true, false},
    {"ps_4_0_level_9_3", 512, 0, 0, 32, 32, 8, true, true, false},
    {"ps_4_1"},
    {"ps_5_0"},
};

} // namespace

const Fragment_profile* find_fragment_profile(const std::string& name)
{
    const auto* const found =
        std::find_if(std::begin(fragment_profiles), std::end(fragment_profiles),
                     [&](const Fragment_profile& profile) { return profile.name == name; });
    return found == std::end(fragment_profiles) ? nullptr : found;
}

bool is_vertex_profile(const std::string& name)
{
    return std::find(std::begin(vertex_profiles), std::end(vertex_profiles), name) !=
           std::end(vertex_profiles);
}

} // namespace reference_host

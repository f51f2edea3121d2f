#include "reference_host/options/profiles.h"

#include <algorithm>
#include <iterator>

namespace reference_host
{
namespace
{

constexpr const char* vertex_profiles[] = {
    "",
    // Cg: OpenGL
    "arbvp1", "vp20", "vp30", "vp40", "gp4vp", "gp5vp", "glslv", "hlslv",
    // Direct3D
    "vs_1_1", "vs_2_0", "vs_2_a", "vs_2_sw", "vs_2_x", "vs_3_0", "vs_3_sw", "vs_4_0",
    "vs_4_0_level_9_1", "vs_4_0_level_9_3", "vs_4_1", "vs_5_0"};

constexpr const char* fragment_profiles[] = {
    "",
    // Cg: OpenGL
    "arbfp1", "fp20", "fp30", "fp40", "gp4fp", "gp5fp", "glslf", "hlslf",
    // Direct3D
    "ps_1_1", "ps_1_2", "ps_1_3", "ps_1_4", "ps_2_0", "ps_2_a", "ps_2_b", "ps_2_sw", "ps_2_x",
    "ps_3_0", "ps_3_sw", "ps_4_0", "ps_4_0_level_9_1", "ps_4_0_level_9_3", "ps_4_1", "ps_5_0"};

template<size_t count>
bool has(const char* const (&profiles)[count], const std::string& profile)
{
    return std::find(std::begin(profiles), std::end(profiles), profile) != std::end(profiles);
}

} // namespace

bool is_vertex_profile(const std::string& profile)
{
    return has(vertex_profiles, profile);
}

bool is_fragment_profile(const std::string& profile)
{
    return has(fragment_profiles, profile);
}

} // namespace reference_host

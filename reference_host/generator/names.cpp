#include "reference_host/generator/names.h"

#include "reference_host/generator/dialect.h"
#include "reference_host/generator/library.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace reference_host
{
namespace
{

// Variables, functions and globals of the skeleton of every text, and what headers of target
// programs declare before it.
constexpr const char* skeleton_names[] = {"state",
                                          "surface",
                                          "color",
                                          "light",
                                          "vertex",
                                          "result",
                                          "fragment",
                                          "face",
                                          "position",
                                          "alpha",
                                          "vertex_main",
                                          "fragment_main",
                                          "scene_ambient",
                                          "oit_depth_map",
                                          "eye",
                                          "world",
                                          "world_it",
                                          "world_view",
                                          "world_view_it",
                                          "view_matrix",
                                          "view_inverse",
                                          "view_projection",
                                          "projection",
                                          "camera_to_world",
                                          "fragment_color",
                                          "world_inverse",
                                          "oit_depth_map_sampler",
                                          "world_view_inverse",
                                          "projection_inverse",
                                          "world_view_projection",
                                          "view_projection_inverse",
                                          "world_view_projection_inverse",
                                          "State",
                                          "Surface",
                                          "Light_iterator",
                                          "Vertex_in",
                                          "Vertex_out",
                                          "Fragment_in",
                                          "Light",
                                          "Volume",
                                          "Environment",
                                          "lights",
                                          "volumes",
                                          "environments",
                                          "T0",
                                          "P0",
                                          "ParamID",
                                          "Script",
                                          "texcoord1",
                                          "texcoord2",
                                          "texcoord3",
                                          "texcoord4",
                                          "NeedTandB",
                                          "GlobalParameter",
                                          "swizzle",
                                          "SLightDir",
                                          "SLightPoint",
                                          "SLightSpot",
                                          "environment_color",
                                          "time",
                                          "far_point",
                                          "Sampler_2d",
                                          "Sampler_cube",
                                          "Vector",
                                          "Matrix",
                                          "Components",
                                          "Light_list",
                                          "each",
                                          "at",
                                          "NULL",
                                          "i"};

bool is_letter_or_digit(char sign)
{
    return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
           (sign >= '0' && sign <= '9');
}

// Streams of GLSL are called "vertex_..." and "fragment_...".
bool begins_like_the_skeleton(const std::string& name)
{
    return name.compare(0, 3, "gl_") == 0 || name.compare(0, 7, "vertex_") == 0 ||
           name.compare(0, 9, "fragment_") == 0;
}

} // namespace

std::string make_identifier(const std::string& name)
{
    std::string made;
    for (const char sign : name)
        if (is_letter_or_digit(sign))
            made += sign;
        else if (!made.empty() && made.back() != '_')
            made += '_';
    made.erase(made.find_last_not_of('_') + 1);
    if (made.empty())
        return "unnamed";
    if (std::isdigit(static_cast<unsigned char>(made[0])))
        made.insert(0, "n");
    // Words that hosts give a meaning to are kept out whatever their case.
    std::string lower = made;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char sign) { return static_cast<char>(std::tolower(sign)); });
    if (is_reserved_word(made) || is_reserved_word(lower) || begins_like_the_skeleton(lower))
        made.insert(0, "the_");
    return made;
}

Names::Names() : m_taken(std::begin(skeleton_names), std::end(skeleton_names))
{
    for (const Library_function& function : standard_library().functions())
        m_taken.insert(function.head.name);
}

std::string Names::take(const std::string& name)
{
    const std::string identifier = make_identifier(name);
    std::string taken = identifier;
    for (int& number = m_last_number.emplace(identifier, 1).first->second;
         !m_taken.insert(taken).second;)
        taken = identifier + "_" + std::to_string(++number);
    return taken;
}

} // namespace reference_host

// Lights that the user asks for on the command line.
//
//     NAME[:TYPE[:KEY=VALUE,...]]     "key:spot:position=2,3,4,cone=40,intensity=20"
//     NAME[:TYPE[:CONE[:LIMIT]]]      "key:spot:40:10"
//
// TYPE is directional, point, spot or its code, 0 to 2. Keys:
//
//     position, direction   three numbers, in world space; directions lead from the light away
//     color                 three numbers, linear
//     intensity             one number
//     cone                  the full angle of a spot light, in degrees
//     limit                 the distance at which the light ends; 0: none
#ifndef REFERENCE_HOST_HOST_LIGHT_REQUEST_H
#define REFERENCE_HOST_HOST_LIGHT_REQUEST_H

#include "reference_host/document/light_kind.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

// What is not given is the document's, or lights the object from a usual place.
struct Light_request {
    std::string name;
    std::optional<Light_kind> kind;
    std::optional<float> spread;
    std::optional<float> distance_limit;
    std::map<std::string, std::vector<double>> inputs; // of the light's node, by name
};

// Nothing when the text is not of that form; the wrong part and what fits there are then in
// `reason`.
std::optional<Light_request> parse_light(const std::string& text, std::string& reason);

} // namespace reference_host

#endif

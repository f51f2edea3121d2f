// Reads the comment lines at the head of what the Cg compiler writes:
//
//     //var TYPE NAME : SEMANTIC : UNIFORM[, COUNT] : ... : USED
//     //default NAME = NUMBER...
//
// A matrix stands as UNIFORM "name[0]" with COUNT rows, an array as one variable for each element.
#ifndef REFERENCE_HOST_RENDER_CG_LISTING_H
#define REFERENCE_HOST_RENDER_CG_LISTING_H

#include <map>
#include <string>
#include <vector>

namespace reference_host
{

struct Cg_variable {
    std::string type;     // "float4x4"
    std::string name;     // as the effect calls it: "light_states[0].position", "vertex.tangent"
    std::string semantic; // "$vin.TEXCOORD0" for an input of the program
    std::string uniform;  // its name in the GLSL text, without "[0]"; empty when it is not used
    int count = 1;        // rows of a matrix, otherwise 1
};

struct Cg_listing {
    std::vector<Cg_variable> variables;

    // Default values by name; rows of a matrix have names of their own, "name[0]". Elements of an
    // array of structs come under the name of the member alone, one after the other.
    std::map<std::string, std::vector<std::vector<float>>> defaults;
};

Cg_listing read_cg_listing(const std::string& text);

// The default value of a variable, rows one after the other; empty when it has none.
std::vector<float> default_of(const Cg_listing& listing, const Cg_variable& variable);

} // namespace reference_host

#endif

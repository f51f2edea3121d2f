// The profiles that compilers of effects are known to have.
#ifndef REFERENCE_HOST_OPTIONS_PROFILES_H
#define REFERENCE_HOST_OPTIONS_PROFILES_H

#include <string>

namespace reference_host
{

// What programs of a fragment profile may take, and what they can do. Limits of zero: none that a
// program could reach.
struct Fragment_profile {
    const char* name = "";
    int instructions = 0;
    int promised_instructions = 0; // where machines differ: what all have
    int lookups = 0;               // of textures; where they have a limit, they do not count above
    int temporaries = 0;           // registers of four numbers
    int constants = 0;             // likewise
    int interpolators = 0;         // likewise
    bool has_wide_lookups = true;
    bool has_derivatives = true;
    bool has_jumps = true;          // else loops are written out
    bool jumps_for_choices = false; // which then keep a register each
};

// Null when no compiler, of Cg or of HLSL, has that profile.
const Fragment_profile* find_fragment_profile(const std::string& name);
bool is_vertex_profile(const std::string& name);

} // namespace reference_host

#endif

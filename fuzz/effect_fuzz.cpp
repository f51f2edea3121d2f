// Any bytes as an effect, a GLSL shader and a listing of the Cg compiler.
#include "reference_host/render/cg_listing.h"
#include "reference_host/render/effect_parameters.h"
#include "reference_host/render/effect_text.h"
#include "reference_host/render/shader_tokens.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace reference_host;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    tokens_of(text);
    describe_effect(text);
    effect_parameters(text);
    without_parameter_semantics(text);
    texture_comments(text);
    glsl_uniforms(text);
    const Cg_listing listing = read_cg_listing(text);
    for (const Cg_variable& variable : listing.variables)
        default_of(listing, variable);
    return 0;
}

#include "reference_host/targets/dialect.h"

#include "reference_host/library/library_names.h"

#include <iterator>
#include <sstream>

namespace reference_host
{
namespace
{

// How the languages write a builtin: a name, or a pattern with $1, $2, ... for the arguments.
// Matrices of documents multiply row vectors ("row_"). Built from rows, they are transposed in
// GLSL, whose constructors take columns; so the products are turned there. Matrices of the host
// ("host_") multiply column vectors in Cg and GLSL and row vectors in Direct3D. What
// "camera_to_world" and the like mean is spelled out before printing.
struct Spelling_row {
    Builtin builtin;
    const char *cg, *hlsl, *glsl, *glsl_legacy, *cpp;
};

constexpr const char* same = "same"; // as in the notation

constexpr Spelling_row spellings[] = {
    {Builtin::abs, same, same, same, same, same},
    {Builtin::floor, same, same, same, same, same},
    {Builtin::ceil, same, same, same, same, same},
    {Builtin::fract, "frac", "frac", same, same, same},
    {Builtin::sin, same, same, same, same, same},
    {Builtin::cos, same, same, same, same, same},
    {Builtin::tan, same, same, same, same, same},
    {Builtin::asin, same, same, same, same, same},
    {Builtin::acos, same, same, same, same, same},
    {Builtin::atan2, same, same, "atan", "atan", same},
    {Builtin::exp, same, same, same, same, same},
    {Builtin::log, same, same, same, same, same},
    {Builtin::sqrt, same, same, same, same, same},
    {Builtin::pow, same, same, same, same, same},
    {Builtin::min, same, same, same, same, same},
    {Builtin::max, same, same, same, same, same},
    {Builtin::clamp, same, same, same, same, same},
    {Builtin::saturate, same, same, "clamp($1, 0.0, 1.0)", "clamp($1, 0.0, 1.0)", same},
    {Builtin::mix, "lerp", "lerp", same, same, same},
    {Builtin::step, same, same, same, same, same},
    {Builtin::smoothstep, same, same, same, same, same},
    {Builtin::length, same, same, same, same, same},
    {Builtin::distance, same, same, same, same, same},
    {Builtin::dot, same, same, same, same, same},
    {Builtin::cross, same, same, same, same, same},
    {Builtin::normalize, same, same, same, same, same},
    {Builtin::faceforward, same, same, same, same, same},
    {Builtin::reflect, same, same, same, same, same},
    {Builtin::refract, same, same, same, same, same},
    {Builtin::ddx, same, same, "dFdx", "dFdx", same},
    {Builtin::ddy, same, same, "dFdy", "dFdy", same},
    {Builtin::transpose, same, same, same, same, same},
    {Builtin::row_transform, "mul($1, $2)", "mul($1, $2)", "$2 * $1", "$2 * $1", "$1 * $2"},
    {Builtin::row_product, "mul($1, $2)", "mul($1, $2)", "$2 * $1", "$2 * $1", "$1 * $2"},
    {Builtin::host_transform, "mul($1, $2)", "mul($2, $1)", "$1 * $2", "$1 * $2", "$2 * $1"},
    {Builtin::host_untransform, "mul($2, $1)", "mul($1, $2)", "$2 * $1", "$2 * $1",
     "$2 * transpose($1)"},
    {Builtin::camera_to_world, same, same, same, same, same},
    {Builtin::world_to_camera, same, same, same, same, same},
    {Builtin::world_to_camera_at, same, same, same, same, same},
    {Builtin::texture_2d, "tex2D", "tex2D", "texture", "texture2D", "$1.lookup($2)"},
    {Builtin::texture_cube, "texCUBE", "texCUBE", "texture", "textureCube", "$1.lookup($2)"},
    {Builtin::texture_cube_wide, "texCUBE", "texCUBE", "textureGrad", "textureCubeGrad",
     "$1.lookup($2, $3, $4)"},
    {Builtin::texture_cube_bias, "texCUBEbias($1, float4($2, $3))",
     "texCUBEbias($1, float4($2, $3))", "texture", "textureCube", "$1.lookup($2)"},
};
static_assert(std::size(spellings) == static_cast<std::size_t>(Builtin::none));

constexpr const char* hlsl_types[] = {"void",     "bool",     "int",       "uint",
                                      "float",    "float2",   "float3",    "float4",
                                      "float3x3", "float4x4", "sampler2D", "samplerCUBE"};
constexpr const char* glsl_types[] = {"void", "bool", "int",  "uint", "float",     "vec2",
                                      "vec3", "vec4", "mat3", "mat4", "sampler2D", "samplerCube"};
constexpr const char* cpp_types[] = {"void",     "bool",     "int",        "unsigned",
                                     "float",    "float2",   "float3",     "float4",
                                     "float3x3", "float4x4", "Sampler_2d", "Sampler_cube"};

// Keywords, types and functions of Cg and HLSL and of their effects, in any case.
constexpr const char* effect_words =
    "asin asm_fragment atan blendstate bool2 bool3 bool4 cbuffer clip color column_major "
    "compile compile_fragment define dword fixed2 fixed3 fixed4 float2 float3 float4 floatx "
    "fmod get half2 half3 half4 int2 int3 int4 ldexp lerp linear lit log10 main matrix mul "
    "nointerpolation pass pixelfragment pixelshader row_major rsqrt sampler samplerCUBE "
    "sampler_state sincos snorm stateblock stateblock_state std string tbuffer technique "
    "tex1D tex2D tex3D texCUBE texture texture2D textureCube unorm vector vertexfragment "
    "vertexshader";

// Those of GLSL that are none of the above.
constexpr const char* glsl_words =
    "active all any attribute buffer cast centroid coherent common cosh degrees determinant "
    "discard emit equal exp2 external filter fixed flat fract fwidth half highp image in "
    "inout input interface invariant inverse inversesqrt isampler2D layout log2 lowp mat2 "
    "mat3 mat4 mediump mod noperspective out output packed partition patch precise precision "
    "radians readonly resource restrict round sample sampler1D sampler2D sampler3D "
    "samplerCube shared sign sinh smooth subroutine superp tanh trunc uint uniform varying "
    "vec2 vec3 vec4 writeonly";

// Keywords of C++, many of which the others have too.
constexpr const char* cpp_words =
    "alignas and asm auto bitand bitor bool break case catch char class concept const "
    "const_cast constexpr continue decltype default delete do double else enum explicit "
    "export extern false float for friend goto if inline int long mutable namespace new not "
    "operator or private protected public register reinterpret_cast return short signed "
    "sizeof static static_cast struct switch template this throw true try typedef typeid "
    "typename union unsigned using virtual void volatile while xor";

// The variables, functions and globals of each skeleton, and what headers of programs that read the
// texts declare before them.
constexpr const char* effect_names =
    "vertex result fragment face position alpha vertex_main fragment_main oit_depth_map "
    "oit_depth_map_sampler eye far_point Vertex_in Vertex_out Fragment_in T0 P0 ParamID Script "
    "texcoord1 texcoord2 texcoord3 texcoord4 NeedTandB GlobalParameter SLightDir SLightPoint "
    "SLightSpot NULL";
constexpr const char* glsl_names =
    "camera_to_world fragment_color position far_point oit_depth_map";
constexpr const char* cpp_names =
    "Sampler_2d Sampler_cube Vector Matrix Components Light_list each at swizzle";

constexpr Dialect effect_dialect(Language language)
{
    Dialect dialect = {};
    dialect.language = language;
    dialect.type_names = hlsl_types;
    dialect.spreads_by_swizzle = true;
    dialect.casts_matrices = true;
    dialect.has_clip = true;
    dialect.sampler_parameter[0] = language == Language::cg ? "uniform " : "";
    dialect.sampler_parameter[1] = " ";
    dialect.number_suffix = "";
    dialect.vertex_prefix = "vertex.";
    dialect.result_prefix = "result.";
    dialect.fragment_prefix = "fragment.";
    dialect.clip_position = "result.hposition";
    dialect.vertex_profile = language == Language::cg ? "vp40" : "vs_3_0";
    dialect.fragment_profile = language == Language::cg ? "fp40" : "ps_3_0";
    dialect.interpolators = language == Language::cg ? 8 : 10;
    dialect.binds_semantics = true;
    dialect.splits_textures = true;
    dialect.depth_from_zero = language == Language::hlsl;
    dialect.has_derivatives = true;
    dialect.has_wide_lookups = true;
    dialect.lists = language == Language::cg ? Lists::interfaces : Lists::none;
    dialect.keywords = effect_words;
    dialect.taken = effect_names;
    dialect.prefixes = "";
    return dialect;
}

constexpr Dialect glsl_dialect(Language language)
{
    Dialect dialect = {};
    dialect.language = language;
    dialect.type_names = glsl_types;
    dialect.repeats_one_component = true;
    dialect.sampler_parameter[0] = "";
    dialect.sampler_parameter[1] = " ";
    dialect.number_suffix = "";
    dialect.vertex_prefix = "vertex_";
    dialect.result_prefix = "fragment_";
    dialect.fragment_prefix = "fragment_";
    dialect.clip_position = "gl_Position";
    dialect.interpolators = 16;
    dialect.varying_floats = language == Language::glsl ? 0 : 32; // what OpenGL 2 promises
    dialect.passes_rotations = true;
    dialect.has_derivatives = true;
    dialect.has_integers = language == Language::glsl;
    dialect.has_wide_lookups = language == Language::glsl;
    dialect.keywords = glsl_words;
    dialect.taken = glsl_names;
    dialect.prefixes = "gl_ vertex_ fragment_";
    return dialect;
}

constexpr Dialect cpp_dialect()
{
    Dialect dialect = {};
    dialect.language = Language::cpp;
    dialect.type_names = cpp_types;
    dialect.repeats_one_component = true;
    dialect.swizzles_by_template = true;
    dialect.sampler_parameter[0] = "const ";
    dialect.sampler_parameter[1] = "& ";
    dialect.number_suffix = "f";
    dialect.has_integers = true;
    dialect.has_wide_lookups = true;
    dialect.shades_in_world = true;
    dialect.lists = Lists::arguments;
    dialect.keywords = cpp_words;
    dialect.taken = cpp_names;
    dialect.prefixes = "";
    return dialect;
}

// In the order of the enumeration.
constexpr Dialect dialects[] = {
    effect_dialect(Language::cg),
    effect_dialect(Language::hlsl),
    glsl_dialect(Language::glsl),
    glsl_dialect(Language::glsl_legacy),
    cpp_dialect(),
};

template<class Add>
void for_each_word(const char* words, const Add& add)
{
    std::istringstream stream(words);
    for (std::string word; stream >> word;)
        add(word);
}

} // namespace

const Dialect& dialect_of(Language language)
{
    return dialects[static_cast<std::size_t>(language)];
}

const char* spelling(Builtin builtin, Language language)
{
    const Spelling_row& row = spellings[static_cast<std::size_t>(builtin)];
    const char* const columns[] = {row.cg, row.hlsl, row.glsl, row.glsl_legacy, row.cpp};
    const char* const text = columns[static_cast<std::size_t>(language)];
    return text == same ? row_of(builtin).name : text;
}

std::string type_name(const Code_type& type, const Dialect& dialect)
{
    if (type.base == Base_type::structure)
        return type.structure;
    if (type.base == Base_type::text)
        throw Notation_error("a text that is not known at generation");
    return dialect.type_names[static_cast<std::size_t>(type.base)];
}

const Reserved_names& reserved_names()
{
    static const Reserved_names reserved = [] {
        Reserved_names made = library_names();
        for (const Dialect& dialect : dialects) {
            for_each_word(dialect.keywords, [&](const std::string& w) { made.words.insert(w); });
            for_each_word(dialect.taken, [&](const std::string& w) { made.taken.insert(w); });
            for_each_word(dialect.prefixes,
                          [&](const std::string& w) { made.prefixes.push_back(w); });
            for (std::size_t i = 0; i < std::size(hlsl_types); ++i)
                made.words.insert(dialect.type_names[i]);
            for (std::size_t i = 0; i < std::size(spellings); ++i)
                made.words.insert(spelling(spellings[i].builtin, dialect.language));
        }
        return made;
    }();
    return reserved;
}

} // namespace reference_host

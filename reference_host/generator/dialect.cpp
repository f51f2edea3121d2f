#include "reference_host/generator/dialect.h"

#include "reference_host/generator/notation.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>

namespace reference_host
{
namespace
{

using Result = Intrinsic_result;

// Matrices of documents multiply row vectors ("row_"). Built from rows, they are transposed in
// GLSL, whose constructors take columns; so the products are turned there. Matrices of the host
// ("host_transform") multiply column vectors in Cg and GLSL and row vectors in Direct3D.
constexpr Intrinsic intrinsics[] = {
    {"abs", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"floor", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"ceil", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"fract", 1, Result::widest, 0, "frac", nullptr, nullptr, nullptr, nullptr},
    {"sin", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"cos", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"tan", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"asin", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"acos", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"atan2", 2, Result::widest, 0, nullptr, nullptr, "atan", nullptr, nullptr},
    {"exp", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"log", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"sqrt", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"pow", 2, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"min", 2, Result::widest, 0b10, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"max", 2, Result::widest, 0b10, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"clamp", 3, Result::widest, 0b110, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"saturate", 1, Result::widest, 0, nullptr, nullptr, "clamp($1, 0.0, 1.0)", nullptr, nullptr},
    {"mix", 3, Result::widest, 0b100, "lerp", nullptr, nullptr, nullptr, nullptr},
    {"step", 2, Result::widest, 0b01, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"smoothstep", 3, Result::widest, 0b011, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"length", 1, Result::scalar, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"distance", 2, Result::scalar, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"dot", 2, Result::scalar, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"cross", 2, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"normalize", 1, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"faceforward", 3, Result::widest, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"reflect", 2, Result::first, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"refract", 3, Result::first, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"ddx", 1, Result::widest, 0, nullptr, nullptr, "dFdx", nullptr, nullptr},
    {"ddy", 1, Result::widest, 0, nullptr, nullptr, "dFdy", nullptr, nullptr},
    {"transpose", 1, Result::first, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {"row_transform", 2, Result::first, 0, "mul($1, $2)", nullptr, "$2 * $1", nullptr, "$1 * $2"},
    {"row_product", 2, Result::first, 0, "mul($1, $2)", nullptr, "$2 * $1", nullptr, "$1 * $2"},
    {"host_transform", 2, Result::second, 0, "mul($1, $2)", "mul($2, $1)", "$1 * $2", nullptr,
     "$1 * $2"},
    {"host_untransform", 2, Result::second, 0, "mul($2, $1)", "mul($1, $2)", "$2 * $1", nullptr,
     "$2 * $1"},
    {"texture_2d", 2, Result::texel, 0, "tex2D", nullptr, "texture", "texture2D", "$1.lookup($2)"},
    {"texture_cube", 2, Result::texel, 0, "texCUBE", nullptr, "texture", "textureCube",
     "$1.lookup($2)"},
};

struct Type_names {
    Kind kind;
    const char *hlsl, *glsl;
};

constexpr Type_names type_names[] = {
    {Kind::none, "void", "void"},
    {Kind::boolean, "bool", "bool"},
    {Kind::integer, "int", "int"},
    {Kind::float1, "float", "float"},
    {Kind::float2, "float2", "vec2"},
    {Kind::float3, "float3", "vec3"},
    {Kind::float4, "float4", "vec4"},
    {Kind::matrix3, "float3x3", "mat3"},
    {Kind::matrix4, "float4x4", "mat4"},
    {Kind::sampler_2d, "sampler2D", "sampler2D"},
    {Kind::sampler_cube, "samplerCUBE", "samplerCube"},
};

// Keywords, types and intrinsic functions of Cg, HLSL, GLSL and C++ that an artist might use as a
// name. Those of the notation come from the tables above.
constexpr const char* reserved_words[] = {"active",
                                          "alignas",
                                          "all",
                                          "and",
                                          "any",
                                          "asin",
                                          "asm",
                                          "asm_fragment",
                                          "atan",
                                          "attribute",
                                          "auto",
                                          "bitand",
                                          "bitor",
                                          "blendstate",
                                          "bool",
                                          "bool2",
                                          "bool3",
                                          "bool4",
                                          "break",
                                          "buffer",
                                          "case",
                                          "cast",
                                          "catch",
                                          "cbuffer",
                                          "centroid",
                                          "char",
                                          "class",
                                          "clip",
                                          "coherent",
                                          "color",
                                          "column_major",
                                          "common",
                                          "compile",
                                          "compile_fragment",
                                          "concept",
                                          "const",
                                          "const_cast",
                                          "constexpr",
                                          "continue",
                                          "cosh",
                                          "decltype",
                                          "default",
                                          "define",
                                          "degrees",
                                          "delete",
                                          "determinant",
                                          "discard",
                                          "do",
                                          "double",
                                          "dword",
                                          "else",
                                          "emit",
                                          "enum",
                                          "equal",
                                          "exp2",
                                          "explicit",
                                          "export",
                                          "extern",
                                          "external",
                                          "false",
                                          "filter",
                                          "fixed",
                                          "fixed2",
                                          "fixed3",
                                          "fixed4",
                                          "flat",
                                          "float",
                                          "float2",
                                          "float3",
                                          "float4",
                                          "floatx",
                                          "fmod",
                                          "for",
                                          "fract",
                                          "friend",
                                          "fwidth",
                                          "get",
                                          "goto",
                                          "half",
                                          "half2",
                                          "half3",
                                          "half4",
                                          "highp",
                                          "if",
                                          "image",
                                          "in",
                                          "inline",
                                          "inout",
                                          "input",
                                          "int",
                                          "int2",
                                          "int3",
                                          "int4",
                                          "interface",
                                          "invariant",
                                          "inverse",
                                          "inversesqrt",
                                          "isampler2D",
                                          "layout",
                                          "ldexp",
                                          "lerp",
                                          "linear",
                                          "lit",
                                          "log10",
                                          "log2",
                                          "long",
                                          "lowp",
                                          "main",
                                          "mat2",
                                          "mat3",
                                          "mat4",
                                          "matrix",
                                          "mediump",
                                          "mod",
                                          "mul",
                                          "mutable",
                                          "namespace",
                                          "new",
                                          "nointerpolation",
                                          "noperspective",
                                          "not",
                                          "operator",
                                          "or",
                                          "out",
                                          "output",
                                          "packed",
                                          "partition",
                                          "pass",
                                          "patch",
                                          "pixelfragment",
                                          "pixelshader",
                                          "precise",
                                          "precision",
                                          "private",
                                          "protected",
                                          "public",
                                          "radians",
                                          "readonly",
                                          "register",
                                          "reinterpret_cast",
                                          "resource",
                                          "restrict",
                                          "return",
                                          "round",
                                          "row_major",
                                          "rsqrt",
                                          "sample",
                                          "sampler",
                                          "sampler1D",
                                          "sampler2D",
                                          "sampler3D",
                                          "samplerCUBE",
                                          "samplerCube",
                                          "sampler_state",
                                          "shared",
                                          "short",
                                          "sign",
                                          "signed",
                                          "sincos",
                                          "sinh",
                                          "sizeof",
                                          "smooth",
                                          "snorm",
                                          "stateblock",
                                          "stateblock_state",
                                          "static",
                                          "static_cast",
                                          "std",
                                          "string",
                                          "struct",
                                          "subroutine",
                                          "superp",
                                          "switch",
                                          "tanh",
                                          "tbuffer",
                                          "technique",
                                          "template",
                                          "tex1D",
                                          "tex2D",
                                          "tex3D",
                                          "texCUBE",
                                          "texture",
                                          "texture2D",
                                          "textureCube",
                                          "this",
                                          "throw",
                                          "true",
                                          "trunc",
                                          "try",
                                          "typedef",
                                          "typeid",
                                          "typename",
                                          "uint",
                                          "uniform",
                                          "union",
                                          "unorm",
                                          "unsigned",
                                          "using",
                                          "varying",
                                          "vec2",
                                          "vec3",
                                          "vec4",
                                          "vector",
                                          "vertexfragment",
                                          "vertexshader",
                                          "virtual",
                                          "void",
                                          "volatile",
                                          "while",
                                          "writeonly",
                                          "xor"};

const char* first_given(std::initializer_list<const char*> texts)
{
    for (const char* text : texts)
        if (text)
            return text;
    return "";
}

Shading_type widest_type(const std::vector<Expr>& arguments)
{
    const auto widest =
        std::max_element(arguments.begin(), arguments.end(), [](const Expr& a, const Expr& b) {
            return component_count(a->type) < component_count(b->type);
        });
    return (*widest)->type == Kind::integer ? Shading_type(Kind::float1) : (*widest)->type;
}

Shading_type result_type(const Intrinsic& intrinsic, const std::vector<Expr>& arguments)
{
    switch (intrinsic.result) {
    case Result::first:
        return arguments[0]->type;
    case Result::second:
        return arguments[1]->type;
    case Result::texel:
        return Kind::float4;
    case Result::scalar:
        return Kind::float1;
    default:
        return widest_type(arguments);
    }
}

// A literal vector whose components are all equal, as a scalar; anything else as it is.
Expr narrowed(const Expr& argument)
{
    const int count = component_count(argument->type);
    const auto first = argument->numbers.begin();
    const bool uniform = is_literal(argument) && is_float(argument->type) &&
                         std::all_of(first, first + count, [&](double n) { return n == *first; });
    return uniform ? literal(*first) : argument;
}

void fit_arguments(const Intrinsic& intrinsic, const Shading_type& widest,
                   std::vector<Expr>& arguments)
{
    const auto may_stay = [&](std::size_t i) { return (intrinsic.keeps_scalars >> i & 1U) != 0; };
    bool all_scalar = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i]->type == Kind::integer)
            arguments[i] = construct(Kind::float1, {arguments[i]});
        all_scalar = all_scalar && (!may_stay(i) || narrowed(arguments[i])->type == Kind::float1);
    }
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (may_stay(i) && all_scalar)
            arguments[i] = narrowed(arguments[i]);
        else if (arguments[i]->type == Kind::float1)
            arguments[i] = construct(widest, {arguments[i]});
}

} // namespace

const Intrinsic* find_intrinsic(const std::string& name)
{
    static const std::unordered_map<std::string, const Intrinsic*> by_name = [] {
        std::unordered_map<std::string, const Intrinsic*> made;
        for (const Intrinsic& intrinsic : intrinsics)
            made[intrinsic.name] = &intrinsic;
        return made;
    }();
    const auto found = by_name.find(name);
    return found == by_name.end() ? nullptr : found->second;
}

std::string intrinsic_text(const Intrinsic& intrinsic, Language language)
{
    switch (language) {
    case Language::cg:
        return first_given({intrinsic.cg, intrinsic.name});
    case Language::hlsl:
        return first_given({intrinsic.hlsl, intrinsic.cg, intrinsic.name});
    case Language::glsl:
        return first_given({intrinsic.glsl, intrinsic.name});
    case Language::glsl_legacy:
        return first_given({intrinsic.glsl_legacy, intrinsic.glsl, intrinsic.name});
    default:
        return first_given({intrinsic.cpp, intrinsic.name});
    }
}

Expr call_intrinsic(const Intrinsic& intrinsic, std::vector<Expr> arguments)
{
    const std::string name = intrinsic.name;
    if (arguments.size() != static_cast<std::size_t>(intrinsic.arguments))
        throw Notation_error("wrong number of arguments for \"" + name + "\"");
    const Shading_type type = result_type(intrinsic, arguments);
    if (intrinsic.result == Result::widest || intrinsic.result == Result::scalar) {
        const Shading_type widest = widest_type(arguments);
        if (!is_float(widest))
            throw Notation_error("wrong type of argument for \"" + name + "\"");
        fit_arguments(intrinsic, widest, arguments);
    }
    return call(name, type, std::move(arguments));
}

std::string type_name(const Shading_type& type, Language language)
{
    if (type.kind == Kind::structure)
        return type.structure;
    if (language == Language::cpp && type.kind == Kind::sampler_2d)
        return "Sampler_2d";
    if (language == Language::cpp && type.kind == Kind::sampler_cube)
        return "Sampler_cube";
    for (const Type_names& names : type_names)
        if (names.kind == type.kind)
            return is_glsl(language) ? names.glsl : names.hlsl;
    throw Notation_error("a text that is not known at generation");
}

bool is_glsl(Language language)
{
    return language == Language::glsl || language == Language::glsl_legacy;
}

bool is_reserved_word(const std::string& word)
{
    static const std::unordered_set<std::string> words = [] {
        std::unordered_set<std::string> made(std::begin(reserved_words), std::end(reserved_words));
        for (const Intrinsic& intrinsic : intrinsics)
            for (const char* text : {intrinsic.name, intrinsic.cg, intrinsic.glsl})
                if (text)
                    made.insert(text);
        for (const Type_names& names : type_names)
            made.insert({names.hlsl, names.glsl});
        return made;
    }();
    return words.count(word) != 0;
}

} // namespace reference_host

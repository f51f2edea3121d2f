// Loads a whole CgFX or HLSL effect file with the Cg runtime and compiles every program of every
// pass. Needs no window, display or GPU.
//
//     cgfxcheck [-q] [-hlsl] [-D MACRO]... [-bind LIST=TYPE,TYPE,...]... FILE
//
//     -q     prints only errors
//     -hlsl  knows the state names of Direct3D 9 instead of those of OpenGL
//     -D     defines a macro
//     -bind  gives the unsized list LIST one element of each TYPE, structs of the file that
//            implement the list's interface
//
// Exit status 0: the loader reports no error, every pass has a vertex and a fragment program, there
// is at least one pass, and all programs compile. 1: anything else, with the reasons on standard
// error. 2: wrong usage.
#include "reference_host/system/file_access.h"

#include <Cg/cg.h>
#include <Cg/cgGL.h>

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace
{

// ---- states of Direct3D 9 effects -------------------------------------------

// Values of a state, separated by spaces; none: it takes numbers, booleans or programs.
constexpr char compare_values[] = "Never Less Equal LessEqual Greater NotEqual GreaterEqual Always";
constexpr char blend_values[] = "Zero One SrcColor InvSrcColor SrcAlpha InvSrcAlpha DestAlpha "
                                "InvDestAlpha DestColor InvDestColor SrcAlphaSat BothSrcAlpha "
                                "BothInvSrcAlpha BlendFactor InvBlendFactor";
constexpr char blend_operations[] = "Add Subtract RevSubtract Min Max";
constexpr char stencil_operations[] = "Keep Zero Replace IncrSat DecrSat Invert Incr Decr";
constexpr char filter_values[] = "None Point Linear Anisotropic PyramidalQuad GaussianQuad";
constexpr char address_values[] = "Wrap Mirror Clamp Border MirrorOnce";

struct State {
    const char* name;
    CGtype type;
    const char* values;
};

constexpr State pass_states[] = {
    {"VertexShader", CG_PROGRAM_TYPE, ""},
    {"PixelShader", CG_PROGRAM_TYPE, ""},
    {"ZEnable", CG_BOOL, ""},
    {"ZWriteEnable", CG_BOOL, ""},
    {"ZFunc", CG_INT, compare_values},
    {"DepthBias", CG_FLOAT, ""},
    {"SlopeScaleDepthBias", CG_FLOAT, ""},
    {"AlphaTestEnable", CG_BOOL, ""},
    {"AlphaFunc", CG_INT, compare_values},
    {"AlphaRef", CG_INT, ""},
    {"AlphaBlendEnable", CG_BOOL, ""},
    {"SeparateAlphaBlendEnable", CG_BOOL, ""},
    {"SrcBlend", CG_INT, blend_values},
    {"DestBlend", CG_INT, blend_values},
    {"BlendOp", CG_INT, blend_operations},
    {"SrcBlendAlpha", CG_INT, blend_values},
    {"DestBlendAlpha", CG_INT, blend_values},
    {"BlendOpAlpha", CG_INT, blend_operations},
    {"CullMode", CG_INT, "None CW CCW"},
    {"FillMode", CG_INT, "Point WireFrame Solid"},
    {"ShadeMode", CG_INT, "Flat Gouraud Phong"},
    {"ColorWriteEnable", CG_INT, "Red Green Blue Alpha"},
    {"DitherEnable", CG_BOOL, ""},
    {"FogEnable", CG_BOOL, ""},
    {"Lighting", CG_BOOL, ""},
    {"SRGBWriteEnable", CG_BOOL, ""},
    {"StencilEnable", CG_BOOL, ""},
    {"StencilFunc", CG_INT, compare_values},
    {"StencilPass", CG_INT, stencil_operations},
    {"StencilFail", CG_INT, stencil_operations},
    {"StencilZFail", CG_INT, stencil_operations},
    {"StencilRef", CG_INT, ""},
    {"StencilMask", CG_INT, ""},
    {"StencilWriteMask", CG_INT, ""},
};

constexpr State sampler_states[] = {
    {"Texture", CG_TEXTURE, ""},          {"MinFilter", CG_INT, filter_values},
    {"MagFilter", CG_INT, filter_values}, {"MipFilter", CG_INT, filter_values},
    {"AddressU", CG_INT, address_values}, {"AddressV", CG_INT, address_values},
    {"AddressW", CG_INT, address_values}, {"BorderColor", CG_INT, ""},
    {"MaxAnisotropy", CG_INT, ""},        {"MaxMipLevel", CG_INT, ""},
    {"MipMapLodBias", CG_FLOAT, ""},      {"SRGBTexture", CG_BOOL, ""},
};

void add_values(CGstate state, const char* values)
{
    std::istringstream names(values);
    int value = 0;
    for (std::string name; names >> name;)
        cgAddStateEnumerant(state, name.c_str(), ++value);
}

void register_direct3d_states(CGcontext context)
{
    for (const State& state : pass_states)
        add_values(cgCreateState(context, state.name, state.type), state.values);
    for (const State& state : sampler_states)
        add_values(cgCreateSamplerState(context, state.name, state.type), state.values);
}

// ---- the check --------------------------------------------------------------

struct Binding {
    std::string list;
    std::vector<std::string> types;
};

struct Options {
    bool quiet = false;
    bool hlsl = false;
    std::vector<std::string> compiler_arguments;
    std::vector<Binding> bindings;
    const char* file = nullptr;
};

class Checker
{
public:
    explicit Checker(const Options& options) : m_options(options), m_context(cgCreateContext())
    {
        cgSetParameterSettingMode(m_context, CG_DEFERRED_PARAMETER_SETTING);
        // Programs compile when their lists are bound, not before.
        cgSetAutoCompile(m_context, CG_COMPILE_MANUAL);
        if (options.hlsl)
            register_direct3d_states(m_context);
        else
            cgGLRegisterStates(m_context); // needs no OpenGL context
        check("states");
    }
    ~Checker() { cgDestroyContext(m_context); }
    Checker(const Checker&) = delete;
    Checker& operator=(const Checker&) = delete;

    bool run()
    {
        const CGeffect effect = load();
        if (!effect)
            return false;
        for (const Binding& binding : m_options.bindings)
            bind(effect, binding);
        int passes = 0;
        for (CGtechnique technique = cgGetFirstTechnique(effect); technique;
             technique = cgGetNextTechnique(technique))
            for (CGpass pass = cgGetFirstPass(technique); pass; pass = cgGetNextPass(pass)) {
                check_pass(technique, pass);
                ++passes;
            }
        if (passes == 0)
            fail("no pass");
        return m_good;
    }

private:
    void fail(const std::string& reason)
    {
        m_good = false;
        std::fprintf(stderr, "%s\n", reason.c_str());
    }

    void print_listing() const
    {
        if (const char* const listing = cgGetLastListing(m_context))
            std::fputs(listing, stderr);
    }

    // Fails when the runtime has an error pending.
    void check(const std::string& what)
    {
        const CGerror error = cgGetError();
        if (error == CG_NO_ERROR)
            return;
        fail(what + ": " + cgGetErrorString(error));
        if (error == CG_COMPILER_ERROR)
            print_listing();
    }

    CGeffect load()
    {
        std::vector<const char*> arguments;
        for (const std::string& argument : m_options.compiler_arguments)
            arguments.push_back(argument.c_str());
        arguments.push_back(nullptr);
        const CGeffect effect = cgCreateEffectFromFile(m_context, m_options.file, arguments.data());
        // An unknown name in a sampler_state shows in the listing only: the load succeeds.
        const char* const listing = cgGetLastListing(m_context);
        const bool has_error = listing && std::strstr(listing, "error");
        if (has_error)
            m_good = false;
        if (has_error || !m_options.quiet)
            print_listing();
        if (const CGerror error = cgGetError(); error != CG_NO_ERROR)
            fail(std::string(m_options.file) + ": " + cgGetErrorString(error));
        return effect;
    }

    void bind(CGeffect effect, const Binding& binding)
    {
        const CGparameter list = cgGetNamedEffectParameter(effect, binding.list.c_str());
        if (!list) {
            cgGetError();
            fail("no list " + binding.list);
            return;
        }
        cgSetArraySize(list, static_cast<int>(binding.types.size()));
        check(binding.list);
        for (std::size_t i = 0; i < binding.types.size(); ++i) {
            const std::string& type = binding.types[i];
            // Every type of the file is known to the effect.
            const CGtype user_type =
                cgGetNamedUserType(reinterpret_cast<CGhandle>(effect), type.c_str());
            if (user_type == CG_UNKNOWN_TYPE) {
                fail("no type " + type);
                continue;
            }
            const std::string name = binding.list + "_" + std::to_string(i);
            const CGparameter element = cgCreateEffectParameter(effect, name.c_str(), user_type);
            check(type);
            cgConnectParameter(element, cgGetArrayParameter(list, static_cast<int>(i)));
            check(type);
        }
    }

    void check_pass(CGtechnique technique, CGpass pass)
    {
        int programs = 0;
        for (CGstateassignment assignment = cgGetFirstStateAssignment(pass); assignment;
             assignment = cgGetNextStateAssignment(assignment)) {
            const CGstate state = cgGetStateAssignmentState(assignment);
            if (cgGetStateType(state) == CG_PROGRAM_TYPE)
                programs += compiles(cgGetProgramStateAssignmentValue(assignment)) ? 1 : 0;
        }
        const std::string name =
            std::string(cgGetTechniqueName(technique)) + "/" + cgGetPassName(pass);
        if (programs != 2)
            fail(name + ": " + std::to_string(programs) + " good programs, not 2");
        else if (!m_options.quiet)
            std::printf("%s: good\n", name.c_str());
    }

    bool compiles(CGprogram program)
    {
        check("program");
        if (!program)
            return false;
        const std::string name = std::string(cgGetProgramString(program, CG_PROGRAM_PROFILE)) +
                                 " " + cgGetProgramString(program, CG_PROGRAM_ENTRY);
        cgCompileProgram(program);
        check(name);
        const char* const code = cgGetProgramString(program, CG_COMPILED_PROGRAM);
        if (!code || !*code)
            return false;
        if (!m_options.quiet)
            std::printf("%s: %zu bytes\n", name.c_str(), std::strlen(code));
        return true;
    }

    const Options& m_options;
    CGcontext m_context;
    bool m_good = true;
};

bool read_binding(const std::string& argument, std::vector<Binding>& bindings)
{
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos)
        return false;
    Binding binding{argument.substr(0, equals), {}};
    std::istringstream types(argument.substr(equals + 1));
    for (std::string type; std::getline(types, type, ',');)
        binding.types.push_back(type);
    bindings.push_back(binding);
    return true;
}

bool read_options(int count, char** arguments, Options& options)
{
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (argument == "-q")
            options.quiet = true;
        else if (argument == "-hlsl")
            options.hlsl = true;
        else if (argument == "-D") {
            if (++i == count)
                return false;
            options.compiler_arguments.push_back(std::string("-D") + arguments[i]);
        } else if (argument == "-bind") {
            if (++i == count || !read_binding(arguments[i], options.bindings))
                return false;
        } else if (argument[0] == '-' || options.file)
            return false;
        else
            options.file = arguments[i];
    }
    return options.file != nullptr;
}

} // namespace

int main(int count, char** arguments)
{
    Options options;
    if (!read_options(count, arguments, options)) {
        std::fputs("usage: cgfxcheck [-q] [-hlsl] [-D MACRO]... [-bind LIST=TYPE,...]... FILE\n",
                   stderr);
        return 2;
    }
    if (const std::string reason = reference_host::why_not_readable(options.file);
        !reason.empty()) {
        std::fprintf(stderr, "%s: cannot be read: %s\n", options.file, reason.c_str());
        return 1;
    }
    return Checker(options).run() ? 0 : 1;
}

#include "reference_host/generator/effect_writer.h"

#include "reference_host/generator/annotations.h"
#include "reference_host/generator/streams.h"
#include "reference_host/generator/text_parts.h"
#include "reference_host/generator/transforms.h"

#include <algorithm>

namespace reference_host
{
namespace
{

// What the two formats call the same things.
struct Effect_words {
    Language language;
    const char* title;
    const char *vertex_profile, *fragment_profile;
    const char *vertex_state, *fragment_state;
    const char* face_semantic;
    const char* texture_binding[2]; // before and after the texture's name
    const char* filters;
    const char* addresses_2d;
    const char* address_depth; // what a cube map has besides
    const char *depth_test, *depth_write, *depth_function;
    const char *blending_on, *blending_off;
    const char *two_sided, *one_sided;
};

constexpr Effect_words effect_words[] = {
    {Language::cg,
     "CgFX",
     "vp40",
     "fp40",
     "VertexProgram",
     "FragmentProgram",
     "FACE",
     {"<", ">"},
     "    MinFilter = LinearMipMapLinear;\n"
     "    MagFilter = Linear;\n",
     "    WrapS = Repeat;\n"
     "    WrapT = Repeat;\n",
     "    WrapR = Repeat;\n",
     "DepthTestEnable",
     "DepthMask",
     "DepthFunc = LEqual;",
     "        BlendEnable = true;\n"
     "        BlendFunc = int2(SrcAlpha, OneMinusSrcAlpha);\n",
     "        BlendEnable = false;\n",
     "        CullFaceEnable = false;\n",
     "        CullFaceEnable = true;\n"
     "        CullFace = Back;\n"},
    {Language::hlsl,
     "HLSL effect",
     "vs_3_0",
     "ps_3_0",
     "VertexShader",
     "PixelShader",
     "VFACE",
     {"(", ")"},
     "    MinFilter = Linear;\n"
     "    MagFilter = Linear;\n"
     "    MipFilter = Linear;\n",
     "    AddressU = Wrap;\n"
     "    AddressV = Wrap;\n",
     "    AddressW = Wrap;\n",
     "ZEnable",
     "ZWriteEnable",
     "ZFunc = LessEqual;",
     "        AlphaBlendEnable = true;\n"
     "        SrcBlend = SrcAlpha;\n"
     "        DestBlend = InvSrcAlpha;\n",
     "        AlphaBlendEnable = false;\n",
     "        CullMode = None;\n",
     "        CullMode = CCW;\n"},
};

class Effect_writer
{
public:
    Effect_writer(const Shader_request& request, const Text_options& options,
                  const Generator_settings& settings, Diagnostics& diagnostics)
        : m_request(request),
          m_options(options),
          m_settings(settings),
          m_words(effect_words[options.format == Effect_format::hlsl ? 1 : 0]),
          m_printer(m_words.language),
          m_code(request, options, m_words.language, diagnostics),
          m_annotations(options, request.graph->folder, diagnostics),
          m_used(m_code.used_variables())
    {
    }

    std::string whole_effect()
    {
        Streams streams(m_code, m_options, m_words.language);
        const Statements fragment = streams.fragment_body(back_face());
        for (const Statements* body : {&streams.vertex_body(), &fragment})
            visit(*body, [&](const Expression& expression) {
                if (expression.op == Op::variable)
                    m_used.insert(expression.name);
            });
        check_texture_count(m_code, m_used, m_options);
        return head() + sas_global() + transforms_text() + scene_text() + parameters_text(false) +
               textures_text() + parameters_text(true) +
               section("shading state",
                       structures_text(m_code, &streams, m_printer) + interfaces_text()) +
               section("vertex program", stream_structures(streams) + vertex_main(streams)) +
               section("shader", functions_text(m_code, m_printer, true)) +
               section("fragment program", fragment_main(streams, fragment)) +
               section("technique", technique());
    }

    // A light or a volume as a structure that implements the interface.
    std::string structure_only()
    {
        const bool light = m_options.shader_type == "light";
        const std::string interface = light ? m_options.light_interface_name : "Volume";
        std::set<std::string> state = m_code.used_fields("State");
        const Function& method = *m_code.used_functions().back();
        const std::string structure = "\nstruct " + m_code.name() + " : " + interface + "\n{\n" +
                                      indented(m_printer.function(method)) + "};\n";
        return head() + transforms_text() + parameters_text(false) + textures_text() +
               parameters_text(true) +
               section("shading state", structure_text(m_code, "State", state, m_printer) +
                                            (light ? whole_iterator() : "") +
                                            interface_text(interface, method)) +
               section(m_options.shader_type, functions_text(m_code, m_printer, false) + structure);
    }

private:
    static std::string indented(const std::string& text)
    {
        std::string made;
        for (std::size_t first = 0; first < text.size();) {
            const std::size_t end = std::min(text.find('\n', first), text.size() - 1);
            const std::string line = text.substr(first, end - first + 1);
            made += line == "\n" ? line : "    " + line;
            first = end + 1;
        }
        return made;
    }

    Expr back_face() const { return binary("<", variable(Kind::float1, "face"), literal(0.0)); }

    std::string profile(const std::string& wanted, const char* usual) const
    {
        return wanted.empty() ? usual : wanted;
    }

    std::string head() const
    {
        std::string text = m_options.fx_header;
        if (!text.empty())
            text += text.back() == '\n' ? "\n" : "\n\n";
        const bool world = m_code.internal_space() == Space::world;
        std::vector<std::string> lines = {
            std::string("Target: ") + m_words.title + ", vertex profile " +
                profile(m_options.vertex_shader_profile, m_words.vertex_profile) +
                ", fragment profile " +
                profile(m_options.fragment_shader_profile, m_words.fragment_profile),
            std::string("Internal space: ") + (world ? "world" : "camera")};
        for (const std::string& line : host_conventions(m_options))
            lines.push_back(line);
        return text + copyright_comment(m_options.user_copyright) +
               head_comment(m_request, m_code, lines);
    }

    std::string sas_global() const
    {
        if (!m_options.hlsl_sas_conformance)
            return "";
        return "\nint GlobalParameter : SasGlobal\n<\n    int3 SasVersion = {1, 1, 0};\n"
               "    string SasEffectDescription = " +
               quoted(m_code.name()) + ";\n>;\n";
    }

    std::string transforms_text() const
    {
        std::string text;
        for (const Transform& transform : transforms())
            if (m_used.count(transform.name))
                text += m_printer.type(transform.type) + " " + transform.name + " : " +
                        transform.semantic + transform_annotation(transform) + ";\n";
        if (m_code.lighting() == Lighting::list || m_used.count(shared_view_matrix))
            text += std::string(text.empty() ? "" : "\n") +
                    "// Shared with the lights that are added to this text.\n"
                    "#ifndef __WORLD_TO_CAMERA\n#define __WORLD_TO_CAMERA\nfloat4x4 " +
                    shared_view_matrix + " : View;\n#endif\n";
        return section("transforms", text);
    }

    std::string transform_annotation(const Transform& transform) const
    {
        if (m_options.hlsl_sas_conformance)
            return transform.sas_address[0] == '\0' ? ""
                                                    : std::string(" < string SasBindAddress = \"") +
                                                          transform.sas_address + "\"; >";
        return " < string UIWidget = \"None\"; >";
    }

    std::string scene_text() const
    {
        if (!m_used.count("scene_ambient"))
            return "";
        return section("scene", "float4 scene_ambient = " + m_options.scene_ambient + ";\n");
    }

    std::string parameters_text(bool of_scene) const
    {
        std::string text;
        for (const Effect_parameter& parameter : m_code.uniforms().parameters()) {
            if (parameter.of_scene != of_scene || !m_used.count(parameter.name))
                continue;
            const Expr value = literal(parameter.value);
            text += text.empty() ? "" : "\n";
            text += parameter.constant ? "static const " : "";
            text += m_printer.type(value->type) + " " + parameter.name;
            text += parameter.constant ? "" : m_annotations.of(parameter);
            text += " = " + m_printer.expression(value) + ";\n";
        }
        const bool alone = m_options.shader_type == "light" || m_options.shader_type == "volume";
        return section(of_scene && !alone ? "lights and surroundings" : "parameters", text);
    }

    std::string sampler_name(const Texture& texture) const
    {
        return texture.name + (m_options.generate_texture_parameters ? "_sampler" : "");
    }

    std::string textures_text() const
    {
        std::string text;
        for (const Texture& texture : m_code.uniforms().textures())
            if (m_used.count(sampler_name(texture)))
                text += (text.empty() ? "" : "\n") + texture_text(texture);
        if (m_options.use_oit)
            text += (text.empty() ? "" : "\n") + oit_text();
        return section("textures", text);
    }

    std::string texture_text(const Texture& texture) const
    {
        const std::string annotation = m_annotations.of(texture, texture_path(texture, m_settings));
        std::string text;
        if (m_options.generate_texture_parameters)
            text += "texture " + texture.name + annotation + ";\n\n";
        text += std::string(texture.cube ? "samplerCUBE " : "sampler2D ") + sampler_name(texture);
        text += m_options.generate_texture_parameters ? "" : annotation;
        if (!m_options.generate_samplers)
            return text + "; // bound by the host\n";
        return text +
               sampler_state(texture.name, texture.cube, m_options.generate_texture_parameters);
    }

    std::string sampler_state(const std::string& texture, bool cube, bool binds) const
    {
        std::string states;
        if (binds)
            states += std::string("    Texture = ") + m_words.texture_binding[0] + texture +
                      m_words.texture_binding[1] + ";\n";
        if (m_options.generate_sampler_states)
            states += m_words.filters;
        if (m_options.generate_sampler_default_address_mode)
            states += std::string(m_words.addresses_2d) + (cube ? m_words.address_depth : "");
        return states.empty() ? ";\n" : " = sampler_state\n{\n" + states + "};\n";
    }

    std::string oit_text() const
    {
        return "// Depth of the layer in front, from the pass before.\n"
               "texture oit_depth_map;\n\nsampler2D oit_depth_map_sampler = sampler_state\n{\n"
               "    Texture = " +
               std::string(m_words.texture_binding[0]) + "oit_depth_map" +
               m_words.texture_binding[1] + ";\n};\n";
    }

    std::string whole_iterator() const
    {
        return "\n" + m_printer.structure(*m_code.program().find_structure("Light_iterator"));
    }

    std::string interface_text(const std::string& name, const Function& method) const
    {
        return "\ninterface " + name + "\n{\n    " + m_printer.type(method.type) +
               " eval(State state);\n};\n";
    }

    std::string interfaces_text() const
    {
        std::string text;
        if (m_code.lighting() == Lighting::list)
            text += "\ninterface " + m_options.light_interface_name +
                    "\n{\n    Light_iterator eval(State state);\n};\n\n" +
                    m_options.light_interface_name + " " + m_options.light_list_name + "[];\n";
        for (const auto& [name, list] :
             {std::pair("Environment", "environments"), std::pair("Volume", "volumes")})
            if (m_used.count(list))
                text += std::string("\ninterface ") + name +
                        "\n{\n    float4 eval(State state);\n};\n\n" + name + " " + list + "[];\n";
        return text;
    }

    static std::string stream_text(const Stream& stream, const Printer& printer)
    {
        return "    " + printer.type(stream.type) + " " + stream.name + " : " + stream.semantic +
               ";\n";
    }

    std::string stream_structures(const Streams& streams) const
    {
        std::string text = "struct Vertex_in\n{\n";
        for (const Stream& stream : streams.attributes())
            text += stream_text(stream, m_printer);
        std::string handed_over;
        for (const Stream& stream : streams.varyings())
            handed_over += stream_text(stream, m_printer);
        text +=
            "};\n\nstruct Vertex_out\n{\n    float4 hposition : POSITION;\n" + handed_over + "};\n";
        if (m_words.language == Language::hlsl && !handed_over.empty())
            text += "\nstruct Fragment_in\n{\n" + handed_over + "};\n";
        return text;
    }

    std::string vertex_main(const Streams& streams) const
    {
        return "\nVertex_out vertex_main(Vertex_in vertex)\n{\n    Vertex_out result;\n" +
               m_printer.statements(streams.vertex_body(), 1) + "    return result;\n}\n";
    }

    std::string fragment_main(const Streams& streams, const Statements& body) const
    {
        std::string inputs;
        if (!streams.varyings().empty())
            inputs =
                m_words.language == Language::hlsl ? "Fragment_in fragment" : "Vertex_out fragment";
        if (streams.reads_face())
            inputs +=
                std::string(inputs.empty() ? "" : ", ") + "float face : " + m_words.face_semantic;
        const bool stateless = m_code.used_functions().back()->parameters.empty();
        return "float4 fragment_main(" + inputs + ") : COLOR\n{\n" +
               (stateless ? "" : "    State state;\n") + m_printer.statements(body, 1) +
               "    return " + m_code.name() + (stateless ? "()" : "(state)") + ";\n}\n";
    }

    std::string technique() const
    {
        const auto flag = [](bool value) { return value ? " = true;\n" : " = false;\n"; };
        std::string states;
        if (m_options.add_default_states) {
            states += std::string("        ") + m_words.depth_test + flag(m_options.depth_test);
            states += std::string("        ") + m_words.depth_write + flag(m_options.depth_write);
            states += std::string("        ") + m_words.depth_function + "\n";
            states += m_options.alpha_transparency && !m_options.use_oit ? m_words.blending_on
                                                                         : m_words.blending_off;
            states += m_options.two_sided ? m_words.two_sided : m_words.one_sided;
        }
        return "technique T0\n{\n    pass P0\n    {\n" + states + "        " +
               m_words.vertex_state + " = compile " +
               profile(m_options.vertex_shader_profile, m_words.vertex_profile) +
               " vertex_main();\n        " + m_words.fragment_state + " = compile " +
               profile(m_options.fragment_shader_profile, m_words.fragment_profile) +
               " fragment_main();\n    }\n}\n";
    }

    const Shader_request& m_request;
    const Text_options& m_options;
    const Generator_settings& m_settings;
    const Effect_words& m_words;
    Printer m_printer;
    Shader_code m_code;
    Annotations m_annotations;
    std::set<std::string> m_used; // names of variables in the text
};

} // namespace

std::string write_effect(const Shader_request& request, const Text_options& options,
                         const Generator_settings& settings, Diagnostics& diagnostics)
{
    Effect_writer writer(request, options, settings, diagnostics);
    const bool structure = options.shader_type == "light" || options.shader_type == "volume";
    return structure ? writer.structure_only() : writer.whole_effect();
}

} // namespace reference_host

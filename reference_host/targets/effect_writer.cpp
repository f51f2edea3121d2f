#include "reference_host/targets/effect_writer.h"

#include "reference_host/shading/host_values.h"
#include "reference_host/targets/annotations.h"
#include "reference_host/targets/profile_limits.h"
#include "reference_host/targets/streams.h"
#include "reference_host/targets/text_parts.h"

#include <algorithm>

namespace reference_host
{
namespace
{

// What the two formats call the same things.
struct Effect_words {
    Language language;
    const char* title;
    const char *vertex_state, *fragment_state;
    const char* face_semantic;
    const char* fragment_input;     // the structure
    const char* texture_binding[2]; // before and after the texture's name
    const char* filters;
    const char* addresses_2d;
    const char* address_depth; // what a cube map has in addition
    const char *depth_test, *depth_write, *depth_function;
    const char *blending_on, *blending_off;
    const char *two_sided, *one_sided;
};

constexpr const char* vertex_output = "Vertex_out";

constexpr Effect_words effect_words[] = {
    {Language::cg,
     "CgFX",
     "VertexProgram",
     "FragmentProgram",
     "FACE",
     vertex_output,
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
     "VertexShader",
     "PixelShader",
     "VFACE",
     "Fragment_in",
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
    Effect_writer(const Module& module, const Text_plan& plan, Diagnostics& diagnostics)
        : m_module(module),
          m_plan(plan),
          m_options(plan.options),
          m_words(effect_words[plan.dialect.language == Language::hlsl ? 1 : 0]),
          m_printer(m_words.language),
          m_annotations(m_options, module.folder, diagnostics),
          m_diagnostics(diagnostics),
          m_uses(collect_uses(module))
    {
    }

    std::string whole_effect()
    {
        const Streams streams(m_module.name, m_uses, m_plan);
        const Statements fragment = streams.fragment_body(back_face());
        m_uses.add(streams.vertex_body());
        m_uses.add(fragment);
        check_texture_count(m_module, m_options);
        if (m_plan.profile)
            check_limits(m_module, *m_plan.profile, m_diagnostics);
        return head() + sas_global() + transforms_text() + scene_text() + parameters_text(false) +
               textures_text() + parameters_text(true) +
               section("shading state",
                       structures_text(m_uses, m_plan, streams.fields(), m_printer) +
                           interfaces_text()) +
               section("vertex program", stream_structures(streams) + vertex_main(streams)) +
               section("shader", functions_text(m_module, m_printer, true)) +
               section("fragment program", fragment_main(streams, fragment)) +
               section("technique", technique());
    }

    // A light or a volume as a structure that implements the interface.
    std::string structure_only()
    {
        const bool light = m_options.shader_type == "light";
        const std::string interface = light ? m_options.light_interface_name : "Volume";
        const Function& method = m_module.entry();
        const std::string structure = "\nstruct " + m_module.name + " : " + interface + "\n{\n" +
                                      indented(m_printer.function(method)) + "};\n";
        return head() + transforms_text() + parameters_text(false) + textures_text() +
               parameters_text(true) +
               section("shading state",
                       structure_text("State", m_uses.fields_of("State"), m_printer) +
                           (light ? whole_iterator() : "") + interface_text(interface, method)) +
               section(m_options.shader_type,
                       functions_text(m_module, m_printer, false) + structure);
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

    Expr back_face() const
    {
        return binary(Operator::less, variable(Base_type::float1, "face"), literal(0.0));
    }

    std::string profile(const std::string& wanted, const char* usual) const
    {
        return wanted.empty() ? usual : wanted;
    }

    std::string head() const
    {
        std::string text = m_options.fx_header;
        if (!text.empty())
            text += text.back() == '\n' ? "\n" : "\n\n";
        const bool world = m_plan.internal_space == Space::world;
        std::vector<std::string> lines = {
            std::string("Target: ") + m_words.title + ", vertex profile " +
                profile(m_options.vertex_shader_profile, m_plan.dialect.vertex_profile) +
                ", fragment profile " +
                profile(m_options.fragment_shader_profile, m_plan.dialect.fragment_profile),
            std::string("Internal space: ") + (world ? "world" : "camera")};
        for (const std::string& line : target_conventions(m_options))
            lines.push_back(line);
        return text + copyright_comment(m_options.user_copyright) + head_comment(m_module, lines);
    }

    std::string sas_global() const
    {
        if (!m_options.hlsl_sas_conformance)
            return "";
        return "\nint GlobalParameter : SasGlobal\n<\n    int3 SasVersion = {1, 1, 0};\n"
               "    string SasEffectDescription = " +
               quoted(m_module.name) + ";\n>;\n";
    }

    std::string transforms_text() const
    {
        std::string text;
        for (const Host_value_row& row : host_values) {
            const Expr value = host_variable(row.value);
            if (is_used(value->name))
                text += m_printer.type(value->type) + " " + value->name + " : " + row.semantic +
                        transform_annotation(row) + ";\n";
        }
        if (m_plan.has_light_interface() || is_used(shared_view_matrix))
            text += std::string(text.empty() ? "" : "\n") +
                    "// Shared with the lights that are added to this text.\n"
                    "#ifndef __WORLD_TO_CAMERA\n#define __WORLD_TO_CAMERA\nfloat4x4 " +
                    shared_view_matrix + " : View;\n#endif\n";
        return section("transforms", text);
    }

    std::string transform_annotation(const Host_value_row& row) const
    {
        if (m_options.hlsl_sas_conformance)
            return row.sas_address[0] == '\0'
                       ? ""
                       : std::string(" < string SasBindAddress = \"") + row.sas_address + "\"; >";
        return " < string UIWidget = \"None\"; >";
    }

    std::string scene_text() const
    {
        if (!is_used("scene_ambient"))
            return "";
        return section("scene", "float4 scene_ambient = " + m_options.scene_ambient + ";\n");
    }

    std::string parameters_text(bool of_scene) const
    {
        std::string text;
        for (const Module_parameter& parameter : m_module.parameters) {
            if (parameter.of_scene != of_scene)
                continue;
            const Expr& value = parameter.value;
            text += text.empty() ? "" : "\n";
            text += parameter.constant ? "static const " : "";
            text += m_printer.type(value->type) + " " + parameter.name;
            text += parameter.constant ? "" : m_annotations.of(parameter);
            text += " = " + m_printer.expression(value) + ";\n";
        }
        const bool alone = m_options.shader_type == "light" || m_options.shader_type == "volume";
        return section(of_scene && !alone ? "lights and surroundings" : "parameters", text);
    }

    std::string sampler_name(const Module_texture& texture) const
    {
        return texture.name + (m_options.generate_texture_parameters ? "_sampler" : "");
    }

    std::string textures_text() const
    {
        std::string text;
        for (const Module_texture& texture : m_module.textures)
            text += (text.empty() ? "" : "\n") + texture_text(texture);
        if (m_options.use_oit)
            text += (text.empty() ? "" : "\n") + oit_text();
        return section("textures", text);
    }

    std::string texture_text(const Module_texture& texture) const
    {
        const std::string annotation =
            m_annotations.of(texture, texture_path(texture, m_plan.settings));
        std::string text;
        if (m_options.generate_texture_parameters)
            text += "texture " + texture.name + annotation + ";\n\n";
        text += std::string(texture.cube ? "samplerCUBE " : "sampler2D ") + sampler_name(texture);
        text += m_options.generate_texture_parameters ? "" : annotation;
        if (!m_options.generate_samplers)
            return text + "; // bound by the program\n";
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
        return "\n" + m_printer.structure(*find_structure("Light_iterator"));
    }

    std::string interface_text(const std::string& name, const Function& method) const
    {
        return "\ninterface " + name + "\n{\n    " + m_printer.type(method.type) +
               " eval(State state);\n};\n";
    }

    std::string interfaces_text() const
    {
        std::string text;
        if (m_plan.has_light_interface())
            text += "\ninterface " + m_options.light_interface_name +
                    "\n{\n    Light_iterator eval(State state);\n};\n\n" +
                    m_options.light_interface_name + " " + m_options.light_list_name + "[];\n";
        for (const auto& [name, list] :
             {std::pair("Environment", "environments"), std::pair("Volume", "volumes")})
            if (is_used(list))
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
        if (m_words.fragment_input != vertex_output && !handed_over.empty())
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
            inputs = std::string(m_words.fragment_input) + " fragment";
        if (streams.reads_face())
            inputs +=
                std::string(inputs.empty() ? "" : ", ") + "float face : " + m_words.face_semantic;
        const bool stateless = m_module.entry().parameters.empty();
        return "float4 fragment_main(" + inputs + ") : COLOR\n{\n" +
               (stateless && streams.fields().empty() ? "" : "    State state;\n") +
               m_printer.statements(body, 1) + "    return " + m_module.name +
               (stateless ? "()" : "(state)") + ";\n}\n";
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
               profile(m_options.vertex_shader_profile, m_plan.dialect.vertex_profile) +
               " vertex_main();\n        " + m_words.fragment_state + " = compile " +
               profile(m_options.fragment_shader_profile, m_plan.dialect.fragment_profile) +
               " fragment_main();\n    }\n}\n";
    }

    bool is_used(const std::string& variable) const
    {
        return m_uses.variables.count(variable) != 0;
    }

    const Module& m_module;
    const Text_plan& m_plan;
    const Text_options& m_options;
    const Effect_words& m_words;
    Printer m_printer;
    Annotations m_annotations;
    Diagnostics& m_diagnostics;
    Uses m_uses; // of the whole text
};

} // namespace

std::string write_effect(const Module& module, const Text_plan& plan, Diagnostics& diagnostics)
{
    Effect_writer writer(module, plan, diagnostics);
    const bool is_method =
        plan.options.shader_type == "light" || plan.options.shader_type == "volume";
    return is_method ? writer.structure_only() : writer.whole_effect();
}

} // namespace reference_host

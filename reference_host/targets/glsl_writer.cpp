#include "reference_host/targets/glsl_writer.h"

#include "reference_host/targets/streams.h"
#include "reference_host/targets/text_parts.h"

namespace reference_host
{
namespace
{

// The version from which on uniforms may have initial values.
constexpr int initializers_version = 120;

class Glsl_writer
{
public:
    Glsl_writer(const Module& module, const Text_plan& plan)
        : m_module(module),
          m_plan(plan),
          m_options(plan.options),
          m_modern(plan.dialect.language == Language::glsl),
          m_printer(plan.dialect.language),
          m_uses(collect_uses(module)),
          m_streams(module.name, m_uses, plan),
          m_fragment_body(m_streams.fragment_body(back_face()))
    {
        m_uses.add(m_fragment_body);
        check_texture_count(module, m_options);
    }

    std::string vertex_shader() const
    {
        Uses uses;
        uses.add(m_streams.vertex_body());
        return head("vertex") + scene_text(uses.variables) +
               section("streams",
                       streams_text("attribute", "in", "vertex_", m_streams.attributes()) +
                           streams_text("varying", "out", "fragment_", m_streams.varyings())) +
               section("vertex program", "void main()\n{\n" +
                                             m_printer.statements(m_streams.vertex_body(), 1) +
                                             "}\n");
    }

    std::string fragment_shader() const
    {
        return head("fragment") + scene_text(m_uses.variables) + parameters_text(false) +
               textures_text() + parameters_text(true) +
               section("streams", streams_text("varying", "in", "fragment_", m_streams.varyings()) +
                                      (m_modern ? "\nout vec4 fragment_color;\n" : "")) +
               section("shading state",
                       structures_text(m_uses, m_plan, m_streams.fields(), m_printer)) +
               section("shader", functions_text(m_module, m_printer, true)) +
               section("fragment program", fragment_main());
    }

private:
    static Expr back_face() { return logical_not(variable(Base_type::boolean, "gl_FrontFacing")); }

    std::string fragment_main() const
    {
        const bool stateless = m_module.entry().parameters.empty();
        return std::string("void main()\n{\n") + (stateless ? "" : "    State state;\n") +
               m_printer.statements(m_fragment_body, 1) + "    " +
               (m_modern ? "fragment_color" : "gl_FragColor") + " = " + m_module.name +
               (stateless ? "();\n}\n" : "(state);\n}\n");
    }

    std::string head(const std::string& stage) const
    {
        const std::string version = std::to_string(m_options.glsl_version);
        const bool world = m_plan.internal_space == Space::world;
        std::vector<std::string> lines = {
            "Target: GLSL version " + version + ", " + stage + " shader",
            std::string("Internal space: ") + (world ? "world" : "camera")};
        for (const std::string& line : target_conventions(m_options))
            lines.push_back(line);
        return "#version " + version + "\n" + copyright_comment(m_options.user_copyright) +
               head_comment(m_module, lines);
    }

    std::string uniform(const Expr& variable, const std::string& initial) const
    {
        const bool initialized = !initial.empty() && m_options.glsl_version >= initializers_version;
        return "uniform " + m_printer.type(variable->type) + " " + variable->name +
               (initialized ? " = " + initial : "") + ";\n";
    }

    std::string scene_text(const std::unordered_set<std::string>& used) const
    {
        std::string text;
        for (int i = 0; i < static_cast<int>(Host_value::none); ++i) {
            const Expr value = host_matrix(static_cast<Host_value>(i), m_plan);
            if (used.count(value->name))
                text += uniform(value, "");
        }
        const Expr rotation = camera_rotation(m_plan);
        if (used.count(rotation->name))
            text += uniform(rotation, "");
        if (used.count("scene_ambient"))
            text += uniform(variable(Base_type::float4, "scene_ambient"),
                            "vec4" + m_options.scene_ambient.substr(6));
        return section("scene", text);
    }

    std::string parameters_text(bool of_scene) const
    {
        std::string text;
        for (const Module_parameter& parameter : m_module.parameters) {
            if (parameter.of_scene != of_scene)
                continue;
            const Expr& value = parameter.value;
            text +=
                parameter.constant
                    ? "const " + m_printer.type(value->type) + " " + parameter.name + " = " +
                          m_printer.expression(value) + ";\n"
                    : uniform(variable(value->type, parameter.name), m_printer.expression(value));
        }
        return section(of_scene ? "lights and surroundings" : "parameters", text);
    }

    std::string textures_text() const
    {
        std::string text;
        for (const Module_texture& texture : m_module.textures)
            text += "// texture " + texture.name + ": " +
                    one_line(texture_path(texture, m_plan.settings)) + "\nuniform " +
                    (texture.cube ? "samplerCube " : "sampler2D ") + texture.name + ";\n";
        if (m_options.use_oit)
            text += "// Depth of the layer in front, from the pass before.\n"
                    "uniform sampler2D oit_depth_map;\n";
        return section("textures", text);
    }

    std::string streams_text(const std::string& old_word, const std::string& word,
                             const std::string& prefix, const std::vector<Stream>& streams) const
    {
        std::string text;
        for (const Stream& stream : streams)
            text += (m_modern ? word : old_word) + " " + m_printer.type(stream.type) + " " +
                    prefix + stream.name + ";\n";
        return text.empty() ? "" : "\n" + text;
    }

    const Module& m_module;
    const Text_plan& m_plan;
    const Text_options& m_options;
    bool m_modern;
    Printer m_printer;
    Uses m_uses; // of the fragment shader
    Streams m_streams;
    Statements m_fragment_body;
};

} // namespace

std::vector<std::string> write_glsl(const Module& module, const Text_plan& plan)
{
    const Glsl_writer writer(module, plan);
    return {writer.vertex_shader(), writer.fragment_shader()};
}

} // namespace reference_host

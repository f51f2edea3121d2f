#include "reference_host/generator/glsl_writer.h"

#include "reference_host/generator/streams.h"
#include "reference_host/generator/text_parts.h"
#include "reference_host/generator/transforms.h"

namespace reference_host
{
namespace
{

// Versions from which on the language has in and out, and initial values of uniforms.
constexpr int modern_version = 130;
constexpr int initializers_version = 120;

class Glsl_writer
{
public:
    Glsl_writer(const Shader_request& request, const Text_options& options,
                const Generator_settings& settings, Diagnostics& diagnostics)
        : m_request(request),
          m_options(options),
          m_settings(settings),
          m_modern(options.glsl_version >= modern_version),
          m_printer(m_modern ? Language::glsl : Language::glsl_legacy),
          m_code(request, options, m_printer.language(), diagnostics),
          m_streams(m_code, options, m_printer.language()),
          m_fragment_body(m_streams.fragment_body(back_face()))
    {
    }

    std::string vertex_shader() const
    {
        return head("vertex") + scene_text(variables_in(m_streams.vertex_body())) +
               section("streams",
                       streams_text("attribute", "in", "vertex_", m_streams.attributes()) +
                           streams_text("varying", "out", "fragment_", m_streams.varyings())) +
               section("vertex program", "void main()\n{\n" +
                                             m_printer.statements(m_streams.vertex_body(), 1) +
                                             "}\n");
    }

    std::string fragment_shader() const
    {
        std::set<std::string> used = variables_in(m_fragment_body);
        used.merge(m_code.used_variables());
        check_texture_count(m_code, used, m_options);
        return head("fragment") + scene_text(used) + parameters_text(used, false) +
               textures_text(used) + parameters_text(used, true) +
               section("streams", streams_text("varying", "in", "fragment_", m_streams.varyings()) +
                                      (m_modern ? "\nout vec4 fragment_color;\n" : "")) +
               section("shading state", structures_text(m_code, &m_streams, m_printer)) +
               section("shader", functions_text(m_code, m_printer, true)) +
               section("fragment program", fragment_main());
    }

private:
    static Expr back_face() { return logical_not(variable(Kind::boolean, "gl_FrontFacing")); }

    std::string fragment_main() const
    {
        const bool stateless = m_code.used_functions().back()->parameters.empty();
        return std::string("void main()\n{\n") + (stateless ? "" : "    State state;\n") +
               m_printer.statements(m_fragment_body, 1) + "    " +
               (m_modern ? "fragment_color" : "gl_FragColor") + " = " + m_code.name() +
               (stateless ? "();\n}\n" : "(state);\n}\n");
    }

    static std::set<std::string> variables_in(const Statements& statements)
    {
        std::set<std::string> names;
        visit(statements, [&](const Expression& expression) {
            if (expression.op == Op::variable)
                names.insert(expression.name);
        });
        return names;
    }

    std::string head(const std::string& stage) const
    {
        const std::string version = std::to_string(m_options.glsl_version);
        const bool world = m_code.internal_space() == Space::world;
        std::vector<std::string> lines = {
            "Target: GLSL version " + version + ", " + stage + " shader",
            std::string("Internal space: ") + (world ? "world" : "camera")};
        for (const std::string& line : host_conventions(m_options))
            lines.push_back(line);
        return "#version " + version + "\n" + copyright_comment(m_options.user_copyright) +
               head_comment(m_request, m_code, lines);
    }

    std::string uniform(const Expr& variable, const std::string& initial) const
    {
        const bool initialized = !initial.empty() && m_options.glsl_version >= initializers_version;
        return "uniform " + m_printer.type(variable->type) + " " + variable->name +
               (initialized ? " = " + initial : "") + ";\n";
    }

    std::string scene_text(const std::set<std::string>& used) const
    {
        std::string text;
        for (const Transform& transform : transforms())
            if (used.count(transform.name))
                text += uniform(m_code.program().known_variable(transform.name), "");
        if (used.count("camera_to_world"))
            text += uniform(m_code.program().known_variable("camera_rotation"), "");
        if (used.count("scene_ambient"))
            text += uniform(m_code.program().known_variable("scene_ambient"),
                            "vec4" + m_options.scene_ambient.substr(6));
        return section("scene", text);
    }

    std::string parameters_text(const std::set<std::string>& used, bool of_scene) const
    {
        std::string text;
        for (const Effect_parameter& parameter : m_code.uniforms().parameters()) {
            if (parameter.of_scene != of_scene || !used.count(parameter.name))
                continue;
            const Expr value = literal(parameter.value);
            text +=
                parameter.constant
                    ? "const " + m_printer.type(value->type) + " " + parameter.name + " = " +
                          m_printer.expression(value) + ";\n"
                    : uniform(variable(value->type, parameter.name), m_printer.expression(value));
        }
        return section(of_scene ? "lights and surroundings" : "parameters", text);
    }

    std::string textures_text(const std::set<std::string>& used) const
    {
        std::string text;
        for (const Texture& texture : m_code.uniforms().textures())
            if (used.count(texture.name))
                text += "// texture " + texture.name + ": " +
                        one_line(texture_path(texture, m_settings)) + "\nuniform " +
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

    const Shader_request& m_request;
    const Text_options& m_options;
    const Generator_settings& m_settings;
    bool m_modern;
    Printer m_printer;
    Shader_code m_code;
    Streams m_streams;
    Statements m_fragment_body;
};

} // namespace

std::vector<std::string> write_glsl(const Shader_request& request, const Text_options& options,
                                    const Generator_settings& settings, Diagnostics& diagnostics)
{
    const Glsl_writer writer(request, options, settings, diagnostics);
    return {writer.vertex_shader(), writer.fragment_shader()};
}

} // namespace reference_host

#include "reference_host/generator/source_writer.h"

#include "reference_host/generator/annotations.h"
#include "reference_host/generator/swrc_prelude.h"
#include "reference_host/generator/text_parts.h"

namespace reference_host
{
namespace
{

class Source_writer
{
public:
    Source_writer(const Shader_request& request, const Text_options& options,
                  const Generator_settings& settings, Diagnostics& diagnostics)
        : m_request(request),
          m_settings(settings),
          m_kind(options.shader_type),
          m_code(request, options, Language::cpp, diagnostics),
          m_used(m_code.used_variables())
    {
    }

    // One namespace holds everything, so that no name of the document meets one of the library.
    std::string source() const
    {
        const std::string scope = m_code.name() + "_shader";
        const bool method = m_kind == "light" || m_kind == "volume";
        return head_comment(m_request, m_code, {"Target: C++17 source for the renderer"}) +
               "\n#include <cmath>\n#include <cstddef>\n\nnamespace " + scope + "\n{\n\n" +
               swrc_prelude() + section("shading state", state_text()) +
               section("parameters", parameters_text()) +
               section("functions", functions_text(m_code, m_printer, false)) +
               section(method ? "the method of the " + m_kind : "shader",
                       m_printer.function(entry())) +
               "\n} // namespace " + scope + "\n";
    }

    std::string scene() const
    {
        std::string text = "# " + one_line("Shader: " + m_code.name()) + "\n# " +
                           one_line("Source: " + m_request.graph->document) + "\nshader " +
                           quoted(m_code.name()) + " {\n    kind " + quoted(m_kind) + "\n";
        for (const Effect_parameter& parameter : m_code.uniforms().parameters()) {
            if (!m_used.count(parameter.name))
                continue;
            text +=
                "    parameter " + quoted(parameter.name) + " " + type_name(parameter.value.type);
            for (int i = 0; i < component_count(parameter.value.type); ++i)
                text += " " + number_text(parameter.value.numbers[static_cast<std::size_t>(i)]);
            text += "\n";
        }
        for (const Texture& texture : m_code.uniforms().textures())
            if (m_used.count(texture.name))
                text += "    texture " + quoted(texture.name) + (texture.cube ? " cube " : " 2d ") +
                        quoted(texture_path(texture, m_settings)) + "\n";
        return text + "}\n";
    }

private:
    // The last function under the shader's own name.
    Function entry() const
    {
        Function function = *m_code.used_functions().back();
        function.name = m_code.name();
        return function;
    }

    std::string state_text() const
    {
        return structures_text(m_code, nullptr, m_printer) +
               (m_used.count("lights") ? swrc_lights() : std::string());
    }

    std::string parameters_text() const
    {
        std::string text;
        for (const Effect_parameter& parameter : m_code.uniforms().parameters()) {
            const Expr value = literal(parameter.value);
            if (m_used.count(parameter.name))
                text += (parameter.constant ? "const " : "") + m_printer.type(value->type) + " " +
                        parameter.name + " = " + m_printer.expression(value) + ";\n";
        }
        for (const Texture& texture : m_code.uniforms().textures())
            if (m_used.count(texture.name))
                text += std::string(texture.cube ? "Sampler_cube " : "Sampler_2d ") + texture.name +
                        "; // " + one_line(texture_path(texture, m_settings)) + "\n";
        text += m_used.count("time") ? "float time = 0.0f; // in seconds\n" : "";
        return text.empty() ? "" : "\n" + text;
    }

    const Shader_request& m_request;
    const Generator_settings& m_settings;
    std::string m_kind;
    Printer m_printer{Language::cpp};
    Shader_code m_code;
    std::set<std::string> m_used;
};

} // namespace

std::vector<std::string> write_source(const Shader_request& request, const Text_options& options,
                                      const Generator_settings& settings, Diagnostics& diagnostics)
{
    const Source_writer writer(request, options, settings, diagnostics);
    return {writer.source(), writer.scene()};
}

} // namespace reference_host

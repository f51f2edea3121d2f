#include "reference_host/targets/source_writer.h"

#include "reference_host/targets/annotations.h"
#include "reference_host/targets/float_text.h"
#include "reference_host/targets/swrc_prelude.h"
#include "reference_host/targets/text_parts.h"

namespace reference_host
{
namespace
{

class Source_writer
{
public:
    Source_writer(const Module& module, const Text_plan& plan)
        : m_module(module),
          m_plan(plan),
          m_kind(plan.options.shader_type),
          m_uses(collect_uses(module))
    {
    }

    // One namespace holds everything, so that no name of the document meets one of the library.
    std::string source() const
    {
        const std::string scope = m_module.name + "_shader";
        const bool method = m_kind == "light" || m_kind == "volume";
        return head_comment(m_module, {"Target: C++17 source for the renderer"}) +
               "\n#include <cmath>\n#include <cstddef>\n\nnamespace " + scope + "\n{\n\n" +
               swrc_prelude() + section("shading state", state_text()) +
               section("parameters", parameters_text()) +
               section("functions", functions_text(m_module, m_printer, false)) +
               section(method ? "the method of the " + m_kind : "shader",
                       m_printer.function(entry())) +
               "\n} // namespace " + scope + "\n";
    }

    std::string scene() const
    {
        std::string text = "# " + one_line("Shader: " + m_module.name) + "\n# " +
                           one_line("Source: " + m_module.document) + "\nshader " +
                           quoted(m_module.name) + " {\n    kind " + quoted(m_kind) + "\n";
        for (const Module_parameter& parameter : m_module.parameters) {
            text += "    parameter " + quoted(parameter.name) + " " + parameter.kind;
            for (const double number : parameter.value->numbers)
                text += " " + float_text(number);
            text += "\n";
        }
        for (const Module_texture& texture : m_module.textures)
            text += "    texture " + quoted(texture.name) + (texture.cube ? " cube " : " 2d ") +
                    quoted(texture_path(texture, m_plan.settings)) + "\n";
        return text + "}\n";
    }

private:
    // The last function under the shader's own name.
    Function entry() const
    {
        Function function = m_module.entry();
        function.name = m_module.name;
        return function;
    }

    std::string state_text() const
    {
        return structures_text(m_uses, m_plan, {}, m_printer) +
               (m_uses.variables.count("lights") ? swrc_lights() : std::string());
    }

    std::string parameters_text() const
    {
        std::string text;
        for (const Module_parameter& parameter : m_module.parameters) {
            const Expr& value = parameter.value;
            text += (parameter.constant ? "const " : "") + m_printer.type(value->type) + " " +
                    parameter.name + " = " + m_printer.expression(value) + ";\n";
        }
        for (const Module_texture& texture : m_module.textures)
            text += std::string(texture.cube ? "Sampler_cube " : "Sampler_2d ") + texture.name +
                    "; // " + one_line(texture_path(texture, m_plan.settings)) + "\n";
        text += m_uses.variables.count("time") ? "float time = 0.0f; // in seconds\n" : "";
        text += matrices_text();
        return text.empty() ? "" : "\n" + text;
    }

    // The renderer knows where the object is; until it says so, that is the middle of the world.
    std::string matrices_text() const
    {
        const Expr identity =
            literal(Base_type::matrix4, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
        std::string text;
        for (int i = 0; i < static_cast<int>(Host_value::none); ++i) {
            const Expr matrix = host_variable(static_cast<Host_value>(i));
            if (matrix->type == Base_type::matrix4 && m_uses.variables.count(matrix->name))
                text += wrapped_line(m_printer.type(matrix->type) + " " + matrix->name + " = " +
                                         m_printer.expression(identity) + ";",
                                     0);
        }
        return text.empty() ? "" : "// Of the object, by rows; the renderer sets them.\n" + text;
    }

    const Module& m_module;
    const Text_plan& m_plan;
    std::string m_kind;
    Printer m_printer{Language::cpp};
    Uses m_uses;
};

} // namespace

std::vector<std::string> write_source(const Module& module, const Text_plan& plan)
{
    const Source_writer writer(module, plan);
    return {writer.source(), writer.scene()};
}

} // namespace reference_host

#include "reference_host/window/preview_shader.h"

#include "reference_host/app/render_export.h"
#include "reference_host/render/effect_text.h"
#include "reference_host/render/render.h"

#include <algorithm>
#include <filesystem>

namespace reference_host
{
namespace
{

constexpr char glsl_exporter[] = "Custom GLSL";
constexpr char effect_exporter[] = "Custom CgFX";

struct Attempt {
    std::vector<Shader_source> texts; // none: not to be drawn
    std::string error;                // of the export
};

bool is_effect(const std::vector<Shader_source>& texts)
{
    return texts.size() == 1;
}

Attempt attempt(Workspace& workspace, const std::string& exporter)
{
    const Run_result result = workspace.run_for_picture(exporter);
    Attempt made;
    made.texts = drawable_texts(result.outcome);
    if (!result.outcome.is_success()) {
        for (const Message& message : result.messages)
            made.error += line_of(message) + "\n";
        if (made.error.empty())
            made.error = result.outcome.reasons.front();
    }
    return made;
}

// Those of an effect that the GLSL has, too.
std::vector<Effect_parameter> parameters_of(const std::vector<Shader_source>& glsl,
                                            const std::vector<Shader_source>& effect)
{
    std::vector<Effect_parameter> parameters;
    if (!is_effect(effect))
        return parameters;
    const std::vector<Glsl_uniform> uniforms = glsl_uniforms(glsl.back().text);
    for (Effect_parameter& parameter : effect_parameters(effect[0].text)) {
        const bool is_there =
            std::any_of(uniforms.begin(), uniforms.end(),
                        [&](const Glsl_uniform& row) { return row.name == parameter.name; });
        if (is_there)
            parameters.push_back(std::move(parameter));
    }
    return parameters;
}

} // namespace

Preview_shader make_preview_shader(Workspace& workspace)
{
    Preview_shader shader;
    if (!workspace.current() || !workspace.current()->node()) {
        shader.error = "There is no node to draw.";
        return shader;
    }
    const std::string& chosen = workspace.current()->exporter;
    shader.search_path = workspace.current()->scene.search_path;
    const Attempt own = attempt(workspace, chosen);
    if (is_effect(own.texts) && !find_cg_compiler().empty()) {
        shader.texts = own.texts;
        shader.parameters = effect_parameters(own.texts[0].text);
        return shader;
    }
    if (!own.error.empty()) {
        shader.error = own.error;
        return shader;
    }
    const bool is_own = own.texts.size() == 2;
    const Attempt glsl = is_own ? own : attempt(workspace, glsl_exporter);
    if (!is_own)
        shader.note = is_effect(own.texts)
                          ? "Drawn as GLSL: effects are drawn through the Cg compiler cgc, which "
                            "is absent"
                          : "Drawn as GLSL: the code of " + chosen + " is not for the renderer";
    shader.texts = glsl.texts;
    shader.error =
        glsl.texts.empty() && glsl.error.empty() ? "There is nothing to draw." : glsl.error;
    shader.parameters = parameters_of(
        glsl.texts, is_effect(own.texts) ? own.texts : attempt(workspace, effect_exporter).texts);
    return shader;
}

} // namespace reference_host

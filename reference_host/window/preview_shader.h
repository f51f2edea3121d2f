// What the preview draws: the code that the chosen exporter makes of the current node, in the light
// that the command `render` draws documents in.
#ifndef REFERENCE_HOST_WINDOW_PREVIEW_SHADER_H
#define REFERENCE_HOST_WINDOW_PREVIEW_SHADER_H

#include "reference_host/render/effect_parameters.h"
#include "reference_host/render/shader_source.h"
#include "reference_host/window/workspace.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Preview_shader {
    std::vector<Shader_source> texts; // as Loaded_shader takes them; none: nothing can be drawn
    std::vector<Effect_parameter> parameters; // of these texts
    std::vector<std::string> search_path;
    std::string note;  // what the user should know of it
    std::string error; // why nothing can be drawn
};

// Code that the renderer does not draw, such as C++, gives way to the node's GLSL. Parameters are
// those of the effect; GLSL, which has no annotations, takes them from the node's effect. Runs the
// plug-in.
Preview_shader make_preview_shader(Workspace& workspace);

} // namespace reference_host

#endif

// Draws a GLSL program with Mesa's software OpenGL.
#ifndef REFERENCE_HOST_RENDER_DRAWING_H
#define REFERENCE_HOST_RENDER_DRAWING_H

#include "reference_host/render/environment.h"
#include "reference_host/render/host_conventions.h"
#include "reference_host/render/image.h"
#include "reference_host/render/linear_picture.h"
#include "reference_host/render/mesh.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

struct Shader_source {
    std::string name; // for messages
    std::string text;
};

struct Drawing {
    Shader_source vertex;
    Shader_source fragment;
    Vertex_space space = Vertex_space::world;
    Host_conventions conventions;
    View view;

    // Values by the name of the uniform, those of matrices and arrays one row or element after the
    // other; those of arrays also by the name of each element. A matrix without values gets that of
    // the scene when its name is known (see scene.h).
    std::map<std::string, std::vector<float>> uniforms;

    // Images of the samplers, which may share them; a sampler without one gets a labelled checker.
    std::map<std::string, std::shared_ptr<const Image>> textures;

    // Those of cube maps; others get `environment`, which is never null.
    std::map<std::string, std::shared_ptr<const Environment>> cube_maps;
    std::shared_ptr<const Environment> environment = std::make_shared<Environment>();

    // Names that the labels show instead of those of the samplers.
    std::map<std::string, std::string> texture_labels;
};

// Compiles, links and draws. Nothing and one or more lines in `error` when that fails: a stage does
// not compile, the program does not link, the fragment shader reads what the vertex shader does not
// write, or OpenGL refuses the draw. What the shader leaves free is transparent.
std::optional<Linear_picture> draw(const Drawing& drawing, int size, std::string& error);

} // namespace reference_host

#endif

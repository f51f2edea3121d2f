// Draws a GLSL program with Mesa's software OpenGL, once or again and again.
#ifndef REFERENCE_HOST_RENDER_DRAWING_H
#define REFERENCE_HOST_RENDER_DRAWING_H

#include "reference_host/render/environment.h"
#include "reference_host/render/image.h"
#include "reference_host/render/linear_picture.h"
#include "reference_host/render/mesh.h"
#include "reference_host/render/scene.h"
#include "reference_host/render/shader_source.h"
#include "reference_host/render/target_conventions.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

// Values by name, those of matrices and arrays one row or element after the other; those of arrays
// also by the name of each element.
using Uniform_values = std::map<std::string, std::vector<float>>;

struct Drawing {
    Shader_source vertex;
    Shader_source fragment;
    Vertex_space space = Vertex_space::world;
    Target_conventions conventions;
    View view;

    // A matrix without values gets that of the scene which stands in `matrices`, else the one that
    // is known by the uniform's name (see scene.h).
    Uniform_values uniforms;
    std::map<std::string, Matrix_parameter> matrices;

    // The uniforms of parameters that have other names in the file the user knows.
    std::map<std::string, std::vector<std::string>> parameters;

    // Images of the samplers, which may share them; a sampler without one gets a labelled checker.
    std::map<std::string, std::shared_ptr<const Image>> textures;

    // Those of cube maps; others get `environment`, which is never null.
    std::map<std::string, std::shared_ptr<const Environment>> cube_maps;
    std::shared_ptr<const Environment> environment = own_sky();

    // Names that the labels show instead of those of the samplers.
    std::map<std::string, std::string> texture_labels;
};

class Drawing_device;

// A drawing whose shaders are compiled and whose textures are loaded. For one thread.
class Prepared_drawing
{
public:
    // Nothing and one or more lines in `error` when a stage does not compile, the program does not
    // link, or the fragment shader reads what the vertex shader does not write.
    static std::unique_ptr<Prepared_drawing>
    prepare(Drawing drawing, std::shared_ptr<Drawing_device> device, std::string& error);
    ~Prepared_drawing();

    // Draws, seen like this. `values` are those of parameters, by their names; they stay until a
    // later drawing has others. Nothing and a line in `error` when OpenGL refuses the draw. What
    // the shader leaves free is transparent.
    std::optional<Linear_picture> draw(const View& view, const Uniform_values& values, int size,
                                       std::string& error);

    const Environment& environment() const;

private:
    class Program;
    explicit Prepared_drawing(std::unique_ptr<Program> program);

    std::unique_ptr<Program> m_program;
};

// Prepares and draws, once.
std::optional<Linear_picture> draw(const Drawing& drawing, int size, std::string& error);

} // namespace reference_host

#endif

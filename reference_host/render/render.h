// Draws exported shaders, without display or GPU.
//
// The scene is the same for every kind of file, so that the pictures of one material exported as
// CgFX, HLSL effect and GLSL can be compared: a shape at the origin, usually a sphere of radius 1
// whose v runs from the south pole to the north pole, seen from (0, 0, 3); lights stand in the file
// as parameters with defaults. A shader that covers the screen (environment, lens) gets a square
// instead.
//
// A GLSL pair is drawn as it is. The programs of a CgFX or HLSL effect go through the Cg compiler,
// which is not part of the project (scripts/fetch-validators.sh fetches it).
//
// Textures: the file that stands beside the name of the texture (the annotation ResourceName of an
// effect, a comment "// texture NAME: FILE" in a GLSL fragment shader), PNG or JPEG; a checker that
// carries the texture's name where that file is not found. A cube map is made of the
// latitude-longitude image that the file is; a simple sky stands in where there is none. How the
// program holds textures for which a shader was exported is read from the shader, see
// target_conventions.h.
#ifndef REFERENCE_HOST_RENDER_RENDER_H
#define REFERENCE_HOST_RENDER_RENDER_H

#include "reference_host/render/environment.h"
#include "reference_host/render/linear_picture.h"
#include "reference_host/render/view.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

// `uniforms` holds values in place of the file's, by the names that parameters have there.
struct Render_request {
    // Two files: vertex and fragment shader in GLSL. One file: an effect (.cgfx, .fx).
    std::vector<std::string> shader_files;
    std::string picture_file;              // PNG to write; empty: draw, but write nothing
    std::vector<std::string> search_paths; // for textures, after the folder of the shader itself
    std::string cg_compiler;               // program cgc; empty: see find_cg_compiler

    View view;
    std::string environment_file; // for all cube maps and the backdrop; empty: see above
    std::shared_ptr<const Environment> environment;             // the same, in place of a file
    std::map<std::string, std::shared_ptr<const Image>> images; // for files of these names
    std::map<std::string, std::vector<float>> uniforms;         // see below
    Encoding encoding = Encoding::srgb;                         // of the picture file
    int size = 512; // width and height of the picture in pixels, 1 to 4096
};

struct Render_result {
    bool drawn = false;
    Linear_picture picture;         // with its background; alpha is the object's share of the pixel
    std::string error;              // why nothing was drawn, in whole lines; empty when drawn
    std::vector<std::string> notes; // what a user may want to know: missing textures, odd uniforms
};

// Draws the shader. Fails when a file cannot be read or written, a stage does not compile, the
// program does not link, or the fragment shader reads what the vertex shader does not write.
// Not for use by several threads at once.
Render_result render(const Render_request& request);

// The Cg compiler: bin/cgc in the folder that the environment variable TOVIRAEXPORT_VALIDATORS
// names; where it is not set, in build/validators of the source tree, else cgc on the PATH.
// Empty when absent.
std::string find_cg_compiler();

} // namespace reference_host

#endif

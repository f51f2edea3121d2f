// The picture commands of shader-export:
//
//     render V_FILE F_FILE -o PNG      draws a GLSL pair
//     render EFFECT -o PNG             draws a CgFX or HLSL effect
//     render DOCUMENT.mtlx -o PNG      exports a material of a document and draws it
//     render --all DOCUMENT.mtlx -o PNG   draws all its materials on one sheet
//     compare PNG PNG [--limit N]      prints the mean difference of two pictures per channel
//     references DOCUMENT.mtlx FOLDER  prints how far materials are from pictures, see
//                                      reference_scenes.h
#ifndef REFERENCE_HOST_RENDER_RENDER_COMMAND_H
#define REFERENCE_HOST_RENDER_RENDER_COMMAND_H

#include "reference_host/render/document_exporter.h"

#include <functional>

namespace CLI
{
class App;
}

namespace reference_host
{

// Adds these commands to the program. When one is on the command line, it leaves in `action` what
// it does, which returns the program's exit status: 0 done, 1 failed or too different, with the
// reason on standard error. Pictures that are both flat, as unlit shaders are, are not worth
// comparing: they fail unless --allow-flat is given. Exceptions of `exporter` pass through.
// `action` must outlive `app`.
void add_render_commands(CLI::App& app, const Document_exporter& exporter,
                         std::function<int()>& action);

} // namespace reference_host

#endif

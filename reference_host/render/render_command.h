// The picture commands of shader-export:
//
//     render V_FILE F_FILE -o PNG      draws a GLSL pair
//     render EFFECT -o PNG             draws a CgFX or HLSL effect
//     render DOCUMENT.mtlx -o PNG      exports a material of a document and draws it
//     render --all DOCUMENT.mtlx -o PNG   draws all its materials on one sheet
//     compare PNG PNG [--limit N]      tells the mean difference of two pictures per channel
//     references DOCUMENT.mtlx FOLDER  tells how far materials are from pictures, see
//                                      reference_scenes.h
#ifndef REFERENCE_HOST_RENDER_RENDER_COMMAND_H
#define REFERENCE_HOST_RENDER_RENDER_COMMAND_H

#include "reference_host/render/document_exporter.h"

namespace CLI
{
class App;
}

namespace reference_host
{

// Adds these commands to the program. A command runs while `app` parses its command line and leaves
// the program's exit status in `exit_status`: 0 done, 1 failed or too different, with the reason on
// standard error. Pictures that are both flat, as unlit shaders are, are not worth comparing: they
// fail unless --allow-flat is given. What `exporter` throws comes through. `exit_status` must
// outlive the parsing and is untouched when none runs.
void add_render_commands(CLI::App& app, const Document_exporter& exporter, int& exit_status);

} // namespace reference_host

#endif

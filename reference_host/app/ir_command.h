// The compiler's own view of a shader.
#ifndef REFERENCE_HOST_APP_IR_COMMAND_H
#define REFERENCE_HOST_APP_IR_COMMAND_H

#include "reference_host/app/export_request.h"

#include <string>

namespace reference_host
{

struct Ir_command {
    Scene_request scene;
    std::string phase = "lower"; // of phase_names()
    std::string target = "GL";   // whose text is under way
};

// Prints the module of a node after a phase of its compilation, in the shading notation. Returns
// and throws as the commands of commands.h do.
int print_module(const Ir_command& command);

} // namespace reference_host

#endif

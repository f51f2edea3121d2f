// Checks files of shading text as far as that is possible before a document is known: every
// function and every node is parsed and typed, with all its branches and for all its types.
#ifndef REFERENCE_HOST_SHADE_CHECK_SHADE_CHECKER_H
#define REFERENCE_HOST_SHADE_CHECK_SHADE_CHECKER_H

#include "reference_host/shading/shade_file.h"

#include <string>
#include <vector>

namespace reference_host
{

// The mistakes, at most one for each function and output, as "file:line: message". Empty when all
// is well.
std::vector<std::string> mistakes_in(const std::vector<Shade_text>& files);

} // namespace reference_host

#endif

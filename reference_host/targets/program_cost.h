// What a fragment program will take of the machine, as far as that can be known before a compiler
// has seen it.
#ifndef REFERENCE_HOST_TARGETS_PROGRAM_COST_H
#define REFERENCE_HOST_TARGETS_PROGRAM_COST_H

#include "reference_host/passes/straight_line.h"

namespace reference_host
{

struct Program_cost {
    double instructions = 0.0; // textures are read by some of them
    double lookups = 0.0;
    double constants = 0.0;   // registers of four numbers
    double choices = 0.0;     // between two values, by a condition that is not known
    double temporaries = 0.0; // likewise
    const Origin* dearest =
        nullptr; // what of the document takes most instructions; null: the shader
    double dearest_instructions = 0.0;
};

Program_cost cost_of(const std::vector<Line_value>& line);

} // namespace reference_host

#endif

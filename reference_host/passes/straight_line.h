// A module as one line of values without calls, loops and variables, as compilers of shaders see
// it: functions put in their callers' place, loops run through, each value once.
#ifndef REFERENCE_HOST_PASSES_STRAIGHT_LINE_H
#define REFERENCE_HOST_PASSES_STRAIGHT_LINE_H

#include "reference_host/shading/module.h"

#include <vector>

namespace reference_host
{

struct Line_value {
    Expr expression;                   // its operands are expressions of the line, too
    const Origin* origin = nullptr;    // what of the document it was first computed for
    std::vector<std::size_t> operands; // where they stand, before this one
};

struct Line_settings {
    int list_length = 3; // how often a loop over a list is run through
    bool repeats_loops =
        true; // else other loops stand there once, as machines with jumps have them
};

// Only what the result needs, in the order of computing. Fields of the state and what lights of a
// list give are values without operands. A loop up to a parameter runs up to its default. Loops end
// when there is more than any machine takes.
std::vector<Line_value> straight_line(const Module& module, const Line_settings& settings);

} // namespace reference_host

#endif

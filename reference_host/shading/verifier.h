// Checks that a module is well made. What it finds is a mistake of the compiler, or of who wrote
// the text that the module was read from, never one of the document.
//
//   names       each parameter, texture, function and variable is declared once, and before it is
//               used; a let is never assigned
//   types       every value has the type that its operands give it, every builtin and operator the
//               operands that it takes; fields exist
//   functions   each is defined before its callers, so that none calls itself, and returns a value
//               of its type on each path
#ifndef REFERENCE_HOST_SHADING_VERIFIER_H
#define REFERENCE_HOST_SHADING_VERIFIER_H

#include "reference_host/shading/module.h"

#include <stdexcept>

namespace reference_host
{

// what() begins with the place: in "paint", statement 3 "wood" (of node "wood" (image)): ...
struct Module_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The library's functions are verified when it is built: who has them unchanged may skip them.
enum class Verified { everything, all_but_library };

// Throws Module_error at the first mistake.
void verify(const Module& module, Verified verified = Verified::everything);

} // namespace reference_host

#endif

// Whether two modules are the same.
#ifndef TESTS_GENERATOR_SAME_MODULE_H
#define TESTS_GENERATOR_SAME_MODULE_H

#include "reference_host/shading/module.h"

#include <string>

namespace generation
{

// Where two modules differ first; empty where they are the same. Origins count for refused values
// alone.
std::string first_difference(const reference_host::Module& a, const reference_host::Module& b);

} // namespace generation

#endif

// The values that probes are asked with: the same in every run, and exact as floats.
#ifndef TESTS_EVALUATOR_PROBE_VALUES_H
#define TESTS_EVALUATOR_PROBE_VALUES_H

#include "reference_host/nodes/node_library.h"
#include "reference_host/shading/switches.h"
#include "tests/evaluator/probe.h"

namespace probing
{

// The first set has the default, the others numbers that the input is made for.
Values values_for(const Module_parameter& parameter, const Input_definition& input);

// Adds a parameter to a module.
Expr add_parameter(Module& module, const Code_type& type, const std::string& name);

// All that a shader may do, in world space and without derivatives.
Switch_values all_switches();

} // namespace probing

#endif

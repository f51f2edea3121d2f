// Probes as programs: what C++ and GLSL make of them.
#ifndef TESTS_EVALUATOR_PROBE_TEXTS_H
#define TESTS_EVALUATOR_PROBE_TEXTS_H

#include "tests/evaluator/probe.h"

#include <array>
#include <functional>
#include <vector>

namespace probing
{

using Four = std::array<double, 4>;
using Results = std::vector<std::array<Four, set_count>>; // by probe and set

// All probes in one translation unit, compiled by the system's compiler and run. Fails the test and
// returns nothing when that fails.
Results cpp_results(const std::vector<Probe>& probes);

// Drawn in floats by Mesa's software OpenGL, many to a program.
Results glsl_results(const std::vector<Probe>& probes);

// Texture coordinates by the pixel; linear.
using Point_function = std::function<Shading_value(double x, double y)>;

// What the lower left of four pixels shows of a module that reads the first texture coordinates.
Four glsl_result_of_quad(const Module& module, const Point_function& place);

} // namespace probing

#endif

// Small modules that each ask for one value: of a node of the standard library, or of a helper
// function. Their inputs are parameters, for which there are several sets of values.
#ifndef TESTS_EVALUATOR_PROBE_H
#define TESTS_EVALUATOR_PROBE_H

#include "reference_host/evaluator/evaluator.h"
#include "reference_host/shading/module.h"

#include <array>
#include <map>
#include <string>
#include <vector>

namespace probing
{

using namespace reference_host;

constexpr std::size_t set_count = 4;

using Values = std::array<Shading_value, set_count>; // one for each set

struct Probe {
    std::string what; // for messages
    Module module;    // its entry gives four floats
    std::map<std::string, Values> parameters;
    bool is_special = false; // its functions of the library are not those of other probes
};

// One for each signature of each node and for each of its outputs; matrices give their rows.
// `refused` gets the categories that cannot be expressed, each once.
std::vector<Probe> node_probes(std::vector<std::string>& refused);

// One for each function and each meaning of its T; structures give their fields.
std::vector<Probe> library_probes();

// One for each material of all documents, with two lights, an environment and a volume.
std::vector<Probe> material_probes();

// What is the same for all probes: the fields of the state, and the values of the host. Matrices
// are by rows and stand before column vectors.
const std::map<std::string, Values>& state_fields();
const std::map<std::string, Shading_value>& host_values();

// What every texture has at a place, from 0 to 1. The languages have it as text.
Shading_value texel_at(const Shading_value& place);

// What the evaluator gives. Throws Evaluation_error.
Shading_value truth(const Probe& probe, std::size_t set);

} // namespace probing

#endif

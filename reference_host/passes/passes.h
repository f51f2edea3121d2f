// What happens to a module between the lowering and the printing: functions from module to module,
// one list of them.
//
//   specialise    gives switches their values and leaves out what they exclude
//   inline lets   puts simple values where their names stand
//   prune         takes out what nothing reads
//   check         throws Refusal for what is left and cannot be expressed
//   name          gives everything the name that it has in a text
#ifndef REFERENCE_HOST_PASSES_PASSES_H
#define REFERENCE_HOST_PASSES_PASSES_H

#include "reference_host/shading/module.h"
#include "reference_host/shading/names.h"
#include "reference_host/shading/switches.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Pass_settings {
    Switch_values switches;
    const Reserved_names* reserved = nullptr; // names of the text that are not the module's
    std::string entry_name;                   // what the entry would like to be called; empty: same
    std::vector<std::string> further_names;   // taken in this text
};

struct Pass {
    const char* name;
    void (*run)(Module& module, const Pass_settings& settings);
};

// In their order.
const std::vector<Pass>& passes();

// Runs the passes up to the one of that name, that one included; all without a name.
void run_passes(Module& module, const Pass_settings& settings, const std::string& last = {});

void specialise(Module& module, const Pass_settings& settings);
void inline_lets(Module& module, const Pass_settings& settings);
void prune(Module& module, const Pass_settings& settings);
void check_expressible(Module& module, const Pass_settings& settings);
void assign_names(Module& module, const Pass_settings& settings);

} // namespace reference_host

#endif

// What a language and the options of a text decide before anything is written.
#ifndef REFERENCE_HOST_TARGETS_TEXT_PLAN_H
#define REFERENCE_HOST_TARGETS_TEXT_PLAN_H

#include "reference_host/options/options.h"
#include "reference_host/options/profiles.h"
#include "reference_host/passes/passes.h"
#include "reference_host/targets/dialect.h"

namespace reference_host
{

struct Text_plan {
    const Dialect& dialect;
    const Text_options& options;
    const Generator_settings& settings;
    Space internal_space = Space::camera; // or world
    bool lights_in_list = false;          // else one call for each light of the scene
    Pass_settings passes;
    const Fragment_profile* profile = nullptr; // null: unknown, or the language has none

    bool has_light_interface() const
    {
        return lights_in_list && dialect.lists == Lists::interfaces;
    }
};

Text_plan make_plan(Language language, const Group_options& group, const Text_options& options,
                    const Generator_settings& settings, Diagnostics& diagnostics);

// A module as the text needs it: through all passes, and with what the language lacks spelled out.
// Throws Refusal or Notation_error.
Module planned(Module module, const Text_plan& plan);

} // namespace reference_host

#endif

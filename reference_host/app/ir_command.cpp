#include "reference_host/app/ir_command.h"

#include "reference_host/app/image_files.h"
#include "reference_host/app/messages.h"
#include "reference_host/app/opened_document.h"
#include "reference_host/generator/generator.h"
#include "reference_host/shading/module_text.h"
#include "reference_host/system/suggestion.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace reference_host
{
namespace
{

void check_phase(const std::string& phase)
{
    const std::vector<std::string> names = phase_names();
    if (std::find(names.begin(), names.end(), phase) != names.end())
        return;
    std::string text =
        "there is no pass '" + phase + "'" + suggestion(phase, names) + " There are:";
    for (const std::string& name : names)
        text += " " + name;
    throw std::invalid_argument(text);
}

} // namespace

int print_module(const Ir_command& command)
{
    check_phase(command.phase);
    const Opened_document document(command.scene);
    Image_names images(Texture_paths::as_is, document.images(), "");
    const Export_scene scene = document.scene(images);
    Diagnostics diagnostics;
    const auto compiled =
        compile_group(*scene.graph, group_options(document.node(), scene.render_settings),
                      scene.generator, diagnostics);
    const auto module =
        compiled ? compiled->module_after(command.phase, command.target, {}, diagnostics) : nullptr;
    print_messages(diagnostics);
    if (!module)
        return 1;
    const std::string text = module_text(*module);
    std::fwrite(text.data(), 1, text.size(), stdout);
    return 0;
}

} // namespace reference_host

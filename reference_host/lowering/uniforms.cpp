#include "reference_host/lowering/uniforms.h"

#include "reference_host/library/library_names.h"
#include "reference_host/lowering/color_space.h"
#include "reference_host/lowering/document_values.h"

#include <algorithm>
#include <cctype>

namespace reference_host
{
namespace
{

// The first of the texts' numbers that is given.
std::optional<double> first_number(const std::optional<Value>& first,
                                   const std::optional<Value>& second,
                                   const std::optional<double>& third)
{
    if (first)
        return first->numbers[0];
    return second ? second->numbers[0] : third;
}

} // namespace

Module_names::Module_names(Module& module) : m_module(module), m_names(library_names()) {}

std::string Module_names::take(const std::string& wish)
{
    std::string name = m_names.take(wish);
    m_module.names.push_back({name, wish});
    return name;
}

std::string label_from(const std::string& name)
{
    std::string label = name;
    std::replace(label.begin(), label.end(), '_', ' ');
    if (!label.empty())
        label[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(label[0])));
    return label;
}

Expr Uniforms::add(const std::string& name, const Value& value, const Ui_hints& ui,
                   const Range& range, bool constant, bool of_scene)
{
    Module_parameter parameter;
    parameter.name = m_names.take(name);
    parameter.label = ui.name.empty() ? label_from(name) : ui.name;
    parameter.folder = ui.folder;
    parameter.description = ui.description;
    parameter.kind = type_name(value.type);
    parameter.value = literal(value);
    parameter.range.min = first_number(ui.soft_min, ui.min, range.min);
    parameter.range.max = first_number(ui.soft_max, ui.max, range.max);
    parameter.step = first_number(ui.step, std::nullopt, std::nullopt);
    parameter.constant = constant;
    parameter.of_scene = of_scene;
    m_module.parameters.push_back(parameter);
    return variable(parameter.value->type, parameter.name);
}

Expr Uniforms::exposed(const Parameter& parameter, bool constant)
{
    Expr& made = m_exposed[&parameter];
    if (!made)
        made = add(parameter.name, to_working_space(parameter.value, parameter.color_space),
                   parameter.ui, {}, constant, false);
    return made;
}

Expr Uniforms::editable(const std::string& name, const Value& value, const Ui_hints& ui,
                        const Range& range, bool of_scene)
{
    return add(name, value, ui, range, false, of_scene);
}

Expr Uniforms::texture(const std::string& file, bool cube, const std::string& name,
                       const Ui_hints& ui)
{
    Expr& known = m_by_file[{file, cube}];
    if (!known) {
        const std::string taken = m_names.take(name + "_map");
        m_module.textures.push_back(
            {taken, ui.name.empty() ? label_from(name) : ui.name, ui.folder, file, cube});
        known = variable(cube ? Base_type::sampler_cube : Base_type::sampler_2d, taken);
    }
    return known;
}

} // namespace reference_host

// The parameters and textures of a shader, as the artist sees them.
#ifndef REFERENCE_HOST_LOWERING_UNIFORMS_H
#define REFERENCE_HOST_LOWERING_UNIFORMS_H

#include "reference_host/document/shader_graph.h"
#include "reference_host/shading/module.h"
#include "reference_host/shading/names.h"

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace reference_host
{

// Gives out names that are free in a module and notes them there.
class Module_names
{
public:
    explicit Module_names(Module& module);

    std::string take(const std::string& wish);

private:
    Module& m_module;
    Names m_names;
};

// Collects in a module what its functions ask for, in the order in which they ask.
class Uniforms
{
public:
    Uniforms(Module& module, Module_names& names) : m_module(module), m_names(names) {}

    // The variable of a parameter that the document exposes; a constant one is not to be changed.
    Expr exposed(const Parameter& parameter, bool constant);

    // The variable of an input that holds a value. `name` is the input's for the artist; the range
    // is that of the node's definition.
    Expr editable(const std::string& name, const Value& value, const Ui_hints& ui,
                  const Range& range, bool of_scene);

    // The sampler of a file; one for each file and kind, named after its first user.
    Expr texture(const std::string& file, bool cube, const std::string& name, const Ui_hints& ui);

private:
    Expr add(const std::string& name, const Value& value, const Ui_hints& ui, const Range& range,
             bool constant, bool of_scene);

    Module& m_module;
    Module_names& m_names;
    std::map<const Parameter*, Expr> m_exposed;
    std::map<std::pair<std::string, bool>, Expr> m_by_file;
};

// "specular_roughness" as a label: "Specular roughness".
std::string label_from(const std::string& name);

} // namespace reference_host

#endif

// The parameters and textures of a shader, as the artist sees them.
#ifndef REFERENCE_HOST_GENERATOR_UNIFORMS_H
#define REFERENCE_HOST_GENERATOR_UNIFORMS_H

#include "reference_host/generator/expression.h"
#include "reference_host/generator/names.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace reference_host
{

// Where a slider begins and ends; missing: not limited.
struct Range {
    std::optional<double> min, max;
};

struct Effect_parameter {
    std::string name;  // in the text
    std::string label; // for the artist
    std::string folder;
    std::string description;
    Value value; // the default, in the working colour space
    Range range;
    std::optional<double> step;
    bool of_scene = false; // of a light, the environment or the volume
    bool constant = false; // a literal parameter: not to be changed after compilation
};

struct Texture {
    std::string name;  // in the text
    std::string label; // for the artist
    std::string folder;
    std::string file; // as the document names it
    bool cube = false;
};

// Collects what the shader's functions ask for, in the order in which they ask.
class Uniforms
{
public:
    explicit Uniforms(Names& names) : m_names(names) {}

    // The variable of a parameter that the document exposes; a constant one is not to be changed.
    Expr exposed(const Parameter& parameter, bool constant);

    // The variable of an input that holds a value. `name` is the input's for the artist; the range
    // is that of the node's definition.
    Expr editable(const std::string& name, const Value& value, const Ui_hints& ui,
                  const Range& range, bool of_scene);

    // The texture of a file; one for each file and kind, called after who asks first.
    const Texture& texture(const std::string& file, bool cube, const std::string& name,
                           const Ui_hints& ui);

    const std::deque<Effect_parameter>& parameters() const { return m_parameters; }
    const std::deque<Texture>& textures() const { return m_textures; }

private:
    Expr add(const std::string& name, const Value& value, const Ui_hints& ui, const Range& range,
             bool constant, bool of_scene);

    Names& m_names;
    std::deque<Effect_parameter> m_parameters;
    std::deque<Texture> m_textures;
    std::map<const Parameter*, Expr> m_exposed;
    std::map<std::pair<std::string, bool>, const Texture*> m_by_file;
};

// "specular_roughness" as a label: "Specular roughness".
std::string label_from(const std::string& name);

} // namespace reference_host

#endif

// One shader without any language in it: what the lowering makes of a document, what the passes
// work on, and what the targets print.
#ifndef REFERENCE_HOST_SHADING_MODULE_H
#define REFERENCE_HOST_SHADING_MODULE_H

#include "reference_host/shading/function.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

// Where a slider begins and ends; missing: not limited.
struct Range {
    std::optional<double> min, max;
};

// A number that the artist may set.
struct Module_parameter {
    std::string name;
    std::string label; // for the artist
    std::string folder;
    std::string description;
    std::string kind; // the document's word for its type: "color3"
    Expr value;       // a literal: the default, in the working colour space
    Range range;
    std::optional<double> step;
    std::string light;     // the kind of light, "point_light", that may set it; empty: none
    std::string aspect;    // what it is of that light: "position", "direction" or "color"
    bool of_scene = false; // of a light, the environment or the volume
    bool constant = false; // a literal parameter: not to be changed after compilation
};

struct Module_texture {
    std::string name;
    std::string label; // for the artist
    std::string folder;
    std::string file; // as the document names it
    bool cube = false;
};

// A name that the module gives to something of its own, and the one that it would have liked best.
struct Given_name {
    std::string name;
    std::string wish;
};

// What the entry is: a surface with lights, a colour to show, or what eval gives of one light or
// volume.
enum class Shader_role { surface, pattern, light, volume };

struct Module {
    Shader_role role = Shader_role::surface;
    std::string name;                             // of the entry
    std::string document, node, category;         // where it comes from, for the head of a text
    std::string folder;                           // of the document
    std::vector<std::string> without_counterpart; // inputs of the shader that the code lacks
    std::vector<Given_name> names;                // in the order of their making
    std::vector<Module_parameter> parameters;
    std::vector<Module_texture> textures;
    std::vector<Function> functions; // what is called stands before its callers, the entry last
    bool has_refusals = false;       // of values that cannot be expressed
    std::shared_ptr<const std::deque<Origin>> origins; // what origins of expressions point to

    const Function& entry() const { return functions.back(); }
};

} // namespace reference_host

#endif

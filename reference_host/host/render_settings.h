// What the scene around the exported shader holds: lights, environment, volume, ambient colour.
#ifndef REFERENCE_HOST_HOST_RENDER_SETTINGS_H
#define REFERENCE_HOST_HOST_RENDER_SETTINGS_H

#include "reference_host/document/light_kind.h"
#include "reference_host/document/shader_graph.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

struct Render_light {
    const Node* node = nullptr;
    Light_kind kind = Light_kind::directional;
    float spread = 0.0f;         // full angle of a spot light's cone, in degrees
    float distance_limit = 0.0f; // in units of the scene; 0: none
};

struct Render_settings {
    std::vector<Render_light> lights;
    const Node* environment = nullptr; // null: none
    const Node* volume = nullptr;      // null: none
    std::array<float, 4> ambient{0.0f, 0.0f, 0.0f, 1.0f};
};

// A light that the user asks for. What is not given is the document's, or the kind's usual value.
struct Light_request {
    std::string name;
    std::optional<Light_kind> kind;
    std::optional<float> spread;
    std::optional<float> distance_limit;
};

struct Lighting_request {
    std::vector<Light_request> lights;
    std::string environment; // the name of a node; empty: none
    std::string volume;      // likewise
    std::array<float, 4> ambient{0.0f, 0.0f, 0.0f, 1.0f};
};

// Reads NAME[:TYPE[:SPREAD[:LIMIT]]], where TYPE is directional, point, spot or its code. Nothing
// when the text is not of that form or a cone is wider than a full circle.
std::optional<Light_request> parse_light(const std::string& text);

// The lights of the document in its order, then the requested ones. A requested name that a light
// of the document has changes that light; other names, and an environment or volume that the
// document does not have, become new nodes of the graph. Throws std::invalid_argument with a
// message when a name belongs to a node that is no light.
Render_settings make_render_settings(Shader_graph& graph, const Lighting_request& request);

} // namespace reference_host

#endif

// What the scene around the exported shader holds: lights, environment, volume, ambient colour.
#ifndef REFERENCE_HOST_HOST_RENDER_SETTINGS_H
#define REFERENCE_HOST_HOST_RENDER_SETTINGS_H

#include "reference_host/document/light_kind.h"
#include "reference_host/document/shader_graph.h"
#include "reference_host/host/light_request.h"
#include "reference_host/options/generation.h"

#include <array>
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

struct Lighting_request {
    std::vector<Light_request> lights;
    std::string environment; // the name of a node, or NAME:FILE with an image; empty: none
    std::string volume;      // likewise
    std::array<float, 4> ambient{0.0f, 0.0f, 0.0f, 1.0f};
};

// The lights of the document in its order, then the requested ones. A requested name that a light
// of the document has changes that light; other names, and an environment or volume that the
// document does not have, become new nodes of the graph. New lights stand before the object where
// nothing else is asked for: the first at its upper left, the second at its right, the third behind
// it, and shine as bright on it as a directional light of intensity 1. Throws std::invalid_argument
// with a message when a name is asked for twice or belongs to a node that is not a light, or the
// light lacks what is asked for.
Render_settings make_render_settings(Shader_graph& graph, const Lighting_request& request);

// The options of a compilation of the node in these surroundings, as exporters set them.
Option_set group_options(const Node& node, const Render_settings& settings);

} // namespace reference_host

#endif

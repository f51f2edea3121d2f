#include "reference_host/host/render_settings.h"

#include "reference_host/nodes/node_library.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <stdexcept>

namespace reference_host
{
namespace
{

// The full angle of the cone in degrees. Documents give the angle between the axis of a spot light
// and the edge of its cone, in radians.
float spread_of(const Node& node, Light_kind kind)
{
    constexpr double degrees_per_radian = 180.0 / 3.14159265358979323846;
    constexpr const char* angle_name = "outer_angle";
    if (kind != Light_kind::spot)
        return 0.0f;
    const Node_definition* usual = find_definition("spot_light", Value_type::lightshader, {});
    const Input_definition* declared = usual ? usual->find_input(angle_name) : nullptr;
    double angle = declared ? declared->value.numbers[0] : 0.0;
    if (const Input* given = node.find_input(angle_name)) {
        if (given->value)
            angle = given->value->numbers[0];
        else if (given->parameter)
            angle = given->parameter->value.numbers[0];
    }
    return static_cast<float>(2.0 * angle * degrees_per_radian);
}

Node& add_node(Shader_graph& graph, const std::string& name, const std::string& category,
               Value_type type)
{
    Node& node = *graph.nodes.emplace_back(std::make_unique<Node>());
    node.name = name;
    node.category = category;
    node.type = type;
    node.definition = find_definition(node);
    return node;
}

using Numbers = std::vector<double>;

void set_input(Node& node, const std::string& name, const Numbers& numbers)
{
    const Input_definition* defined = node.definition ? node.definition->find_input(name) : nullptr;
    if (!defined)
        throw std::invalid_argument("the light '" + node.name + "' has no " + name);
    const auto given = std::find_if(node.inputs.begin(), node.inputs.end(),
                                    [&](const Input& input) { return input.name == name; });
    Input& input = given == node.inputs.end() ? node.inputs.emplace_back() : *given;
    Value value;
    value.type = defined->value.type;
    std::copy(numbers.begin(), numbers.end(), value.numbers.begin());
    const Ui_hints ui = input.ui;
    input = Input();
    input.name = name;
    input.type = value.type;
    input.value = value;
    input.ui = ui;
}

// Where new lights stand, one after the other: key, fill and rim. The object is at the origin.
const Numbers light_places[] = {{-2.2, 2.4, 2.6}, {2.6, 0.6, 2.0}, {1.4, 2.0, -2.4}};

void place(Node& node, const Numbers& position, bool has_position, bool has_direction)
{
    if (has_position)
        set_input(node, "position", position);
    if (has_direction)
        set_input(node, "direction", {-position[0], -position[1], -position[2]});
}

// A light that decays is as bright at the origin as a directional one of intensity 1.
double intensity_at(const Numbers& position)
{
    constexpr double nearest = 0.1;
    return std::max(position[0] * position[0] + position[1] * position[1] +
                        position[2] * position[2],
                    nearest * nearest);
}

Render_light make_light(Shader_graph& graph, const Light_request& request, size_t index)
{
    const Light_kind_row& row = row_of(request.kind.value_or(Light_kind()));
    const auto asked = request.inputs.find("position");
    const Numbers& position = asked == request.inputs.end()
                                  ? light_places[index % std::size(light_places)]
                                  : asked->second;
    Node& node = add_node(graph, request.name, row.category, Value_type::lightshader);
    const bool decays = row.kind != Light_kind::directional;
    place(node, position, decays, row.kind != Light_kind::point);
    if (decays)
        set_input(node, "intensity", {intensity_at(position)});
    Render_light light;
    light.node = &node;
    light.kind = row.kind;
    light.spread = spread_of(node, light.kind);
    return light;
}

// Replaces the light by one of another kind, which keeps what both kinds have.
void change_kind(Node& node, Render_light& light, Light_kind kind)
{
    const bool had_position = light.kind != Light_kind::directional;
    const bool had_direction = light.kind != Light_kind::point;
    light.kind = kind;
    node.category = row_of(kind).category;
    node.definition = find_definition(node.category, node.type, {});
    node.inputs.erase(std::remove_if(node.inputs.begin(), node.inputs.end(),
                                     [&](const Input& input) {
                                         return !node.definition->find_input(input.name);
                                     }),
                      node.inputs.end());
    place(node, light_places[0], kind != Light_kind::directional && !had_position,
          kind != Light_kind::point && !had_direction);
    light.spread = spread_of(node, kind);
}

// Puts what is requested over what the light has.
void apply(const Light_request& request, Node& node, Render_light& light)
{
    if (request.kind && *request.kind != light.kind)
        change_kind(node, light, *request.kind);
    for (const auto& [name, numbers] : request.inputs)
        set_input(node, name, numbers);
    light.spread = request.spread.value_or(light.spread);
    light.distance_limit = request.distance_limit.value_or(light.distance_limit);
}

Node& node_of(Shader_graph& graph, const Render_light& light)
{
    return **std::find_if(graph.nodes.begin(), graph.nodes.end(),
                          [&](const auto& node) { return node.get() == light.node; });
}

// Whether a file holds light encoded for screens.
bool is_encoded(const std::string& file)
{
    const std::string ending = file.substr(std::min(file.rfind('.'), file.size()));
    return ending == ".png" || ending == ".jpg" || ending == ".jpeg";
}

// `request` is the name of a node, or NAME:FILE for a new one.
const Node* environment_named(Shader_graph& graph, const std::string& request)
{
    if (request.empty())
        return nullptr;
    if (const Node* node = graph.find_node(request))
        return node;
    const size_t colon = request.find(':');
    const std::string name = request.substr(0, colon);
    const Node* known = graph.find_node(name);
    if (known && known->place.file.empty())
        return known; // made by an earlier request for the same graph
    if (name.empty() || known)
        throw std::invalid_argument("the environment '" + request +
                                    "' needs a name that no node of the document has");
    Node& node = add_node(graph, name, "environment_map", Value_type::color3);
    Input file;
    file.name = "file";
    file.type = Value_type::filename;
    file.value = Value{Value_type::filename,
                       {},
                       colon == std::string::npos ? name + ".dds" : request.substr(colon + 1)};
    if (is_encoded(file.value->text))
        file.color_space = "srgb_texture";
    node.inputs.push_back(std::move(file));
    return &node;
}

const Node* volume_named(Shader_graph& graph, const std::string& name)
{
    if (name.empty())
        return nullptr;
    const Node* node = graph.find_node(name);
    return node ? node : &add_node(graph, name, "fog", Value_type::volumeshader);
}

} // namespace

Render_settings make_render_settings(Shader_graph& graph, const Lighting_request& request)
{
    Render_settings settings;
    for (const auto& node : graph.nodes) {
        const Light_kind_row* row = find_light_category(node->category);
        if (row && node->scope.empty())
            settings.lights.push_back({node.get(), row->kind, spread_of(*node, row->kind), 0.0f});
    }
    size_t made = 0;
    std::set<std::string> names;
    for (const Light_request& wanted : request.lights) {
        if (!names.insert(wanted.name).second)
            throw std::invalid_argument("the light '" + wanted.name + "' is asked for twice");
        const auto known = std::find_if(
            settings.lights.begin(), settings.lights.end(),
            [&](const Render_light& light) { return light.node->name == wanted.name; });
        if (known != settings.lights.end()) {
            apply(wanted, node_of(graph, *known), *known);
            continue;
        }
        if (graph.find_node(wanted.name))
            throw std::invalid_argument("the node '" + wanted.name + "' is not a light");
        Render_light& light = settings.lights.emplace_back(make_light(graph, wanted, made++));
        apply(wanted, node_of(graph, light), light);
    }
    settings.environment = environment_named(graph, request.environment);
    settings.volume = volume_named(graph, request.volume);
    settings.ambient = request.ambient;
    return settings;
}

Option_set group_options(const Node& node, const Render_settings& settings)
{
    Option_set options = {{"shader_name", full_name(node)}};
    std::string names;
    for (std::size_t i = 0; i < settings.lights.size(); ++i) {
        const Render_light& light = settings.lights[i];
        names += (i > 0 ? ", " : "") + full_name(*light.node);
        const std::string prefix = "light_state" + std::to_string(i);
        options[prefix + "_type"] = std::to_string(static_cast<int>(light.kind));
        options[prefix + "_spread"] = std::to_string(light.spread);
        options[prefix + "_distance_limit"] = std::to_string(light.distance_limit);
    }
    if (!names.empty())
        options["lights"] = names;
    if (settings.environment)
        options["environment"] = full_name(*settings.environment);
    if (settings.volume)
        options["volume"] = full_name(*settings.volume);
    return options;
}

} // namespace reference_host

#include "reference_host/host/render_settings.h"

#include "reference_host/nodes/node_library.h"
#include "reference_host/document/value_parser.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace reference_host
{
namespace
{

constexpr float full_circle = 360.0f; // degrees

struct Light_row {
    Light_kind kind;
    const char* word;
    const char* category;
};

constexpr Light_row light_rows[] = {
    {Light_kind::directional, "directional", "directional_light"},
    {Light_kind::point, "point", "point_light"},
    {Light_kind::spot, "spot", "spot_light"},
};

const Light_row* row_of(const Node& node)
{
    const auto row = std::find_if(std::begin(light_rows), std::end(light_rows),
                                  [&](const Light_row& r) { return node.category == r.category; });
    return row == std::end(light_rows) ? nullptr : row;
}

// The full angle of the cone in degrees. Documents give the angle between the axis of a spot light
// and the edge of its cone, in radians.
float spread_of(const Node& node, Light_kind kind)
{
    constexpr double degrees_per_radian = 180.0 / 3.14159265358979323846;
    constexpr const char* angle_name = "outer_angle";
    if (kind != Light_kind::spot)
        return 0.0f;
    const Node_definition* usual = find_definition("spot_light", Type::lightshader, {});
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

Node& add_node(Shader_graph& graph, const std::string& name, const std::string& category, Type type)
{
    Node& node = *graph.nodes.emplace_back(std::make_unique<Node>());
    node.name = name;
    node.category = category;
    node.type = type;
    node.definition = find_definition(node);
    return node;
}

Render_light make_light(Shader_graph& graph, const Light_request& request)
{
    const Light_row& row = light_rows[static_cast<int>(request.kind.value_or(Light_kind()))];
    Render_light light;
    light.node = &add_node(graph, request.name, row.category, Type::lightshader);
    light.kind = row.kind;
    light.spread = spread_of(*light.node, light.kind);
    return light;
}

// Puts what is requested over what the light has.
void apply(const Light_request& request, Render_light& light)
{
    if (request.kind && *request.kind != light.kind) {
        light.kind = *request.kind;
        light.spread = spread_of(*light.node, light.kind);
    }
    light.spread = request.spread.value_or(light.spread);
    light.distance_limit = request.distance_limit.value_or(light.distance_limit);
}

std::vector<std::string> split_at_colons(const std::string& text)
{
    std::vector<std::string> parts;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find(':', start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

std::optional<float> parse_length(const std::string& text)
{
    const std::optional<Value> value = parse_value(Type::float1, text);
    if (!value || value->numbers[0] < 0.0)
        return std::nullopt;
    return static_cast<float>(value->numbers[0]);
}

const Node* environment_named(Shader_graph& graph, const std::string& name)
{
    if (name.empty())
        return nullptr;
    if (const Node* node = graph.find_node(name))
        return node;
    Node& node = add_node(graph, name, "environment_map", Type::color3);
    Input file;
    file.name = "file";
    file.type = Type::filename;
    file.value = Value{Type::filename, {}, name + ".dds"};
    node.inputs.push_back(std::move(file));
    return &node;
}

const Node* volume_named(Shader_graph& graph, const std::string& name)
{
    if (name.empty())
        return nullptr;
    const Node* node = graph.find_node(name);
    return node ? node : &add_node(graph, name, "fog", Type::volumeshader);
}

} // namespace

std::optional<Light_request> parse_light(const std::string& text)
{
    const std::vector<std::string> parts = split_at_colons(text);
    Light_request request;
    request.name = parts[0];
    if (request.name.empty() || parts.size() > 4)
        return std::nullopt;
    if (parts.size() > 1) {
        for (const Light_row& row : light_rows) {
            if (parts[1] == row.word || parts[1] == std::to_string(static_cast<int>(row.kind)))
                request.kind = row.kind;
        }
        if (!request.kind)
            return std::nullopt;
    }
    if (parts.size() > 2 && !(request.spread = parse_length(parts[2])))
        return std::nullopt;
    if (request.spread && *request.spread > full_circle)
        return std::nullopt;
    if (parts.size() > 3 && !(request.distance_limit = parse_length(parts[3])))
        return std::nullopt;
    return request;
}

Render_settings make_render_settings(Shader_graph& graph, const Lighting_request& request)
{
    Render_settings settings;
    for (const auto& node : graph.nodes) {
        const Light_row* row = row_of(*node);
        if (row && node->scope.empty())
            settings.lights.push_back({node.get(), row->kind, spread_of(*node, row->kind), 0.0f});
    }
    for (const Light_request& wanted : request.lights) {
        const auto known = std::find_if(
            settings.lights.begin(), settings.lights.end(),
            [&](const Render_light& light) { return light.node->name == wanted.name; });
        if (known != settings.lights.end()) {
            apply(wanted, *known);
            continue;
        }
        if (graph.find_node(wanted.name))
            throw std::invalid_argument("the node '" + wanted.name + "' is no light");
        apply(wanted, settings.lights.emplace_back(make_light(graph, wanted)));
    }
    settings.environment = environment_named(graph, request.environment);
    settings.volume = volume_named(graph, request.volume);
    settings.ambient = request.ambient;
    return settings;
}

} // namespace reference_host

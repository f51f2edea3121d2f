// The functions of node files that look at the document: images, channels, properties of the mesh.
#include "reference_host/lowering/graph_builder.h"

#include "reference_host/lowering/color_space.h"
#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/scene_values.h"
#include "reference_host/shading/switches.h"

#include <algorithm>

namespace reference_host
{
namespace
{

constexpr int texture_sets = 4;

// The letters of colours and texture coordinates as those of positions. Empty when a letter is
// unknown.
std::string position_letters(const std::string& channels)
{
    std::string letters;
    for (const char channel : channels) {
        const std::size_t place = std::string("xyzwrgbastpq").find(channel);
        if (place == std::string::npos)
            return "";
        letters += "xyzw"[place % 4];
    }
    return letters;
}

// Whether there is nothing outside the image; the second word is that of USD.
bool leaves_image(const std::string& address_mode)
{
    return address_mode == "constant" || address_mode == "black";
}

} // namespace

Graph_builder::File Graph_builder::file_of_current(const Expr& argument) const
{
    for (const Input& input : m_current->inputs) {
        if (input.type != Value_type::filename)
            continue;
        if (input.value && input.value->text == argument->name)
            return {&input, argument->name, input.color_space};
        if (input.parameter && input.parameter->value.text == argument->name)
            return {&input, argument->name,
                    input.color_space.empty() ? input.parameter->color_space : input.color_space};
    }
    return {nullptr, argument->name, ""};
}

std::string Graph_builder::texture_name(const File& file) const
{
    return file.input && file.input->parameter ? file.input->parameter->name : m_current->name;
}

// image(file, texcoord, address mode of u, of v, default): a texel in the type of the default.
// Nodes of colours decode it.
Expr Graph_builder::image(const std::vector<Expr>& arguments)
{
    const Value_type type = m_definition->generic;
    return texel(arguments, type == Value_type::color3 || type == Value_type::color4);
}

Expr Graph_builder::color_image(const std::vector<Expr>& arguments)
{
    return texel(arguments, true);
}

Expr Graph_builder::stored_image(const std::vector<Expr>& arguments)
{
    return texel(arguments, false);
}

// decoded(file, color): what was made of texels as they are stored, in the working space.
Expr Graph_builder::decoded(const std::vector<Expr>& arguments)
{
    if (arguments.at(0)->name.empty())
        return arguments.at(1);
    return to_working_space(arguments.at(1), file_of_current(arguments[0]).color_space, *this);
}

Expr Graph_builder::texel(const std::vector<Expr>& arguments, bool decodes)
{
    if (arguments.size() != 5 || arguments[0]->type != Base_type::text)
        throw Notation_error("the file name must be known");
    const Expr& fallback = arguments[4];
    if (arguments[0]->name.empty())
        return fallback;
    const File file = file_of_current(arguments[0]);
    if (!is_known_color_space(file.color_space))
        throw Refusal(m_origin, "the colour space \"" + file.color_space + "\" is unknown");
    const Expr sampler = m_context.uniforms.texture(
        file.name, false, texture_name(file),
        file.input && file.input->parameter ? file.input->parameter->ui : Ui_hints());
    const std::string& u = arguments[2]->name;
    const std::string& v = arguments[3]->name;
    Expr place = arguments[1];
    if (u != "periodic" || v != "periodic")
        place = construct(Base_type::float2,
                          {addressed(swizzle(place, "x"), u), addressed(swizzle(place, "y"), v)});
    place = choose(switch_variable(Switch::flips_images), call("flip_v", {place}), place);
    const auto channels = static_cast<std::size_t>(component_count(fallback->type));
    Expr texel =
        swizzle(call("texture_2d", {sampler, place}), std::string("xyzw").substr(0, channels));
    if (decodes)
        texel = to_working_space(texel, file.color_space, *this);
    if (leaves_image(u) || leaves_image(v))
        texel = call("mix", {fallback, texel, call("inside_image", {arguments[1]})});
    return texel;
}

Expr Graph_builder::addressed(const Expr& coordinate, const std::string& mode)
{
    if (mode == "clamp" || leaves_image(mode))
        return call("saturate", {coordinate});
    return mode == "mirror" ? call("mirrored", {coordinate}) : coordinate;
}

// cube_image(file, direction, blur): the colour of a cube map in a direction of the internal space,
// blurred as a surface of the roughness `blur` shows it. The smaller copies of the cube map do it.
Expr Graph_builder::cube_image(const std::vector<Expr>& arguments)
{
    if (arguments.size() != 3 || arguments[0]->type != Base_type::text)
        throw Notation_error("the file name must be known");
    const File file = file_of_current(arguments[0]);
    const Expr sampler =
        m_context.uniforms.texture(file.name, true, texture_name(file), Ui_hints());
    Expr direction = world_direction(arguments[1]);
    direction = choose(switch_variable(Switch::turns_cube_maps), call("y_up_to_z_up", {direction}),
                       direction);
    Expr texel = call("texture_cube", {sampler, direction});
    if (!is_zero(arguments[2])) {
        const Expr width = call("blur_width", {arguments[2]});
        texel = choose(
            switch_variable(Switch::has_wide_lookups),
            call("texture_cube_wide", {sampler, direction, call("width_x", {direction, width}),
                                       call("width_y", {direction, width})}),
            call("texture_cube_bias", {sampler, direction, call("blur_bias", {width})}));
    }
    return to_working_space(swizzle(texel, "xyz"), file.color_space, *this);
}

Expr Graph_builder::texture_set(const std::vector<Expr>& arguments)
{
    const Expr& set = arguments.at(0);
    if (!is_literal(set) || set->numbers[0] < 0 || set->numbers[0] >= texture_sets)
        throw Refusal(m_origin, "there are four sets of texture coordinates, 0 to 3");
    return state_field(static_cast<State_field>(static_cast<int>(State_field::texture_coordinate0) +
                                                static_cast<int>(set->numbers[0])));
}

// channels_of(value, "rgb1"): components by their letters, and the digits 0 and 1.
Expr Graph_builder::channels_of(const std::vector<Expr>& arguments)
{
    const Expr& value = arguments.at(0);
    const std::string& channels = arguments.at(1)->name;
    if (channels.empty() || channels.size() > 4)
        throw Refusal(m_origin, "one to four channels are needed");
    const std::string letters = position_letters(channels);
    const int count = component_count(value->type);
    const auto missing = [&](char letter) {
        return static_cast<int>(std::string("xyzw").find(letter)) >= count;
    };
    if (!letters.empty() && std::none_of(letters.begin(), letters.end(), missing))
        return swizzle(value, letters);
    std::vector<Expr> parts;
    for (const char channel : channels) {
        const std::string letter = position_letters(std::string(1, channel));
        if (channel == '0' || channel == '1')
            parts.push_back(literal(channel - '0'));
        else if (!letter.empty() && !missing(letter[0]))
            parts.push_back(swizzle(value, letter));
        else
            throw Refusal(m_origin, "there are no channels \"" + channels + "\"");
    }
    return construct(float_type(static_cast<int>(parts.size())), parts);
}

// transform_names(from, to): "to world", "to object", or "" between spaces that are the same.
Expr Graph_builder::transform_names(const std::vector<Expr>& arguments)
{
    const auto is_world = [](const Expr& name) { return name->name == "world"; };
    for (const Expr& name : arguments)
        if (!is_world(name) && !name->name.empty() && name->name != "object" &&
            name->name != "model")
            throw Refusal(m_origin, "there is no space \"" + name->name + "\"");
    const bool from_world = is_world(arguments.at(0));
    const bool to_world = is_world(arguments.at(1));
    return text_literal(from_world == to_world ? "" : (to_world ? "to world" : "to object"));
}

// tangent_space_normal(value): a constant stands for the normal as it is.
Expr Graph_builder::tangent_space_normal(const std::vector<Expr>& arguments)
{
    if (is_literal(arguments.at(0)))
        return find_scene_value("normal");
    return call("from_tangent_space", {arguments[0], find_scene_value("normal"),
                                       find_scene_value("tangent"), find_scene_value("bitangent")});
}

// refused(reason): for nodes that no target can express.
Expr Graph_builder::refuse(const std::vector<Expr>& arguments)
{
    throw Refusal(m_origin, arguments.at(0)->name);
}

// vertex_property(name, default): a property of the mesh by its usual names.
Expr Graph_builder::vertex_property(const std::vector<Expr>& arguments)
{
    const std::string& name = arguments.at(0)->name;
    const Expr& fallback = arguments.at(1);
    const int count = component_count(fallback->type);
    const Expr found = find_vertex_property(name);
    if (!is_float(fallback->type) || !found || component_count(found->type) < count) {
        m_context.warnings.push_back({Severity::warning,
                                      described(*m_current) + ": the mesh has no property \"" +
                                          name + "\"; the default takes its place",
                                      m_current->place});
        return fallback;
    }
    return swizzle(found, std::string("xyzw").substr(0, static_cast<std::size_t>(count)));
}

} // namespace reference_host

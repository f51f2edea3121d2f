#include "reference_host/targets/streams.h"

#include <algorithm>
#include <iterator>

namespace reference_host
{
namespace
{

struct Attribute_row {
    Attribute attribute;
    const char* name;
    Base_type type;
    const char* semantic; // null: an option has it
};

// In the order of the enumeration.
constexpr Attribute_row attribute_rows[] = {
    {Attribute::position, "position", Base_type::float3, "POSITION"},
    {Attribute::normal, "normal", Base_type::float3, "NORMAL"},
    {Attribute::tangent, "tangent", Base_type::float3, nullptr},
    {Attribute::binormal, "binormal", Base_type::float3, nullptr},
    {Attribute::texcoord0, "texcoord0", Base_type::float2, nullptr},
    {Attribute::texcoord1, "texcoord1", Base_type::float2, nullptr},
    {Attribute::texcoord2, "texcoord2", Base_type::float2, nullptr},
    {Attribute::texcoord3, "texcoord3", Base_type::float2, nullptr},
    {Attribute::color, "color", Base_type::float4, "COLOR0"},
};

bool is_texcoord(Attribute attribute)
{
    return attribute >= Attribute::texcoord0 && attribute <= Attribute::texcoord3;
}

std::string semantic_of(const Attribute_row& row, const Text_options& options)
{
    if (row.semantic)
        return row.semantic;
    if (row.attribute == Attribute::tangent)
        return options.tangent_semantic;
    if (row.attribute == Attribute::binormal)
        return options.binormal_semantic;
    return options.texcoord_semantics[static_cast<int>(row.attribute) -
                                      static_cast<int>(Attribute::texcoord0)];
}

// How positions and normals of vertices come from the space of the stream into another one; none:
// they are in it. Normals are turned by the upper left of the matrix.
struct Vertex_transform {
    Space stream, target;
    Host_value position, normal;
};

using Host = Host_value;

constexpr Vertex_transform vertex_transforms[] = {
    {Space::object, Space::object, Host::none, Host::none},
    {Space::object, Space::world, Host::world, Host::world_it},
    {Space::object, Space::camera, Host::world_view, Host::world_view_it},
    {Space::world, Space::object, Host::world_inverse, Host::world_inverse},
    {Space::world, Space::world, Host::none, Host::none},
    {Space::world, Space::camera, Host::view_matrix, Host::view_matrix},
    {Space::camera, Space::object, Host::world_view_inverse, Host::world_view_inverse},
    {Space::camera, Space::world, Host::view_inverse, Host::view_inverse},
    {Space::camera, Space::camera, Host::none, Host::none},
    {Space::screen, Space::object, Host::world_view_projection_inverse, Host::none},
    {Space::screen, Space::world, Host::view_projection_inverse, Host::none},
    {Space::screen, Space::camera, Host::projection_inverse, Host::none},
};

const Vertex_transform& vertex_transform(Space stream, Space target)
{
    return *std::find_if(
        std::begin(vertex_transforms), std::end(vertex_transforms),
        [&](const Vertex_transform& row) { return row.stream == stream && row.target == target; });
}

// The matrix that projects positions of the stream; none: they are projected.
Host_value projection_of(Space stream)
{
    switch (stream) {
    case Space::world:
        return Host::view_projection;
    case Space::camera:
        return Host::projection;
    case Space::screen:
        return Host::none;
    default:
        return Host::world_view_projection;
    }
}

Expr divided_by_w(const Expr& point)
{
    return binary(Operator::divide, swizzle(point, "xyz"), swizzle(point, "w"));
}

} // namespace

Streams::Streams(const std::string& shader, const Uses& uses, const Text_plan& plan) : m_plan(plan)
{
    choose_fields(uses);
    add_clip_position();
    if (covers_screen(plan.options))
        add_screen_ray();
    for (const State_field field : m_fields)
        add_field(field);
    if (plan.options.use_oit)
        add_oit();
    check_semantics(shader);
}

bool Streams::reads(State_field field) const
{
    return std::find(m_fields.begin(), m_fields.end(), field) != m_fields.end();
}

void Streams::choose_fields(const Uses& uses)
{
    const Text_options& options = m_plan.options;
    std::set<std::string> names = uses.fields_of("State");
    if (m_plan.has_light_interface())
        names.insert({"position", "normal", "light_to_surface", "light_distance", "light_dotnl"});
    if ((options.face_forward || options.normals_face_forward) && names.count("normal"))
        names.insert("direction");
    if (!covers_screen(options) && (names.count("direction") || names.count("eye_distance")))
        names.insert("position");
    for (int i = 0; i < static_cast<int>(State_field::none); ++i)
        if (names.count(row_of(static_cast<State_field>(i)).name))
            m_fields.push_back(static_cast<State_field>(i));
}

Expr Streams::attribute(Attribute attribute)
{
    const Attribute_row& row = attribute_rows[static_cast<std::size_t>(attribute)];
    const auto known = std::find_if(m_attributes.begin(), m_attributes.end(),
                                    [&](const Stream& stream) { return stream.name == row.name; });
    if (known == m_attributes.end())
        m_attributes.push_back({row.name, row.type, semantic_of(row, m_plan.options)});
    return variable(row.type, m_plan.dialect.vertex_prefix + std::string(row.name));
}

// Hands a value over to the fragment program and returns it as it arrives there.
Expr Streams::handed_over(const std::string& name, const Code_type& type, const Expr& value)
{
    m_varyings.push_back({name, type, "TEXCOORD" + std::to_string(m_varyings.size())});
    m_vertex_body.push_back(assign(variable(type, m_plan.dialect.result_prefix + name), value));
    return variable(type, m_plan.dialect.fragment_prefix + name);
}

void Streams::add_clip_position()
{
    const Text_options& options = m_plan.options;
    const Expr given = attribute(Attribute::position);
    m_vertex_body.push_back(declare(Base_type::float4, "position",
                                    construct(Base_type::float4, {given, literal(1.0)})));
    const Host_value projection = projection_of(options.vertex_stream_space);
    Expr projected = projection == Host::none ? m_position
                                              : call(Builtin::host_transform,
                                                     {host_matrix(projection, m_plan), m_position});
    if (options.screen_space_vertices || covers_screen(options))
        projected =
            construct(Base_type::float4, {swizzle(m_position, "xy"), literal(1.0), literal(1.0)});
    m_vertex_body.push_back(assign(m_clip_position, projected));
}

// The ray through a pixel, from the eye to the far plane, in world space.
void Streams::add_screen_ray()
{
    const Expr inverse = host_matrix(Host::view_projection_inverse, m_plan);
    m_vertex_body.push_back(declare(Base_type::float4, "far_point",
                                    call(Builtin::host_transform, {inverse, m_clip_position})));
}

Expr Streams::transformed_position(Space target)
{
    if (covers_screen(m_plan.options))
        return divided_by_w(m_far_point);
    const Space stream = m_plan.options.vertex_stream_space;
    const Vertex_transform& row = vertex_transform(stream, target);
    if (row.position == Host::none)
        return attribute(Attribute::position);
    const Expr product =
        call(Builtin::host_transform, {host_matrix(row.position, m_plan), m_position});
    return stream == Space::screen ? divided_by_w(product) : swizzle(product, "xyz");
}

// Normals are transformed by the inverse transposed matrix, tangents like differences of positions.
Expr Streams::transformed_direction(const Expr& direction, bool is_normal, Space target)
{
    const Space stream = m_plan.options.vertex_stream_space;
    const Vertex_transform& row = vertex_transform(stream, target);
    const Host_value matrix = is_normal ? row.normal : row.position;
    if (matrix == Host::none || stream == Space::screen)
        return direction;
    return call(Builtin::host_transform,
                {construct(Base_type::matrix3, {host_matrix(matrix, m_plan)}), direction});
}

Expr Streams::vertex_value(const State_field_row& row)
{
    const Text_options& options = m_plan.options;
    const Space target = row.space == Space::camera ? m_plan.internal_space : row.space;
    if (row.source == State_source::position)
        return transformed_position(target);
    Expr value = attribute(row.attribute);
    if (is_texcoord(row.attribute) && options.flip_vs_texture_v)
        return construct(
            Base_type::float2,
            {swizzle(value, "x"), binary(Operator::subtract, literal(1.0), swizzle(value, "y"))});
    if (row.source != State_source::direction)
        return value;
    // A colour stream holds numbers from 0 to 1.
    if (row.attribute == Attribute::tangent && options.tangent_semantic.compare(0, 5, "COLOR") == 0)
        value = binary(Operator::subtract, binary(Operator::multiply, value, literal(2.0)),
                       literal(1.0));
    return transformed_direction(value, row.attribute == Attribute::normal, target);
}

// The direction and the length of the way from the eye.
Expr Streams::derived_value(State_field field)
{
    const Expr position = state_field(State_field::position);
    const Expr way = m_plan.internal_space == Space::camera
                         ? position
                         : binary(Operator::subtract, position, eye(m_plan));
    return call(field == State_field::direction ? Builtin::normalize : Builtin::length, {way});
}

void Streams::add_field(State_field field)
{
    const State_field_row& row = row_of(field);
    Expr value;
    if (row.source == State_source::lights) {
        value = literal(row.type, {});
    } else if (field == State_field::direction && covers_screen(m_plan.options)) {
        const Expr ray = binary(Operator::subtract, divided_by_w(m_far_point), eye(m_plan));
        value = call(Builtin::normalize, {handed_over(row.name, row.type, ray)});
    } else if (row.source == State_source::derived) {
        value = derived_value(field);
    } else {
        value = handed_over(row.name, row.type, vertex_value(row));
        if (row.source == State_source::direction)
            value = call(Builtin::normalize, {value});
    }
    m_fragment_body.push_back(assign(state_field(field), value));
}

// One pass of depth peeling: what is not behind the layer that was drawn before is left out.
void Streams::add_oit()
{
    const Expr clip = handed_over("clip_position", Base_type::float4, m_clip_position);
    const Expr sampler =
        variable(Base_type::sampler_2d,
                 m_plan.dialect.splits_textures ? "oit_depth_map_sampler" : "oit_depth_map");
    const Expr peeled = variable(Base_type::float3, "peeled");
    const auto halved = [](const Expr& value) {
        return binary(Operator::add, binary(Operator::multiply, value, literal(0.5)), literal(0.5));
    };
    // Depth runs from -1 to 1 in OpenGL and from 0 to 1 in Direct3D, whose textures begin at the
    // top.
    const Expr z = swizzle(peeled, "z");
    const Expr xy = swizzle(peeled, "xy");
    const bool from_zero = m_plan.dialect.depth_from_zero;
    const Expr place =
        from_zero ? binary(Operator::add,
                           binary(Operator::multiply, xy, literal(Base_type::float2, {0.5, -0.5})),
                           literal(0.5))
                  : halved(xy);
    const Expr in_front = swizzle(call(Builtin::texture_2d, {sampler, place}), "x");
    Statement clipping;
    clipping.kind = Statement::Kind::clip;
    clipping.value =
        binary(Operator::subtract, binary(Operator::subtract, from_zero ? z : halved(z), in_front),
               literal(0.00001));
    m_fragment_body.insert(m_fragment_body.begin(),
                           {declare(Base_type::float3, "peeled", divided_by_w(clip)), clipping});
}

Statements Streams::fragment_body(const Expr& back_face) const
{
    Statements body = m_fragment_body;
    const Expr normal = state_field(State_field::normal);
    if (reads_face())
        body.push_back(condition(back_face, {assign(normal, negate(normal))}));
    const Text_options& options = m_plan.options;
    if ((options.face_forward || options.normals_face_forward) && reads(State_field::normal))
        body.push_back(assign(normal, call(Builtin::faceforward,
                                           {normal, state_field(State_field::direction), normal})));
    return body;
}

void Streams::check_semantics(const std::string& shader) const
{
    const auto check = [&](std::size_t count, const char* what, std::size_t limit) {
        if (limit != 0 && count > limit)
            throw Notation_error("shader \"" + shader + "\" hands over " + std::to_string(count) +
                                 what + " to the fragment program, which takes " +
                                 std::to_string(limit));
    };
    std::size_t floats = 0;
    for (const Stream& varying : m_varyings)
        floats += static_cast<std::size_t>(component_count(varying.type));
    check(m_varyings.size(), " values", m_plan.dialect.interpolators);
    check(m_varyings.size(), " values", m_plan.profile ? m_plan.profile->interpolators : 0);
    check(floats, " floats", m_plan.dialect.varying_floats);
    for (auto a = m_attributes.begin(); a != m_attributes.end(); ++a)
        for (auto b = std::next(a); b != m_attributes.end() && m_plan.dialect.binds_semantics; ++b)
            if (a->semantic == b->semantic)
                throw Notation_error("\"" + a->name + "\" and \"" + b->name +
                                     "\" of the vertex are both bound to " + a->semantic);
}

} // namespace reference_host

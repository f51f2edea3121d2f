#include "reference_host/generator/streams.h"

#include "reference_host/generator/transforms.h"

#include <algorithm>

namespace reference_host
{
namespace
{

struct Attribute_row {
    const char* name;
    Kind type;
    const char* semantic; // null: an option has it
};

constexpr Attribute_row attribute_rows[] = {
    {"position", Kind::float3, "POSITION"}, {"normal", Kind::float3, "NORMAL"},
    {"tangent", Kind::float3, nullptr},     {"binormal", Kind::float3, nullptr},
    {"texcoord0", Kind::float2, nullptr},   {"texcoord1", Kind::float2, nullptr},
    {"texcoord2", Kind::float2, nullptr},   {"texcoord3", Kind::float2, nullptr},
    {"color", Kind::float4, "COLOR0"},
};

std::string semantic_of(const Attribute_row& row, const Text_options& options)
{
    const std::string name = row.name;
    if (row.semantic)
        return row.semantic;
    if (name == "tangent")
        return options.tangent_semantic;
    if (name == "binormal")
        return options.binormal_semantic;
    return options.texcoord_semantics[name.back() - '0'];
}

// How many values of up to four floats each reach the fragment program.
std::size_t interpolator_limit(Language language)
{
    switch (language) {
    case Language::cg:
        return 8;
    case Language::hlsl:
        return 10;
    default:
        return 16;
    }
}

} // namespace

Streams::Streams(Shader_code& code, const Text_options& options, Language language)
    : m_code(code), m_options(options), m_language(language)
{
    choose_fields();
    add_clip_position();
    if (covers_screen(options))
        add_screen_ray();
    for (const State_field* field : m_fields)
        add_field(*field);
    if (options.use_oit)
        add_oit();
    check_semantics(code);
}

bool Streams::reads(const std::string& name) const
{
    return std::any_of(m_fields.begin(), m_fields.end(),
                       [&](const State_field* field) { return name == field->name; });
}

void Streams::choose_fields()
{
    std::set<std::string> names = m_code.used_fields("State");
    if (m_code.lighting() == Lighting::list)
        names.insert({"position", "normal", "light_to_surface", "light_distance", "light_dotnl"});
    if ((m_options.face_forward || m_options.normals_face_forward) && names.count("normal"))
        names.insert("direction");
    if (!covers_screen(m_options) && (names.count("direction") || names.count("eye_distance")))
        names.insert("position");
    for (const State_field& field : state_fields())
        if (names.count(field.name))
            m_fields.push_back(&field);
}

Expr Streams::in_vertex(const std::string& name, const Shading_type& type) const
{
    return variable(type, (is_glsl(m_language) ? "fragment_" : "result.") + name);
}

Expr Streams::in_fragment(const std::string& name, const Shading_type& type) const
{
    return variable(type, (is_glsl(m_language) ? "fragment_" : "fragment.") + name);
}

Expr Streams::attribute(const std::string& name)
{
    const auto row = std::find_if(std::begin(attribute_rows), std::end(attribute_rows),
                                  [&](const Attribute_row& r) { return name == r.name; });
    const auto known = std::find_if(m_attributes.begin(), m_attributes.end(),
                                    [&](const Stream& stream) { return stream.name == name; });
    if (known == m_attributes.end())
        m_attributes.push_back({name, row->type, semantic_of(*row, m_options)});
    return variable(row->type, (is_glsl(m_language) ? "vertex_" : "vertex.") + name);
}

// Hands a value over to the fragment program and gives it back as it arrives there.
Expr Streams::handed_over(const std::string& name, const Shading_type& type, const Expr& value)
{
    m_varyings.push_back({name, type, "TEXCOORD" + std::to_string(m_varyings.size())});
    m_vertex_body.push_back(assign(in_vertex(name, type), "=", value));
    return in_fragment(name, type);
}

void Streams::add_clip_position()
{
    const Expr position = attribute("position");
    const Expr clip =
        variable(Kind::float4, is_glsl(m_language) ? "gl_Position" : "result.hposition");
    const Expr local = variable(Kind::float4, "position");
    m_vertex_body.push_back(
        declare(Kind::float4, "position", construct(Kind::float4, {position, literal(1.0)})));
    Program& program = m_code.program();
    program.define("position", local);
    const std::string projection = projection_of(m_options.vertex_stream_space);
    std::string text =
        projection.empty() ? "position" : "host_transform(" + projection + ", position)";
    if (m_options.screen_space_vertices || covers_screen(m_options))
        text = "float4(position.xy, 1.0, 1.0)";
    m_vertex_body.push_back(assign(clip, "=", parse_expression(text, program)));
}

// The ray through a pixel, from the eye to the far plane, in world space.
void Streams::add_screen_ray()
{
    Program& program = m_code.program();
    program.define("hposition", m_vertex_body.back().target);
    m_vertex_body.push_back(
        declare(Kind::float4, "far_point",
                parse_expression("host_transform(view_projection_inverse, hposition)", program)));
    program.define("far_point", variable(Kind::float4, "far_point"));
}

Expr Streams::transformed_position(Space target)
{
    Program& program = m_code.program();
    if (covers_screen(m_options))
        return parse_expression("far_point.xyz / far_point.w", program);
    const Vertex_transform transform = vertex_transform(m_options.vertex_stream_space, target);
    if (std::string(transform.position).empty())
        return attribute("position");
    const std::string product = "host_transform(" + std::string(transform.position) + ", position)";
    return parse_expression(
        transform.divides ? product + ".xyz / " + product + ".w" : product + ".xyz", program);
}

// Normals are transformed by the inverse transposed matrix, tangents like differences of positions.
Expr Streams::transformed_direction(const Expr& direction, bool is_normal, Space target)
{
    const Vertex_transform transform = vertex_transform(m_options.vertex_stream_space, target);
    const std::string matrix = is_normal ? transform.normal : transform.position;
    if (matrix.empty() || transform.divides)
        return direction;
    Program& program = m_code.program();
    const Expr rotation = construct(Kind::matrix3, {program.find_variable(matrix)});
    return program.call("host_transform", {rotation, direction});
}

Expr Streams::vertex_value(const State_field& field)
{
    const Space target = field.space == Space::camera ? m_code.internal_space() : field.space;
    if (field.source == State_source::position)
        return transformed_position(target);
    Expr value = attribute(field.attribute);
    const std::string name = field.attribute;
    if (name.compare(0, 8, "texcoord") == 0 && m_options.flip_vs_texture_v)
        return construct(Kind::float2,
                         {swizzle(value, "x"), binary("-", literal(1.0), swizzle(value, "y"))});
    if (field.source != State_source::direction)
        return value;
    // A colour stream holds numbers from 0 to 1.
    if (name == "tangent" && m_options.tangent_semantic.compare(0, 5, "COLOR") == 0)
        value = binary("-", binary("*", value, literal(2.0)), literal(1.0));
    return transformed_direction(value, name == "normal", target);
}

void Streams::add_field(const State_field& field)
{
    Program& program = m_code.program();
    const std::string name = field.name;
    Expr value;
    if (field.source == State_source::lights) {
        value = literal(field.type, {});
    } else if (name == "direction" && covers_screen(m_options)) {
        const Expr ray = parse_expression("far_point.xyz / far_point.w - eye", program);
        value = program.call("normalize", {handed_over(name, field.type, ray)});
    } else if (field.source == State_source::derived) {
        const bool camera = m_code.internal_space() == Space::camera;
        const std::string from_eye = camera ? "state.position" : "state.position - eye";
        const std::string function = name == "direction" ? "normalize(" : "length(";
        value = parse_expression(function + from_eye + ")", program);
    } else {
        value = handed_over(name, field.type, vertex_value(field));
        if (field.source == State_source::direction)
            value = program.call("normalize", {value});
    }
    m_fragment_body.push_back(assign(state_field(name), "=", value));
}

// One pass of depth peeling: what is not behind the layer that was drawn before is left out.
void Streams::add_oit()
{
    Program& program = m_code.program();
    const Expr clip = m_vertex_body[1].target;
    program.define("clip_position", handed_over("clip_position", Kind::float4, clip));
    const std::string sampler = is_glsl(m_language) ? "oit_depth_map" : "oit_depth_map_sampler";
    program.define("oit_sampler", variable(Kind::sampler_2d, sampler));
    // Depth runs from -1 to 1 in OpenGL and from 0 to 1 in Direct3D, whose textures begin at the
    // top.
    const bool direct3d = m_language == Language::hlsl;
    const std::string depth = direct3d ? "peeled.z" : "peeled.z * 0.5 + 0.5";
    const std::string place =
        direct3d ? "peeled.xy * float2(0.5, -0.5) + 0.5" : "peeled.xy * 0.5 + 0.5";
    Statements peeling =
        parse_statements("float3 peeled = clip_position.xyz / clip_position.w;"
                         "clip(" +
                             depth + " - texture_2d(oit_sampler, " + place + ").x - 0.00001);",
                         program);
    m_fragment_body.insert(m_fragment_body.begin(), peeling.begin(), peeling.end());
}

Statements Streams::fragment_body(const Expr& back_face) const
{
    Statements body = m_fragment_body;
    const Expr normal = state_field("normal");
    if (reads_face()) {
        Statement turn;
        turn.kind = Statement::Kind::condition;
        turn.value = back_face;
        turn.body = {assign(normal, "=", negate(normal))};
        body.push_back(std::move(turn));
    }
    if ((m_options.face_forward || m_options.normals_face_forward) && reads("normal"))
        body.push_back(
            assign(normal, "=",
                   call("faceforward", Kind::float3, {normal, state_field("direction"), normal})));
    return body;
}

void Streams::check_semantics(const Shader_code& code) const
{
    const std::size_t limit = interpolator_limit(m_language);
    if (m_varyings.size() > limit)
        throw Notation_error(
            "shader \"" + code.name() + "\" hands over " + std::to_string(m_varyings.size()) +
            " values to the fragment program, which takes " + std::to_string(limit));
    for (auto a = m_attributes.begin(); a != m_attributes.end(); ++a)
        for (auto b = std::next(a); b != m_attributes.end() && !is_glsl(m_language); ++b)
            if (a->semantic == b->semantic)
                throw Notation_error("\"" + a->name + "\" and \"" + b->name +
                                     "\" of the vertex are both bound to " + a->semantic);
}

} // namespace reference_host

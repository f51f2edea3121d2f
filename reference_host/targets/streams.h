// The vertex program and the filling of the shading state: what comes in with a vertex, what is
// handed over to the fragment program, and how both are computed.
#ifndef REFERENCE_HOST_TARGETS_STREAMS_H
#define REFERENCE_HOST_TARGETS_STREAMS_H

#include "reference_host/passes/uses.h"
#include "reference_host/targets/legalise.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Stream {
    std::string name;
    Code_type type;
    std::string semantic; // in effects
};

class Streams
{
public:
    // Throws Notation_error when the shader needs more than the language can hand over, or two
    // attributes of the vertex are bound to one semantic.
    Streams(const std::string& shader, const Uses& uses, const Text_plan& plan);

    const std::vector<Stream>& attributes() const { return m_attributes; }
    const std::vector<Stream>& varyings() const { return m_varyings; }
    bool reads_face() const { return m_plan.options.two_sided && reads(State_field::normal); }

    // The fields of State that the program has.
    const std::vector<State_field>& fields() const { return m_fields; }

    // Bodies of the vertex program (without the declaration and return of its result) and of the
    // fragment program up to the call of the shader. `back_face` is the condition under which the
    // back of the surface is seen.
    const Statements& vertex_body() const { return m_vertex_body; }
    Statements fragment_body(const Expr& back_face) const;

private:
    bool reads(State_field field) const;
    Expr attribute(Attribute attribute);
    Expr handed_over(const std::string& name, const Code_type& type, const Expr& value);
    Expr transformed_position(Space target);
    Expr transformed_direction(const Expr& direction, bool is_normal, Space target);
    Expr vertex_value(const State_field_row& row);
    Expr derived_value(State_field field);
    void choose_fields(const Uses& uses);
    void add_clip_position();
    void add_screen_ray();
    void add_field(State_field field);
    void add_oit();
    void check_semantics(const std::string& shader) const;

    const Text_plan& m_plan;
    const Expr m_position = variable(Base_type::float4, "position");   // in the stream's space
    const Expr m_far_point = variable(Base_type::float4, "far_point"); // of the ray through a pixel
    const Expr m_clip_position = variable(Base_type::float4, m_plan.dialect.clip_position);
    std::vector<State_field> m_fields;
    std::vector<Stream> m_attributes;
    std::vector<Stream> m_varyings;
    Statements m_vertex_body;
    Statements m_fragment_body; // up to facing
};

} // namespace reference_host

#endif

// The vertex program and the filling of the shading state: what comes in with a vertex, what is
// handed over to the fragment program, and how both are computed.
#ifndef REFERENCE_HOST_GENERATOR_STREAMS_H
#define REFERENCE_HOST_GENERATOR_STREAMS_H

#include "reference_host/generator/shader_code.h"
#include "reference_host/generator/shading_state.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Stream {
    std::string name;
    Shading_type type;
    std::string semantic; // in effects
};

class Streams
{
public:
    // Throws Notation_error when the shader needs more than the language can hand over, or two
    // attributes of the vertex are bound to one semantic.
    Streams(Shader_code& code, const Text_options& options, Language language);

    const std::vector<Stream>& attributes() const { return m_attributes; }
    const std::vector<Stream>& varyings() const { return m_varyings; }
    bool reads_face() const { return m_options.two_sided && reads("normal"); }

    // The fields of State that the program has.
    const std::vector<const State_field*>& fields() const { return m_fields; }

    // Bodies of the vertex program (without the declaration and return of its result) and of the
    // fragment program up to the call of the shader. `back_face` is the condition under which the
    // back of the surface is seen.
    const Statements& vertex_body() const { return m_vertex_body; }
    Statements fragment_body(const Expr& back_face) const;

private:
    bool reads(const std::string& field) const;
    Expr attribute(const std::string& name);
    Expr handed_over(const std::string& name, const Shading_type& type, const Expr& value);
    Expr transformed_position(Space target);
    Expr transformed_direction(const Expr& direction, bool is_normal, Space target);
    Expr vertex_value(const State_field& field);
    Expr in_vertex(const std::string& name, const Shading_type& type) const;
    Expr in_fragment(const std::string& name, const Shading_type& type) const;
    void choose_fields();
    void add_clip_position();
    void add_screen_ray();
    void add_field(const State_field& field);
    void add_oit();
    void check_semantics(const Shader_code& code) const;

    Shader_code& m_code;
    const Text_options& m_options;
    Language m_language;
    std::vector<const State_field*> m_fields;
    std::vector<Stream> m_attributes;
    std::vector<Stream> m_varyings;
    Statements m_vertex_body;
    Statements m_fragment_body; // up to facing
};

} // namespace reference_host

#endif

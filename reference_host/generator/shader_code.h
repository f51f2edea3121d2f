// The functions of one generated shader, before any skeleton is put around them.
//
// What the document and the options ask for becomes functions in the shading notation's terms: the
// shader function itself, the environment's, and whatever of the library they call. The writers of
// the targets add declarations, streams and states.
#ifndef REFERENCE_HOST_GENERATOR_SHADER_CODE_H
#define REFERENCE_HOST_GENERATOR_SHADER_CODE_H

#include "reference_host/generator/dialect.h"
#include "reference_host/generator/graph_builder.h"

#include <set>
#include <string>
#include <vector>

namespace reference_host
{

struct Scene_light {
    const Node* node;
    Light_option option;
};

// What compile_group found: the shader below a material, and what lights it.
struct Shader_request {
    const Shader_graph* graph = nullptr;
    const Node* selected = nullptr; // the node that was asked for
    const Node* shader = nullptr;   // the same, or the shader below a material
    std::vector<Scene_light> lights;
    const Node* environment = nullptr;
    const Node* volume = nullptr;
    Group_options options;
};

// Where light comes from.
enum class Lighting {
    fixed,   // one call for each light of the request
    list,    // an unsized list of an interface
    renderer // the list in the state that the renderer fills
};

// Making a Shader_code goes through the library with the features that the shader has, builds the
// statements of the nodes that these ask for, and ends with the shader function as the program's
// last one. Its source is in three files: the frame, shader_code_surface.cpp,
// shader_code_lights.cpp.
class Shader_code
{
public:
    // Throws Refusal or Notation_error.
    Shader_code(const Shader_request& request, const Text_options& options, Language language,
                Diagnostics& diagnostics);

    const std::string& name() const { return m_name; } // of the shader function
    Space internal_space() const { return m_internal_space; }
    Lighting lighting() const { return m_lighting; }
    const Program& program() const { return m_program; }
    Program& program() { return m_program; }
    const Uniforms& uniforms() const { return m_uniforms; }

    // Inputs of the shader that are in the document and not in the code.
    const std::vector<std::string>& without_counterpart() const { return m_without_counterpart; }

    // The functions that the code reaches from the one that was made last, in the order in which
    // they are declared.
    std::vector<const Function*> used_functions() const;

    // Names of variables that they read, and of State's fields.
    std::set<std::string> used_variables() const;
    std::set<std::string> used_fields(const std::string& structure) const;

private:
    void define_scene(Language language);
    void choose_lighting(const Text_options& options, Language language, Diagnostics& diagnostics);
    void define_features();
    bool reads_environment() const;

    void add_environment();
    void add_surface();
    void add_pattern();
    void add_light();
    void add_volume();
    void add_shader(Statements body);

    Expr slot(Graph_builder& builder, const std::string& name);
    bool contributes(const std::string& slot) const;
    Expr own_light(Graph_builder& builder);
    Expr opacity(Graph_builder& builder);
    Expr normal(Graph_builder& builder);
    Statements fill_surface(Graph_builder& builder, const Statements& shading);
    Statements environment_statements(Graph_builder& builder);
    Statements environment_lookup(const std::string& looking, const std::string& direction,
                                  const std::string& response);
    Statements light_statements();
    Statements volume_statements();
    Statements fixed_light(const Scene_light& light);
    std::string light_call(const Scene_light& light) const;
    Statements parse(const std::string& text);

    const Shader_request& m_request;
    const Text_options& m_options;
    Language m_language;
    Names m_names;
    Uniforms m_uniforms{m_names};
    Program m_program;
    Space m_internal_space;
    Build_context m_context;
    Lighting m_lighting = Lighting::fixed;
    bool m_volume_list = false;
    bool m_environment_list = false;
    std::string m_name;
    std::string m_environment_function;
    std::vector<std::string> m_without_counterpart;
};

} // namespace reference_host

#endif

// Turns the graph below a shader into statements: one named variable for each node.
//
// Nodes are evaluated when an input asks for them, each once, sources first. The work grows with
// nodes and connections, not with paths, and does not recurse along the graph.
#ifndef REFERENCE_HOST_LOWERING_GRAPH_BUILDER_H
#define REFERENCE_HOST_LOWERING_GRAPH_BUILDER_H

#include "reference_host/lowering/lowering_context.h"
#include "reference_host/nodes/node_library.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace reference_host
{

class Graph_builder : public Notation_scope
{
public:
    // Literal inputs of `shader` become parameters, called `prefix` + the input's name. The prefix
    // is empty for what is exported itself; lights and other parts of the scene have one, and show
    // all their inputs.
    Graph_builder(Lowering_context& context, const Node& shader, const std::string& prefix);

    // An expression in the notation over the inputs of the shader; what is connected to those that
    // it names is evaluated into statements(). Throws Refusal.
    Expr shader_expression(const Shade_text& text);
    Expr shader_expression(const std::string& text);

    // The value of an input of the shader.
    Expr shader_input(const std::string& name);

    // What the name "blur" means: the roughness with which an environment is seen. Without it,
    // zero.
    void set_blur(const Expr& blur) { m_blur = blur; }

    // The name of the value that a closure was made for.
    std::string closure_name(const Expr& closure) const;

    Statements& statements() { return m_statements; }

    Expr find_variable(const std::string& name) override;
    Code_type find_type(const std::string& name) override;
    Code_type find_member(const std::string& structure, const std::string& member) override;
    Expr node(const std::string& category, Named_values inputs) override;
    Expr call(const std::string& function, std::vector<Expr> arguments) override;

private:
    struct Open_node {
        const Node* node;
        std::size_t next_input;
    };

    void evaluate(const Node& node);
    void compute(const Node& node);
    void begin_shader(const std::string& texts);
    Expr parsed(const Shade_text& implementation);
    Expr compute(const Output_definition& output, const std::string& name);
    Expr input(const Node& node, const Input_definition& defined);
    Expr bound_input(const Input_definition& defined);
    Expr connected(const Input& input);
    Expr given_value(const Node& node, const Input& input, const Input_definition& defined);
    Expr absent_value(const Node& node, const Input_definition& defined);
    Expr editable(const Input_definition& defined, const Value& value, Ui_hints ui);
    void make_current(const Node& node);
    bool in_world_space(const Node& root) const;
    Expr known_zero(const std::vector<Expr>& arguments);
    Expr known_round(const std::vector<Expr>& arguments);
    void name_closure(const Expr& closure, const std::string& name);
    Expr let_value(const Expr& value) const;
    Expr noted_refusal(const Code_type& type, const std::string& reason);

    Expr image(const std::vector<Expr>& arguments);
    Expr color_image(const std::vector<Expr>& arguments);
    Expr stored_image(const std::vector<Expr>& arguments);
    Expr decoded(const std::vector<Expr>& arguments);
    Expr transform_names(const std::vector<Expr>& arguments);
    Expr cube_image(const std::vector<Expr>& arguments);
    Expr texture_set(const std::vector<Expr>& arguments);
    Expr channels_of(const std::vector<Expr>& arguments);
    Expr vertex_property(const std::vector<Expr>& arguments);
    Expr tangent_space_normal(const std::vector<Expr>& arguments);
    Expr refuse(const std::vector<Expr>& arguments);
    Expr texel(const std::vector<Expr>& arguments, bool decodes);
    Expr addressed(const Expr& coordinate, const std::string& mode);

    struct File {
        const Input* input; // null: the node's default
        const std::string& name;
        std::string color_space;
    };
    File file_of_current(const Expr& argument) const;
    std::string texture_name(const File& file) const;

    Lowering_context& m_context;
    const Node& m_shader;
    std::string m_prefix;
    const Node* m_current = nullptr;
    const Origin* m_origin = nullptr;                               // of m_current
    const Node_definition* m_definition = nullptr;                  // of m_current
    std::unordered_map<std::string, Expr> m_shared;                 // values of m_current by name
    std::unordered_map<const Node*, std::vector<Expr>> m_values;    // by output
    std::unordered_map<std::string, Expr> m_editable;               // inputs of the shader
    const std::unordered_map<std::string, Expr>* m_bound = nullptr; // inputs of a node in a node
    std::string m_name;                                             // of the value that is computed
    std::unordered_map<const Expression*, std::string> m_closure_names;
    std::unordered_map<std::string, Expr> m_lets; // values by the names of their variables
    Expr m_blur;
    Statements m_statements;
};

} // namespace reference_host

#endif

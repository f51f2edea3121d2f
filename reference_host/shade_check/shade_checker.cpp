#include "reference_host/shade_check/shade_checker.h"

#include "reference_host/library/library_scope.h"
#include "reference_host/lowering/closures.h"
#include "reference_host/lowering/document_values.h"
#include "reference_host/lowering/scene_values.h"
#include "reference_host/nodes/node_library.h"
#include "reference_host/shading/verifier.h"

#include <algorithm>
#include <set>

namespace reference_host
{
namespace
{

// The functions that only nodes may call, since they look at the document. The type of the result
// is a type, or where the other types come from: an argument by its number, or the output.
enum class Result_of { type, argument, output };
struct Node_function {
    const char* name;
    std::vector<Base_type> parameters; // none: any type
    Result_of result;
    Base_type type;
    std::size_t argument;
};

const std::vector<Node_function>& node_functions()
{
    using K = Base_type;
    static const std::vector<Node_function> functions = {
        {"image", {K::text, K::float2, K::text, K::text, K::none}, Result_of::argument, {}, 4},
        {"color_image",
         {K::text, K::float2, K::text, K::text, K::none},
         Result_of::argument,
         {},
         4},
        {"stored_image",
         {K::text, K::float2, K::text, K::text, K::none},
         Result_of::argument,
         {},
         4},
        {"decoded", {K::text, K::none}, Result_of::argument, {}, 1},
        {"cube_image", {K::text, K::float3, K::float1}, Result_of::type, K::float3, 0},
        {"known_zero", {K::none}, Result_of::type, K::boolean, 0},
        {"known_round", {K::float2}, Result_of::type, K::boolean, 0},
        {"transform_names", {K::text, K::text}, Result_of::type, K::text, 0},
        {"texture_set", {K::integer}, Result_of::type, K::float2, 0},
        {"channels_of", {K::none, K::text}, Result_of::output, {}, 0},
        {"vertex_property", {K::text, K::none}, Result_of::argument, {}, 1},
        {"tangent_space_normal", {K::float3}, Result_of::type, K::float3, 0},
        {"refused", {K::text}, Result_of::output, {}, 0},
    };
    return functions;
}

// What an output of a node, or a value that its outputs share, may name.
class Node_scope : public Notation_scope
{
public:
    Node_scope(const Node_definition& node, const std::vector<Node_definition>& nodes,
               const Library& library)
        : m_node(node), m_nodes(nodes), m_library(library)
    {
    }

    void add_shared(const Output_definition& shared) { m_shared.insert(&shared); }
    void expect(const Code_type& type) { m_expected = type; }

    Expr find_variable(const std::string& name) override
    {
        if (const Input_definition* input = m_node.find_input(name))
            return variable(code_type(input->type), name);
        for (const Output_definition* shared : m_shared)
            if (shared->name == name)
                return variable(code_type(shared->type), name);
        if (name == "blur")
            return variable(Base_type::float1, name);
        const Expr source = find_scene_value(name);
        return source ? source : m_library.find_variable(name);
    }

    Code_type find_type(const std::string& name) override
    {
        return name == "T" ? code_type(m_node.generic) : m_library.find_type(name);
    }

    Code_type find_member(const std::string& structure, const std::string& member) override
    {
        return m_library.find_member(structure, member);
    }

    Expr node(const std::string& category, Named_values inputs) override
    {
        const auto has_category = [&](const Node_definition& other) {
            return other.category == category;
        };
        const auto found = std::find_if(m_nodes.begin(), m_nodes.end(), has_category);
        if (found == m_nodes.end())
            throw Notation_error("there is no node \"" + category + "\"");
        for (const auto& [name, value] : inputs) {
            const Input_definition* input = found->find_input(name);
            const Code_type type = input ? code_type(input->type) : Code_type();
            if (value->type != type &&
                !(component_count(value->type) == 1 && component_count(type) > 0))
                throw Notation_error("\"" + category + "\" has no such input \"" + name + "\"");
        }
        const Output_definition& output = found->outputs[0];
        return reference_host::call(category, code_type(output.type), {});
    }

    Expr call(const std::string& function, std::vector<Expr> arguments) override
    {
        for (const Node_function& known : node_functions())
            if (function == known.name)
                return node_call(known, std::move(arguments));
        if (is_closure_function(function))
            return closure_call(function, std::move(arguments));
        return m_library.call(function, std::move(arguments));
    }

private:
    Expr node_call(const Node_function& function, std::vector<Expr> arguments) const
    {
        const auto fits = [](const Expr& argument, Base_type parameter) {
            return parameter == Base_type::none || argument->type == parameter;
        };
        if (!std::equal(arguments.begin(), arguments.end(), function.parameters.begin(),
                        function.parameters.end(), fits))
            throw Notation_error("wrong arguments for \"" + std::string(function.name) + "\"");
        Code_type type = function.type;
        if (function.result == Result_of::argument)
            type = arguments[function.argument]->type;
        else if (function.result == Result_of::output)
            type = m_expected;
        return reference_host::call(function.name, type, std::move(arguments));
    }

    const Node_definition& m_node;
    const std::vector<Node_definition>& m_nodes;
    Library_scope m_library;
    std::set<const Output_definition*> m_shared;
    Code_type m_expected;
};

class Shade_checker
{
public:
    explicit Shade_checker(const std::vector<Shade_text>& files)
        : m_library(files), m_nodes(read_nodes(files))
    {
    }

    std::vector<std::string> mistakes()
    {
        for (const Library_function& function : m_library.functions())
            check([&] { check_function(function); });
        for (const Node_definition& node : m_nodes)
            check_node(node);
        return std::move(m_mistakes);
    }

private:
    template<typename Check>
    void check(Check make)
    {
        try {
            make();
        } catch (const std::runtime_error& error) {
            // One text may serve several types.
            if (std::find(m_mistakes.begin(), m_mistakes.end(), error.what()) == m_mistakes.end())
                m_mistakes.emplace_back(error.what());
        }
    }

    // Every branch is parsed, as no switch has a value here.
    void check_function(const Library_function& function)
    {
        if (find_builtin(function.head.name) != Builtin::none)
            throw Shade_error(function.text.place, "the languages have a function \"" +
                                                       function.head.name + "\" of their own");
        const auto& types = function.head.parameter_types;
        const bool generic = std::count(types.begin(), types.end(), "T") > 0;
        for (const Base_type generic_type :
             {Base_type::float1, Base_type::float2, Base_type::float3, Base_type::float4}) {
            Module module;
            add_with_callees(m_library.instance(function, generic ? generic_type : Base_type::none),
                             module.functions);
            check_module(module, function.text.place);
            if (!generic)
                return;
        }
    }

    // The function that stands there and those that it calls.
    static void check_module(const Module& module, const Place& place)
    {
        try {
            verify(module);
        } catch (const Module_error& error) {
            throw Shade_error(place, error.what());
        }
    }

    void check_node(const Node_definition& node)
    {
        Node_scope scope(node, m_nodes, m_library);
        check([&] { check_inputs(node); });
        for (const Output_definition& shared : node.shared) {
            check([&] { check_output(shared, scope); });
            scope.add_shared(shared);
        }
        for (const Output_definition& output : node.outputs)
            check([&] { check_output(output, scope); });
    }

    static void check_inputs(const Node_definition& node)
    {
        for (const Input_definition& input : node.inputs) {
            if (input.default_source.empty())
                continue;
            const Expr source = find_scene_value(input.default_source);
            if (!source || source->type != code_type(input.type))
                throw Shade_error(node.outputs[0].place,
                                  "the scene has no \"" + input.default_source +
                                      "\" of the type of input \"" + input.name + "\"");
        }
    }

    static void check_output(const Output_definition& output, Node_scope& scope)
    {
        const Code_type type = code_type(output.type);
        if (output.implementation.text.empty()) {
            if (type != Base_type::none)
                throw Shade_error(output.place, "\"" + output.name + "\" has no value");
            return;
        }
        scope.expect(type);
        const Expr value = parse_expression(output.implementation, scope);
        const bool repeated = component_count(value->type) == 1 && component_count(type) > 0;
        if (value->type != type && !repeated)
            throw Shade_error(output.place, "\"" + output.name + "\" has a value of another type");
    }

    Library m_library;
    std::vector<Node_definition> m_nodes;
    std::vector<std::string> m_mistakes;
};

} // namespace

std::vector<std::string> mistakes_in(const std::vector<Shade_text>& files)
{
    try {
        return Shade_checker(files).mistakes();
    } catch (const std::runtime_error& error) {
        return {error.what()};
    }
}

} // namespace reference_host

#include "tests/evaluator/probe.h"

#include "reference_host/library/library_scope.h"
#include "reference_host/lowering/document_values.h"
#include "reference_host/nodes/node_library.h"
#include "reference_host/passes/passes.h"
#include "reference_host/shading/shading_state.h"
#include "tests/evaluator/probe_values.h"
#include "tests/generator/generation.h"

#include <algorithm>

namespace probing
{
namespace
{

// ---- nodes ------------------------------------------------------------------

// Inputs whose text decides what a node computes, with the texts to try; "-" is the default.
struct Text_choice {
    const char* input;
    std::vector<std::string> texts;
};

const std::vector<Text_choice>& text_choices()
{
    static const std::vector<Text_choice> choices = {
        {"file", {"a.png"}},
        {"filex", {"a.png"}},
        {"filey", {"b.png"}},
        {"filez", {"c.png"}},
        {"space", {"-", "world"}},
        {"fromspace", {"-", "world", "object"}},
        {"tospace", {"-", "object", "world"}},
        {"uaddressmode", {"-", "mirror", "constant"}},
        {"vaddressmode", {"-", "clamp", "constant"}},
        {"wrapS", {"-", "mirror", "black"}},
        {"wrapT", {"-", "clamp", "black"}},
        {"geomprop", {"st"}},
        {"varname", {"displayColor"}},
    };
    return choices;
}

const Text_choice* choice_of(const Input_definition& input)
{
    for (const Text_choice& choice : text_choices())
        if (input.name == choice.input && code_type(input.type) == Base_type::text)
            return &choice;
    return nullptr;
}

std::size_t variant_count(const Node_definition& definition)
{
    std::size_t count = 1;
    for (const Input_definition& input : definition.inputs)
        if (const Text_choice* choice = choice_of(input))
            count = std::max(count, choice->texts.size());
    return count;
}

// One node with an output to ask for, in a document of its own.
struct Node_case {
    const Node_definition& definition;
    const Output_definition& output;
    std::size_t variant;
    bool exposes_whole; // numbers that are whole are parameters, too
};

std::string text_of(const Input_definition& input, const Node_case& tested)
{
    const std::size_t variant = tested.variant;
    if (input.name == "channels") // of "in", the first input
        return std::string(component_count(tested.definition.inputs[0].type) > 1 ? "yxyx" : "xxxx")
            .substr(0, static_cast<std::size_t>(component_count(tested.output.type)));
    const Text_choice* choice = choice_of(input);
    if (!choice)
        return input.value.text;
    const std::string& text = choice->texts[std::min(variant, choice->texts.size() - 1)];
    return text == "-" ? input.value.text : text;
}

std::string value_text(const Value& value)
{
    if (value.type == Value_type::boolean)
        return value.numbers[0] != 0.0 ? "true" : "false";
    std::string text;
    for (int i = 0; i < component_count(value.type); ++i) {
        const double number = value.numbers[static_cast<std::size_t>(i)];
        text += (i > 0 ? ", " : "") + (value.type == Value_type::integer
                                           ? std::to_string(static_cast<int>(number))
                                           : std::to_string(number));
    }
    return text;
}

bool is_whole(Value_type type)
{
    return type == Value_type::integer || type == Value_type::boolean;
}

std::string tested_node(const Node_case& tested, std::string& interface)
{
    const Node_definition& definition = tested.definition;
    const bool single = definition.outputs.size() == 1;
    std::string text = "<" + definition.category + " name='tested' type='" +
                       (single ? type_name(tested.output.type) : "multioutput") + "'>";
    for (const Input_definition& input : definition.inputs) {
        const std::string head =
            "<input name='" + input.name + "' type='" + std::string(type_name(input.type)) + "' ";
        if (code_type(input.type) == Base_type::text)
            text += head + "value='" + text_of(input, tested) + "'/>";
        else if (is_whole(input.type) && !tested.exposes_whole)
            text += head + "value='" + value_text(input.value) + "'/>";
        else {
            text += head + "interfacename='p_" + input.name + "'/>";
            interface += "<input name='p_" + input.name + "' type='" + type_name(input.type) +
                         "' value='" + value_text(input.value) + "'/>";
        }
    }
    return text + "</" + definition.category + ">";
}

// `row` is of a matrix.
std::string document_of(const Node_case& tested, int row)
{
    std::string interface;
    const std::string node = tested_node(tested, interface);
    const bool single = tested.definition.outputs.size() == 1;
    const std::string type = type_name(tested.output.type);
    const std::string connected = "<input name='in' type='" + type + "' nodename='tested'" +
                                  (single ? "" : " output='" + tested.output.name + "'") + "/>";
    const bool is_matrix = component_count(tested.output.type) > 4;
    const std::string row_type = tested.output.type == Value_type::matrix33 ? "vector3" : "vector4";
    const std::string shown = is_matrix
                                  ? "<extract name='shown' type='" + row_type + "'>" + connected +
                                        "<input name='index' type='integer' value='" +
                                        std::to_string(row) + "'/></extract>"
                                  : "<dot name='shown' type='" + type + "'>" + connected + "</dot>";
    return "<nodegraph name='g'>" + interface + node + shown + "</nodegraph>";
}

std::unique_ptr<Module> module_of(const Node_case& tested, int row)
{
    const auto graph = generation::graph_of(document_of(tested, row));
    const Node* shown = graph->find_node("g/shown");
    Diagnostics diagnostics;
    const auto compiled = shown ? compile_node(*graph, *shown, {}, diagnostics) : nullptr;
    return compiled ? compiled->module_after("name", "Swrc", {{"alpha_transparency", "true"}},
                                             diagnostics)
                    : nullptr;
}

std::string described(const Node_case& tested, int row)
{
    std::string text = tested.definition.category + "(";
    for (const Input_definition& input : tested.definition.inputs)
        if (text.size() < 60)
            text += std::string(type_name(input.type)) + " " + input.name + ", ";
    return text + ") " + type_name(tested.output.type) + " " + tested.output.name +
           (tested.variant > 0 ? " variant " + std::to_string(tested.variant) : "") +
           (row > 0 ? " row " + std::to_string(row) : "");
}

Probe probe_of(const Node_case& tested, int row, Module module)
{
    Probe probe{described(tested, row), std::move(module), {}, false};
    for (const Module_parameter& parameter : probe.module.parameters)
        for (const Input_definition& input : tested.definition.inputs)
            if (parameter.name == "p_" + input.name)
                probe.parameters[parameter.name] = values_for(parameter, input);
    return probe;
}

// False when the node cannot be expressed.
bool add_probes(const Node_case& tested, std::vector<Probe>& probes)
{
    const int rows = tested.output.type == Value_type::matrix33   ? 3
                     : tested.output.type == Value_type::matrix44 ? 4
                                                                  : 1;
    for (int row = 0; row < rows; ++row) {
        std::unique_ptr<Module> module = module_of(tested, row);
        if (!module && tested.exposes_whole) // some must be known
            module = module_of({tested.definition, tested.output, tested.variant, false}, row);
        if (!module)
            return false;
        probes.push_back(probe_of(tested, row, std::move(*module)));
    }
    return true;
}

// ---- library ----------------------------------------------------------------

// Gives a structure that is asked for its fields.
Expr local_structure(const std::string& type, const std::string& name, Module& module)
{
    const Expr local = variable(Code_type(type), name);
    Statements& body = module.functions.back().body;
    body.push_back(declare(local->type, name, nullptr));
    for (const Variable_declaration& field : find_structure(type)->fields)
        body.push_back(assign(field_of(local, field.name),
                              add_parameter(module, field.type, name + "_" + field.name)));
    return local;
}

Expr as_four(const Expr& value)
{
    switch (value->type.base) {
    case Base_type::float4:
        return value;
    case Base_type::float3:
        return construct(Base_type::float4, {value, literal(1.0)});
    case Base_type::float2:
        return construct(Base_type::float4, {value, literal(0.0), literal(1.0)});
    default:
        return construct(Base_type::float4, {construct(Base_type::float1, {value})});
    }
}

// The values that a result consists of.
std::vector<Expr> parts_of(const Expr& result)
{
    std::vector<Expr> parts;
    if (result->type.base == Base_type::structure)
        for (const Variable_declaration& field : find_structure(result->type.structure)->fields)
            parts.push_back(as_four(field_of(result, field.name)));
    else if (component_count(result->type) > 4)
        for (int i = 0; i < (result->type == Base_type::matrix3 ? 3 : 4); ++i)
            parts.push_back(as_four(
                index(result, integer_literal(i),
                      result->type == Base_type::matrix3 ? Base_type::float3 : Base_type::float4)));
    else
        parts.push_back(as_four(result));
    return parts;
}

void add_library_probes(const Library_instance& instance, std::vector<Probe>& probes)
{
    Module module;
    module.role = Shader_role::pattern;
    module.name = "probe";
    add_with_callees(instance, module.functions);
    module.functions.push_back(
        {Base_type::float4, "probe", {{Code_type("State"), "state", ""}}, {}});
    std::vector<Expr> arguments;
    for (const Variable_declaration& parameter : instance.function.parameters)
        if (parameter.type == Code_type("State"))
            arguments.push_back(state_variable());
        else if (parameter.type.base == Base_type::structure)
            arguments.push_back(
                local_structure(parameter.type.structure, "p_" + parameter.name, module));
        else
            arguments.push_back(add_parameter(module, parameter.type, "p_" + parameter.name));
    const Expr result = variable(instance.function.type, "result");
    module.functions.back().body.push_back(declare(
        result->type, "result", call(instance.function.name, result->type, std::move(arguments))));
    int number = 0;
    for (const Expr& part : parts_of(result)) {
        Module asked = module;
        asked.functions.back().body.push_back(return_value(part));
        run_passes(asked, {all_switches(), nullptr, "", {}}, "prune");
        Probe probe{instance.function.name + " " + std::to_string(number++), asked, {}, false};
        for (const Module_parameter& parameter : asked.parameters)
            probe.parameters[parameter.name] = values_for(parameter, Input_definition());
        probes.push_back(std::move(probe));
    }
}

} // namespace

std::vector<Probe> node_probes(std::vector<std::string>& refused)
{
    std::vector<Probe> probes;
    for (const Node_definition& definition : all_definitions())
        for (const Output_definition& output : definition.outputs) {
            if (component_count(output.type) == 0)
                continue; // texts and shaders
            for (std::size_t variant = 0; variant < variant_count(definition); ++variant)
                if (!add_probes({definition, output, variant, true}, probes) &&
                    std::find(refused.begin(), refused.end(), definition.category) == refused.end())
                    refused.push_back(definition.category);
        }
    return probes;
}

std::vector<Probe> library_probes()
{
    std::vector<Probe> probes;
    for (const Library_function& function : standard_library().functions()) {
        const auto& types = function.head.parameter_types;
        const bool generic = std::count(types.begin(), types.end(), "T") > 0;
        for (const Base_type generic_type :
             {Base_type::float1, Base_type::float2, Base_type::float3, Base_type::float4}) {
            add_library_probes(
                standard_library().instance(function, generic ? generic_type : Base_type::none),
                probes);
            if (!generic)
                break;
        }
    }
    return probes;
}

std::vector<Probe> material_probes()
{
    std::vector<Probe> probes;
    for (const generation::Test_document& document : generation::all_documents())
        for (const std::string& node : generation::exported_nodes(*document.graph)) {
            Diagnostics diagnostics;
            const auto compiled =
                compile_group(*document.graph, generation::lit_by_all(node), {}, diagnostics);
            const auto module = compiled ? compiled->module_after("name", "GL",
                                                                  {{"internal_space", "world"},
                                                                   {"alpha_transparency", "true"}},
                                                                  diagnostics)
                                         : nullptr;
            if (!module)
                continue;
            Probe probe{document.name + " " + node, *module, {}, true};
            for (const Module_parameter& parameter : module->parameters) {
                Input_definition input;
                input.min = parameter.range.min.value_or(0.0);
                input.max = parameter.range.max.value_or(1.0);
                probe.parameters[parameter.name] = values_for(parameter, input);
            }
            probes.push_back(std::move(probe));
        }
    return probes;
}

Shading_value truth(const Probe& probe, std::size_t set)
{
    Evaluation_inputs inputs;
    for (const auto& [name, values] : state_fields())
        inputs.state.fields[name] = values[set];
    inputs.variables = host_values();
    for (const auto& [name, values] : probe.parameters)
        inputs.variables[name] = values[set];
    inputs.look_up = [](const std::string&, const Shading_value& place) { return texel_at(place); };
    return evaluate(probe.module, inputs);
}

} // namespace probing

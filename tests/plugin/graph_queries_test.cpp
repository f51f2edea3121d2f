// Questions about a node and what is connected to it.
#include "export_common/graph_queries.h"

#include "exporter_base/bytes.h"
#include "reference_host/recording_host/recording_host.h"

#include <gmock/gmock.h>

#include <limits>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::SizeIs;

struct Usage {
    bool lights;
    bool environment;
};

bool operator==(const Usage& left, const Usage& right)
{
    return left.lights == right.lights && left.environment == right.environment;
}

void PrintTo(const Usage& usage, std::ostream* stream)
{
    *stream << "lights " << usage.lights << ", environment " << usage.environment;
}

Usage usage_of(Recording_host& host, const Scripted_node& node, Usage before = {false, false})
{
    determine_subshader_usage(host.node(node), before.lights, before.environment);
    return before;
}

constexpr Usage none = {false, false};
constexpr Usage lights = {true, false};
constexpr Usage environment = {false, true};
constexpr Usage both = {true, true};

Scripted_node& add_material(Recording_host& host, const char* name)
{
    Scripted_node& node = host.add_node(name);
    node.is_group = true;
    node.is_material = true;
    return node;
}

// ---- one node

TEST(Is_material, asks_the_group_and_releases_what_it_asked)
{
    Recording_host host;
    Scripted_node& plain = host.add_node("plain");
    Scripted_node& group = host.add_node("group");
    group.is_group = true;
    EXPECT_FALSE(is_material(host.node(plain)));
    EXPECT_FALSE(is_material(host.node(group)));
    EXPECT_TRUE(is_material(host.node(add_material(host, "glass"))));
    EXPECT_FALSE(is_material(nullptr));
    EXPECT_THAT(
        host.calls("declaration of glass"),
        ElementsAre("declaration of glass.get_interface(10)", "declaration of glass.release()"));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Shader_name, of_a_material_names_its_surface)
{
    Recording_host host;
    EXPECT_EQ(to_bytes(get_shader_name(host.node(add_material(host, "glass")))), "glass_surface");
    EXPECT_EQ(to_bytes(get_shader_name(host.node(host.add_node("glass")))), "glass");
    EXPECT_EQ(to_bytes(get_shader_name(host.node(host.add_node(std::nullopt)))), "");
    EXPECT_EQ(to_bytes(get_shader_name(host.node(host.add_node("\xff\xc3\xa9")))), "\xff\xc3\xa9");
    Scripted_node& nameless = add_material(host, "");
    nameless.name = std::nullopt;
    EXPECT_EQ(to_bytes(get_shader_name(host.node(nameless))), "_surface");
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Shader_kind, surface_is_null_or_exactly_surface)
{
    struct Case {
        Text kind;
        bool surface;
    };
    const Case cases[] = {{std::nullopt, true}, {"surface", true}, {"Surface", false},
                          {"", false},          {"light", false},  {"surface ", false}};
    Recording_host host;
    for (const Case& c : cases) {
        Scripted_node& node = host.add_node("node");
        node.kind = c.kind;
        EXPECT_EQ(is_surface_kind(get_shader_kind(host.node(node))), c.surface)
            << c.kind.value_or("null");
    }
}

TEST(Subshader_usage, each_parameter_and_function_has_its_meaning)
{
    struct Case {
        const char* parameter;
        const char* function;
        Usage usage;
    };
    const Case cases[] = {
        {"lights", "", lights},
        {"", "direct_light", lights},
        {"", "reflect_environment", environment},
        {"", "refract_environment", environment},
        {"", "trace_environment", environment},
        {"", "trace_immediate", environment},
        {"", "trace", environment},
        {"lights", "trace", both},
        {"light", "", none}, // whole words
        {"", "lights", none},
        {"direct_light", "", none},
        {"", "TRACE", none},
        {"", "", none},
    };
    for (const Case& c : cases) {
        Recording_host host;
        Scripted_node& node = host.add_node("node");
        node.parameters = {c.parameter};
        node.functions = {c.function};
        EXPECT_EQ(usage_of(host, node), c.usage) << c.parameter << " " << c.function;
        EXPECT_THAT(host.problems(), IsEmpty());
    }
}

TEST(Subshader_usage, questions_come_in_a_fixed_order)
{
    Recording_host host;
    usage_of(host, host.add_node("node"));
    EXPECT_THAT(host.log(),
                ElementsAre("node.get_declaration()",
                            // is it a material?
                            "node.get_declaration()", "declaration of node.get_interface(10)",
                            "declaration of node.release()",
                            // the declaration
                            "declaration of node.has_parameter(\"lights\")",
                            "declaration of node.uses_function(\"direct_light\")",
                            "declaration of node.uses_function(\"reflect_environment\")",
                            "declaration of node.uses_function(\"refract_environment\")",
                            "declaration of node.uses_function(\"trace_environment\")",
                            "declaration of node.uses_function(\"trace_immediate\")",
                            "declaration of node.uses_function(\"trace\")",
                            "declaration of node.release()",
                            // the inputs
                            "node.get_input_iterator(0)", "inputs of node.reset()",
                            "inputs of node.at_end()", "inputs of node.release()"));
}

TEST(Subshader_usage, environment_questions_stop_at_the_first_yes)
{
    Recording_host host;
    Scripted_node& node = host.add_node("node");
    node.functions = {"refract_environment", "trace"};
    usage_of(host, node);
    EXPECT_THAT(host.calls("declaration of node.uses_function"),
                ElementsAre("declaration of node.uses_function(\"direct_light\")",
                            "declaration of node.uses_function(\"reflect_environment\")",
                            "declaration of node.uses_function(\"refract_environment\")"));
}

TEST(Subshader_usage, flags_are_never_cleared)
{
    Recording_host host;
    const Scripted_node& node = host.add_node("node");
    EXPECT_EQ(usage_of(host, node, both), both);
    EXPECT_EQ(usage_of(host, node, lights), lights);
    EXPECT_EQ(usage_of(host, node, environment), environment);
}

TEST(Subshader_usage, of_no_node_is_none)
{
    bool uses_lights = false;
    bool uses_environment = false;
    determine_subshader_usage(nullptr, uses_lights, uses_environment);
    EXPECT_FALSE(uses_lights || uses_environment);
}

// ---- materials

TEST(Subshader_usage, material_is_asked_through_its_first_member_named_surface)
{
    Recording_host host;
    Scripted_node& material = add_material(host, "glass");
    Scripted_node& decoy = host.add_node("Surface");
    decoy.functions = {"direct_light"};
    Scripted_node& surface = host.add_node("surface");
    surface.functions = {"trace"};
    Scripted_node& second = host.add_node("surface");
    second.functions = {"direct_light"};
    material.members = {nullptr, &decoy, &surface, &second};
    EXPECT_EQ(usage_of(host, material), environment);
    EXPECT_THAT(host.calls("group of glass.get_member"),
                ElementsAre("group of glass.get_member(0)", "group of glass.get_member(1)",
                            "group of glass.get_member(2)"));
    EXPECT_THAT(host.problems(), IsEmpty()); // members are lent
}

TEST(Subshader_usage, material_without_a_surface_counts_as_using_lights)
{
    Recording_host host;
    Scripted_node& material = add_material(host, "glass");
    EXPECT_EQ(usage_of(host, material), lights);
    material.members = {&host.add_node("surface shader"), &host.add_node(std::nullopt)};
    EXPECT_EQ(usage_of(host, material), lights);
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Subshader_usage, surface_of_a_material_is_not_looked_for_when_lights_are_used_already)
{
    Recording_host host;
    Scripted_node& material = add_material(host, "glass");
    Scripted_node& surface = host.add_node("surface");
    surface.functions = {"trace"};
    material.members = {&surface};
    EXPECT_EQ(usage_of(host, material, lights), lights);
    EXPECT_THAT(host.calls("group of glass"), IsEmpty());
    EXPECT_THAT(host.calls("surface"), IsEmpty());
}

TEST(Subshader_usage, material_itself_and_its_inputs_are_asked_after_its_surface)
{
    Recording_host host;
    Scripted_node& material = add_material(host, "glass");
    material.functions = {"direct_light"};
    Scripted_node& surface = host.add_node("surface");
    surface.connect(&host.add_node("below surface"));
    material.members = {&surface};
    Scripted_node& input = host.add_node("input");
    input.functions = {"trace"};
    material.connect(&input);
    EXPECT_EQ(usage_of(host, material), both);
    std::vector<std::string> asked;
    for (const std::string& call : host.log())
        if (call.find("has_parameter") != std::string::npos)
            asked.push_back(call.substr(0, call.find('.')));
    EXPECT_THAT(asked, ElementsAre("declaration of surface", "declaration of below surface",
                                   "declaration of glass", "declaration of input"));
}

TEST(Subshader_usage, group_that_is_not_a_material_is_asked_itself)
{
    Recording_host host;
    Scripted_node& group = host.add_node("group");
    group.is_group = true;
    Scripted_node& surface = host.add_node("surface");
    surface.functions = {"direct_light"};
    group.members = {&surface};
    EXPECT_EQ(usage_of(host, group), none);
}

// ---- the walk

TEST(Subshader_usage, finds_what_is_deep_in_the_graph)
{
    Recording_host host;
    Scripted_node& root = host.add_node("root");
    Scripted_node& first = host.add_node("first");
    Scripted_node& second = host.add_node("second");
    Scripted_node& deep = host.add_node("deep");
    deep.functions = {"trace"};
    second.functions = {"direct_light"};
    first.connect(nullptr); // a connection without a source
    first.connect(&deep);
    root.inputs = {{}, {&first, nullptr}, {&second}};
    EXPECT_EQ(usage_of(host, root), both);
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Subshader_usage, walk_goes_connection_by_connection)
{
    Recording_host host;
    Scripted_node& root = host.add_node("root");
    root.inputs = {{&host.add_node("leaf")}};
    usage_of(host, root);
    std::vector<std::string> walk;
    for (const std::string& call : host.log())
        if (call.find("declaration") == std::string::npos)
            walk.push_back(call);
    EXPECT_THAT(walk,
                ElementsAre("root.get_input_iterator(0)", "inputs of root.reset()",
                            "inputs of root.at_end()", "inputs of root.get_connections()",
                            "connections of root.reset()", "connections of root.at_end()",
                            "connections of root.get_source_node()", "leaf.get_input_iterator(0)",
                            "inputs of leaf.reset()", "inputs of leaf.at_end()",
                            "inputs of leaf.release()", "connections of root.next(1)",
                            "connections of root.at_end()", "connections of root.release()",
                            "inputs of root.next(1)", "inputs of root.at_end()",
                            "inputs of root.release()", "leaf.release()"));
}

TEST(Subshader_usage, walk_stops_where_both_flags_are_set)
{
    Recording_host host;
    Scripted_node& root = host.add_node("root");
    Scripted_node& first = host.add_node("first");
    first.functions = {"trace", "direct_light"};
    root.inputs = {{&first, &host.add_node("second")}, {&host.add_node("third")}};
    EXPECT_EQ(usage_of(host, root), both);
    EXPECT_THAT(host.calls("second"), IsEmpty());
    EXPECT_THAT(host.calls("third"), IsEmpty());
    EXPECT_THAT(host.calls("inputs of root.next"), IsEmpty());
    EXPECT_THAT(host.calls("connections of root.next"), IsEmpty());
    const std::vector<std::string> releases = host.releases();
    const auto connections = std::find(releases.begin(), releases.end(), "connections of root");
    const auto inputs = std::find(releases.begin(), releases.end(), "inputs of root");
    EXPECT_LT(connections - releases.begin(), inputs - releases.begin());
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Subshader_usage, first_source_is_visited_even_when_both_flags_are_set_before)
{
    Recording_host host;
    Scripted_node& root = host.add_node("root");
    root.inputs = {{&host.add_node("first"), &host.add_node("second")}};
    usage_of(host, root, both);
    EXPECT_THAT(host.calls("first.get_declaration"), Not(IsEmpty()));
    EXPECT_THAT(host.calls("second"), IsEmpty());
}

TEST(Subshader_usage, shared_node_is_walked_once_but_every_connection_is_asked)
{
    Recording_host host;
    Scripted_node& root = host.add_node("root");
    Scripted_node& shared = host.add_node("shared");
    root.inputs = {{&shared, &shared}, {&shared}};
    usage_of(host, root);
    EXPECT_THAT(host.calls("connections of root.get_source_node()"), SizeIs(3));
    EXPECT_THAT(host.calls("shared.get_input_iterator"), SizeIs(1));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Subshader_usage, cost_does_not_grow_with_the_number_of_paths)
{
    Recording_host host;
    Scripted_node* above = &host.add_node("bottom");
    above->functions = {"trace"};
    for (int level = 0; level < 40; ++level) { // two ways down at each level: 2^40 paths
        Scripted_node& node = host.add_node("level");
        node.inputs = {{above}, {above}};
        above = &node;
    }
    EXPECT_EQ(usage_of(host, *above), environment);
    EXPECT_THAT(host.calls("connections of level.get_source_node"), SizeIs(80));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Subshader_usage, cycle_ends_the_walk)
{
    Recording_host host;
    Scripted_node& root = host.add_node("root");
    Scripted_node& other = host.add_node("other");
    other.functions = {"trace"};
    root.inputs = {{&root, &other}};
    other.inputs = {{&other, &root}};
    EXPECT_EQ(usage_of(host, root), environment);
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Subshader_usage, material_that_is_its_own_surface_ends_the_walk)
{
    Recording_host host;
    Scripted_node& material = add_material(host, "surface");
    material.members = {&material};
    usage_of(host, material);
    Scripted_node& other = add_material(host, "surface");
    material.members = {&other};
    other.members = {&material};
    usage_of(host, material);
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(Subshader_usage, chain_of_200000_nodes_needs_no_deep_stack)
{
    Recording_host host;
    host.set_keeps_log(false);
    Scripted_node* above = &host.add_node("bottom");
    above->functions = {"direct_light"};
    for (int i = 0; i < 200000; ++i) {
        Scripted_node& node = host.add_node("link");
        node.connect(above);
        above = &node;
    }
    EXPECT_EQ(usage_of(host, *above), lights);
    EXPECT_THAT(host.problems(), IsEmpty());
}

// Whatever single call fails: no crash, nothing kept.
TEST(Subshader_usage, host_may_fail_at_any_call)
{
    for (int failing = 1;; ++failing) {
        Recording_host host;
        Scripted_node& material = add_material(host, "glass");
        Scripted_node& surface = host.add_node("surface");
        surface.inputs = {{&host.add_node("a"), &host.add_node("b")}, {&host.add_node("c")}};
        material.members = {&surface};
        material.connect(&surface);
        host.set_failing_call(failing);
        usage_of(host, material);
        EXPECT_THAT(host.problems(), IsEmpty()) << "call " << failing << " failed";
        if (host.fallible_calls() < failing)
            break;
    }
}

// A group that speaks of as many members as there are numbers, and has none of them.
class Endless_material : public TSDK::IGraph_node,
                         public TSDK::IShader_declaration,
                         public TSDK::IShader_group
{
public:
    TSDK::Interface* get_interface(int) override { return static_cast<TSDK::IShader_group*>(this); }
    int get_interface_target() const override { return 0; }
    void reference() const override {}
    void release() const override {}

    const char* get_name() override { return "endless"; }
    TSDK::IShader_declaration* get_declaration() override { return this; }
    TSDK::IInput_iterator* get_input_iterator(int) override { return nullptr; }
    const char* get_shader_type() override { return "surface"; }
    bool has_parameter(const char*) override { return false; }
    bool uses_function(const char*) override { return false; }
    int get_num_members() override { return std::numeric_limits<int>::max(); }
    TSDK::IGraph_node* get_member(int) override
    {
        ++asked;
        return nullptr;
    }
    bool is_material() override { return true; }

    int asked = 0;
};

TEST(Subshader_usage, group_of_endless_members_is_given_up)
{
    Endless_material material;
    bool uses_lights = false;
    bool uses_environment = false;
    determine_subshader_usage(&material, uses_lights, uses_environment);
    EXPECT_TRUE(uses_lights); // as without a surface
    EXPECT_EQ(material.asked, 1 << 20);
}

} // namespace TEST
} // namespace QZ

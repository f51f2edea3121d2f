// The order of the virtual operations, checked through the virtual tables themselves: both sides
// call each other by slot number, without each other's headers.
#include "export_common/compile_group.h"
#include "export_common/graph_queries.h"
#include "exporter_base/bytes.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_maya.h"
#include "plugin/init_library.h"
#include "tests/support/message_boxes.h"

#include <gmock/gmock.h>

#include <cstring>
#include <string>
#include <vector>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;

// ---- the host calls the plug-in

// Calls operation `slot` of an object as a host does that has no header: as a function whose first
// argument is the object.
template<typename Result, typename... Arguments>
Result call_slot(const void* object, int slot, Arguments... arguments)
{
    using Function = Result (*)(const void*, Arguments...);
    void* const* table = *static_cast<void* const* const*>(object);
    return reinterpret_cast<Function>(table[slot])(object, arguments...);
}

TEST(Virtual_tables, plugin_answers_by_slot)
{
    void* const plugin = initializer(0);
    EXPECT_EQ(call_slot<int>(plugin, 0), 2);
    EXPECT_STREQ(call_slot<const char*>(plugin, 1), "Tovira_exporter_plugin");
    EXPECT_STREQ(call_slot<const char*>(plugin, 2), "Exporter_plugin");
    EXPECT_EQ(call_slot<int>(plugin, 3), 1);
    EXPECT_STREQ(call_slot<const char*>(plugin, 4), "");
    call_slot<void>(plugin, 5);
    const char* value = nullptr;
    EXPECT_EQ(call_slot<int>(plugin, 6, 0, &value), 0);
    EXPECT_EQ(call_slot<int>(plugin, 9), 8);
    EXPECT_EQ(call_slot<void*>(plugin, 10, 8), nullptr);
    void* const exporter = call_slot<void*>(plugin, 10, 3);
    EXPECT_STREQ(call_slot<const char*>(exporter, 13), "Autodesk Maya (CgFX)");
    call_slot<void>(exporter, 15); // the deleting destructor
    call_slot<void>(plugin, 8);
}

TEST(Virtual_tables, exporter_answers_by_slot)
{
    Exporter_maya object;
    TSDK::IExporter* const exporter = &object;
    call_slot<void>(exporter, 19); // initialize
    call_slot<void>(exporter, 0);
    call_slot<void>(exporter, 1);
    EXPECT_EQ(call_slot<void*>(exporter, 2, 26), exporter);
    EXPECT_EQ(call_slot<void*>(exporter, 2, 25), nullptr);
    EXPECT_EQ(call_slot<int>(exporter, 3), 26);
    EXPECT_FALSE((call_slot<bool, void*, void*>(exporter, 4, nullptr, nullptr)));
    EXPECT_EQ((call_slot<int, unsigned long long, int, void*>(exporter, 5, 0, 100, nullptr)), 0);
    EXPECT_FALSE((call_slot<bool, void*, bool>(exporter, 6, nullptr, false)));
    call_slot<void>(exporter, 7, 10, 10);
    EXPECT_EQ(call_slot<unsigned int>(exporter, 8), 3u);
    EXPECT_STREQ(call_slot<const char*>(exporter, 9, 0u),
                 "tovira_exporter_Autodesk_Maya_(CgFX)_CgFX_exportfile_filter_index");
    call_slot<void>(exporter, 12, 0u, "7");
    EXPECT_STREQ(call_slot<const char*>(exporter, 10, 0u), "0");
    EXPECT_STREQ(call_slot<const char*>(exporter, 11, 0u), "7");
    EXPECT_STREQ(call_slot<const char*>(exporter, 13), "Autodesk Maya (CgFX)");
    EXPECT_STREQ(call_slot<const char*>(exporter, 22), "CgFX");
    ::testing::internal::CaptureStderr();
    call_slot<void>(exporter, 20);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(),
                ::testing::StartsWith("DEBUG: Exporter_base::debug_dump_exporter_setting: # of "
                                      "entries = 6\n"));
    call_slot<void, void*, bool>(exporter, 17, nullptr, true);
}

// Operations that return a text object take the place for it as a hidden first argument, which only
// the compiler writes well: a member pointer knows its slot as 1 + its place in the table.
template<typename Member>
long slot_of(Member member)
{
    long encoded[2];
    static_assert(sizeof member == sizeof encoded, "the common C++ ABI");
    std::memcpy(encoded, &member, sizeof encoded);
    return (encoded[0] - 1) / static_cast<long>(sizeof(void*));
}

TEST(Virtual_tables, extension_points_have_their_slots)
{
    EXPECT_EQ(slot_of(&Exporter_base::create_window), 16);
    EXPECT_EQ(slot_of(&Exporter_base::window_closing), 17);
    EXPECT_EQ(slot_of(&Exporter_base::get_exporter_setting), 18);
    EXPECT_EQ(slot_of(&Exporter_base::initialize), 19);
    EXPECT_EQ(slot_of(&Exporter_base::debug_dump_exporter_setting), 20);
    EXPECT_EQ(slot_of(&Exporter_base::get_exportfile_wildcard_all), 21);
    EXPECT_EQ(slot_of(&Exporter_base::get_language), 22);
    EXPECT_EQ(slot_of(&Exporter_generic::get_exportfile_wildcard), 23);
    EXPECT_EQ(slot_of(&Exporter_generic::get_extension), 24);
    EXPECT_EQ(slot_of(&Exporter_generic::get_chooser_caption), 25);
}

// ---- the plug-in calls the host

TEST(Virtual_tables, host_operations_have_their_slots)
{
    using namespace TSDK;
    EXPECT_EQ(slot_of(&ITovira::get_search_paths), 8);
    EXPECT_EQ(slot_of(&IPreferences::get_bool_preference), 8);
    EXPECT_EQ(slot_of(&ITovira_compiler::create_options), 4);
    EXPECT_EQ(slot_of(&ITovira_compiler::get_errors), 5);
    EXPECT_EQ(slot_of(&ITovira_compiler::compile_shader), 8);
    EXPECT_EQ(slot_of(&ITovira_compiler::compile), 10);
    EXPECT_EQ(slot_of(&ICompiler_options::set_option), 4);
    EXPECT_EQ(slot_of(&ICompilation_unit::generate_shader), 4);
    EXPECT_EQ(slot_of(&ICompilation_unit::uses_state), 15);
    EXPECT_EQ(slot_of(&IGenerated_shader::get_num_codes), 5);
    EXPECT_EQ(slot_of(&IGenerated_shader::get_code_size), 7);
    EXPECT_EQ(slot_of(&IGenerated_shader::get_code), 8);
    EXPECT_EQ(slot_of(&IGraph_view::get_graph), 4);
    EXPECT_EQ(slot_of(&IGraph_view::get_environment_shader), 14);
    EXPECT_EQ(slot_of(&IGraph_view::get_volume_shader), 15);
    EXPECT_EQ(slot_of(&IGraph_view::get_num_lights), 16);
    EXPECT_EQ(slot_of(&IGraph_view::get_light), 17);
    EXPECT_EQ(slot_of(&IGraph_view::get_light_type), 18);
    EXPECT_EQ(slot_of(&IGraph_view::get_light_spread), 19);
    EXPECT_EQ(slot_of(&IGraph_view::get_light_distance_limit), 20);
    EXPECT_EQ(slot_of(&IGraph_view::get_num_selected_nodes), 24);
    EXPECT_EQ(slot_of(&IGraph_view::get_selected_node), 25);
    EXPECT_EQ(slot_of(&IGraph_view::get_scene_ambient), 26);
    EXPECT_EQ(slot_of(&IGraph_node::get_name), 4);
    EXPECT_EQ(slot_of(&IGraph_node::get_declaration), 6);
    EXPECT_EQ(slot_of(&IGraph_node::get_input_iterator), 12);
    EXPECT_EQ(slot_of(&IGraph_node::get_shader_type), 20);
    EXPECT_EQ(slot_of(&IShader_declaration::has_parameter), 19);
    EXPECT_EQ(slot_of(&IShader_declaration::uses_function), 20);
    EXPECT_EQ(slot_of(&IShader_group::get_num_members), 4);
    EXPECT_EQ(slot_of(&IShader_group::get_member), 5);
    EXPECT_EQ(slot_of(&IShader_group::is_material), 11);
    EXPECT_EQ(slot_of(&IInput_iterator::reset), 4);
    EXPECT_EQ(slot_of(&IInput_iterator::next), 5);
    EXPECT_EQ(slot_of(&IInput_iterator::at_end), 7);
    EXPECT_EQ(slot_of(&IInput_iterator::get_connections), 14);
    EXPECT_EQ(slot_of(&IConnection_iterator::reset), 4);
    EXPECT_EQ(slot_of(&IConnection_iterator::next), 5);
    EXPECT_EQ(slot_of(&IConnection_iterator::at_end), 7);
    EXPECT_EQ(slot_of(&IConnection_iterator::get_source_node), 10);
}

// A host object made of nothing but a table of functions, as another compiler might have made it.
// Slots that were not filled in write "wrong slot" down.
struct Raw_object {
    static constexpr size_t slot_count = 32;

    Raw_object();

    void* const* table;
    void* slots[slot_count];
};

std::vector<std::string> raw_calls;

void wrong_slot(void*)
{
    raw_calls.push_back("wrong slot");
}

Raw_object::Raw_object() : table(slots)
{
    for (void*& slot : slots)
        slot = reinterpret_cast<void*>(wrong_slot);
    slots[1] = reinterpret_cast<void*>(+[](void*) { raw_calls.push_back("release"); });
}

template<typename Function>
void* operation(Function function)
{
    return reinterpret_cast<void*>(+function);
}

// The smallest walk: a node without declaration, one input, one connection without a source.
TEST(Virtual_tables, walk_calls_the_host_by_slot)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer looks for type information in every table";
#endif
    static Raw_object connections;
    static Raw_object inputs;
    static Raw_object node;
    static int steps;
    raw_calls.clear();
    steps = 0;
    node.slots[6] = operation([](void*) -> void* {
        raw_calls.push_back("get_declaration");
        return nullptr;
    });
    node.slots[12] = operation([](void*, int kind) -> void* {
        raw_calls.push_back("get_input_iterator " + std::to_string(kind));
        return &inputs;
    });
    inputs.slots[4] = operation([](void*) { raw_calls.push_back("reset"); });
    inputs.slots[5] = operation([](void*, int) { ++steps; });
    inputs.slots[7] = operation([](void*) { return steps > 1; });
    inputs.slots[14] = operation([](void*) -> void* { return &connections; });
    connections.slots[4] = operation([](void*) { raw_calls.push_back("reset connections"); });
    connections.slots[5] = operation([](void*, int) { ++steps; });
    connections.slots[7] = operation([](void*) { return steps > 0; });
    connections.slots[10] = operation([](void*) -> void* {
        raw_calls.push_back("get_source_node");
        return nullptr;
    });
    bool uses_lights = false;
    bool uses_environment = false;
    determine_subshader_usage(reinterpret_cast<TSDK::IGraph_node*>(&node), uses_lights,
                              uses_environment);
    EXPECT_FALSE(uses_lights || uses_environment);
    EXPECT_THAT(raw_calls,
                ElementsAre("get_declaration", "get_declaration", "get_input_iterator 0", "reset",
                            "reset connections", "get_source_node", "release", "release"));
}

} // namespace TEST
} // namespace QZ

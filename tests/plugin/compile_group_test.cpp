// Compiling the selected shader with the scene's lights, environment and volume.
#include "export_common/compile_group.h"

#include "exporter_base/bytes.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/support/message_boxes.h"
#include "tests/support/wx_test_main.h"

#include <gmock/gmock.h>

#include <clocale>

#include <wx/defs.h>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;

const char* const both_missing = "Exported shader requires lights and an environment shader,\n"
                                 "but none are assigned in the Render Settings Dialog.\n\n";
const char* const lights_missing = "Exported shader requires lights, but none are assigned in\n"
                                   "the Render Settings Dialog.\n\n";
const char* const environment_missing =
    "Exported shader requires an environment shader, but there is\n"
    "not one assigned in the Render Settings Dialog.\n\n";
const char* const non_interactive =
    " non-interactive mode, we are missing lights or some environment. return\n";

class Compile_group : public Wx_test
{
protected:
    struct Flags {
        bool resolve_unsized_arrays = false;
        bool preserve_light_loop = false;
        bool world_space = false;
        bool ignore_literal = false;
        bool interactive = true;
    };

    Compile_group() : shader(host.add_node("wood")) {}

    // Whether there was a unit, which is released.
    bool compile(const Flags& flags)
    {
        wxString text = wxT("untouched");
        TSDK::ICompilation_unit* unit = compile_group(
            host.view(), host.app(), host.errors(), host.node(shader), flags.resolve_unsized_arrays,
            flags.preserve_light_loop, flags.world_space, flags.ignore_literal, nullptr,
            flags.interactive, text);
        message = to_bytes(text);
        if (unit)
            unit->release();
        return unit != nullptr;
    }

    bool compile() { return compile(Flags()); }

    Recording_host host;
    Scripted_node& shader;
    std::string message;
};

// ---- options

TEST_F(Compile_group, every_flag_sets_its_option_in_a_fixed_order)
{
    struct Row {
        const char* name;
        const char* value;
    };
    const Row rows[] = {{"resolve_unsized_arrays", "true"},
                        {"preserve_light_loop", "true"},
                        {"internal_space", "world"},
                        {"ignore_literal", "true"}};
    for (int bits = 0; bits < 16; ++bits) {
        Recording_host fresh;
        wxString text;
        compile_group(fresh.view(), fresh.app(), fresh.errors(), fresh.node(shader), bits & 1,
                      bits & 2, bits & 4, bits & 8, nullptr, true, text);
        Options expected = {{"shader_name", "wood"}};
        for (int flag = 0; flag < 4; ++flag)
            if (bits & 1 << flag)
                expected.emplace_back(rows[flag].name, rows[flag].value);
        EXPECT_EQ(fresh.options(1), expected) << bits;
    }
}

TEST_F(Compile_group, name_is_passed_byte_for_byte_and_null_as_empty)
{
    shader.name = "\xff gr\xc3\xbc\xc3\x9f";
    compile();
    EXPECT_THAT(host.options(1), ElementsAre(Pair("shader_name", "\xff gr\xc3\xbc\xc3\x9f")));
    shader.name = std::nullopt;
    compile();
    EXPECT_THAT(host.options(2), ElementsAre(Pair("shader_name", "")));
}

TEST_F(Compile_group, no_node_has_an_empty_name)
{
    wxString text;
    compile_group(host.view(), host.app(), host.errors(), nullptr, false, false, false, false,
                  nullptr, true, text);
    EXPECT_THAT(host.options(1), ElementsAre(Pair("shader_name", "")));
}

TEST_F(Compile_group, one_light_gets_its_three_options_and_a_list_without_comma)
{
    shader.parameters = {"lights"};
    host.add_light("key", 2, 45.0f, 0.0f);
    EXPECT_TRUE(compile());
    EXPECT_THAT(host.options(1),
                ElementsAre(Pair("shader_name", "wood"), Pair("light_state0_type", "2"),
                            Pair("light_state0_spread", "45.000000"),
                            Pair("light_state0_distance_limit", "0.000000"),
                            Pair("lights", "key")));
}

TEST_F(Compile_group, lights_are_numbered_from_0_and_listed_in_order)
{
    shader.functions = {"direct_light"};
    host.add_light("a", 0, 0.5f, 100.25f);
    host.add_light("b", -1, 1e10f, -2.0f);
    host.add_light("c", 7, 0.1f, 0.0000004f);
    EXPECT_TRUE(compile());
    EXPECT_THAT(host.options(1),
                ElementsAre(Pair("shader_name", "wood"), Pair("light_state0_type", "0"),
                            Pair("light_state0_spread", "0.500000"),
                            Pair("light_state0_distance_limit", "100.250000"),
                            Pair("light_state1_type", "-1"),
                            Pair("light_state1_spread", "10000000000.000000"),
                            Pair("light_state1_distance_limit", "-2.000000"),
                            Pair("light_state2_type", "7"), Pair("light_state2_spread", "0.100000"),
                            Pair("light_state2_distance_limit", "0.000000"),
                            Pair("lights", "a, b, c")));
}

TEST_F(Compile_group, light_without_a_name_leaves_its_place_empty)
{
    shader.functions = {"direct_light"};
    host.add_light(std::nullopt);
    host.add_light("b");
    compile();
    EXPECT_EQ(option_value(host.options(1), "lights"), ", b");
}

TEST_F(Compile_group, light_count_is_fetched_again_each_round)
{
    shader.functions = {"direct_light"};
    host.add_light("a");
    host.add_light("b");
    compile();
    // the requirement, then per round the loop and the comma, the end of the loop, the list
    EXPECT_THAT(host.calls("view.get_num_lights()"), SizeIs(1 + 2 * 2 + 1 + 1));
}

TEST_F(Compile_group, lights_that_the_shader_does_not_use_are_not_sent)
{
    host.add_light("key");
    EXPECT_TRUE(compile());
    EXPECT_THAT(host.options(1), ElementsAre(Pair("shader_name", "wood")));
    EXPECT_THAT(host.calls("view.get_light("), IsEmpty());
}

TEST_F(Compile_group, preserved_light_loop_needs_and_sends_no_lights)
{
    shader.functions = {"direct_light"};
    Flags flags;
    flags.preserve_light_loop = true;
    const Message_boxes boxes;
    EXPECT_TRUE(compile(flags));
    host.add_light("key");
    EXPECT_TRUE(compile(flags));
    EXPECT_THAT(boxes.shown(), IsEmpty());
    for (const int set : {1, 2})
        EXPECT_THAT(host.options(set),
                    ElementsAre(Pair("shader_name", "wood"), Pair("preserve_light_loop", "true")));
}

TEST_F(Compile_group, environment_is_sent_only_when_used_and_volume_always)
{
    host.environment = &host.add_node("sky");
    host.volume = &host.add_node("fog");
    EXPECT_TRUE(compile());
    EXPECT_THAT(host.options(1), ElementsAre(Pair("shader_name", "wood"), Pair("volume", "fog")));
    shader.functions = {"trace"};
    EXPECT_TRUE(compile());
    EXPECT_THAT(host.options(2), ElementsAre(Pair("shader_name", "wood"),
                                             Pair("environment", "sky"), Pair("volume", "fog")));
    host.environment->name = std::nullopt;
    host.volume->name = std::nullopt;
    EXPECT_TRUE(compile());
    EXPECT_THAT(host.options(3), ElementsAre(Pair("shader_name", "wood"), Pair("environment", ""),
                                             Pair("volume", "")));
}

TEST_F(Compile_group, numbers_have_decimal_points_in_every_locale)
{
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    shader.functions = {"direct_light"};
    host.add_light("key", 1, 12.5f, 0.25f);
    compile();
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(option_value(host.options(1), "light_state0_spread"), "12.500000");
    EXPECT_EQ(option_value(host.options(1), "light_state0_distance_limit"), "0.250000");
}

// ---- what the scene lacks

TEST_F(Compile_group, missing_scene_elements_are_asked_about)
{
    struct Case {
        std::set<std::string> functions;
        const char* text;
    };
    const Case cases[] = {{{"direct_light", "trace"}, both_missing},
                          {{"direct_light"}, lights_missing},
                          {{"trace"}, environment_missing}};
    for (const Case& c : cases) {
        shader.functions = c.functions;
        const Message_boxes boxes({wxID_YES});
        EXPECT_TRUE(compile());
        EXPECT_THAT(boxes.shown(),
                    ElementsAre(Message_box{
                        "Tovira - Warning",
                        std::string(c.text) + "Are you sure you want to continue?", wxYES_NO}));
        EXPECT_EQ(message, "untouched");
    }
    for (const int set : {1, 2, 3})
        EXPECT_THAT(host.options(set), ElementsAre(Pair("shader_name", "wood")));
}

TEST_F(Compile_group, nothing_is_asked_when_nothing_is_missing)
{
    shader.functions = {"direct_light", "trace"};
    host.add_light("key");
    host.environment = &host.add_node("sky");
    const Message_boxes boxes;
    EXPECT_TRUE(compile());
    EXPECT_THAT(boxes.shown(), IsEmpty());
    EXPECT_EQ(message, "untouched");
}

TEST_F(Compile_group, no_ends_it_in_silence)
{
    shader.functions = {"direct_light"};
    host.volume = &host.add_node("fog");
    const Message_boxes boxes({wxID_NO});
    CaptureStderr();
    EXPECT_FALSE(compile());
    EXPECT_EQ(GetCapturedStderr(), "");
    EXPECT_EQ(message, "untouched");
    EXPECT_THAT(host.calls("compiler.compile"), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Compile_group, closing_the_question_goes_on)
{
    shader.functions = {"direct_light"};
    const Message_boxes boxes({wxID_CANCEL});
    EXPECT_TRUE(compile());
}

TEST_F(Compile_group, without_a_user_missing_elements_fail)
{
    struct Case {
        std::set<std::string> functions;
        const char* text;
    };
    const Case cases[] = {{{"direct_light", "trace"}, both_missing},
                          {{"direct_light"}, lights_missing},
                          {{"trace"}, environment_missing}};
    Flags flags;
    flags.interactive = false;
    const Message_boxes boxes;
    for (const Case& c : cases) {
        shader.functions = c.functions;
        CaptureStderr();
        EXPECT_FALSE(compile(flags));
        EXPECT_EQ(GetCapturedStderr(), std::string(c.text) + non_interactive);
        EXPECT_EQ(message, c.text);
    }
    EXPECT_THAT(boxes.shown(), IsEmpty());
    EXPECT_THAT(host.calls("compiler.compile"), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

// ---- calls and releases

TEST_F(Compile_group, calls_come_in_a_fixed_order)
{
    shader.functions = {"direct_light", "trace"};
    host.add_light("key");
    host.environment = &host.add_node("sky");
    host.volume = &host.add_node("fog");
    EXPECT_TRUE(compile());
    std::vector<std::string> calls;
    for (const std::string& call : host.log())
        if (call.find("wood") == std::string::npos && call.find("set_option") == std::string::npos)
            calls.push_back(call);
    EXPECT_THAT(calls,
                ElementsAre("app.get_interface(2)", "compiler.create_options()",
                            "view.get_environment_shader()", "view.get_volume_shader()",
                            "view.get_num_lights()", "view.get_num_lights()", "view.get_light(0)",
                            "key.get_name()", "view.get_num_lights()", "key.release()",
                            "view.get_light_type(0)", "view.get_light_spread(0)",
                            "view.get_light_distance_limit(0)", "view.get_num_lights()",
                            "view.get_num_lights()", "sky.get_name()", "fog.get_name()",
                            "view.get_graph()", "compiler.compile(graph, errors, options 1)",
                            "graph.release()", "compiler.release()", "options 1.release()",
                            "sky.release()", "fog.release()", "unit 1.release()"));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Compile_group, refusal_releases_in_its_own_order)
{
    shader.functions = {"direct_light"};
    host.environment = &host.add_node("sky");
    host.volume = &host.add_node("fog");
    const Message_boxes boxes({wxID_NO});
    EXPECT_FALSE(compile());
    std::vector<std::string> releases = host.releases();
    releases.erase(releases.begin(), releases.end() - 4);
    EXPECT_THAT(releases, ElementsAre("sky", "fog", "compiler", "options 1"));
}

TEST_F(Compile_group, failure_of_the_compiler_is_null_without_a_message)
{
    host.compiles = false;
    CaptureStderr();
    EXPECT_FALSE(compile());
    EXPECT_EQ(GetCapturedStderr(), "");
    EXPECT_EQ(message, "untouched");
    EXPECT_THAT(host.calls("compiler.compile("), SizeIs(1));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Compile_group, nothing_is_compiled_without_a_view_or_an_application)
{
    wxString text;
    EXPECT_EQ(compile_group(nullptr, host.app(), host.errors(), host.node(shader), false, false,
                            false, false, nullptr, true, text),
              nullptr);
    EXPECT_EQ(compile_group(host.view(), nullptr, host.errors(), host.node(shader), false, false,
                            false, false, nullptr, true, text),
              nullptr);
    EXPECT_THAT(host.calls("compiler.compile("), IsEmpty());
}

TEST_F(Compile_group, sink_for_errors_may_be_null)
{
    wxString text;
    TSDK::ICompilation_unit* unit =
        compile_group(host.view(), host.app(), nullptr, host.node(shader), false, false, false,
                      false, nullptr, true, text);
    ASSERT_NE(unit, nullptr);
    unit->release();
    EXPECT_THAT(host.calls("compiler.compile("),
                ElementsAre("compiler.compile(graph, null, options 1)"));
}

TEST_F(Compile_group, host_may_fail_at_any_call)
{
    const Message_boxes boxes;
    for (int failing = 1;; ++failing) {
        Recording_host fragile;
        Scripted_node& node = fragile.add_node("wood");
        node.functions = {"direct_light", "trace"};
        fragile.add_light("key");
        fragile.environment = &fragile.add_node("sky");
        fragile.volume = &fragile.add_node("fog");
        fragile.set_failing_call(failing);
        wxString text;
        TSDK::ICompilation_unit* unit =
            compile_group(fragile.view(), fragile.app(), fragile.errors(), fragile.node(node), true,
                          false, true, true, nullptr, true, text);
        if (unit)
            unit->release();
        EXPECT_THAT(fragile.problems(), IsEmpty()) << "call " << failing << " failed";
        if (fragile.fallible_calls() < failing)
            break;
    }
}

} // namespace TEST
} // namespace QZ

// The export for CATIA, and the text of its lights.
#include "exporters/exporter_catia.h"

#include "exporter_base/bytes.h"
#include "exporters/catia_lights.h"
#include "tests/plugin/export_test.h"

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

Options catia_options(const char* flip)
{
    return {{"annotation_map", "catia.axml"},
            {"interfaces", "true"},
            {"two_sided", "true"},
            {"vertex_shader_profile", "vp40"},
            {"fragment_shader_profile", "fp40"},
            {"shader_type", "surface"},
            {"generate_umapped_annotations", "false"},
            {"vs_binding_tangent", "TANGENT"},
            {"vs_binding_binormal", "BINORMAL"},
            {"rotate_cube_map", "true"},
            {"flip_tex2d_v", flip},
            {"alpha_transparency", "true"},
            {"add_default_states", "true"},
            {"generate_texture_parameters", "false"},
            {"catia_siggraph_hack", "true"},
            {"generate_sampler_states", "true"},
            {"light_interface_name", "Light"},
            {"light_list_name", "lights"},
            {"eval_volume", "false"},
            {"light_interfaces_only", "true"},
            {"normals_face_forward", "true"},
            {"scene_ambient", "float4(0.00,0.00,0.00,1.00)"}};
}

const Options tangent_options = {
    {"fx_header", "int NeedTandB = 1;\n"}, {"vs_binding_tangent", "TEXCOORD1"},
    {"vs_binding_binormal", "TEXCOORD2"},  {"vs_binding_texcoord0", "TEXCOORD0"},
    {"vs_binding_texcoord1", "TEXCOORD3"}, {"vs_binding_texcoord2", "TEXCOORD4"},
    {"vs_binding_texcoord3", "TEXCOORD5"}};

class Exporter_catia_test : public Export_test
{
protected:
    std::string run(const std::string& path, bool interactive = true)
    {
        wxString error = wxT("old");
        const bool done = export_catia_shader(host.app(), host.view(), from_bytes(path.c_str()),
                                              nullptr, interactive, error);
        EXPECT_EQ(done, error.empty());
        return to_bytes(error);
    }

    std::string run() { return run(folder.file("a.fx")); }
};

TEST_F(Exporter_catia_test, options_are_set_in_order)
{
    EXPECT_EQ(run(), "");
    EXPECT_EQ(host.options(1), catia_options("false"));
    EXPECT_EQ(host.options(2), (Options{{"shader_name", "wood"}, {"preserve_light_loop", "true"}}));
}

TEST_F(Exporter_catia_test, tangents_follow_copyright_and_override_the_bindings)
{
    const Temporary_folder search_path;
    search_path.write("user_copyright.txt", "(c)");
    host.search_paths = {search_path.path()};
    host.states = {"tangent_space"};
    EXPECT_EQ(run(), "");
    Options expected = catia_options("false");
    expected.emplace_back("user_copyright", "(c)");
    expected.insert(expected.end(), tangent_options.begin(), tangent_options.end());
    EXPECT_EQ(host.options(1), expected);
}

TEST_F(Exporter_catia_test, tangent_questions_stop_at_the_first_yes)
{
    const char* const states[] = {"texture_tangent", "texture_binormal", "tangent_space"};
    for (size_t first_yes = 0; first_yes < 4; ++first_yes) {
        Recording_host fresh;
        fresh.add_selected_node("wood");
        for (size_t i = first_yes; i < 3; ++i)
            fresh.states.insert(states[i]);
        wxString error;
        export_catia_shader(fresh.app(), fresh.view(), from_bytes(folder.file("a.fx").c_str()),
                            nullptr, true, error);
        std::vector<std::string> questions;
        for (size_t i = 0; i <= first_yes && i < 3; ++i)
            questions.push_back(std::string("unit 1.uses_state(0, \"") + states[i] + "\")");
        EXPECT_EQ(fresh.calls("unit 1.uses_state"), questions);
        EXPECT_EQ(option_value(fresh.options(1), "fx_header"),
                  first_yes < 3 ? "int NeedTandB = 1;\n" : "<not set>");
    }
}

TEST_F(Exporter_catia_test, flip_follows_the_preference_and_is_off_without_it)
{
    struct Case {
        bool has_preferences;
        std::map<std::string, bool> preferences;
        const char* flip;
    };
    const Case cases[] = {{true, {}, "false"},
                          {true, {{"cg_flip_tex2d_v", true}}, "true"},
                          {true, {{"cg_flip_tex2d_v", false}}, "false"},
                          {false, {{"cg_flip_tex2d_v", true}}, "false"}};
    for (const Case& c : cases) {
        Recording_host fresh;
        fresh.add_selected_node("wood");
        fresh.has_preferences = c.has_preferences;
        fresh.preferences = c.preferences;
        wxString error;
        export_catia_shader(fresh.app(), fresh.view(), from_bytes(folder.file("a.fx").c_str()),
                            nullptr, true, error);
        EXPECT_EQ(fresh.options(1), catia_options(c.flip));
        EXPECT_THAT(fresh.problems(), IsEmpty());
    }
}

TEST_F(Exporter_catia_test, other_kinds_are_refused_before_anything_is_compiled)
{
    for (const char* kind : {"environment", "lens", "light", "volume", "Surface", ""}) {
        Recording_host fresh;
        fresh.add_selected_node("wood").kind = kind;
        wxString error;
        EXPECT_FALSE(
            export_catia_shader(fresh.app(), fresh.view(), wxT("/dev/null"), nullptr, true, error));
        EXPECT_EQ(to_bytes(error), "Error! export_catia_shader: no surface shader.");
        EXPECT_THAT(fresh.calls("app"), IsEmpty());
        EXPECT_THAT(fresh.problems(), IsEmpty());
    }
}

TEST_F(Exporter_catia_test, kind_of_null_is_a_surface)
{
    shader.kind = std::nullopt;
    EXPECT_EQ(run(), "");
    EXPECT_EQ(host.options(1), catia_options("false"));
}

TEST_F(Exporter_catia_test, missing_lights_do_not_matter)
{
    shader.functions = {"direct_light"};
    const Message_boxes boxes;
    EXPECT_EQ(run(), "");
    EXPECT_THAT(boxes.shown(), IsEmpty());
}

TEST_F(Exporter_catia_test, failures_on_the_way_have_their_messages)
{
    host.compiles = false;
    EXPECT_EQ(run(), "Error! export_catia_shader: can not get a compilation unit.\n");
    host.compiles = true;
    host.generates = false;
    EXPECT_EQ(run(), "Error! export_catia_shader: can not generate a shader.");
    host.generates = true;
    host.codes.clear();
    EXPECT_EQ(run(), "Error! export_catia_shader: Error! Exporter_base::get_shader_source_code: "
                     "illegal code_index (0), it should be less than 0.");
    host.codes = {"code"};
    EXPECT_EQ(run("/dev/full"), "Error! export_catia_shader: write failed [/dev/full]");
    EXPECT_EQ(run("/no such folder/a"),
              "Error! export_catia_shader: write open failed [/no such folder/a]");
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Exporter_catia_test, without_a_user_the_missing_environment_is_the_message)
{
    shader.functions = {"trace"};
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(run(folder.file("a.fx"), false),
              "Error! export_catia_shader: can not get a compilation unit.\n"
              "Exported shader requires an environment shader, but there is\n"
              "not one assigned in the Render Settings Dialog.\n\n");
    ::testing::internal::GetCapturedStderr();
}

TEST_F(Exporter_catia_test, host_objects_are_taken_and_released_in_order)
{
    EXPECT_EQ(run(), "");
    EXPECT_THAT(std::vector<std::string>(host.log().begin(), host.log().begin() + 6),
                ElementsAre("view.get_selected_node(0)", "wood.get_shader_type()",
                            "app.get_interface(2)", "app.get_interface(1)", "compiler.get_errors()",
                            "compiler.create_options()"));
    EXPECT_THAT(last_releases(7), ElementsAre("shader 1", "unit 1", "options 1", "errors", "wood",
                                              "compiler", "preferences"));
    EXPECT_THAT(host.calls("unit 1.generate"),
                ElementsAre("unit 1.generate_shader(\"FX\", options 1)"));
}

// The whole conversation from the unit on.
TEST_F(Exporter_catia_test, preference_is_asked_before_the_states_and_both_before_the_options)
{
    host.search_paths = {std::nullopt};
    EXPECT_EQ(run(), "");
    std::vector<std::string> questions;
    for (const std::string& call : host.log()) {
        const size_t operation = call.find('.') + 1;
        if (call.find("preferences.") == 0 || call.find("unit 1.") == 0 ||
            call.find("compiler.compile(") == 0 || call.find("set_option(", operation) == operation)
            questions.push_back(call.substr(0, call.find(',')));
    }
    const auto compiled = std::find_if(questions.begin(), questions.end(), [](const auto& call) {
        return call.find("compiler.compile(") == 0;
    });
    ASSERT_GT(questions.end() - compiled, 6);
    EXPECT_THAT(std::vector<std::string>(compiled + 1, compiled + 6),
                ElementsAre("preferences.get_bool_preference(\"cg_flip_tex2d_v\")",
                            "unit 1.uses_state(0", "unit 1.uses_state(0", "unit 1.uses_state(0",
                            "options 1.set_option(\"annotation_map\""));
}

TEST_F(Exporter_catia_test, failure_is_shown_in_one_plain_box)
{
    shader.kind = "lens";
    Exporter_catia exporter;
    const Message_boxes boxes;
    EXPECT_FALSE(export_as(exporter, "a"));
    EXPECT_THAT(boxes.shown(),
                ElementsAre(Message_box{"Tovira", "Error! export_catia_shader: no surface shader.",
                                        wxOK | wxCENTRE}));
}

// ---- the light text

TEST_F(Exporter_catia_test, lights_follow_the_code_whatever_it_is_with_nothing_between)
{
    for (const char* code : {"code \xff\n", "code without a last newline", "\n", ""}) {
        host.codes = {code};
        EXPECT_EQ(run(), "");
        EXPECT_EQ(folder.read("a.fx"), std::string(code) + catia_lights);
    }
}

} // namespace TEST
} // namespace QZ

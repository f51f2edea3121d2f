// The export for 3ds Max.
#include "exporters/exporter_3dsmax.h"

#include "exporter_base/bytes.h"
#include "tests/plugin/export_test.h"
#include "tests/support/shared_folder.h"

#include <algorithm>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string short_header = "#ifdef _MAX_\n"
                                 "string ParamID = \"0x003\";\n"
                                 "#endif\n";

const std::string full_header = short_header + "\n"
                                               "float Script : STANDARDSGLOBAL <\n"
                                               "\tstring UIWidget = \"none\";\n"
                                               "\tstring ScriptClass = \"object\";\n"
                                               "\tstring ScriptOrder = \"standard\";\n"
                                               "\tstring ScriptOutput = \"color\";\n"
                                               "\tstring Script = \"Technique=T0;\";\n"
                                               "> = 0.8; // version #\n"
                                               "\n"
                                               "\n"
                                               "#ifdef _MAX_ \n"
                                               "int texcoord1 : Texcoord\n"
                                               "<\n"
                                               "\tint Texcoord = 0;\n"
                                               "\tint MapChannel = 1;\n"
                                               "\tstring UIWidget = \"None\";\n"
                                               ">;\n"
                                               "\n"
                                               "int texcoord2 : Texcoord\n"
                                               "<\n"
                                               "\tint Texcoord = 1;\n"
                                               "\tint MapChannel = 2;\n"
                                               "\tstring UIWidget = \"None\";\n"
                                               ">;\n"
                                               "\n"
                                               "int texcoord3 : Texcoord\n"
                                               "<\n"
                                               "\tint Texcoord = 2;\n"
                                               "\tint MapChannel = 3;\n"
                                               "\tstring UIWidget = \"None\";\n"
                                               ">;\n"
                                               "\n"
                                               "int texcoord4 : Texcoord\n"
                                               "<\n"
                                               "\tint Texcoord = 3;\n"
                                               "\tint MapChannel = 4;\n"
                                               "\tstring UIWidget = \"None\";\n"
                                               ">;\n"
                                               "\n"
                                               "#endif\n";

Options screen_options(const std::string& kind, const std::string& name)
{
    return {{"fx_header", short_header},
            {"format", "HLSL"},
            {"vertex_shader_profile", "vs_3_0"},
            {"fragment_shader_profile", "ps_3_0"},
            {"generate_samplers", "true"},
            {"depth_test", "false"},
            {"depth_write", "false"},
            {"screen_space_vertices", "true"},
            {"shader_type", kind},
            {"shader_name", name},
            {"generate_umapped_annotations", "false"},
            {"vs_binding_tangent", "BINORMAL"},
            {"vs_binding_binormal", "TANGENT"},
            {"flip_tex2d_v", "false"},
            {"interfaces", "false"},
            {"two_sided", "true"},
            {"add_default_states", "true"},
            {"texture_resource_annotation", "ResourceName"},
            {"alpha_transparency", "true"},
            {"generate_sampler_default_address_mode", "true"},
            {"scene_ambient", "float4(0.00,0.00,0.00,1.00)"}};
}

Options surface_options(const std::string& name)
{
    return {{"fx_header", full_header},
            {"format", "HLSL"},
            {"vertex_shader_profile", "vs_3_0"},
            {"fragment_shader_profile", "ps_3_0"},
            {"generate_samplers", "true"},
            {"generate_umapped_annotations", "false"},
            {"vs_binding_tangent", "BINORMAL"},
            {"vs_binding_binormal", "TANGENT"},
            {"flip_tex2d_v", "true"},
            {"flip_vs_texture_v", "true"},
            {"interfaces", "false"},
            {"two_sided", "true"},
            {"shader_type", "surface"},
            {"add_default_states", "true"},
            {"shader_name", name},
            {"interfaces", "false"}, // a second time
            {"internal_space", "world"},
            {"texture_resource_annotation", "ResourceName"},
            {"alpha_transparency", "true"},
            {"generate_sampler_default_address_mode", "true"}};
}

class Exporter_3dsmax_test : public Export_test
{
protected:
    // The message of a failed export; "" when it succeeds.
    std::string run(bool interactive = true)
    {
        wxString error = wxT("old");
        const bool done =
            export_3dsmax_shader(host.app(), host.view(), from_bytes(folder.file("a.fx").c_str()),
                                 nullptr, interactive, error);
        EXPECT_EQ(done, error.empty());
        return to_bytes(error);
    }

    // The options of the generation: the set made first.
    Options generation_options() const { return host.options(1); }
};

TEST_F(Exporter_3dsmax_test, full_header_is_byte_for_byte_the_required_one)
{
    EXPECT_EQ(full_header.size(), 676u);
    EXPECT_EQ(std::count(full_header.begin(), full_header.end(), '\t'), 17);
    EXPECT_EQ(std::count(full_header.begin(), full_header.end(), '\n'), 43);
    EXPECT_EQ(run(), "");
    EXPECT_EQ(option_value(generation_options(), "fx_header"), full_header);
}

TEST_F(Exporter_3dsmax_test, full_header_opens_the_example)
{
    const std::string example = read_shared_file("effect-examples/surface_3dsmax.fx");
    if (example.empty())
        GTEST_SKIP() << "the folder of examples is absent";
    EXPECT_THAT(example, StartsWith(full_header));
}

TEST_F(Exporter_3dsmax_test, surface_gets_its_options_in_order_and_no_ambient)
{
    EXPECT_EQ(run(), "");
    EXPECT_EQ(generation_options(), surface_options("wood"));
    EXPECT_EQ(host.options(2), (Options{{"shader_name", "wood"},
                                        {"resolve_unsized_arrays", "true"},
                                        {"internal_space", "world"},
                                        {"ignore_literal", "true"}}));
    EXPECT_EQ(folder.read("a.fx"), "code 0\n");
}

TEST_F(Exporter_3dsmax_test, kind_of_null_is_a_surface)
{
    shader.kind = std::nullopt;
    EXPECT_EQ(run(), "");
    EXPECT_EQ(generation_options(), surface_options("wood"));
}

TEST_F(Exporter_3dsmax_test, material_is_named_after_its_surface)
{
    shader.is_group = true;
    shader.is_material = true;
    shader.members = {&host.add_node("surface")};
    EXPECT_EQ(run(), "");
    EXPECT_EQ(generation_options(), surface_options("wood_surface"));
    EXPECT_EQ(option_value(host.options(2), "shader_name"), "wood");
}

TEST_F(Exporter_3dsmax_test, environment_and_lens_get_theirs_and_the_ambient)
{
    for (const char* kind : {"environment", "lens"}) {
        Recording_host fresh;
        fresh.add_selected_node("sky").kind = kind;
        wxString error;
        EXPECT_TRUE(export_3dsmax_shader(fresh.app(), fresh.view(),
                                         from_bytes(folder.file("a.fx").c_str()), nullptr, true,
                                         error));
        EXPECT_EQ(fresh.options(1), screen_options(kind, "sky"));
        EXPECT_THAT(fresh.calls("compiler.compile"),
                    ElementsAre("compiler.compile_shader(sky, null, 0)"));
        EXPECT_THAT(fresh.problems(), IsEmpty());
    }
}

TEST_F(Exporter_3dsmax_test, copyright_follows_the_other_options)
{
    const Temporary_folder search_path;
    search_path.write("user_copyright.txt", "(c)");
    host.search_paths = {search_path.path()};
    run();
    Options expected = surface_options("wood");
    expected.emplace_back("user_copyright", "(c)");
    EXPECT_EQ(generation_options(), expected);

    Recording_host fresh;
    fresh.add_selected_node("sky").kind = "lens";
    fresh.search_paths = host.search_paths;
    wxString error;
    export_3dsmax_shader(fresh.app(), fresh.view(), from_bytes(folder.file("a.fx").c_str()),
                         nullptr, true, error);
    expected = screen_options("lens", "sky");
    expected.emplace_back("user_copyright", "(c)");
    EXPECT_EQ(fresh.options(1), expected);
}

TEST_F(Exporter_3dsmax_test, other_kinds_are_refused_with_a_reason)
{
    struct Case {
        const char* kind;
        const char* reason;
    };
    const Case cases[] = {
        {"light", "light shaders are not supported for export to 3ds Max"},
        {"volume", "volume shaders are not supported for export to 3ds Max"},
        {"Surface", "unknown shader type \"Surface\""},
        {"", "unknown shader type \"\""},
        {"gr\xfc\xdf %s", "unknown shader type \"gr\xfc\xdf %s\""},
    };
    for (const Case& c : cases) {
        shader.kind = c.kind;
        EXPECT_EQ(run(), std::string("Error exporting shader: ") + c.reason);
    }
    EXPECT_THAT(host.calls("compiler.compile"), IsEmpty());
    EXPECT_THAT(folder.files(), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Exporter_3dsmax_test, failures_on_the_way_have_their_messages)
{
    host.compiles = false;
    EXPECT_EQ(run(), "Error exporting shader: Fail to compile a surface shader\n");
    shader.kind = "lens";
    EXPECT_EQ(run(), "Error exporting shader: unable to create the shader");
    host.compiles = true;
    host.generates = false;
    EXPECT_EQ(run(), "Error exporting shader: unable to create the shader");
    shader.kind = "surface";
    EXPECT_EQ(run(), "Error exporting shader: unable to create the shader");
    host.generates = true;
    host.codes.clear();
    EXPECT_EQ(run(), "Error exporting shader: can not generate code.\n"
                     "Error! Exporter_base::get_shader_source_code: illegal code_index (0), it "
                     "should be less than 0.");
    host.codes = {"code"};
    wxString error;
    EXPECT_FALSE(
        export_3dsmax_shader(host.app(), host.view(), wxT("/dev/full"), nullptr, true, error));
    EXPECT_EQ(to_bytes(error), "Error exporting shader: can not write the code [/dev/full]\n"
                               "write failed [/dev/full]");
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Exporter_3dsmax_test, without_a_user_the_missing_lights_are_the_message)
{
    shader.functions = {"direct_light"};
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(run(false), "Error exporting shader: Fail to compile a surface shader\n"
                          "Exported shader requires lights, but none are assigned in\n"
                          "the Render Settings Dialog.\n\n");
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), StartsWith("Exported shader requires"));
}

TEST_F(Exporter_3dsmax_test, host_objects_are_taken_and_released_in_order)
{
    EXPECT_EQ(run(), "");
    std::vector<std::string> calls;
    for (const std::string& call : host.log())
        if (call.find("set_option") == std::string::npos)
            calls.push_back(call);
    EXPECT_THAT(std::vector<std::string>(calls.begin(), calls.begin() + 6),
                ElementsAre("view.get_selected_node(0)", "wood.get_shader_type()",
                            "app.get_interface(2)", "app.get_interface(1)", "compiler.get_errors()",
                            "compiler.create_options()"));
    EXPECT_THAT(last_releases(7), ElementsAre("shader 1", "unit 1", "options 1", "errors", "wood",
                                              "compiler", "preferences"));
    EXPECT_THAT(host.calls("preferences.get"), IsEmpty());
    EXPECT_THAT(host.calls("unit 1.generate"),
                ElementsAre("unit 1.generate_shader(\"FX\", options 1)"));
}

TEST_F(Exporter_3dsmax_test, failure_is_shown_in_one_plain_box)
{
    shader.kind = "light";
    Exporter_3dsmax exporter;
    const Message_boxes boxes;
    EXPECT_FALSE(export_as(exporter, "a"));
    EXPECT_THAT(boxes.shown(),
                ElementsAre(Message_box{
                    "Tovira",
                    "Error exporting shader: light shaders are not supported for export to 3ds Max",
                    wxOK | wxCENTRE}));
}

TEST_F(Exporter_3dsmax_test, overwrite_is_asked_before_anything_is_compiled)
{
    folder.write("a.fx", "old");
    shader.kind = "light";
    Exporter_3dsmax exporter;
    const Message_boxes boxes({wxID_NO});
    EXPECT_FALSE(export_as(exporter, "a"));
    EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(folder.file("a.fx"))));
    EXPECT_THAT(host.log(), ElementsAre("view.get_num_selected_nodes()"));
}

TEST_F(Exporter_3dsmax_test, extension_is_added_unless_it_is_there)
{
    Exporter_3dsmax exporter;
    EXPECT_TRUE(export_as(exporter, "a"));
    EXPECT_TRUE(export_as(exporter, "b.fx"));
    EXPECT_TRUE(export_as(exporter, "c.txt"));
    EXPECT_THAT(folder.files(), ElementsAre("a.fx", "b.fx", "c.txt.fx"));
}

} // namespace TEST
} // namespace QZ

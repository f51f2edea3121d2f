// Each option of the second set changes the text in its own way and in no other.
#include "tests/generator/generation.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace generation;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace
{

// One scene for all cases; the texts with and without a change are compared line by line.
class Text_options : public testing::Test
{
protected:
    std::vector<std::string> change(Option_set base, const std::string& option,
                                    const std::string& value)
    {
        const std::string before = text(base);
        base[option] = value;
        return difference(before, text(base));
    }

    std::string text(const Option_set& options)
    {
        const Result result = generate(*m_graph, m_target, m_group, options);
        EXPECT_FALSE(result.texts.empty()) << result.messages();
        return result.texts.empty() ? "" : result.texts.back();
    }

    std::unique_ptr<Shader_graph> m_graph = graph_of(painted_scene());
    std::string m_target = "FX";
    Option_set m_group = {{"lights", "sun"}, {"environment", "sky"}};
};

} // namespace

TEST_F(Text_options, profiles_stand_in_the_header_and_after_compile)
{
    EXPECT_THAT(
        change({}, "vertex_shader_profile", "vs_4_0"),
        UnorderedElementsAre("-// Target: CgFX, vertex profile vp40, fragment profile fp40",
                             "-        VertexProgram = compile vp40 vertex_main();",
                             "+// Target: CgFX, vertex profile vs_4_0, fragment profile fp40",
                             "+        VertexProgram = compile vs_4_0 vertex_main();"));
    EXPECT_THAT(change({}, "fragment_shader_profile", "fp41"),
                UnorderedElementsAre("-// Target: CgFX, vertex profile vp40, fragment profile fp40",
                                     "-        FragmentProgram = compile fp40 fragment_main();",
                                     "+// Target: CgFX, vertex profile vp40, fragment profile fp41",
                                     "+        FragmentProgram = compile fp41 fragment_main();"));
}

TEST_F(Text_options, shader_name_names_the_shader_and_its_function)
{
    EXPECT_THAT(change({}, "shader_name", "my paint"),
                UnorderedElementsAre("-// Shader: paint", "-float4 paint(State state)",
                                     "-    return paint(state);", "+// Shader: my_paint",
                                     "+float4 my_paint(State state)",
                                     "+    return my_paint(state);"));
}

TEST_F(Text_options, fx_header_is_the_first_bytes)
{
    const std::string header = "#ifdef _MAX_\nstring ParamID = \"0x003\";\n#endif\n";
    EXPECT_EQ(text({{"fx_header", header}}), header + "\n" + text({}));
    EXPECT_EQ(text({{"fx_header", "// a"}}), "// a\n\n" + text({}));
}

TEST_F(Text_options, copyright_is_a_comment_whatever_is_in_it)
{
    EXPECT_THAT(change({}, "user_copyright", "(c) */ me\r\njoins \\\nlast"),
                UnorderedElementsAre("+// (c) */ me", "+// joins \\.", "+// last", "+"));
}

TEST_F(Text_options, scene_ambient_stands_as_it_was_sent_and_lights_the_surface)
{
    const std::vector<std::string> changed =
        change({}, "scene_ambient", "float4(0.10,0.20,0.30,1.00)");
    EXPECT_THAT(changed, testing::Contains("+float4 scene_ambient = float4(0.10,0.20,0.30,1.00);"));
    EXPECT_THAT(changed,
                testing::Contains("+    float3 color = scene_ambient.xyz * diffuse_weight;"));
    EXPECT_THAT(changed, testing::Contains("-    float3 color = float3(0.0, 0.0, 0.0);"));
}

TEST_F(Text_options, two_sided_turns_normals_and_stops_culling)
{
    EXPECT_THAT(change({{"add_default_states", "true"}}, "two_sided", "true"),
                UnorderedElementsAre(
                    "-float4 fragment_main(Vertex_out fragment) : COLOR",
                    "-        CullFaceEnable = true;", "-        CullFace = Back;",
                    "+float4 fragment_main(Vertex_out fragment, float face : FACE) : COLOR",
                    "+    if (face < 0.0)", "+    {", "+        state.normal = -state.normal;",
                    "+    }", "+        CullFaceEnable = false;"));
}

TEST_F(Text_options, face_forward_and_its_other_name_turn_normals_to_the_eye)
{
    const auto line = UnorderedElementsAre(
        "+    state.normal = faceforward(state.normal, state.direction, state.normal);");
    EXPECT_THAT(change({}, "face_forward", "true"), line);
    EXPECT_THAT(change({}, "normals_face_forward", "true"), line);
}

TEST_F(Text_options, rotate_cube_map_swizzles_the_direction)
{
    const std::string before = text({});
    const std::string after = text({{"rotate_cube_map", "true"}});
    EXPECT_FALSE(contains(before, "y_up_to_z_up"));
    EXPECT_TRUE(contains(after, "return float3(direction.x, direction.z, -direction.y);"));
    EXPECT_TRUE(contains(after, "y_up_to_z_up(mul("));
}

TEST_F(Text_options, flip_tex2d_v_turns_the_lookup_over)
{
    const std::string after = text({{"flip_tex2d_v", "true"}});
    EXPECT_TRUE(contains(after, "flip_v(state.texture_coordinate0)"));
    EXPECT_TRUE(contains(after, "return float2(uv.x, 1.0 - uv.y);"));
    EXPECT_FALSE(contains(text({}), "flip_v"));
}

TEST_F(Text_options, flip_vs_texture_v_turns_the_stream_over)
{
    EXPECT_THAT(
        change({}, "flip_vs_texture_v", "true"),
        UnorderedElementsAre("+// Conventions: flipped mesh",
                             "-    result.texture_coordinate0 = vertex.texcoord0;",
                             "+    result.texture_coordinate0 = float2(vertex.texcoord0.x, 1.0 - "
                             "vertex.texcoord0.y);"));
}

TEST_F(Text_options, generate_texture_parameters_moves_annotations_to_the_samplers)
{
    const std::string after = text({{"generate_texture_parameters", "false"}});
    EXPECT_FALSE(contains(after, "texture wood_map"));
    EXPECT_FALSE(contains(after, "Texture ="));
    EXPECT_TRUE(contains(after, "sampler2D wood_map\n<\n    string ResourceName = \"wood.png\";"));
    EXPECT_TRUE(contains(after, "tex2D(wood_map, "));
}

TEST_F(Text_options, generate_samplers_leaves_samplers_to_the_program)
{
    const std::string after = text({{"generate_samplers", "false"}});
    EXPECT_TRUE(contains(after, "texture wood_map\n<"));
    EXPECT_TRUE(contains(after, "sampler2D wood_map_sampler; // bound by the program\n"));
    EXPECT_FALSE(contains(after, "sampler_state"));
}

TEST_F(Text_options, generate_sampler_states_gives_filters)
{
    EXPECT_THAT(
        change({}, "generate_sampler_states", "false"),
        UnorderedElementsAre("-    MinFilter = LinearMipMapLinear;", "-    MagFilter = Linear;",
                             "-    MinFilter = LinearMipMapLinear;", "-    MagFilter = Linear;"));
}

TEST_F(Text_options, default_address_mode_wraps_in_all_directions_of_the_texture)
{
    EXPECT_THAT(change({}, "generate_sampler_default_address_mode", "true"),
                UnorderedElementsAre("+    WrapS = Repeat;", "+    WrapT = Repeat;",
                                     "+    WrapS = Repeat;", "+    WrapT = Repeat;",
                                     "+    WrapR = Repeat;"));
}

TEST_F(Text_options, texture_resource_annotation_names_the_file)
{
    EXPECT_THAT(change({}, "texture_resource_annotation", "File"),
                UnorderedElementsAre("-    string ResourceName = \"wood.png\";",
                                     "-    string ResourceName = \"sky.dds\";",
                                     "+    string File = \"wood.png\";",
                                     "+    string File = \"sky.dds\";"));
}

TEST_F(Text_options, alpha_transparency_blends_by_opacity)
{
    const std::vector<std::string> changed =
        change({{"add_default_states", "true"}}, "alpha_transparency", "true");
    EXPECT_THAT(
        changed,
        testing::IsSupersetOf(
            {"-    return float4(color, 1.0);",
             "+    return float4(color, dot(opacity, float3(0.2722287, 0.6740818, 0.0536895)));",
             "-        BlendEnable = false;", "+        BlendEnable = true;",
             "+        BlendFunc = int2(SrcAlpha, OneMinusSrcAlpha);"}));
}

TEST_F(Text_options, use_oit_peels_depth_and_does_not_blend)
{
    const std::string after =
        text({{"use_oit", "true"}, {"alpha_transparency", "true"}, {"add_default_states", "true"}});
    EXPECT_TRUE(contains(after, "sampler2D oit_depth_map_sampler = sampler_state"));
    EXPECT_TRUE(contains(after, "float4 clip_position : TEXCOORD"));
    EXPECT_TRUE(contains(after, "clip(peeled.z * 0.5 + 0.5 - tex2D(oit_depth_map_sampler, "));
    EXPECT_TRUE(contains(after, "BlendEnable = false;"));
}

TEST_F(Text_options, depth_test_and_depth_write_are_states)
{
    const Option_set states = {{"add_default_states", "true"}};
    EXPECT_THAT(change(states, "depth_test", "false"),
                UnorderedElementsAre("-        DepthTestEnable = true;",
                                     "+        DepthTestEnable = false;"));
    EXPECT_THAT(change(states, "depth_write", "false"),
                UnorderedElementsAre("-        DepthMask = true;", "+        DepthMask = false;"));
}

TEST_F(Text_options, without_default_states_a_pass_has_its_programs_only)
{
    EXPECT_TRUE(contains(text({}), "    pass P0\n    {\n        VertexProgram"));
    EXPECT_THAT(
        change({}, "add_default_states", "true"),
        UnorderedElementsAre("+        DepthTestEnable = true;", "+        DepthMask = true;",
                             "+        DepthFunc = LEqual;", "+        BlendEnable = false;",
                             "+        CullFaceEnable = true;", "+        CullFace = Back;"));
}

TEST_F(Text_options, bindings_are_semantics_of_the_vertex)
{
    EXPECT_THAT(
        change({}, "vs_binding_tangent", "TEXCOORD1"),
        UnorderedElementsAre("-    float3 tangent : TANGENT;", "+    float3 tangent : TEXCOORD1;"));
    EXPECT_THAT(change({}, "vs_binding_binormal", "TEXCOORD2"),
                UnorderedElementsAre("-    float3 binormal : BINORMAL;",
                                     "+    float3 binormal : TEXCOORD2;"));
    EXPECT_THAT(change({}, "vs_binding_texcoord0", "TEXCOORD3"),
                UnorderedElementsAre("-    float2 texcoord0 : TEXCOORD0;",
                                     "+    float2 texcoord0 : TEXCOORD3;"));
    // Sets that the shader does not read have no member.
    EXPECT_THAT(change({}, "vs_binding_texcoord1", "TEXCOORD7"), IsEmpty());
    EXPECT_THAT(change({}, "vs_binding_texcoord2", "TEXCOORD7"), IsEmpty());
    EXPECT_THAT(change({}, "vs_binding_texcoord3", "TEXCOORD7"), IsEmpty());
}

TEST_F(Text_options, tangents_from_a_color_stream_are_decoded)
{
    EXPECT_TRUE(contains(text({{"vs_binding_tangent", "COLOR0"}}), "vertex.tangent * 2.0 - 1.0"));
}

TEST_F(Text_options, two_members_of_the_vertex_never_share_a_semantic)
{
    const Result result = generate(*m_graph, "FX", m_group, {{"vs_binding_tangent", "TEXCOORD0"}});
    EXPECT_TRUE(result.texts.empty());
    EXPECT_TRUE(contains(result.messages(), "both bound to TEXCOORD0"));
}

TEST_F(Text_options, internal_space_chooses_matrices_and_wins_over_the_first_set)
{
    const std::string camera = text({});
    EXPECT_TRUE(contains(camera, "result.position = mul(world_view, position).xyz;"));
    EXPECT_TRUE(contains(camera, "state.direction = normalize(state.position);"));
    const std::string world = text({{"internal_space", "world"}});
    EXPECT_TRUE(contains(world, "result.position = mul(world, position).xyz;"));
    EXPECT_TRUE(contains(world, "float4x4 view_inverse : VIEWINVERSE"));
    EXPECT_TRUE(contains(world, "// Internal space: world"));
    m_group["internal_space"] = "world";
    EXPECT_EQ(text({}), world);
    EXPECT_EQ(text({{"internal_space", "camera"}}), camera);
}

TEST_F(Text_options, vertex_stream_space_chooses_the_projection)
{
    EXPECT_TRUE(contains(text({}), "mul(world_view_projection, position)"));
    const struct {
        const char *space, *projection;
    } rows[] = {{"object", "result.hposition = mul(world_view_projection, position);"},
                {"world", "result.hposition = mul(view_projection, position);"},
                {"camera", "result.hposition = mul(projection, position);"},
                {"screen", "result.hposition = position;"}};
    for (const auto& row : rows)
        EXPECT_TRUE(contains(text({{"vertex_stream_space", row.space}}), row.projection))
            << row.space;
}

TEST_F(Text_options, screen_space_vertices_cover_the_screen)
{
    EXPECT_TRUE(contains(text({{"screen_space_vertices", "true"}}),
                         "result.hposition = float4(position.xy, 1.0, 1.0);"));
}

TEST_F(Text_options, sas_conformance_renames_annotations_and_binds_matrices)
{
    const std::string after = text({{"format", "HLSL"}, {"hlsl_sas_conformance", "true"}});
    EXPECT_TRUE(
        contains(after, "int GlobalParameter : SasGlobal\n<\n    int3 SasVersion = {1, 1, 0};"));
    EXPECT_TRUE(contains(after, "string SasBindAddress = \"Sas.Camera.ObjectToProjection\";"));
    EXPECT_TRUE(contains(after, "string SasUiLabel = \"Tint\";\n"
                                "    string SasUiControl = \"ColorPicker\";"));
    EXPECT_TRUE(contains(after, "float SasUiStride = 0.01;"));
    EXPECT_FALSE(contains(after, "UIName"));
}

TEST_F(Text_options, unmapped_annotations_appear_on_demand_only)
{
    EXPECT_THAT(change({}, "generate_umapped_annotations", "true"),
                UnorderedElementsAre("+    string UIHelp = \"Dyes\";"));
}

TEST_F(Text_options, an_annotation_map_renames_and_leaves_out)
{
    const QZ::TEST::Temporary_folder folder;
    const std::string file = folder.write(
        "map.axml", "<annotations><annotation name='UIName' target='Label'/></annotations>");
    const std::string after = text({{"annotation_map", file}});
    EXPECT_TRUE(contains(after, "float3 tint\n<\n    string Label = \"Tint\";\n> ="));
    EXPECT_EQ(text({{"annotation_map", "missing.axml"}}), text({}));
}

TEST_F(Text_options, an_annotation_map_gives_no_names_that_break_the_text)
{
    const QZ::TEST::Temporary_folder folder;
    const std::string file = folder.write("map.axml", "<annotations>"
                                                      "<annotation name='UIName' target='Label'/>"
                                                      "<annotation name='UIMin' target='a b;'/>"
                                                      "<annotation name='UIMax' target='float'/>"
                                                      "<annotation name='UIStep'/>"
                                                      "</annotations>");
    const Result result = generate(*m_graph, m_target, m_group, {{"annotation_map", file}});
    EXPECT_TRUE(contains(result.text(), "string Label = \"Tint\";"));
    EXPECT_FALSE(contains(result.text(), "a b;") || contains(result.text(), "float float"));
    for (const char* target : {"\"a b;\"", "\"float\"", "\"\""})
        EXPECT_TRUE(
            contains(result.messages(), target + std::string(" is not the name of an annotation")));
}

TEST_F(Text_options, format_hlsl_is_another_column_of_words)
{
    const std::string hlsl = text({{"format", "HLSL"}, {"add_default_states", "true"}});
    for (const char* part :
         {"// Target: HLSL effect, vertex profile vs_3_0, fragment profile ps_3_0",
          "    Texture = (wood_map);\n    MinFilter = Linear;\n    MagFilter = Linear;\n"
          "    MipFilter = Linear;\n",
          "struct Fragment_in\n", "mul(position, world_view_projection)", "ZEnable = true;",
          "ZWriteEnable = true;", "ZFunc = LessEqual;", "AlphaBlendEnable = false;",
          "CullMode = CCW;", "PixelShader = compile ps_3_0 fragment_main();"})
        EXPECT_TRUE(contains(hlsl, part)) << part;
    EXPECT_TRUE(contains(text({{"format", "HLSL"}, {"two_sided", "true"}}), "float face : VFACE"));
}

TEST_F(Text_options, glsl_version_chooses_the_words_of_the_language)
{
    m_target = "GL";
    const std::string modern = text({{"glsl_version", "330"}});
    EXPECT_EQ(modern.find("#version 330\n"), 0U);
    for (const char* part :
         {"in vec3 fragment_normal;", "out vec4 fragment_color;", "texture(wood_map, ",
          "uniform vec3 tint = vec3(0.9, 0.8, 0.7);", "// texture wood_map: wood.png\n"})
        EXPECT_TRUE(contains(modern, part)) << part;
    const std::string old = text({{"glsl_version", "110"}});
    for (const char* part : {"varying vec3 fragment_normal;",
                             "gl_FragColor = ", "texture2D(wood_map, ", "uniform vec3 tint;"})
        EXPECT_TRUE(contains(old, part)) << part;
    EXPECT_TRUE(contains(text({{"glsl_version", "120"}}), "uniform vec3 tint = vec3("));
}

TEST_F(Text_options, glsl_copyright_stands_after_the_version)
{
    m_target = "GL";
    EXPECT_EQ(text({{"user_copyright", "mine"}}).find("#version 130\n// mine\n"), 0U);
}

TEST_F(Text_options, glsl_two_sided_asks_for_the_face)
{
    m_target = "GL";
    EXPECT_THAT(change({}, "two_sided", "true"),
                UnorderedElementsAre("+    if (!gl_FrontFacing)", "+    {",
                                     "+        state.normal = -state.normal;", "+    }"));
}

TEST_F(Text_options, interfaces_make_lists_of_lights_environments_and_volumes)
{
    m_group.clear();
    const std::string after = text({{"interfaces", "true"}, {"eval_volume", "true"}});
    for (const char* part : {"Light lights[];", "Environment environments[];", "Volume volumes[];",
                             "i < lights.length", "lights[i].eval(state)", "volumes[i].eval(state)",
                             "environments[i].eval("})
        EXPECT_TRUE(contains(after, part)) << part;
    const std::string lights_only =
        text({{"interfaces", "true"}, {"eval_volume", "true"}, {"light_interfaces_only", "true"}});
    EXPECT_TRUE(contains(lights_only, "Light lights[];"));
    EXPECT_FALSE(contains(lights_only, "volumes"));
    EXPECT_FALSE(contains(lights_only, "environments"));
    EXPECT_FALSE(contains(text({{"interfaces", "true"}}), "volumes"));
}

TEST(Text_options_of_plain_shaders, declare_the_state_that_lists_of_lights_fill)
{
    const auto graph = graph_of("<surface_unlit name=\"plain\" type=\"surfaceshader\"/>");
    const std::string text = generate_node(*graph, "plain", "FX", {{"interfaces", "true"}}).text();
    EXPECT_TRUE(contains(text, "    State state;\n    state.position = ")) << text;
    EXPECT_TRUE(contains(text, "return plain();")) << text;
}

TEST_F(Text_options, interface_and_list_have_the_names_that_were_asked_for)
{
    m_group.clear();
    const std::string after = text(
        {{"interfaces", "true"}, {"light_interface_name", "Lamp"}, {"light_list_name", "lamps"}});
    EXPECT_TRUE(contains(after, "interface Lamp\n"));
    EXPECT_TRUE(contains(after, "Lamp lamps[];"));
    EXPECT_TRUE(contains(after, "lamps[i].eval(state)"));
    EXPECT_FALSE(contains(after, "lights.length"));
}

TEST_F(Text_options, catia_siggraph_hack_is_accepted_without_effect)
{
    EXPECT_THAT(change({}, "catia_siggraph_hack", "true"), IsEmpty());
}

TEST_F(Text_options, every_impossible_value_is_an_error_and_an_unknown_option_a_warning)
{
    const struct {
        const char *option, *value;
    } rows[] = {{"two_sided", "yes"},
                {"format", "Metal"},
                {"glsl_version", "131"},
                {"internal_space", "screen"},
                {"vertex_stream_space", "tangent"},
                {"scene_ambient", "float4(1,2,3)"},
                {"scene_ambient", ""},
                {"shader_type", "hair"},
                {"vertex_shader_profile", "vp40; evil"},
                {"light_list_name", "1x"}};
    for (const auto& row : rows) {
        const Result result = generate(*m_graph, "FX", m_group, {{row.option, row.value}});
        EXPECT_TRUE(result.texts.empty()) << row.option << "=" << row.value;
        EXPECT_TRUE(contains(result.messages(), row.option)) << result.messages();
    }
    const Result unknown = generate(*m_graph, "FX", m_group, {{"sparkle", "true"}});
    EXPECT_FALSE(unknown.texts.empty());
    EXPECT_EQ(unknown.messages(), "option \"sparkle\" is unknown\n");
}

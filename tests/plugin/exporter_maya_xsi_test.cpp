// The exports for Maya and Softimage, which differ in their tables only.
#include "tests/plugin/export_test.h"

#include "exporters/exporter_maya.h"
#include "exporters/exporter_xsi.h"

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::pair<std::string, std::string> ambient = {"scene_ambient",
                                                     "float4(0.00,0.00,0.00,1.00)"};

const Options maya_options = {{"shader_type", "surface"},
                              {"format", "CgFX"},
                              {"vertex_shader_profile", "vp40"},
                              {"fragment_shader_profile", "fp40"},
                              {"two_sided", "false"},
                              {"eval_volume", "false"},
                              {"generate_samplers", "true"},
                              {"generate_umapped_annotations", "false"},
                              {"vs_binding_tangent", "TEXCOORD1"},
                              {"vs_binding_binormal", "TEXCOORD2"},
                              {"vs_binding_texcoord0", "TEXCOORD0"},
                              {"vs_binding_texcoord1", "TEXCOORD3"},
                              {"vs_binding_texcoord2", "TEXCOORD4"},
                              {"vs_binding_texcoord3", "TEXCOORD5"},
                              {"rotate_cube_map", "true"},
                              {"flip_tex2d_v", "false"},
                              {"alpha_transparency", "true"},
                              {"add_default_states", "true"},
                              ambient};

const Options xsi_options = {{"shader_type", "surface"},
                             {"format", "CgFX"},
                             {"vertex_shader_profile", "vp40"},
                             {"fragment_shader_profile", "fp40"},
                             {"two_sided", "false"},
                             {"eval_volume", "false"},
                             {"generate_samplers", "true"},
                             {"generate_umapped_annotations", "false"},
                             {"vs_binding_tangent", "COLOR0"},
                             {"vs_binding_binormal", "BINORMAL"},
                             {"rotate_cube_map", "false"},
                             {"flip_tex2d_v", "false"},
                             {"alpha_transparency", "true"},
                             {"add_default_states", "true"},
                             {"internal_space", "world"},
                             ambient};

template<typename Exporter>
class Cgfx_surface_export : public Export_test
{
protected:
    static const Options& table();
    Exporter exporter;
};

template<>
const Options& Cgfx_surface_export<Exporter_maya>::table()
{
    return maya_options;
}

template<>
const Options& Cgfx_surface_export<Exporter_xsi>::table()
{
    return xsi_options;
}

using Exporters = ::testing::Types<Exporter_maya, Exporter_xsi>;
TYPED_TEST_SUITE(Cgfx_surface_export, Exporters);

TYPED_TEST(Cgfx_surface_export, options_are_set_in_order)
{
    EXPECT_TRUE(this->export_as(this->exporter, "a"));
    EXPECT_EQ(this->host.options(1),
              (Options{{"shader_name", "wood"}, {"resolve_unsized_arrays", "true"}}));
    EXPECT_EQ(this->host.options(2), this->table());
    EXPECT_EQ(this->folder.read("a.cgfx"), "code 0\n");
}

TYPED_TEST(Cgfx_surface_export, copyright_follows_the_other_options)
{
    const Temporary_folder search_path;
    search_path.write("user_copyright.txt", "(c)");
    this->host.search_paths = {search_path.path()};
    this->export_as(this->exporter, "a");
    Options expected = this->table();
    expected.emplace_back("user_copyright", "(c)");
    EXPECT_EQ(this->host.options(2), expected);
}

TYPED_TEST(Cgfx_surface_export, host_objects_are_taken_and_released_in_order)
{
    this->export_as(this->exporter, "a");
    EXPECT_THAT(std::vector<std::string>(this->host.log().begin(), this->host.log().begin() + 6),
                ElementsAre("view.get_num_selected_nodes()", "view.get_selected_node(0)",
                            "wood.get_shader_type()", "app.get_interface(2)",
                            "app.get_interface(1)", "compiler.get_errors()"));
    EXPECT_THAT(this->last_releases(7), ElementsAre("shader 1", "options 2", "unit 1", "errors",
                                                    "wood", "compiler", "preferences"));
    EXPECT_THAT(this->host.calls("unit 1.generate"),
                ElementsAre("unit 1.generate_shader(\"FX\", options 2)"));
    EXPECT_THAT(this->host.calls("preferences.get"), IsEmpty());
}

TYPED_TEST(Cgfx_surface_export, other_kinds_are_refused_in_silence_after_the_overwrite_question)
{
    for (const char* kind : {"light", "lens", "environment", "volume", "Surface", ""}) {
        this->folder.write("a.cgfx", "old");
        this->shader.kind = kind;
        const Message_boxes boxes({wxID_YES});
        EXPECT_FALSE(this->export_as(this->exporter, "a"));
        EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(this->folder.file("a.cgfx"))));
    }
    EXPECT_THAT(this->host.calls("app"), IsEmpty());
    EXPECT_EQ(this->folder.read("a.cgfx"), "old");
    EXPECT_THAT(this->host.problems(), IsEmpty());
}

TYPED_TEST(Cgfx_surface_export, kind_of_null_is_a_surface)
{
    this->shader.kind = std::nullopt;
    EXPECT_TRUE(this->export_as(this->exporter, "a"));
    EXPECT_EQ(this->host.options(2), this->table());
}

TYPED_TEST(Cgfx_surface_export, failures_on_the_way_count_as_success_and_are_not_shown)
{
    const Message_boxes boxes;
    this->host.compiles = false;
    EXPECT_TRUE(this->export_as(this->exporter, "a"));
    EXPECT_THAT(this->host.calls("options 2"), IsEmpty());
    this->host.compiles = true;
    this->host.generates = false;
    EXPECT_TRUE(this->export_as(this->exporter, "a"));
    this->host.generates = true;
    EXPECT_TRUE(this->export_as(this->exporter, "no such folder/a"));
    EXPECT_THAT(boxes.shown(), IsEmpty());
    EXPECT_THAT(this->host.problems(), IsEmpty());
}

} // namespace TEST
} // namespace QZ

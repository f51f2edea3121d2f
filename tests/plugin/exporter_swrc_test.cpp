// The renderer source exporter and the sample exporter, which the registry does not offer.
#include "exporters/exporter_swrc.h"

#include "exporter_base/bytes.h"
#include "exporter_base/control_ids.h"
#include "exporters/exporter_default.h"
#include "tests/plugin/export_test.h"

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Exporter_swrc_test : public Export_test
{
protected:
    void choose(bool qz, bool cpp)
    {
        exporter.initialize();
        Exporter_panel panel(exporter);
        panel.set_text(ID_EXPORTFILE_TEXT, folder.file("a"));
        panel.set_check_box(ID_SWRC_QZ, qz);
        panel.set_check_box(ID_SWRC_CPP, cpp);
    }

    bool run() { return exporter.export_shader(host.app(), host.view()); }

    Exporter_swrc exporter;
};

TEST_F(Exporter_swrc_test, both_files_come_from_the_node_alone)
{
    EXPECT_TRUE(export_as(exporter, "a"));
    EXPECT_EQ(folder.read("a.cpp"), "code 0\n");
    EXPECT_EQ(folder.read("a.qz"), "code 1\n");
    EXPECT_EQ(host.options(1), (Options{{"shader_type", "surface"}, {"shader_name", "wood"}}));
    EXPECT_THAT(host.log(),
                ElementsAre("view.get_num_selected_nodes()", "app.get_interface(2)",
                            "view.get_selected_node(0)", "wood.get_name()", "compiler.get_errors()",
                            "compiler.compile_shader(wood, errors, 0)", "compiler.create_options()",
                            "wood.get_shader_type()",
                            "options 1.set_option(\"shader_type\", \"surface\")",
                            "options 1.set_option(\"shader_name\", \"wood\")",
                            "unit 1.generate_shader(\"Swrc\", options 1)",
                            "shader 1.get_num_codes()", "shader 1.get_code_size(1)",
                            "shader 1.get_code(1, 7)", "shader 1.get_num_codes()",
                            "shader 1.get_code_size(0)", "shader 1.get_code(0, 7)",
                            "shader 1.release()", "unit 1.release()", "options 1.release()",
                            "errors.release()", "wood.release()", "compiler.release()"));
}

TEST_F(Exporter_swrc_test, kind_is_sent_as_it_is_and_null_has_a_default)
{
    shader.kind = "lens";
    export_as(exporter, "a");
    EXPECT_EQ(option_value(host.options(1), "shader_type"), "lens");
    Recording_host nameless;
    nameless.add_selected_node(std::nullopt).kind = std::nullopt;
    const Message_boxes boxes({wxID_YES, wxID_YES});
    EXPECT_TRUE(exporter.export_shader(nameless.app(), nameless.view()));
    EXPECT_EQ(nameless.options(1),
              (Options{{"shader_type", "surface"}, {"shader_name", "default"}}));
}

TEST_F(Exporter_swrc_test, one_box_writes_one_file)
{
    choose(true, false);
    EXPECT_TRUE(run());
    EXPECT_THAT(folder.files(), ElementsAre("a.qz"));
    choose(false, true);
    EXPECT_TRUE(run());
    EXPECT_THAT(folder.files(), ElementsAre("a.cpp", "a.qz"));
}

TEST_F(Exporter_swrc_test, no_box_is_an_error)
{
    choose(false, false);
    const Message_boxes boxes;
    EXPECT_FALSE(run());
    EXPECT_THAT(boxes.shown(),
                ElementsAre(error_box("Corvane", "Error! Neither qz nor cpp file creation has been "
                                                 "chosen.")));
    EXPECT_THAT(host.log(), ElementsAre("view.get_num_selected_nodes()"));
}

TEST_F(Exporter_swrc_test, qz_is_asked_about_before_cpp_and_one_refusal_keeps_the_other)
{
    folder.write("a.qz", "old");
    folder.write("a.cpp", "old");
    choose(true, true);
    const Message_boxes boxes({wxID_NO, wxID_YES});
    EXPECT_TRUE(run());
    EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(folder.file("a.qz")),
                                           overwrite_question(folder.file("a.cpp"))));
    EXPECT_EQ(folder.read("a.qz"), "old");
    EXPECT_EQ(folder.read("a.cpp"), "code 0\n");
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_F(Exporter_swrc_test, refusal_of_the_only_file_ends_it_in_silence)
{
    folder.write("a.cpp", "old");
    choose(false, true);
    const Message_boxes boxes({wxID_NO});
    EXPECT_FALSE(run());
    EXPECT_THAT(boxes.shown(), ElementsAre(overwrite_question(folder.file("a.cpp"))));
    EXPECT_THAT(folder.files(), ElementsAre("a.cpp"));
    EXPECT_EQ(folder.read("a.cpp"), "old");
}

TEST_F(Exporter_swrc_test, discarded_panel_keeps_the_boxes)
{
    choose(true, false);
    {
        Exporter_panel panel(exporter);
        EXPECT_TRUE(panel.check_box(ID_SWRC_QZ));
        EXPECT_FALSE(panel.check_box(ID_SWRC_CPP));
        panel.set_check_box(ID_SWRC_QZ, false);
        panel.set_check_box(ID_SWRC_CPP, true);
        panel.cancel();
    }
    EXPECT_TRUE(run());
    EXPECT_THAT(folder.files(), ElementsAre("a.qz"));
}

TEST_F(Exporter_swrc_test, failed_write_counts_as_success)
{
    const Message_boxes boxes;
    EXPECT_TRUE(export_as(exporter, "no such folder/a"));
    EXPECT_THAT(boxes.shown(), IsEmpty());
}

TEST_F(Exporter_swrc_test, unknown_code_type_is_reported_and_returned)
{
    ::testing::internal::CaptureStderr();
    const std::string text = to_bytes(Exporter_swrc::get_src(host.make_shader(), wxT("hfile")));
    EXPECT_EQ(text, "Internal Error! toviraexport_swrc::get_src: no such code type. [hfile]\n");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), text);
    EXPECT_THAT(host.log(), ElementsAre("shader 1.get_num_codes()"));
}

class Exporter_default_test : public Export_test
{
};

TEST_F(Exporter_default_test, succeeds_without_touching_anything)
{
    Exporter_default exporter;
    exporter.initialize();
    const Message_boxes boxes;
    EXPECT_TRUE(exporter.export_shader(host.app(), host.view()));
    EXPECT_TRUE(exporter.export_shader(nullptr, nullptr));
    host.selection.clear();
    EXPECT_TRUE(exporter.export_shader(host.app(), host.view()));
    EXPECT_THAT(host.log(), IsEmpty());
    EXPECT_THAT(boxes.shown(), IsEmpty());
}

TEST_F(Exporter_default_test, panel_has_no_export_file_row)
{
    Exporter_default exporter;
    const Exporter_panel panel(exporter);
    EXPECT_FALSE(panel.has_control(ID_EXPORTFILE_TEXT));
    EXPECT_FALSE(panel.has_control(ID_EXPORTFILE_BROWSE));
}

} // namespace TEST
} // namespace QZ

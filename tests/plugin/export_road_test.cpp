// What all exports have in common.
#include "tests/plugin/export_test.h"

#include "exporters/exporter_table.h"
#include "exporters/make_exporter.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <memory>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::Not;

// What the user is told of a failure, in a box "Tovira"; null: nothing.
struct Failure_texts {
    const char* no_unit;
    const char* no_shader;
    const char* no_file; // "/no such folder/out"
};

// How an exporter of the table differs from the others on this road.
struct Difference {
    const char* exporter;
    const char* no_name_text;
    bool true_after_failed_compile;
    std::vector<std::string> kept; // on purpose, when no file is named
    Failure_texts told;
};

const char* const no_name = "Error! no export file name is specified.";

const Difference differences[] = {
    {"Autodesk 3ds Max legacy (HLSL)",
     no_name,
     false,
     {},
     {"Error exporting shader: Fail to compile a surface shader\n",
      "Error exporting shader: unable to create the shader",
      "Error exporting shader: can not write the code [/no such folder/out.fx]\n"
      "write open failed [/no such folder/out.fx]"}},
    {"CATIA (CgFX)",
     no_name,
     false,
     {},
     {"Error! export_catia_shader: can not get a compilation unit.\n",
      "Error! export_catia_shader: can not generate a shader.",
      "Error! export_catia_shader: write open failed [/no such folder/out.fx]"}},
    {"FX Composer (HLSL/CgFX)", "Error: no export file name is specified.", true, {}, {}},
    {"Custom CgFX", no_name, true, {"never released: wood"}, {}},
    {"Custom HLSL FX", no_name, true, {"never released: wood"}, {}},
    {"Custom GLSL", no_name, true, {"never released: wood"}, {}},
    {"Corvane", no_name, false, {}, {}},
};

struct Road_case {
    size_t row; // of the table
    std::string exporter;
    std::vector<std::string> files; // that "out" becomes, sorted
    std::string no_name_text = no_name;
    bool true_after_failed_compile = true;
    std::vector<std::string> kept = {};
    Failure_texts told = {};
};

// One case for each exporter that writes files.
std::vector<Road_case> road_cases()
{
    std::vector<Road_case> cases;
    for (size_t row = 0; row < exporter_facts.size(); ++row) {
        Road_case road{row, exporter_facts[row].name, {}};
        for (const Output_file& file : exporter_facts[row].files)
            if (file.suffix)
                road.files.push_back(std::string("out") + file.suffix);
        std::sort(road.files.begin(), road.files.end());
        for (const Difference& difference : differences) {
            if (road.exporter == difference.exporter) {
                road.no_name_text = difference.no_name_text;
                road.true_after_failed_compile = difference.true_after_failed_compile;
                road.kept = difference.kept;
                road.told = difference.told;
            }
        }
        if (!road.files.empty())
            cases.push_back(road);
    }
    return cases;
}

// A name for a test: letters and digits.
std::string title_of(const Road_case& c)
{
    std::string title;
    std::copy_if(c.exporter.begin(), c.exporter.end(), std::back_inserter(title),
                 [](unsigned char character) { return std::isalnum(character) != 0; });
    return title;
}

void PrintTo(const Road_case& c, std::ostream* stream)
{
    *stream << c.exporter;
}

class Export_road : public Wx_test, public ::testing::WithParamInterface<Road_case>
{
protected:
    Export_road() : exporter(make_exporter(GetParam().row)), shader(host.add_selected_node("wood"))
    {
    }

    bool is_renderer_source() const { return std::string(exporter->get_name()) == "Corvane"; }
    bool run() { return exporter->export_shader(host.app(), host.view()); }
    void choose_file() { choose_export_file(*exporter, folder.file("out")); }

    // Nothing for null.
    static std::vector<Message_box> box_with(const char* text)
    {
        if (!text)
            return {};
        return {Message_box{"Tovira", text, wxOK | wxCENTRE}};
    }

    Temporary_folder folder;
    Recording_host host;
    std::unique_ptr<Exporter_base> exporter;
    Scripted_node& shader;
};

TEST_P(Export_road, writes_its_files_and_releases_everything)
{
    choose_file();
    const Message_boxes boxes;
    EXPECT_TRUE(run());
    EXPECT_THAT(folder.files(), ElementsAreArray(GetParam().files));
    EXPECT_THAT(boxes.shown(), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_P(Export_road, goes_nowhere_unless_one_node_is_selected)
{
    choose_file();
    for (const size_t count : {0u, 2u, 3u}) {
        host.selection.assign(count, &shader);
        const Message_boxes boxes;
        EXPECT_FALSE(run());
        if (is_renderer_source())
            EXPECT_THAT(boxes.shown(),
                        ElementsAre(Message_box{"Tovira warning: Corvane",
                                                "Must have exactly one shader selected",
                                                wxICON_EXCLAMATION | wxOK}));
        else
            EXPECT_THAT(boxes.shown(), IsEmpty());
    }
    EXPECT_THAT(folder.files(), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_P(Export_road, needs_the_name_of_a_file)
{
    const Message_boxes boxes;
    EXPECT_FALSE(run());
    EXPECT_THAT(boxes.shown(),
                ElementsAre(error_box(exporter->get_name(), GetParam().no_name_text)));
    EXPECT_THAT(host.calls("compiler"), IsEmpty());
    EXPECT_THAT(host.problems(), ElementsAreArray(GetParam().kept));
}

// A setting that the host restores is shown on the panel, but only the closed panel names the file.
TEST_P(Export_road, name_comes_from_the_closed_panel)
{
    for (unsigned int i = 0; i < exporter->get_num_settings(); ++i)
        exporter->set_setting_value(i, folder.file("restored").c_str());
    const Message_boxes boxes;
    EXPECT_FALSE(run());
    EXPECT_EQ(boxes.shown().size(), 1u);
    EXPECT_THAT(folder.files(), IsEmpty());
}

TEST_P(Export_road, existing_files_are_replaced_after_a_question)
{
    choose_file();
    for (const std::string& file : GetParam().files)
        folder.write(file, "old");
    const Message_boxes boxes({wxID_YES, wxID_YES});
    EXPECT_TRUE(run());
    EXPECT_EQ(boxes.shown().size(), GetParam().files.size());
    for (const std::string& file : GetParam().files) {
        EXPECT_THAT(boxes.shown(), Contains(overwrite_question(folder.file(file))));
        EXPECT_NE(folder.read(file), "old");
    }
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_P(Export_road, refused_files_are_left_alone)
{
    choose_file();
    for (const std::string& file : GetParam().files)
        folder.write(file, "old");
    const Message_boxes boxes({wxID_NO, wxID_NO});
    run();
    for (const std::string& file : GetParam().files)
        EXPECT_EQ(folder.read(file), "old");
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_P(Export_road, failed_compilation_writes_nothing)
{
    choose_file();
    host.compiles = false;
    const Message_boxes boxes;
    EXPECT_EQ(run(), GetParam().true_after_failed_compile);
    EXPECT_EQ(boxes.shown(), box_with(GetParam().told.no_unit));
    EXPECT_THAT(folder.files(), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_P(Export_road, failed_generation_writes_nothing)
{
    choose_file();
    host.generates = false;
    const Message_boxes boxes;
    EXPECT_EQ(run(), GetParam().true_after_failed_compile);
    EXPECT_EQ(boxes.shown(), box_with(GetParam().told.no_shader));
    EXPECT_THAT(folder.files(), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

// Only the exporters with a box of their own tell it, to the user and to the host.
TEST_P(Export_road, failed_write_releases_everything)
{
    choose_export_file(*exporter, "/no such folder/out");
    const Message_boxes boxes;
    EXPECT_EQ(run(), GetParam().told.no_file == nullptr);
    EXPECT_EQ(boxes.shown(), box_with(GetParam().told.no_file));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST_P(Export_road, null_arguments_are_no_selection)
{
    choose_file();
    const Message_boxes boxes;
    EXPECT_FALSE(exporter->export_shader(nullptr, host.view()));
    EXPECT_FALSE(exporter->export_shader(host.app(), nullptr));
}

TEST_P(Export_road, can_be_gone_again_and_again)
{
    choose_file();
    const Message_boxes boxes(std::vector<int>(20, wxID_YES));
    for (int round = 0; round < 5; ++round)
        EXPECT_TRUE(run());
    EXPECT_THAT(host.problems(), IsEmpty());
}

// The renderer source alone is given none.
TEST_P(Export_road, user_copyright_reaches_the_compiler)
{
    const Temporary_folder search_path;
    search_path.write("user_copyright.txt", "(c) \xff");
    host.search_paths = {search_path.path()};
    choose_file();
    run();
    const auto is_set = Contains(EndsWith(".set_option(\"user_copyright\", \"(c) \xff\")"));
    if (is_renderer_source())
        EXPECT_THAT(host.log(), Not(is_set));
    else
        EXPECT_THAT(host.log(), is_set);
}

// CATIA brings its own lights, and the renderer source has none: both export without a question.
TEST_P(Export_road, missing_lights_are_asked_about)
{
    shader.functions = {"direct_light"};
    choose_file();
    const Message_boxes boxes({wxID_NO});
    if (is_renderer_source() || GetParam().exporter == "CATIA (CgFX)") {
        EXPECT_TRUE(run());
        EXPECT_THAT(boxes.shown(), IsEmpty());
        return;
    }
    EXPECT_EQ(run(), GetParam().true_after_failed_compile);
    std::vector<Message_box> expected = {
        {"Tovira - Warning",
         "Exported shader requires lights, but none are assigned in\n"
         "the Render Settings Dialog.\n\nAre you sure you want to continue?",
         wxYES_NO}};
    for (const Message_box& box : box_with(GetParam().told.no_unit))
        expected.push_back(box);
    EXPECT_EQ(boxes.shown(), expected);
    EXPECT_THAT(folder.files(), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

// The exporters with a box of their own call the user's own "No" a failure, as they do any other.
TEST_P(Export_road, no_to_a_missing_environment_is_reported_where_failures_are)
{
    shader.functions = {"trace"};
    choose_file();
    const Message_boxes boxes({wxID_NO});
    EXPECT_EQ(run(), is_renderer_source() || GetParam().true_after_failed_compile);
    if (is_renderer_source())
        return; // it asks nothing
    std::vector<Message_box> expected = {
        {"Tovira - Warning",
         "Exported shader requires an environment shader, but there is\n"
         "not one assigned in the Render Settings Dialog.\n\n"
         "Are you sure you want to continue?",
         wxYES_NO}};
    for (const Message_box& box : box_with(GetParam().told.no_unit))
        expected.push_back(box);
    EXPECT_EQ(boxes.shown(), expected);
    EXPECT_THAT(folder.files(), IsEmpty());
}

// A host with a graph and a scene that make every exporter ask all that it can ask.
class Fragile_host : public Recording_host
{
public:
    explicit Fragile_host(const Temporary_folder& search_path)
    {
        search_path.write("user_copyright.txt", "(c)");
        Scripted_node& node = add_selected_node("wood");
        node.is_group = true;
        node.is_material = true;
        Scripted_node& surface = add_node("surface");
        surface.functions = {"direct_light", "trace"};
        surface.connect(&add_node("noise"));
        node.members = {&surface};
        node.connect(&surface);
        add_light("key");
        environment = &add_node("sky");
        volume = &add_node("fog");
        search_paths = {search_path.path()};
    }
};

// Whatever single call of the host fails: no crash, and nothing is kept.
TEST_P(Export_road, host_may_fail_at_any_call)
{
    const Temporary_folder search_path;
    choose_file();
    int failing = 0;
    int calls = 0;
    do {
        Fragile_host fragile(search_path);
        fragile.set_failing_call(++failing);
        const Message_boxes boxes(std::vector<int>(10, wxID_YES));
        exporter->export_shader(fragile.app(), fragile.view());
        EXPECT_THAT(fragile.problems(), IsEmpty()) << "call " << failing << " failed";
        calls = fragile.fallible_calls();
    } while (calls >= failing);
    EXPECT_GT(failing, 8);
}

// Memory may run out anywhere: the exception ends at the border, and nothing is kept either.
TEST_P(Export_road, exception_at_any_call_is_a_failed_export)
{
    const Temporary_folder search_path;
    choose_file();
    int throwing = 0;
    bool done = false;
    ::testing::internal::CaptureStderr();
    do {
        Fragile_host fragile(search_path);
        fragile.set_throwing_call(++throwing);
        const Message_boxes boxes(std::vector<int>(10, wxID_YES));
        done = exporter->export_shader(fragile.app(), fragile.view());
        EXPECT_EQ(done, fragile.fallible_calls() < throwing) << "call " << throwing << " threw";
        EXPECT_THAT(fragile.problems(), IsEmpty()) << "call " << throwing << " threw";
    } while (!done && throwing < 200);
    EXPECT_TRUE(done);
    EXPECT_GT(throwing, 8);
    ::testing::internal::GetCapturedStderr();
}

INSTANTIATE_TEST_SUITE_P(Exporters, Export_road, ::testing::ValuesIn(road_cases()),
                         [](const auto& info) { return title_of(info.param); });

} // namespace TEST
} // namespace QZ

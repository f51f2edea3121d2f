// What each exporter is called, which settings it registers, and what its dialogs show.
#include "exporter_base/bytes.h"
#include "exporters/exporter_3dsmax.h"
#include "exporters/exporter_catia.h"
#include "exporters/exporter_default.h"
#include "exporters/exporter_fxcomposer.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_maya.h"
#include "exporters/exporter_swrc.h"
#include "exporters/exporter_xsi.h"
#include "exporters/make_exporter.h"
#include "tests/support/faults.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <new>

namespace QZ
{
namespace TEST
{

using namespace reference_host;
using namespace TOVIRAEXPORT;
using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;
using Properties = std::map<std::string, std::string>;

template<typename Exporter>
std::unique_ptr<Exporter_base> make()
{
    return std::make_unique<Exporter>();
}

template<int target>
std::unique_ptr<Exporter_base> make_generic()
{
    return std::make_unique<Exporter_generic>(
        static_cast<Exporter_generic::Target_language>(target));
}

struct Exporter_case {
    const char* title; // of the test
    std::unique_ptr<Exporter_base> (*create)();
    const char* name;
    const char* language;
    const char* key;          // the base setting key
    bool has_annotation_file; // registers its three settings
    Properties properties;    // by key, without the base key
};

// The properties of an export file whose filter 0 has an extension.
Properties application_properties(const char* wildcard, const char* extension,
                                  const char* caption_open, const char* caption_save)
{
    return {{"::exportfile::wildcard", wildcard},
            {"::exportfile::extension::0", extension},
            {"::exportfile::extension::1", "*"},
            {"::exportfile::caption::open", caption_open},
            {"::exportfile::caption::save", caption_save},
            {"::exportfile::extension_autoadd", "true"}};
}

const Exporter_case exporter_cases[] = {
    {"Exporter_3dsmax", make<Exporter_3dsmax>, "Autodesk 3ds Max legacy (HLSL)", "Cg and HLSL",
     "tovira_exporter_Autodesk_3ds_Max_legacy_(HLSL)_Cg_and_HLSL", false,
     application_properties("3ds Max HLSL (*.fx)|*.fx|", "fx", "Choose a 3ds Max HLSL file",
                            "Save a 3ds Max HLSL file")},
    {"Exporter_catia", make<Exporter_catia>, "CATIA (CgFX)", "Cg",
     "tovira_exporter_CATIA_(CgFX)_Cg", false,
     application_properties("Catia CgFX (*.fx)|*.fx|", "fx", "Choose a Catia CgFX file",
                            "Save a Catia CgFX file")},
    {"Exporter_maya", make<Exporter_maya>, "Autodesk Maya (CgFX)", "CgFX",
     "tovira_exporter_Autodesk_Maya_(CgFX)_CgFX", false,
     application_properties("Maya CgFX (*.cgfx)|*.cgfx|", "cgfx", "Choose a Maya CgFX file",
                            "Save a Maya CgFX file")},
    {"Exporter_xsi", make<Exporter_xsi>, "Autodesk Softimage (CgFX)", "CgFX",
     "tovira_exporter_Autodesk_Softimage_(CgFX)_CgFX", false,
     application_properties("XSI CgFX (*.cgfx)|*.cgfx|", "cgfx", "Choose a XSI CgFX file",
                            "Save a XSI CgFX file")},
    {"Exporter_fxcomposer",
     make<Exporter_fxcomposer>,
     "FX Composer (HLSL/CgFX)",
     "Cg and HLSL",
     "tovira_exporter_FX_Composer_(HLSL/CgFX)_Cg_and_HLSL",
     false,
     {{"::exportfile::wildcard", "FX Composer files (*.fx;*.cgfx)|*.fx;*.cgfx|"},
      {"::exportfile::extension::0", "*"},
      {"::exportfile::caption::open", "Choose a FX Composer file"},
      {"::exportfile::caption::save", "Save a FX Composer file"},
      {"::exportfile::extension_autoadd", "false"}}},
    {"Exporter_swrc",
     make<Exporter_swrc>,
     "Corvane",
     "Swrc",
     "tovira_exporter_Corvane_Swrc",
     false,
     {{"::exportfile::wildcard", "All files (*)|*"},
      {"::exportfile::extension::0", "*"},
      {"::exportfile::caption::open", "Choose a Corvane export file"},
      {"::exportfile::caption::save", "Save a Corvane export file"},
      {"::exportfile::extension_autoadd", "false"}}},
    {"Exporter_generic_cgfx",
     make_generic<0>,
     "Custom CgFX",
     "CgFX",
     "tovira_exporter_Custom_CgFX_CgFX",
     true,
     {{"::exportfile::wildcard", "Custom CgFX (*.cgfx)|*.cgfx|All files (*)|*"},
      {"::exportfile::extension::0", "cgfx"},
      {"::exportfile::extension::1", "*"},
      {"::exportfile::caption::open", "Choose a CgFX file"},
      {"::exportfile::caption::save", "Save a CgFX file"},
      {"::exportfile::extension_autoadd", "true"},
      {"::annotationfile::wildcard", "Annotation map file (*.axml)|*.axml|All files (*)|*"},
      {"::annotationfile::extension::0", "axml"},
      {"::annotationfile::extension::1", "*"},
      {"::annotationfile::caption::open", "Choose a CgFX annotation map file"},
      {"::annotationfile::caption::save", "Save a CgFX annotation map file"},
      {"::annotationfile::extension_autoadd", "true"}}},
    {"Exporter_generic_hlsl",
     make_generic<1>,
     "Custom HLSL FX",
     "HLSL",
     "tovira_exporter_Custom_HLSL_FX_HLSL",
     true,
     {{"::exportfile::wildcard", "Custom HLSL FX (*.fx)|*.fx|All files (*)|*"},
      {"::exportfile::extension::0", "fx"},
      {"::exportfile::extension::1", "*"},
      {"::exportfile::caption::open", "Choose a HLSL file"},
      {"::exportfile::caption::save", "Save a HLSL file"},
      {"::exportfile::extension_autoadd", "true"},
      {"::annotationfile::wildcard", "Annotation map file (*.axml)|*.axml|All files (*)|*"},
      {"::annotationfile::extension::0", "axml"},
      {"::annotationfile::extension::1", "*"},
      {"::annotationfile::caption::open", "Choose a HLSL annotation map file"},
      {"::annotationfile::caption::save", "Save a HLSL annotation map file"},
      {"::annotationfile::extension_autoadd", "true"}}},
    {"Exporter_generic_glsl",
     make_generic<2>,
     "Custom GLSL",
     "GLSL",
     "tovira_exporter_Custom_GLSL_GLSL",
     true,
     {{"::exportfile::wildcard", "Custom GLSL (*.gl;*.glsl)|*.gl;*.glsl|All files (*)|*"},
      {"::exportfile::extension::0", "gl"},
      {"::exportfile::extension::1", "*"},
      {"::exportfile::caption::open", "Choose a GLSL file"},
      {"::exportfile::caption::save", "Save a GLSL file"},
      {"::exportfile::extension_autoadd", "false"}}},
};

void PrintTo(const Exporter_case& c, std::ostream* stream)
{
    *stream << c.name;
}

// Sets HOME for one test; null unsets it.
class Home
{
public:
    explicit Home(const char* value)
    {
        if (const char* before = std::getenv("HOME"))
            m_before = before;
        if (value)
            ::setenv("HOME", value, 1);
        else
            ::unsetenv("HOME");
    }
    ~Home() { ::setenv("HOME", m_before.c_str(), 1); }

private:
    std::string m_before;
};

// All settings: name, then value and default, which must be the same.
Properties settings_of(Exporter_base& exporter)
{
    Properties settings;
    for (unsigned int i = 0; i < exporter.get_num_settings(); ++i) {
        EXPECT_STREQ(exporter.get_setting_value(i), exporter.get_setting_default(i));
        settings[exporter.get_setting_name(i)] = exporter.get_setting_value(i);
    }
    return settings;
}

Properties expected_settings(const Exporter_case& c, const std::string& default_file)
{
    const std::string key = c.key;
    Properties settings = {{key + "_exportfile_open", default_file},
                           {key + "_exportfile_save", default_file},
                           {key + "_exportfile_filter_index", "0"}};
    if (c.has_annotation_file)
        settings.insert({{key + "_annotationfile_open", ""},
                         {key + "_annotationfile_save", ""},
                         {key + "_annotationfile_filter_index", "0"}});
    return settings;
}

class Exporter_identity : public ::testing::TestWithParam<Exporter_case>
{
};

TEST_P(Exporter_identity, has_its_name_language_and_key)
{
    const auto exporter = GetParam().create();
    EXPECT_STREQ(exporter->get_name(), GetParam().name);
    EXPECT_STREQ(exporter->get_language(), GetParam().language);
    EXPECT_EQ(to_bytes(exporter->get_base_setting_key()), GetParam().key);
}

TEST_P(Exporter_identity, registers_nothing_before_it_is_initialised)
{
    EXPECT_EQ(GetParam().create()->get_num_settings(), 0u);
}

TEST_P(Exporter_identity, export_file_starts_as_untitled_in_the_home_folder)
{
    struct Case {
        const char* home;
        const char* file;
    };
    const Case cases[] = {{"/home/u", "/home/u/untitled"},
                          {nullptr, "/untitled"},
                          {"", "/untitled"},
                          {"/gr\xfc\xdf", "/gr\xfc\xdf/untitled"}};
    for (const Case& c : cases) {
        const Home home(c.home);
        const auto exporter = GetParam().create();
        exporter->initialize();
        EXPECT_EQ(settings_of(*exporter), expected_settings(GetParam(), c.file));
    }
}

// The dump lists every property, so that none can be there unseen.
TEST_P(Exporter_identity, has_exactly_its_chooser_properties)
{
    const auto exporter = GetParam().create();
    exporter->initialize();
    std::string dump = "DEBUG: Exporter_base::debug_dump_exporter_setting: # of entries = " +
                       std::to_string(GetParam().properties.size()) + "\n";
    for (const auto& [key, value] : GetParam().properties) {
        EXPECT_EQ(
            to_bytes(exporter->get_exporter_setting(from_bytes((GetParam().key + key).c_str()))),
            value);
        dump += "DEBUG: key = " + (GetParam().key + key) + ", val = " + value + "\n";
    }
    CaptureStderr();
    exporter->debug_dump_exporter_setting();
    EXPECT_EQ(GetCapturedStderr(), dump);
}

TEST_P(Exporter_identity, second_initialisation_changes_nothing)
{
    const Home home("/home/u");
    const auto exporter = GetParam().create();
    exporter->initialize();
    exporter->initialize();
    EXPECT_EQ(settings_of(*exporter), expected_settings(GetParam(), "/home/u/untitled"));
}

TEST_P(Exporter_identity, wildcard_for_all_files_is_the_same_everywhere)
{
    EXPECT_EQ(to_bytes(GetParam().create()->get_exportfile_wildcard_all()), "All files (*)|*");
}

INSTANTIATE_TEST_SUITE_P(Exporters, Exporter_identity, ::testing::ValuesIn(exporter_cases),
                         [](const auto& info) { return std::string(info.param.title); });

TEST(Sample_exporter, has_a_name_a_language_and_nothing_else)
{
    Exporter_default exporter;
    exporter.initialize();
    EXPECT_STREQ(exporter.get_name(), "default exporter");
    EXPECT_STREQ(exporter.get_language(), "none");
    EXPECT_EQ(exporter.get_num_settings(), 0u);
    CaptureStderr();
    exporter.debug_dump_exporter_setting();
    EXPECT_EQ(GetCapturedStderr(),
              "DEBUG: Exporter_base::debug_dump_exporter_setting: # of entries = 0\n");
}

// ---- the generic exporter's own queries

Exporter_generic generic(int target)
{
    return Exporter_generic(static_cast<Exporter_generic::Target_language>(target));
}

TEST(Generic_exporter_queries, wildcard_of_glsl_offers_one_extension)
{
    EXPECT_EQ(to_bytes(generic(0).get_exportfile_wildcard()),
              "Custom CgFX (*.cgfx)|*.cgfx|All files (*)|*");
    EXPECT_EQ(to_bytes(generic(1).get_exportfile_wildcard()),
              "Custom HLSL FX (*.fx)|*.fx|All files (*)|*");
    EXPECT_EQ(to_bytes(generic(2).get_exportfile_wildcard()),
              "Custom GLSL (*.gl)|*.gl|All files (*)|*");
}

TEST(Generic_exporter_queries, extension_is_known_for_index_0_only)
{
    const char* const extensions[] = {".cgfx", ".fx", ".gl"};
    for (int target = 0; target < 3; ++target) {
        EXPECT_EQ(to_bytes(generic(target).get_extension(0)), extensions[target]);
        for (const int index : {1, -1, 2, 1000000})
            EXPECT_EQ(to_bytes(generic(target).get_extension(index)), "*") << index;
    }
}

TEST(Generic_exporter_queries, only_the_mode_open_gives_the_caption_that_opens)
{
    struct Case {
        const char* mode;
        const char* caption;
    };
    const Case cases[] = {{"open", "Choose a HLSL file"},
                          {"save", "Save a HLSL file"},
                          {"", "Save a HLSL file"},
                          {"Open", "Save a HLSL file"},
                          {"open ", "Save a HLSL file"}};
    for (const Case& c : cases)
        EXPECT_EQ(to_bytes(generic(1).get_chooser_caption(from_bytes(c.mode))), c.caption);
}

TEST(Generic_exporter_queries, unknown_target_registers_settings_only_and_logs)
{
    for (const int target : {3, -1, 1000}) {
        const Home home("/home/u");
        Exporter_generic exporter(static_cast<Exporter_generic::Target_language>(target));
        EXPECT_EQ(exporter.get_language(), nullptr);
        CaptureStderr();
        exporter.initialize();
        EXPECT_EQ(GetCapturedStderr(),
                  "Toviraexport_log: Error! Exporter_generic::initialize: no such target language "
                  "support.\n");
        EXPECT_EQ(exporter.get_num_settings(), 6u);
        CaptureStderr();
        exporter.debug_dump_exporter_setting();
        EXPECT_EQ(GetCapturedStderr(),
                  "DEBUG: Exporter_base::debug_dump_exporter_setting: # of entries = 0\n");
        EXPECT_EQ(to_bytes(exporter.get_exportfile_wildcard()), "All files (*)|*");
        EXPECT_EQ(to_bytes(exporter.get_extension(0)), "*");
        EXPECT_EQ(to_bytes(exporter.get_chooser_caption(wxT("open"))), "Choose a  file");
    }
}

TEST(Generic_exporter_queries, settings_of_two_targets_are_apart)
{
    Exporter_generic cgfx(Exporter_generic::TARGET_CGFX);
    Exporter_generic hlsl(Exporter_generic::TARGET_HLSL);
    cgfx.initialize();
    hlsl.initialize();
    for (unsigned int i = 0; i < 6; ++i)
        cgfx.set_setting_value(i, "changed");
    for (unsigned int i = 0; i < 6; ++i)
        EXPECT_STRNE(hlsl.get_setting_value(i), "changed");
}

// A host that catches what its own heap throws keeps running: nothing on the way ends the process.
TEST(Exporter_registration, passes_a_failed_allocation_on)
{
    for (size_t row = 0; make_exporter(row); ++row) {
        int failures = 0;
        for (bool disturbed = true; disturbed;) {
            std::unique_ptr<Exporter_base> exporter;
            const int number = failures + 1;
            Faults faults;
            faults.set(FAULT_ALLOCATION, fail_at(number));
            try {
                exporter = make_exporter(row);
            } catch (const std::bad_alloc&) {
                ++failures;
            }
            disturbed = faults.calls(FAULT_ALLOCATION) >= number;
            EXPECT_NE(disturbed, exporter != nullptr) << "allocation " << failures;
        }
        EXPECT_GT(failures, 0) << "row " << row;
    }
}

} // namespace TEST
} // namespace QZ

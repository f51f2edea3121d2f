// The table of exporters against the exporters that it makes and against the texts about them.
#include "exporters/exporter_table.h"

#include "exporter_base/bytes.h"
#include "exporter_base/exporter_base.h"
#include "exporters/exporter_generic.h"
#include "exporters/generic_controls.h"
#include "exporters/make_exporter.h"
#include "plugin/tovira_exporter_plugin.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace TOVIRAEXPORT;
using testing::HasSubstr;
using testing::Not;

std::string read_source(const std::string& path)
{
    std::ifstream file(std::string(TOVIRAEXPORT_SOURCE_DIR) + "/" + path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST(Exporter_table, each_row_makes_the_exporter_that_it_describes)
{
    for (size_t row = 0; row < exporter_facts.size(); ++row) {
        const std::unique_ptr<Exporter_base> exporter = make_exporter(row);
        ASSERT_TRUE(exporter) << row;
        EXPECT_STREQ(exporter->get_name(), exporter_facts[row].name);
        EXPECT_STREQ(exporter->get_language(), exporter_facts[row].language);
    }
    EXPECT_FALSE(make_exporter(exporter_facts.size()));
    EXPECT_FALSE(make_exporter(static_cast<size_t>(-1)));
}

TEST(Exporter_table, registry_offers_its_first_rows_in_their_order)
{
    Tovira_exporter_plugin plugin;
    ASSERT_EQ(plugin.get_num_exporters(), 8);
    for (size_t row = 0; row < exporter_facts.size(); ++row) {
        const std::unique_ptr<TSDK::IExporter> exporter(plugin.get_exporter(static_cast<int>(row)));
        ASSERT_EQ(exporter != nullptr, exporter_facts[row].offered) << row;
        if (exporter) {
            EXPECT_STREQ(exporter->get_name(), exporter_facts[row].name);
        }
    }
}

// A row as a line: name, language, whether it is offered, kinds, files.
std::string line_of(const Exporter_facts& facts)
{
    std::string line = std::string(facts.name) + "; " + facts.language + "; " +
                       (facts.offered ? "offered" : "not offered") + "; " + facts.kinds;
    for (const Output_file& file : facts.files)
        if (file.suffix)
            line += std::string("; ") + file.suffix + " " + file.text + ", " + file.checker;
    return line;
}

// Programs and pages read these facts; the names and languages stand in the users' settings.
TEST(Exporter_table, tells_what_each_exporter_takes_and_writes)
{
    const char* const expected[] = {
        "Autodesk 3ds Max legacy (HLSL); Cg and HLSL; offered; surface environment lens; "
        ".fx HLSL FX, hlsl",
        "CATIA (CgFX); Cg; offered; surface; .fx CgFX, catia",
        "FX Composer (HLSL/CgFX); Cg and HLSL; offered; surface; .cgfx CgFX, cgfx; "
        ".fx HLSL FX, hlsl",
        "Autodesk Maya (CgFX); CgFX; offered; surface; .cgfx CgFX, cgfx",
        "Autodesk Softimage (CgFX); CgFX; offered; surface; .cgfx CgFX, cgfx",
        "Custom CgFX; CgFX; offered; surface environment lens light volume; .cgfx CgFX, cgfx",
        "Custom HLSL FX; HLSL; offered; surface; .fx HLSL FX, hlsl",
        "Custom GLSL; GLSL; offered; surface; _v.gl GLSL vertex shader, glsl; "
        "_f.gl GLSL fragment shader, glsl",
        "Corvane; Swrc; not offered; surface environment lens light volume; .qz qz scene, qz; "
        ".cpp C++ source, cpp",
        "default exporter; none; not offered; ",
    };
    ASSERT_EQ(exporter_facts.size(), std::size(expected));
    for (size_t row = 0; row < exporter_facts.size(); ++row)
        EXPECT_EQ(line_of(exporter_facts[row]), expected[row]);
    EXPECT_EQ(count_offered_exporters(), 8u);
}

TEST(Exporter_table, names_are_not_doubled)
{
    std::set<std::string> names;
    for (const Exporter_facts& facts : exporter_facts)
        EXPECT_TRUE(names.insert(facts.name).second) << facts.name;
}

TEST(Exporter_table, every_exporter_that_writes_files_says_of_which_shaders)
{
    for (const Exporter_facts& facts : exporter_facts)
        EXPECT_EQ(facts.files[0].suffix != nullptr, *facts.kinds != '\0') << facts.name;
}

// The row of an exporter in the overview: number, name, program, files, kinds, page.
std::string overview_row(size_t row)
{
    const std::string overview = read_source("docs/targets.md");
    const Exporter_facts& facts = exporter_facts[row];
    const std::string number = facts.offered ? std::to_string(row) : "-";
    const size_t start = overview.find("\n| " + number + " | " + facts.name + " |");
    if (start == std::string::npos)
        return "";
    return overview.substr(start + 1, overview.find('\n', start + 1) - start - 1);
}

// The page to which the row leads.
std::string page_of(size_t row)
{
    const std::string line = overview_row(row);
    const size_t start = line.find("(targets/");
    if (start == std::string::npos)
        return "";
    return read_source("docs/" + line.substr(start + 1, line.find(')', start) - start - 1));
}

void expect_to_tell(const std::string& text, const Exporter_facts& facts)
{
    for (const Output_file& file : facts.files) {
        if (file.suffix) {
            EXPECT_THAT(text, HasSubstr("`NAME" + std::string(file.suffix) + "`"));
        }
    }
    std::istringstream kinds(facts.kinds);
    for (std::string kind; kinds >> kind;)
        EXPECT_THAT(text, HasSubstr(kind));
}

TEST(Exporter_table, overview_and_pages_of_targets_tell_the_same)
{
    for (size_t row = 0; row < exporter_facts.size(); ++row) {
        const Exporter_facts& facts = exporter_facts[row];
        if (!facts.files[0].suffix)
            continue;
        SCOPED_TRACE(facts.name);
        const std::string page = page_of(row);
        EXPECT_THAT(page, HasSubstr(std::string("Exporter: **") + facts.name + "**"));
        expect_to_tell(overview_row(row), facts);
        expect_to_tell(page.substr(0, page.find("\n## ")), facts);
    }
}

// ---- the options of the custom exporters ----

bool is_on_panel(const Generic_control& control, int target)
{
    if (target == Exporter_generic::TARGET_GLSL)
        return control.glsl_place != 0;
    return (control.effect_panels &
            (target == Exporter_generic::TARGET_CGFX ? ON_CGFX : ON_HLSL)) != 0;
}

std::string default_text(const Generic_control& control, int target)
{
    const Generic_default& value = control.by_default;
    if (control.choice)
        return to_bytes(control.entries[value.number]);
    if (control.flag)
        return value.number ? "on" : "off";
    const bool is_cgfx = target == Exporter_generic::TARGET_CGFX;
    return "`" + to_bytes(is_cgfx ? value.cgfx_text : value.text) + "`";
}

TEST(Exporter_table, pages_of_the_custom_targets_list_the_options_of_their_panels)
{
    constexpr size_t first_row = 5;
    for (int target = 0; target < 3; ++target) {
        const std::string page = page_of(first_row + static_cast<size_t>(target));
        for (const Generic_control& control : generic_controls) {
            const std::string row = "\n| \"" + to_bytes(control.label) + "\" | `" + control.option +
                                    "` | " + default_text(control, target) + " | ";
            if (is_on_panel(control, target))
                EXPECT_THAT(page, HasSubstr(row));
            else
                EXPECT_THAT(page, Not(HasSubstr("| `" + std::string(control.option) + "` |")));
        }
    }
}

TEST(Exporter_table, page_of_targets_names_the_kinds)
{
    const std::string page = read_source("docs/targets.md");
    for (const Exporter_facts& facts : exporter_facts) {
        if (!facts.files[0].suffix)
            continue;
        const size_t name = page.find(std::string("| ") + facts.name + " |");
        ASSERT_NE(name, std::string::npos) << facts.name;
        const std::string row = page.substr(name, page.find('\n', name) - name);
        std::istringstream kinds(facts.kinds);
        for (std::string kind; kinds >> kind;)
            EXPECT_NE(row.find(kind), std::string::npos) << facts.name << " takes " << kind;
    }
}

TEST(Exporter_table, text_of_a_file_is_what_its_checker_checks)
{
    const std::map<std::string, std::string> texts = {{"catia", "CgFX"},     {"cgfx", "CgFX"},
                                                      {"hlsl", "HLSL FX"},   {"glsl", "GLSL"},
                                                      {"cpp", "C++ source"}, {"qz", "qz scene"}};
    for (const Exporter_facts& facts : exporter_facts) {
        for (const Output_file& file : facts.files) {
            if (!file.suffix)
                continue;
            const std::string suffix = file.suffix;
            const std::string stage = suffix == "_v.gl"   ? " vertex shader"
                                      : suffix == "_f.gl" ? " fragment shader"
                                                          : "";
            EXPECT_EQ(file.text, texts.at(file.checker) + stage) << facts.name;
        }
    }
}

TEST(Exporter_table, checkers_are_kinds_that_the_accepting_script_knows)
{
    const std::string script = read_source("scripts/accept.sh");
    for (const Exporter_facts& facts : exporter_facts) {
        for (const Output_file& file : facts.files) {
            if (file.suffix) {
                EXPECT_NE(script.find(std::string("\n") + file.checker + ") "), std::string::npos)
                    << file.checker;
            }
        }
    }
}

} // namespace
} // namespace TEST
} // namespace QZ

// The table of exporters against the exporters that it makes and against the texts about them.
#include "exporters/exporter_table.h"

#include "exporter_base/exporter_base.h"
#include "exporters/make_exporter.h"
#include "plugin/tovira_exporter_plugin.h"

#include <gmock/gmock.h>

#include <fstream>
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

// Its row of the overview: number, name, ..., the files, ..., the kinds.
TEST(Exporter_table, page_of_targets_tells_the_same)
{
    const std::string page = read_source("docs/targets.md");
    for (size_t row = 0; row < exporter_facts.size(); ++row) {
        const Exporter_facts& facts = exporter_facts[row];
        if (!facts.files[0].suffix)
            continue;
        const std::string number = facts.offered ? std::to_string(row) : "-";
        const size_t start = page.find("\n| " + number + " | " + facts.name + " |");
        ASSERT_NE(start, std::string::npos) << facts.name;
        const std::string line = page.substr(start + 1, page.find('\n', start + 1) - start - 1);
        for (const Output_file& file : facts.files) {
            if (file.suffix) {
                EXPECT_NE(line.find("`NAME" + std::string(file.suffix) + "`"), std::string::npos)
                    << line;
            }
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

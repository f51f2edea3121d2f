// The entry functions, the plug-in object and its registry.
#include "plugin/exporter_plugin_app.h"
#include "plugin/iexporter.h"
#include "plugin/init_library.h"
#include "plugin/tovira_exporter_plugin.h"
#include "sdk/interface_ids.h"

#include <gmock/gmock.h>

#include <climits>
#include <memory>

namespace QZ
{
namespace TEST
{

using ::testing::StartsWith;
using TOVIRAEXPORT::Tovira_exporter_plugin;
using Exporter = std::unique_ptr<TSDK::IExporter>;

std::unique_ptr<TSDK::IExporter_plugin> load_plugin()
{
    return std::unique_ptr<TSDK::IExporter_plugin>(
        static_cast<TSDK::IExporter_plugin*>(initializer(0)));
}

TEST(Plugin_entry, only_the_selector_0_yields_a_plugin)
{
    for (const unsigned int selector : {1u, 7u, 0x80000000u, UINT_MAX}) {
        EXPECT_EQ(init_library(selector), nullptr) << selector;
        EXPECT_EQ(initializer(selector), nullptr) << selector;
    }
    const std::unique_ptr<qz::base::Plugin> one(init_library(0));
    const std::unique_ptr<qz::base::Plugin> other(initializer(0));
    EXPECT_NE(one, nullptr);
    EXPECT_NE(other, nullptr);
    EXPECT_NE(one, other);
}

TEST(Plugin_entry, plugin_introduces_itself)
{
    const auto plugin = load_plugin();
    EXPECT_EQ(plugin->get_plugin_system_version(), 2);
    EXPECT_STREQ(plugin->get_name(), "Tovira_exporter_plugin");
    EXPECT_STREQ(plugin->get_type(), "Exporter_plugin");
    EXPECT_EQ(plugin->get_version(), 1);
    EXPECT_STREQ(plugin->get_compiler(), "");
}

TEST(Plugin_entry, plugin_has_no_string_properties)
{
    const auto plugin = load_plugin();
    const char* const untouched = "untouched";
    const char* value = untouched;
    EXPECT_EQ(plugin->get_string_property(0, &value), 0);
    EXPECT_EQ(value, untouched);
    EXPECT_EQ(plugin->get_string_property(-1, nullptr), 0);
}

TEST(Plugin_entry, release_leaves_the_plugin_usable)
{
    const auto plugin = load_plugin();
    plugin->release();
    plugin->release();
    EXPECT_STREQ(plugin->get_name(), "Tovira_exporter_plugin");
    EXPECT_EQ(plugin->get_num_exporters(), 8);
}

TEST(Plugin_entry, plugin_is_no_more_than_its_interface_pointer)
{
    EXPECT_EQ(sizeof(Tovira_exporter_plugin), sizeof(void*));
}

TEST(Plugin_base, release_deletes_an_object_by_default)
{
    struct Minimal_plugin : qz::base::Plugin {
        explicit Minimal_plugin(bool& deleted) : m_deleted(deleted) {}
        ~Minimal_plugin() override { m_deleted = true; }
        const char* get_name() const override { return "minimal"; }
        const char* get_type() const override { return "test"; }
        bool& m_deleted;
    };
    bool deleted = false;
    qz::base::Plugin* plugin = new Minimal_plugin(deleted);
    EXPECT_STREQ(plugin->get_compiler(), "unknown");
    EXPECT_EQ(plugin->get_version(), 1);
    EXPECT_EQ(plugin->get_plugin_system_version(), 2);
    plugin->release();
    EXPECT_TRUE(deleted);
}

// ---- the registry

TEST(Registry, offers_eight_exporters_in_their_order)
{
    const char* const names[] = {"Autodesk 3ds Max legacy (HLSL)",
                                 "CATIA (CgFX)",
                                 "FX Composer (HLSL/CgFX)",
                                 "Autodesk Maya (CgFX)",
                                 "Autodesk Softimage (CgFX)",
                                 "Custom CgFX",
                                 "Custom HLSL FX",
                                 "Custom GLSL"};
    const auto plugin = load_plugin();
    ASSERT_EQ(plugin->get_num_exporters(), 8);
    for (int i = 0; i < 8; ++i)
        EXPECT_STREQ(Exporter(plugin->get_exporter(i))->get_name(), names[i]) << i;
}

TEST(Registry, has_nothing_beyond_its_rows)
{
    const auto plugin = load_plugin();
    for (const int index : {8, 9, -1, INT_MIN, INT_MAX})
        EXPECT_EQ(plugin->get_exporter(index), nullptr) << index;
}

TEST(Registry, exporters_come_with_their_settings_registered)
{
    const auto plugin = load_plugin();
    for (int i = 0; i < 8; ++i) {
        const Exporter exporter(plugin->get_exporter(i));
        EXPECT_EQ(exporter->get_num_settings(), i < 5 ? 3u : 6u) << i;
        EXPECT_THAT(exporter->get_setting_name(0), StartsWith("tovira_exporter_")) << i;
    }
}

TEST(Registry, two_exporters_of_one_index_have_settings_of_their_own)
{
    const auto plugin = load_plugin();
    const Exporter one(plugin->get_exporter(5));
    const Exporter other(plugin->get_exporter(5));
    one->set_setting_value(0, "changed");
    EXPECT_STREQ(one->get_setting_value(0), "changed");
    EXPECT_STRNE(other->get_setting_value(0), "changed");
}

TEST(Registry, exporters_answer_to_the_exporter_interface_only)
{
    const auto plugin = load_plugin();
    for (int i = 0; i < 8; ++i) {
        const Exporter exporter(plugin->get_exporter(i));
        EXPECT_EQ(exporter->get_interface(TSDK::INTERFACE_EXPORTER), exporter.get());
        EXPECT_EQ(exporter->get_interface(26), exporter.get());
        for (const int id : {25, 27, 0, -1, 1, 2, 10})
            EXPECT_EQ(exporter->get_interface(id), nullptr) << id;
        EXPECT_EQ(exporter->get_interface_target(), 26);
    }
}

TEST(Registry, release_leaves_an_exporter_usable)
{
    const auto plugin = load_plugin();
    const Exporter exporter(plugin->get_exporter(3));
    exporter->reference();
    exporter->release();
    exporter->release();
    EXPECT_STREQ(exporter->get_name(), "Autodesk Maya (CgFX)");
    EXPECT_EQ(exporter->get_num_settings(), 3u);
}

TEST(Registry, exporters_outlive_the_plugin_object)
{
    auto plugin = load_plugin();
    const Exporter exporter(plugin->get_exporter(0));
    plugin.reset();
    EXPECT_STREQ(exporter->get_name(), "Autodesk 3ds Max legacy (HLSL)");
}

// ---- the application

TEST(Application, loading_the_library_sets_the_factory_of_wx)
{
    EXPECT_EQ(reinterpret_cast<void*>(wxApp::GetInitializerFunction()),
              reinterpret_cast<void*>(TOVIRAEXPORT::wxCreateApp));
}

} // namespace TEST
} // namespace QZ

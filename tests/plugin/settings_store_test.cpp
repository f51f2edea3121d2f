// The settings store, driven by a minimal exporter.
#include "exporter_base/bytes.h"
#include "exporter_base/exporter_base.h"
#include "tests/plugin/minimal_exporter.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cstring>

namespace QZ
{
namespace TEST
{

using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;
using TOVIRAEXPORT::from_bytes;
using TOVIRAEXPORT::to_bytes;

TEST(Settings_store, is_empty_before_anything_is_registered)
{
    Minimal_exporter exporter;
    EXPECT_EQ(exporter.get_num_settings(), 0u);
    EXPECT_EQ(exporter.get_setting_name(0), nullptr);
    EXPECT_EQ(exporter.get_setting_value(0), nullptr);
    EXPECT_EQ(exporter.get_setting_default(0), nullptr);
    exporter.set_setting_value(0, "ignored");
    EXPECT_EQ(exporter.get_num_settings(), 0u);
}

TEST(Settings_store, index_follows_the_order_of_keys)
{
    Minimal_exporter exporter;
    for (const char* key : {"b", "a", "Z", "aB", "ab", "AB", "\xc3\xa9", "_"})
        exporter.set_own_setting_value(from_bytes(key), wxT(""));
    const char* const sorted[] = {"AB", "Z", "_", "a", "aB", "ab", "b", "\xc3\xa9"};
    ASSERT_EQ(exporter.get_num_settings(), 8u);
    for (unsigned int i = 0; i < 8; ++i)
        EXPECT_STREQ(exporter.get_setting_name(i), sorted[i]) << i;
}

TEST(Settings_store, first_value_of_a_key_is_its_default_for_ever)
{
    Minimal_exporter exporter;
    exporter.set_own_setting_value(wxT("k"), wxT("x"));
    exporter.set_own_setting_value(wxT("k"), wxT("y"));
    exporter.set_setting_value(0, "z");
    EXPECT_EQ(exporter.get_num_settings(), 1u);
    EXPECT_STREQ(exporter.get_setting_value(0), "z");
    EXPECT_STREQ(exporter.get_setting_default(0), "x");
    EXPECT_EQ(exporter.get_own_setting_value(wxT("k")), wxString(wxT("z")));
}

TEST(Settings_store, null_value_counts_as_empty)
{
    Minimal_exporter exporter;
    exporter.set_own_setting_value(wxT("k"), wxT("x"));
    exporter.set_setting_value(0, nullptr);
    EXPECT_STREQ(exporter.get_setting_value(0), "");
    EXPECT_STREQ(exporter.get_setting_default(0), "x");
}

TEST(Settings_store, index_out_of_range_is_ignored_in_silence)
{
    Minimal_exporter exporter;
    exporter.set_own_setting_value(wxT("k"), wxT("x"));
    CaptureStderr();
    for (const unsigned int index : {1u, 2u, 0x80000000u, 0xffffffffu}) {
        EXPECT_EQ(exporter.get_setting_name(index), nullptr);
        EXPECT_EQ(exporter.get_setting_value(index), nullptr);
        EXPECT_EQ(exporter.get_setting_default(index), nullptr);
        exporter.set_setting_value(index, "ignored");
    }
    EXPECT_EQ(GetCapturedStderr(), "");
    EXPECT_STREQ(exporter.get_setting_value(0), "x");
}

TEST(Settings_store, unknown_key_is_logged_and_gives_an_empty_text)
{
    Minimal_exporter exporter;
    CaptureStderr();
    EXPECT_EQ(exporter.get_own_setting_value(wxT("no such key")), wxString());
    EXPECT_EQ(GetCapturedStderr(),
              "Toviraexport_log: Warning: can not find the key in setting [no such key]\n");
    EXPECT_EQ(exporter.get_num_settings(), 0u);
}

TEST(Settings_store, texts_are_lent_until_they_are_assigned)
{
    Minimal_exporter exporter;
    exporter.set_own_setting_value(wxT("k"), from_bytes("a value beyond any short string"));
    const char* const name = exporter.get_setting_name(0);
    const char* const value = exporter.get_setting_value(0);
    const char* const default_value = exporter.get_setting_default(0);
    for (int i = 0; i < 100; ++i)
        exporter.set_own_setting_value(wxString::Format(wxT("key %d"), i), wxT("other"));
    exporter.get_own_setting_value(wxT("k"));
    EXPECT_EQ(exporter.get_setting_name(0), name);
    EXPECT_EQ(exporter.get_setting_value(0), value);
    EXPECT_STREQ(value, "a value beyond any short string");
    exporter.set_setting_value(0, "changed");
    EXPECT_STREQ(name, "k");
    EXPECT_STREQ(default_value, "a value beyond any short string");
    EXPECT_EQ(exporter.get_setting_default(0), default_value);
}

TEST(Settings_store, value_may_be_set_to_itself)
{
    Minimal_exporter exporter;
    exporter.set_own_setting_value(wxT("k"), from_bytes("a value beyond any short string"));
    exporter.set_setting_value(0, exporter.get_setting_value(0));
    EXPECT_STREQ(exporter.get_setting_value(0), "a value beyond any short string");
    exporter.set_setting_value(0, exporter.get_setting_value(0) + 2);
    EXPECT_STREQ(exporter.get_setting_value(0), "value beyond any short string");
}

// ---- keys

TEST(Base_setting_key, has_underscores_for_blanks_and_nothing_else_changed)
{
    struct Case {
        const char* name;
        const char* language;
        const char* key;
    };
    const Case cases[] = {
        {"My Exporter", "Cg", "tovira_exporter_My_Exporter_Cg"},
        {"A  B", "Cg and HLSL", "tovira_exporter_A__B_Cg_and_HLSL"},
        {" ", " ", "tovira_exporter____"},
        {"FX (a/b)\t", "c-d", "tovira_exporter_FX_(a/b)\t_c-d"},
        {"UPPER \xff", "\xc3\xa9", "tovira_exporter_UPPER_\xff_\xc3\xa9"},
        {"name", nullptr, "tovira_exporter_name_"},
        {nullptr, "Cg", "tovira_exporter_none_Cg"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(to_bytes(Minimal_exporter(c.name, c.language).get_base_setting_key()), c.key);
}

// ---- static exporter settings

class Exporter_with_properties : public Minimal_exporter
{
public:
    void add(const wxString& setting, const wxString& wildcard)
    {
        register_chooser_properties(setting, {wildcard, {wxT("e")}, wxT("o"), wxT("s"), true});
    }
};

TEST(Exporter_setting, is_undefined_when_absent_and_logs_nothing)
{
    Minimal_exporter exporter;
    CaptureStderr();
    EXPECT_EQ(exporter.get_exporter_setting(wxT("no such key")), wxString(wxT("<undefined>")));
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(Exporter_setting, keeps_its_first_value_and_stays_hidden_from_the_host)
{
    Exporter_with_properties exporter;
    exporter.add(wxT("file"), wxT("first"));
    exporter.add(wxT("file"), wxT("second"));
    EXPECT_EQ(exporter.get_exporter_setting(wxT("tovira_exporter_minimal_Cg::file::wildcard")),
              wxString(wxT("first")));
    EXPECT_EQ(exporter.get_num_settings(), 0u);
}

TEST(Exporter_setting, dump_goes_to_standard_error_in_the_order_of_keys)
{
    Exporter_with_properties exporter;
    exporter.add(wxT("file"), wxT("w"));
    exporter.set_own_setting_value(wxT("not dumped"), wxT(""));
    CaptureStderr();
    exporter.debug_dump_exporter_setting();
    EXPECT_EQ(GetCapturedStderr(),
              "DEBUG: Exporter_base::debug_dump_exporter_setting: # of entries = 5\n"
              "DEBUG: key = tovira_exporter_minimal_Cg::file::caption::open, val = o\n"
              "DEBUG: key = tovira_exporter_minimal_Cg::file::caption::save, val = s\n"
              "DEBUG: key = tovira_exporter_minimal_Cg::file::extension::0, val = e\n"
              "DEBUG: key = tovira_exporter_minimal_Cg::file::extension_autoadd, val = true\n"
              "DEBUG: key = tovira_exporter_minimal_Cg::file::wildcard, val = w\n");
}

TEST(Exporter_setting, dump_of_none_is_its_first_line)
{
    CaptureStderr();
    Minimal_exporter().debug_dump_exporter_setting();
    EXPECT_EQ(GetCapturedStderr(),
              "DEBUG: Exporter_base::debug_dump_exporter_setting: # of entries = 0\n");
}

// ---- bytes in every locale

class Setting_bytes : public ::testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        if (!std::setlocale(LC_ALL, GetParam()))
            GTEST_SKIP() << "the locale " << GetParam() << " is not installed";
    }
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_P(Setting_bytes, come_back_as_they_went_in)
{
    std::string all_bytes;
    for (int byte = 1; byte < 256; ++byte)
        all_bytes += static_cast<char>(byte);
    Minimal_exporter exporter;
    exporter.set_own_setting_value(from_bytes(all_bytes.c_str()), from_bytes(all_bytes.c_str()));
    EXPECT_EQ(exporter.get_setting_name(0), all_bytes);
    EXPECT_EQ(exporter.get_setting_default(0), all_bytes);
    for (const char* value : {"\xff\xfe", "gr\xc3\xbc\xc3\x9f", "gr\xfc\xdf", "\xf4\x8f\xba\x80",
                              "\xed\xa0\x80", "\xc3", "%s%n", "\xfe\x80\x80\x80\x80\x80\x80"}) {
        exporter.set_setting_value(0, value);
        EXPECT_STREQ(exporter.get_setting_value(0), value);
        EXPECT_EQ(to_bytes(exporter.get_own_setting_value(from_bytes(all_bytes.c_str()))), value);
    }
}

INSTANTIATE_TEST_SUITE_P(Locale, Setting_bytes,
                         ::testing::Values("C", "C.UTF-8", "de_DE.UTF-8", "de_DE.ISO-8859-1"),
                         [](const auto& info) {
                             std::string name = info.param;
                             for (char& c : name)
                                 c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                             return name;
                         });

} // namespace TEST
} // namespace QZ

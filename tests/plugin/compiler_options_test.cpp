// Filling option sets: the scene's ambient colour, the user's copyright text, placeholders.
#include "export_common/compiler_options.h"

#include "exporter_base/bytes.h"
#include "exporter_base/decimal.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/without_root.h"

#include <gmock/gmock.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <random>

#include <sys/stat.h>
#include <unistd.h>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

// ---- numbers

std::string printed(double value, int precision)
{
    char text[512];
    std::snprintf(text, sizeof text, "%.*f", precision, value);
    return text;
}

TEST(Decimal, agrees_with_printf_digit_for_digit)
{
    std::mt19937 generator(1);
    std::uniform_real_distribution<double> magnitude(-40, 38);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    for (int i = 0; i < 20000; ++i) {
        const double value =
            static_cast<float>(mantissa(generator) * std::pow(10.0, magnitude(generator)));
        ASSERT_EQ(fixed(value, 2), printed(value, 2));
        ASSERT_EQ(fixed(value, 6), printed(value, 6));
    }
    for (const double value : {0.0, -0.0, 0.125, 0.375, 0.005, 1e300, double(FLT_MAX),
                               double(INFINITY), -double(INFINITY), double(NAN)})
        EXPECT_EQ(fixed(value, 2), printed(value, 2)) << value;
}

// ---- the ambient colour

TEST(Scene_ambient, is_a_float4_of_two_decimals)
{
    struct Case {
        float rgba[4];
        const char* text;
    };
    const Case cases[] = {
        {{0.25f, 0.5f, 0.125f, 1.0f}, "float4(0.25,0.50,0.12,1.00)"}, // rounded
        {{0.1f, 0.1f, 0.1f, 1.0f}, "float4(0.10,0.10,0.10,1.00)"},
        {{0.0f, 0.0f, 0.0f, 0.0f}, "float4(0.00,0.00,0.00,0.00)"},
        {{-1.5f, 10.0f, 12345.678f, 0.999f}, "float4(-1.50,10.00,12345.68,1.00)"},
    };
    for (const Case& c : cases) {
        Recording_host host;
        std::copy(std::begin(c.rgba), std::end(c.rgba), host.ambient);
        set_scene_ambient_option(host.make_options(), host.view());
        EXPECT_THAT(host.options(1), ElementsAre(Pair("scene_ambient", c.text)));
    }
}

TEST(Scene_ambient, has_decimal_points_in_every_locale)
{
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    Recording_host host;
    host.ambient[0] = 0.25f;
    set_scene_ambient_option(host.make_options(), host.view());
    std::setlocale(LC_ALL, "C");
    EXPECT_THAT(host.options(1), ElementsAre(Pair("scene_ambient", "float4(0.25,0.00,0.00,1.00)")));
}

// ---- the copyright text

Options copyright_options(Recording_host& host, const std::vector<Text>& search_paths)
{
    host.search_paths = search_paths;
    set_user_copyright_option(host.app(), host.make_options());
    return host.options(1);
}

TEST(User_copyright, is_the_whole_text_as_it_stands)
{
    const Temporary_folder folder;
    const std::string text = " // (c) gr\xfc\xdf \xc3\xa9\r\n\ttwo lines  \n\n";
    folder.write("user_copyright.txt", text);
    Recording_host host;
    EXPECT_THAT(copyright_options(host, {folder.path()}),
                ElementsAre(Pair("user_copyright", text)));
    EXPECT_THAT(host.problems(), IsEmpty());
}

TEST(User_copyright, comes_from_the_first_folder_that_has_it)
{
    const Temporary_folder empty;
    const Temporary_folder first;
    const Temporary_folder second;
    first.write("user_copyright.txt", "first");
    second.write("user_copyright.txt", "second");
    Recording_host host;
    EXPECT_THAT(copyright_options(host, {std::nullopt, empty.path(), "/no such folder",
                                         first.path() + "/", second.path()}),
                ElementsAre(Pair("user_copyright", "first")));
}

TEST(User_copyright, is_not_set_without_a_file)
{
    const Temporary_folder folder;
    ASSERT_EQ(::mkdir(folder.file("user_copyright.txt").c_str(), 0700), 0); // no file
    Recording_host none;
    EXPECT_THAT(copyright_options(none, {}), IsEmpty());
    Recording_host nulls;
    EXPECT_THAT(copyright_options(nulls, {std::nullopt, std::nullopt}), IsEmpty());
    Recording_host missing;
    EXPECT_THAT(copyright_options(missing, {folder.path(), "/no such folder"}), IsEmpty());
}

TEST(User_copyright, of_an_empty_file_is_empty)
{
    const Temporary_folder folder;
    folder.write("user_copyright.txt", "");
    Recording_host host;
    EXPECT_THAT(copyright_options(host, {folder.path()}), ElementsAre(Pair("user_copyright", "")));
}

TEST(User_copyright, that_can_not_be_read_is_passed_over)
{
    const Temporary_folder locked;
    const Temporary_folder next;
    ::chmod(locked.path().c_str(), 0755);
    ::chmod(next.path().c_str(), 0755);
    ::chmod(locked.write("user_copyright.txt", "locked").c_str(), 0);
    next.write("user_copyright.txt", "next");
    const Without_root ordinary_user;
    Recording_host host;
    EXPECT_THAT(copyright_options(host, {locked.path(), next.path()}),
                ElementsAre(Pair("user_copyright", "next")));
}

// Neither a pipe that nobody writes nor a device keeps the host waiting.
TEST(User_copyright, is_a_regular_file_or_passed_over)
{
    const Temporary_folder pipe;
    const Temporary_folder device;
    const Temporary_folder next;
    ASSERT_EQ(::mkfifo(pipe.file("user_copyright.txt").c_str(), 0600), 0);
    ASSERT_EQ(::symlink("/dev/zero", device.file("user_copyright.txt").c_str()), 0);
    next.write("user_copyright.txt", "next");
    Recording_host host;
    EXPECT_THAT(copyright_options(host, {pipe.path(), device.path(), next.path()}),
                ElementsAre(Pair("user_copyright", "next")));
}

TEST(User_copyright, ends_at_its_first_nul)
{
    const Temporary_folder folder;
    folder.write("user_copyright.txt", std::string("ab\0cd", 5));
    Recording_host host;
    EXPECT_THAT(copyright_options(host, {folder.path()}),
                ElementsAre(Pair("user_copyright", "ab")));
}

// An empty entry is the current folder; a separator is added unless there is one already, and a
// backslash counts as one.
TEST(User_copyright, folder_names_are_joined_as_they_stand)
{
    const Temporary_folder folder;
    ASSERT_EQ(::chdir(folder.path().c_str()), 0);
    folder.write("user_copyright.txt", "here");
    folder.write("odd\\user_copyright.txt", "backslash");
    Recording_host empty;
    EXPECT_THAT(copyright_options(empty, {""}), ElementsAre(Pair("user_copyright", "here")));
    Recording_host slash;
    EXPECT_THAT(copyright_options(slash, {folder.path() + "/"}),
                ElementsAre(Pair("user_copyright", "here")));
    Recording_host backslash;
    EXPECT_THAT(copyright_options(backslash, {folder.path() + "/odd\\"}),
                ElementsAre(Pair("user_copyright", "backslash")));
    ASSERT_EQ(::chdir("/"), 0);
}

TEST(User_copyright, host_without_a_list_sets_nothing)
{
    Recording_host host;
    host.set_failing_call(1); // get_search_paths
    EXPECT_THAT(copyright_options(host, {"/tmp"}), IsEmpty());
}

// ---- placeholders

std::string substituted(const char* text, const char* pattern, const char* replacement)
{
    wxString result = from_bytes(text);
    DETAIL::substitute(result, from_bytes(pattern), from_bytes(replacement));
    return to_bytes(result);
}

TEST(Substitute, replaces_two_characters_per_placeholder)
{
    struct Case {
        const char* text;
        const char* pattern;
        const char* replacement;
        const char* result;
    };
    const Case cases[] = {
        {"a%sb%s", "%s", "X", "aXbX"},
        {"x", "%s", "y", "x"},
        {"", "%s", "y", ""},
        {"%s", "%s", "", ""},
        {"%name!", "%name", "X", "Xame!"}, // always two characters
        {"a%", "%", "X", "aX"},            // of which the text may have fewer
        {"%s%s", "%s", "\xff", "\xff\xff"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(substituted(c.text, c.pattern, c.replacement), c.result) << c.text;
}

TEST(Substitute, stops_after_twenty_rounds)
{
    std::string grown;
    for (int i = 0; i < 21; ++i)
        grown += "%s";
    EXPECT_EQ(substituted("%s", "%s", "%s%s"), grown);
    std::string replaced(20, 'X');
    EXPECT_EQ(substituted((grown + "%s").c_str(), "%s", "X"), replaced + "%s%s");
}

TEST(Compile_flags, hook_changes_nothing)
{
    wxString flags = wxT("-a -b");
    DETAIL::set_compile_flags(flags);
    EXPECT_EQ(flags, wxString(wxT("-a -b")));
}

// ---- option sets

TEST(Option_set, may_be_missing)
{
    Recording_host host;
    constexpr Option_row<> table[] = {{"a", "b"}};
    set_option(nullptr, "a", "b");
    set_options(nullptr, table);
    set_scene_ambient_option(nullptr, host.view());
}

TEST(Option_set, takes_texts_of_every_kind_as_bytes)
{
    Recording_host host;
    TSDK::ICompiler_options* options = host.make_options();
    set_option(options, "chars", "\xff");
    set_option(options, "null", static_cast<const char*>(nullptr));
    set_option(options, "string", std::string("\xfe"));
    set_option(options, "text", from_bytes("\xfd\xc3\xa9"));
    EXPECT_THAT(host.options(1), ElementsAre(Pair("chars", "\xff"), Pair("null", ""),
                                             Pair("string", "\xfe"), Pair("text", "\xfd\xc3\xa9")));
}

} // namespace TEST
} // namespace QZ

// The diagnostic log and its devices.
#include "exporter_base/toviraexport_log.h"

#include "exporter_base/bytes.h"

#include <gtest/gtest.h>

namespace QZ
{
namespace TEST
{

using TOVIRAEXPORT::from_bytes;
using TOVIRAEXPORT::Toviraexport_log;

struct Output {
    std::string standard_output;
    std::string standard_error;
};

template<typename Write>
Output capture(Write write)
{
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    write();
    return {::testing::internal::GetCapturedStdout(), ::testing::internal::GetCapturedStderr()};
}

// A log of its own, with the devices that no name selects.
class Private_log : public Toviraexport_log
{
public:
    using Toviraexport_log::DEVICE_FILE;
    void set_device(int device) { m_output_device = device; }
};

TEST(Log, is_one_object)
{
    EXPECT_EQ(Toviraexport_log::instance(), Toviraexport_log::instance());
}

TEST(Log, writes_header_and_message_to_standard_error_by_default)
{
    const Toviraexport_log& log = *Toviraexport_log::instance();
    EXPECT_EQ(log.get_output_device(), wxString(wxT("stderr:")));
    EXPECT_EQ(log.get_header(), wxString(wxT("Toviraexport_log: ")));
    EXPECT_FALSE(log.is_verbose_mode());
    const Output output = capture([&] { log.out(wxT("abc\n")); });
    EXPECT_EQ(output.standard_error, "Toviraexport_log: abc\n");
    EXPECT_EQ(output.standard_output, "");
}

TEST(Log, adds_no_line_end)
{
    const Private_log log;
    EXPECT_EQ(capture([&] { log.out(wxT("a")); }).standard_error, "Toviraexport_log: a");
}

TEST(Log, prints_bytes_and_percent_signs_as_they_are)
{
    const Private_log log;
    const Output output = capture([&] { log.out(from_bytes("%s%n \xff \xc3\xa9\n")); });
    EXPECT_EQ(output.standard_error, "Toviraexport_log: %s%n \xff \xc3\xa9\n");
}

TEST(Log, verbose_messages_need_verbose_mode)
{
    Private_log log;
    EXPECT_EQ(capture([&] { log.vout(wxT("v\n")); }).standard_error, "");
    log.set_verbose_mode(true);
    EXPECT_TRUE(log.is_verbose_mode());
    EXPECT_EQ(capture([&] { log.vout(wxT("v\n")); }).standard_error, "Toviraexport_log: v\n");
}

TEST(Log, header_can_be_changed)
{
    Private_log log;
    log.set_header(wxT("> "));
    EXPECT_EQ(log.get_header(), wxString(wxT("> ")));
    EXPECT_EQ(capture([&] { log.out(wxT("m\n")); }).standard_error, "> m\n");
}

TEST(Log, device_is_selected_by_its_exact_name)
{
    struct Case {
        const char* name;
        const char* stored_name;
        const char* standard_output;
        const char* standard_error;
    };
    const char* const line = "Toviraexport_log: m\n";
    const Case cases[] = {
        {"stdout:", "stdout:", line, ""},
        {"stderr:", "stderr:", "", line},
        {"log_gui:", "log_gui:", "", ""},
        {"null:", "null:", "", ""},
        {"/tmp/a/file.log", "stdout:", line, ""},
        {"STDERR:", "stdout:", line, ""},
        {"stderr", "stdout:", line, ""},
        {"stderr: ", "stdout:", line, ""},
        {"stdout:~", "stdout:", line, ""},
        {"stderr:~", "stdout:", line, ""},
        {"log_gui:~", "stdout:", line, ""},
        {"null:~", "stdout:", line, ""},
        {"", "stdout:", line, ""},
    };
    Private_log log;
    for (const Case& c : cases) {
        EXPECT_TRUE(log.set_output_device(from_bytes(c.name)));
        EXPECT_EQ(log.get_output_device(), from_bytes(c.stored_name)) << c.name;
        const Output output = capture([&] { log.out(wxT("m\n")); });
        EXPECT_EQ(output.standard_output, c.standard_output) << c.name;
        EXPECT_EQ(output.standard_error, c.standard_error) << c.name;
    }
}

TEST(Log, file_device_says_that_it_is_not_there)
{
    Private_log log;
    log.set_device(Private_log::DEVICE_FILE);
    EXPECT_EQ(Private_log::DEVICE_FILE, 3);
    EXPECT_EQ(capture([&] { log.out(wxT("m\n")); }).standard_error,
              "Not yet implemented to output file: Toviraexport_log: m\n");
}

TEST(Log, unknown_device_drops_the_message)
{
    Private_log log;
    for (const int device : {5, -1}) {
        log.set_device(device);
        EXPECT_EQ(capture([&] { log.out(wxT("m\n")); }).standard_error,
                  "Internal error: no such output device: " + std::to_string(device) + "\n");
    }
}

} // namespace TEST
} // namespace QZ

// From generated code to files.
#include "export_common/code_output.h"

#include "exporter_base/bytes.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/support/faults.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/without_root.h"

#include <gmock/gmock.h>

#include <cerrno>

#include <sys/stat.h>

namespace QZ
{
namespace TEST
{

using namespace reference_host;
using namespace TOVIRAEXPORT;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string source_error = "Error! Exporter_base::get_shader_source_code: ";

// ---- add_extension

TEST(Add_extension, keeps_an_extension_only_when_it_is_the_wanted_one)
{
    struct Case {
        const char* filename;
        const char* extension;
        const char* result;
    };
    const Case cases[] = {
        {"/tmp/a/shader", "fx", "/tmp/a/shader.fx"},
        {"shader.fx", "fx", "shader.fx"},
        {"shader.FX", "fx", "shader.FX.fx"}, // case-sensitive
        {"shader.txt", "fx", "shader.txt.fx"},
        {"out.cgfx", "fx", "out.cgfx.fx"},
        {"out.fx", "cgfx", "out.fx.cgfx"},
        {"/d/a.b.fx", "fx", "/d/a.b.fx"},
        {"/d.fx/a", "fx", "/d.fx/a.fx"},
        {"a.", "fx", "a..fx"},
        {"../x", "cgfx", "../x.cgfx"},
        {"/d/\xff\xc3\xa9.fx", "fx", "/d/\xff\xc3\xa9.fx"},
        {"/d/with space", "fx", "/d/with space.fx"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(to_bytes(add_extension(from_bytes(c.filename), from_bytes(c.extension))),
                  c.result)
            << c.filename;
}

// ---- get_shader_source_code

struct Source_result {
    bool succeeded;
    std::string code;
    std::string error;
};

Source_result get_source(TSDK::IGenerated_shader* shader, int index)
{
    wxString code = wxT("old code");
    wxString error = wxT("old error");
    const bool succeeded = get_shader_source_code(shader, index, code, error);
    return {succeeded, to_bytes(code), to_bytes(error)};
}

TEST(Shader_source_code, without_a_shader_is_an_error)
{
    const Source_result result = get_source(nullptr, 0);
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.code, "");
    EXPECT_EQ(result.error, source_error + "no shader.");
}

TEST(Shader_source_code, index_at_or_beyond_the_count_is_an_error)
{
    Recording_host host;
    for (const int index : {2, 3, 1000000}) {
        const Source_result result = get_source(host.make_shader(), index);
        EXPECT_FALSE(result.succeeded);
        EXPECT_EQ(result.code, "");
        EXPECT_EQ(result.error, source_error + "illegal code_index (" + std::to_string(index) +
                                    "), it should be less than 2.");
    }
    host.codes.clear();
    EXPECT_EQ(get_source(host.make_shader(), 0).error,
              source_error + "illegal code_index (0), it should be less than 0.");
    EXPECT_THAT(host.calls("shader 1.get_code"), IsEmpty());
}

TEST(Shader_source_code, is_copied_and_leaves_the_error_alone)
{
    Recording_host host;
    host.codes = {"first", "second \xff\n"};
    const Source_result result = get_source(host.make_shader(), 1);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.code, "second \xff\n");
    EXPECT_EQ(result.error, "old error");
    EXPECT_THAT(host.log(), ElementsAre("shader 1.get_num_codes()", "shader 1.get_code_size(1)",
                                        "shader 1.get_code(1, 9)"));
}

TEST(Shader_source_code, negative_index_goes_to_the_host_as_it_is)
{
    Recording_host host;
    EXPECT_TRUE(get_source(host.make_shader(), -1).succeeded);
    EXPECT_THAT(host.calls("shader 1.get_code"),
                ElementsAre("shader 1.get_code_size(-1)", "shader 1.get_code(-1, 0)"));
}

TEST(Shader_source_code, ends_at_its_first_nul)
{
    Recording_host host;
    host.codes = {std::string("ab\0cd", 5)};
    EXPECT_EQ(get_source(host.make_shader(), 0).code, "ab");
}

TEST(Shader_source_code, is_empty_when_the_host_copies_none)
{
    Recording_host host;
    host.set_failing_call(1); // get_code
    const Source_result result = get_source(host.make_shader(), 0);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.code, "");
}

// A shader whose size is beyond any memory.
class Huge_shader : public TSDK::IGenerated_shader
{
public:
    Interface* get_interface(int) override { return nullptr; }
    int get_interface_target() const override { return 0; }
    int get_num_codes() override { return 1; }
    unsigned int get_code_size(int) override { return 0xffffffffu; }
    void get_code(int, char* buffer, unsigned int) override { buffer[0] = '\0'; }
};

TEST(Shader_source_code, of_the_largest_size_does_not_overflow)
{
    Huge_shader shader;
    EXPECT_EQ(get_source(&shader, 0).code, "");
}

// ---- save_buffer_to_file

TEST(Save_buffer, creates_and_truncates)
{
    const Temporary_folder folder;
    wxString error = wxT("untouched");
    const wxString name = from_bytes(folder.write("a", "something much longer").c_str());
    EXPECT_TRUE(save_buffer_to_file(name, wxT("short"), error));
    EXPECT_EQ(folder.read("a"), "short");
    EXPECT_TRUE(save_buffer_to_file(name, wxT(""), error));
    EXPECT_EQ(folder.read("a"), "");
    EXPECT_EQ(error, wxString(wxT("untouched")));
}

TEST(Save_buffer, writes_names_and_texts_byte_for_byte)
{
    const Temporary_folder folder;
    wxString error;
    const std::string name = "gr\xfc\xdf \xc3\xa9.fx";
    std::string text;
    for (int byte = 1; byte < 256; ++byte)
        text += static_cast<char>(byte);
    EXPECT_TRUE(save_buffer_to_file(from_bytes(folder.file(name).c_str()), from_bytes(text.c_str()),
                                    error));
    EXPECT_EQ(folder.read(name), text);
}

TEST(Save_buffer, ends_at_the_first_nul)
{
    const Temporary_folder folder;
    wxString error;
    wxString buffer = wxT("before");
    buffer += wxChar(0);
    buffer += wxT("after");
    EXPECT_TRUE(save_buffer_to_file(from_bytes(folder.file("a").c_str()), buffer, error));
    EXPECT_EQ(folder.read("a"), "before");
}

TEST(Save_buffer, into_a_missing_folder_can_not_open)
{
    wxString error;
    EXPECT_FALSE(save_buffer_to_file(wxT("/no such folder/\x61.fx"), wxT("x"), error));
    EXPECT_EQ(to_bytes(error), "write open failed [/no such folder/a.fx]");
}

TEST(Save_buffer, of_an_empty_name_or_a_folder_can_not_open)
{
    const Temporary_folder folder;
    wxString error;
    EXPECT_FALSE(save_buffer_to_file(wxEmptyString, wxT("x"), error));
    EXPECT_EQ(to_bytes(error), "write open failed []");
    EXPECT_FALSE(save_buffer_to_file(from_bytes(folder.path().c_str()), wxT("x"), error));
    EXPECT_EQ(to_bytes(error), "write open failed [" + folder.path() + "]");
}

TEST(Save_buffer, of_a_read_only_file_cannot_open)
{
    const Temporary_folder folder;
    ::chmod(folder.path().c_str(), 0755);
    const std::string name = folder.write("a", "kept");
    ::chmod(name.c_str(), 0444);
    const Without_root ordinary_user;
    wxString error;
    EXPECT_FALSE(save_buffer_to_file(from_bytes(name.c_str()), wxT("x"), error));
    EXPECT_EQ(to_bytes(error), "write open failed [" + name + "]");
    EXPECT_EQ(folder.read("a"), "kept");
}

TEST(Save_buffer, on_a_full_device_fails_even_for_one_byte)
{
    wxString error;
    EXPECT_FALSE(save_buffer_to_file(wxT("/dev/full"), wxT("x"), error));
    EXPECT_EQ(to_bytes(error), "write failed [/dev/full]");
    EXPECT_TRUE(save_buffer_to_file(wxT("/dev/full"), wxT(""), error)); // nothing to write
}

// ---- write_code

TEST(Write_code, writes_the_first_text_and_ignores_the_count)
{
    const Temporary_folder folder;
    Recording_host host;
    host.codes = {"effect \xff\n", "other"};
    EXPECT_TRUE(write_code(from_bytes(folder.file("a.fx").c_str()), host.make_shader()));
    EXPECT_EQ(folder.read("a.fx"), "effect \xff\n");
    EXPECT_THAT(host.log(), ElementsAre("shader 1.get_num_codes()", "shader 1.get_code_size(0)",
                                        "shader 1.get_code(0, 9)"));
}

TEST(Write_code, of_a_shader_without_texts_writes_an_empty_file)
{
    const Temporary_folder folder;
    Recording_host host;
    host.codes.clear();
    EXPECT_TRUE(write_code(from_bytes(folder.file("a.fx").c_str()), host.make_shader()));
    EXPECT_EQ(folder.read("a.fx"), "");
}

TEST(Write_code, only_returns_false_when_writing_fails)
{
    Recording_host host;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(write_code(wxT("/no such folder/a.fx"), host.make_shader()));
    EXPECT_FALSE(write_code(wxT("/dev/full"), host.make_shader()));
    EXPECT_FALSE(write_code(wxT("/dev/full"), nullptr));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(Write_code, does_not_release_the_shader)
{
    const Temporary_folder folder;
    Recording_host host;
    write_code(from_bytes(folder.file("a.fx").c_str()), host.make_shader());
    EXPECT_THAT(host.releases(), IsEmpty());
    EXPECT_THAT(host.problems(), IsEmpty());
}

// ---- what did not reach the file

TEST(Save_buffer, pipe_that_nobody_reads_cannot_be_opened)
{
    const Temporary_folder folder;
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    wxString error;
    EXPECT_FALSE(save_buffer_to_file(from_bytes(pipe.c_str()), wxT("text"), error));
    EXPECT_EQ(to_bytes(error), "write open failed [" + pipe + "]");
}

TEST(Save_buffer, failing_close_is_a_failed_write)
{
    const Temporary_folder folder;
    const std::string file = folder.file("a.fx");
    wxString error;
    Faults faults;
    faults.set(FAULT_CLOSE, fail_at(1, EDQUOT));
    EXPECT_FALSE(save_buffer_to_file(from_bytes(file.c_str()), wxT("text"), error));
    EXPECT_EQ(to_bytes(error), "write failed [" + file + "]");
}

} // namespace TEST
} // namespace QZ

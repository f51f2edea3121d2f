#include "reference_host/system/file_access.h"

#include "tests/support/temporary_folder.h"
#include "tests/support/without_root.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <sys/stat.h>

namespace reference_host
{
namespace
{

using testing::HasSubstr;

// Names that no program should open, and one that it may.
class File_access : public testing::Test
{
protected:
    std::string pipe()
    {
        const std::string path = m_folder.file("pipe");
        EXPECT_EQ(0, mkfifo(path.c_str(), 0600));
        return path;
    }

    std::string link(const std::string& target)
    {
        const std::string path = m_folder.file("link");
        std::filesystem::remove(path);
        std::filesystem::create_symlink(target, path);
        return path;
    }

    static std::string read_reason(const std::string& path)
    {
        std::string reason;
        EXPECT_FALSE(read_whole_file(path, 1 << 20, reason)) << path;
        return reason;
    }

    static std::string write_reason(const std::string& path)
    {
        const Opened_file file = open_to_write(path);
        EXPECT_FALSE(file.stream) << path;
        return file.reason;
    }

    QZ::TEST::Temporary_folder m_folder;
};

TEST_F(File_access, a_file_is_read_whole_also_through_a_link)
{
    const std::string text("a\0b\n", 4);
    std::string reason;
    const std::string path = m_folder.write("file", text);
    EXPECT_EQ(text, read_whole_file(path, 4, reason));
    EXPECT_EQ(text, read_whole_file(link(path), 4, reason));
    EXPECT_EQ("", reason);
}

TEST_F(File_access, pipes_devices_folders_and_links_to_nowhere_are_refused_with_the_reason)
{
    const struct {
        std::string path;
        const char* reading;
        const char* writing;
    } rows[] = {
        {pipe(), "not a regular file but a pipe", "not a regular file but a pipe"},
        {"/dev/zero", "but a device", "but a device"},
        {"/dev/full", "but a device", "but a device"},
        {m_folder.path(), "but a folder", "but a folder"},
        {link(m_folder.file("nowhere")), "there is no such file", "a link that leads nowhere"},
        {m_folder.file("none/file"), "there is no such file", "there is no such file"},
        {m_folder.write("file", "") + "/x", "Not a directory", "Not a directory"},
        {"", "there is no such file", "there is no such file"},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(read_reason(row.path), HasSubstr(row.reading)) << row.path;
        EXPECT_THAT(why_not_readable(row.path), HasSubstr(row.reading)) << row.path;
        EXPECT_THAT(write_reason(row.path), HasSubstr(row.writing)) << row.path;
    }
    EXPECT_FALSE(std::filesystem::exists(m_folder.file("nowhere")));
}

TEST_F(File_access, loops_of_links_and_forbidden_files_are_refused_with_the_reason)
{
    const std::string loop = m_folder.file("loop");
    std::filesystem::create_symlink(loop, loop);
    EXPECT_THAT(read_reason(loop), HasSubstr("Too many levels"));
    EXPECT_THAT(write_reason(loop), HasSubstr("Too many levels"));
    const std::string forbidden = m_folder.write("forbidden", "x");
    ASSERT_EQ(0, chmod(forbidden.c_str(), 0));
    const QZ::TEST::Without_root ordinary_user;
    EXPECT_THAT(read_reason(forbidden), HasSubstr("Permission denied"));
    EXPECT_THAT(write_reason(forbidden), HasSubstr("Permission denied"));
}

TEST_F(File_access, a_file_above_the_limit_is_refused_before_it_is_read)
{
    const std::string path = m_folder.write("sparse", "");
    std::filesystem::resize_file(path, std::uintmax_t{3} << 30);
    EXPECT_EQ("larger than 1 MiB", read_reason(path));
}

TEST_F(File_access, a_file_that_does_not_tell_its_size_ends_at_the_limit)
{
    std::string reason;
    EXPECT_FALSE(read_whole_file("/proc/self/maps", 100, reason));
    EXPECT_THAT(reason, HasSubstr("larger than"));
}

TEST_F(File_access, a_written_file_holds_only_what_was_written)
{
    const std::string path = m_folder.write("file", "a longer text than the new one");
    {
        const Opened_file file = open_to_write(path);
        ASSERT_TRUE(file.stream) << file.reason;
        std::fputs("new", file.stream.get());
    }
    EXPECT_EQ("new", m_folder.read("file"));
}

TEST_F(File_access, looking_at_a_path_for_writing_makes_no_file)
{
    EXPECT_EQ("", why_not_writable(m_folder.file("new")));
    EXPECT_TRUE(m_folder.files().empty());
}

} // namespace
} // namespace reference_host

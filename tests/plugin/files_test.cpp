// Reading and writing files: nothing waits, nothing that did not reach the file counts as written.
#include "exporter_base/files.h"

#include "tests/support/faults.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace QZ
{
namespace TEST
{
namespace
{

using namespace reference_host;
using namespace TOVIRAEXPORT;

class Files : public ::testing::Test
{
protected:
    std::string make_pipe(const char* name)
    {
        const std::string path = folder.file(name);
        EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
        return path;
    }

    Temporary_folder folder;
    std::string text;
};

TEST_F(Files, written_pieces_stand_one_after_the_other)
{
    EXPECT_EQ(write_file(folder.file("a"), {"one", "", "two\n"}), WRITE_DONE);
    EXPECT_EQ(folder.read("a"), "onetwo\n");
    EXPECT_EQ(write_file(folder.file("a"), {"x"}), WRITE_DONE);
    EXPECT_EQ(folder.read("a"), "x");
    EXPECT_EQ(write_file(folder.file("a"), {}), WRITE_DONE);
    EXPECT_EQ(folder.read("a"), "");
}

TEST_F(Files, new_file_has_the_rights_that_the_mask_leaves)
{
    const mode_t mask = ::umask(027);
    EXPECT_EQ(write_file(folder.file("a"), {"x"}), WRITE_DONE);
    ::umask(mask);
    struct stat status;
    ASSERT_EQ(::stat(folder.file("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST_F(Files, folder_or_missing_folder_cannot_be_opened_for_writing)
{
    EXPECT_EQ(write_file(folder.path(), {"x"}), WRITE_OPEN_FAILED);
    EXPECT_EQ(write_file(folder.file("none/a"), {"x"}), WRITE_OPEN_FAILED);
}

// A host may have no standard input; then a file gets its descriptor.
TEST_F(Files, the_lowest_descriptor_serves_like_any_other)
{
    const int input = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ASSERT_GE(input, 0);
    const int kept = ::dup(STDIN_FILENO);
    ::close(STDIN_FILENO);
    const Write_result result = write_file(folder.file("a"), {"x"});
    const bool is_open = ::fcntl(STDIN_FILENO, F_GETFD) != -1;
    ::dup2(kept >= 0 ? kept : input, STDIN_FILENO);
    ::close(kept);
    ::close(input);
    EXPECT_EQ(result, WRITE_DONE);
    EXPECT_EQ(folder.read("a"), "x");
    EXPECT_FALSE(is_open);
}

TEST_F(Files, a_thousand_interruptions_are_too_many)
{
    for (const int count : {999, 1000}) {
        folder.write("a", "old");
        Faults faults;
        for (const Fault_kind kind : {FAULT_OPEN, FAULT_READ, FAULT_WRITE}) {
            faults.set(kind, fail_first(count, EINTR));
            const bool done = kind == FAULT_WRITE
                                  ? write_file(folder.file("a"), {"x"}) == WRITE_DONE
                                  : read_text_file(folder.file("a"), text);
            EXPECT_EQ(done, count < 1000) << kind;
            faults.set(kind);
        }
    }
}

TEST_F(Files, what_cannot_be_opened_is_tried_once)
{
    const Faults faults;
    EXPECT_EQ(write_file(folder.file("none/a"), {"x"}), WRITE_OPEN_FAILED);
    EXPECT_EQ(faults.calls(FAULT_OPEN), 1);
    EXPECT_FALSE(read_text_file(folder.file("none/a"), text));
    EXPECT_EQ(faults.calls(FAULT_OPEN), 2);
}

TEST_F(Files, pipe_that_nobody_reads_fails_to_open_at_once)
{
    EXPECT_EQ(write_file(make_pipe("pipe"), {"x"}), WRITE_OPEN_FAILED);
}

TEST_F(Files, pipe_takes_everything_that_its_reader_reads)
{
    const std::string pipe = make_pipe("pipe");
    const std::string large(1000000, 'x'); // more than a pipe holds
    size_t received = 0;
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    ASSERT_EQ(::fcntl(reader, F_SETFL, 0), 0);
    std::thread reading;
    reading = std::thread([&] {
        char buffer[4096];
        ssize_t count;
        while (received < large.size() && (count = ::read(reader, buffer, sizeof buffer)) >= 0)
            received += static_cast<size_t>(count);
    });
    EXPECT_EQ(write_file(pipe, {large}), WRITE_DONE);
    reading.join();
    ::close(reader);
    EXPECT_EQ(received, large.size());
}

TEST_F(Files, pipe_whose_reader_has_stopped_reading_fails)
{
    const std::string pipe = make_pipe("pipe");
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(write_file(pipe, {std::string(1000000, 'x')}), WRITE_FAILED);
    ::close(reader);
}

TEST_F(Files, pipe_whose_reader_goes_away_does_not_end_the_process)
{
    const std::string pipe = make_pipe("pipe");
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    std::thread leaving([&] {
        char byte;
        while (::read(reader, &byte, 1) != 1) // until the writer has begun
            std::this_thread::yield();
        ::close(reader);
    });
    EXPECT_EQ(write_file(pipe, {std::string(1000000, 'x')}), WRITE_FAILED);
    leaving.join();
}

TEST_F(Files, full_device_fails_to_write)
{
    EXPECT_EQ(write_file("/dev/full", {"x"}), WRITE_FAILED);
}

TEST_F(Files, failing_close_is_a_failed_write)
{
    Faults faults;
    faults.set(FAULT_CLOSE, fail_at(1, EDQUOT));
    EXPECT_EQ(write_file(folder.file("a"), {"text"}), WRITE_FAILED);
    EXPECT_EQ(write_file(folder.file("a"), {"text"}), WRITE_DONE);
}

TEST_F(Files, interrupted_calls_are_repeated)
{
    Faults faults;
    faults.set(FAULT_OPEN, fail_first(2, EINTR));
    faults.set(FAULT_WRITE, fail_first(3, EINTR));
    EXPECT_EQ(write_file(folder.file("a"), {"text"}), WRITE_DONE);
    EXPECT_EQ(faults.calls(FAULT_OPEN), 3);
    EXPECT_EQ(faults.calls(FAULT_WRITE), 4);
    faults.set(FAULT_READ, fail_first(3, EINTR));
    EXPECT_TRUE(read_text_file(folder.file("a"), text));
    EXPECT_EQ(faults.calls(FAULT_OPEN), 3);
    EXPECT_EQ(faults.calls(FAULT_READ), 5);
    EXPECT_EQ(text, "text");
}

TEST_F(Files, short_writes_go_on_where_they_ended)
{
    {
        Faults faults;
        faults.set(FAULT_WRITE, cut_short(3));
        EXPECT_EQ(write_file(folder.file("a"), {"0123456789", "abc"}), WRITE_DONE);
        EXPECT_EQ(faults.calls(FAULT_WRITE), 5);
    }
    EXPECT_EQ(folder.read("a"), "0123456789abc");
}

TEST_F(Files, system_that_interrupts_every_call_does_not_hang_the_host)
{
    constexpr Fault always = fail_first(Fault::always, EINTR);
    ASSERT_EQ(write_file(folder.file("a"), {"text"}), WRITE_DONE);
    Faults faults;
    faults.set(FAULT_WRITE, always);
    EXPECT_EQ(write_file(folder.file("a"), {"text"}), WRITE_FAILED);
    faults.set(FAULT_READ, always);
    EXPECT_FALSE(read_text_file(folder.file("a"), text));
    faults.set(FAULT_OPEN, always);
    EXPECT_EQ(write_file(folder.file("a"), {"text"}), WRITE_OPEN_FAILED);
    EXPECT_FALSE(read_text_file(folder.file("a"), text));
}

TEST_F(Files, text_is_read_to_its_end_or_its_first_nul)
{
    const std::string large(100000, 'y');
    folder.write("large", large);
    EXPECT_TRUE(read_text_file(folder.file("large"), text));
    EXPECT_EQ(text, large);
    folder.write("nul", std::string("ab\0cd", 5));
    EXPECT_TRUE(read_text_file(folder.file("nul"), text));
    EXPECT_EQ(text, "ab");
    folder.write("late_nul", large + std::string("\0z", 2));
    EXPECT_TRUE(read_text_file(folder.file("late_nul"), text));
    EXPECT_EQ(text, large);
    folder.write("one_byte", "1");
    EXPECT_TRUE(read_text_file(folder.file("one_byte"), text));
    EXPECT_EQ(text, "1");
    folder.write("empty", "");
    EXPECT_TRUE(read_text_file(folder.file("empty"), text));
    EXPECT_EQ(text, "");
}

TEST_F(Files, huge_sparse_file_ends_at_its_first_byte)
{
    folder.write("sparse", "");
    ASSERT_EQ(::truncate(folder.file("sparse").c_str(), off_t{3} << 30), 0);
    EXPECT_TRUE(read_text_file(folder.file("sparse"), text));
    EXPECT_EQ(text, "");
}

TEST_F(Files, only_regular_files_are_read)
{
    EXPECT_FALSE(read_text_file(make_pipe("pipe"), text));
    EXPECT_FALSE(read_text_file(folder.path(), text));
    EXPECT_FALSE(read_text_file("/dev/zero", text));
    EXPECT_FALSE(read_text_file(folder.file("none"), text));
    ASSERT_EQ(::symlink("loop", folder.file("loop").c_str()), 0);
    EXPECT_FALSE(read_text_file(folder.file("loop"), text));
    folder.write("file", "text");
    ASSERT_EQ(::symlink("file", folder.file("link").c_str()), 0);
    EXPECT_TRUE(read_text_file(folder.file("link"), text));
}

TEST_F(Files, failing_read_is_a_file_that_cannot_be_read)
{
    folder.write("file", "text");
    Faults faults;
    faults.set(FAULT_READ, fail_at(1, EIO));
    EXPECT_FALSE(read_text_file(folder.file("file"), text));
}

TEST_F(Files, regular_files_are_told_from_everything_else)
{
    folder.write("file", "");
    EXPECT_TRUE(is_regular_file(folder.file("file").c_str()));
    EXPECT_FALSE(is_regular_file(folder.path().c_str()));
    EXPECT_FALSE(is_regular_file(make_pipe("pipe").c_str()));
    EXPECT_FALSE(is_regular_file(folder.file("none").c_str()));
    EXPECT_FALSE(is_regular_file(""));
}

} // namespace
} // namespace TEST
} // namespace QZ

#include "reference_host/system/whole_file.h"

#include "reference_host/system/process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/without_root.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;

TEST(Whole_file, is_written_and_replaced_with_nothing_beside_it)
{
    const QZ::TEST::Temporary_folder folder;
    for (const std::string text : {"first", "second and longer", ""}) {
        EXPECT_EQ("", write_whole_file(folder.file("a"), text));
        EXPECT_EQ(text, folder.read("a"));
        EXPECT_THAT(folder.files(), ElementsAre("a"));
    }
}

TEST(Whole_file, keeps_permissions_and_links)
{
    const QZ::TEST::Temporary_folder folder;
    folder.write("a", "old");
    chmod(folder.file("a").c_str(), 0640);
    fs::create_symlink("a", folder.file("link"));
    EXPECT_EQ("", write_whole_file(folder.file("link"), "new"));
    EXPECT_EQ("new", folder.read("a"));
    EXPECT_TRUE(fs::is_symlink(folder.file("link")));
    EXPECT_EQ(fs::perms(0640), fs::status(folder.file("a")).permissions());
}

TEST(Whole_file, is_written_in_place_where_the_folder_takes_no_new_one)
{
    const QZ::TEST::Temporary_folder folder;
    chmod(folder.path().c_str(), 0755);
    folder.write("a", "old and longer");
    chmod(folder.file("a").c_str(), 0666);
    {
        const QZ::TEST::Without_root user;
        chmod(folder.path().c_str(), 0555); // of those who own the folder
        EXPECT_EQ("", write_whole_file(folder.file("a"), "new"));
        EXPECT_EQ("Permission denied", write_whole_file(folder.file("b"), "new"));
    }
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ("new", folder.read("a"));
}

TEST(Whole_file, is_refused_with_the_reason)
{
    const QZ::TEST::Temporary_folder folder;
    mkfifo(folder.file("pipe").c_str(), 0600);
    fs::create_symlink("nothing", folder.file("nowhere"));
    folder.write("forbidden", "old");
    chmod(folder.file("forbidden").c_str(), 0444);
    EXPECT_EQ("not a regular file but a pipe", write_whole_file(folder.file("pipe"), ""));
    EXPECT_EQ("not a regular file but a folder", write_whole_file(folder.path(), ""));
    EXPECT_EQ("a link that leads nowhere", write_whole_file(folder.file("nowhere"), ""));
    EXPECT_EQ("No such file or directory", write_whole_file(folder.file("none/a"), ""));
    EXPECT_EQ("Not a directory", write_whole_file(folder.file("forbidden/a"), ""));
    const QZ::TEST::Without_root user;
    EXPECT_EQ("Permission denied", write_whole_file(folder.file("forbidden"), ""));
}

TEST(Whole_file, stays_as_it_was_when_the_disk_is_full)
{
    const QZ::TEST::Temporary_folder folder;
    const std::string path = folder.write("a", "old");
    const Process_result result = run_in_own_process(
        [&path] {
            signal(SIGXFSZ, SIG_IGN);
            return write_whole_file(path, std::string(200'000, 'x')) == "File too large" ? 0 : 1;
        },
        {20, 0, 100'000});
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("old", folder.read("a"));
    EXPECT_THAT(folder.files(), ElementsAre("a"));
}

TEST(Whole_file, is_the_old_or_the_new_one_whatever_ends_the_program)
{
    const QZ::TEST::Temporary_folder folder;
    const std::string path = folder.file("a");
    const std::string old(300'000, 'o');
    const std::string other(400'000, 'n');
    for (int i = 0; i < 20; ++i) {
        const Process_result result = run_in_own_process(
            [&, i]() -> int {
                std::thread([i] {
                    std::this_thread::sleep_for(std::chrono::milliseconds(i));
                    kill(getpid(), i % 2 == 0 ? SIGTERM : SIGKILL);
                }).detach();
                for (;;) {
                    write_whole_file(path, old);
                    write_whole_file(path, other);
                }
            },
            {20, 0, 0});
        EXPECT_EQ(Process_end::signal, result.end);
        if (fs::exists(path)) {
            const std::string text = folder.read("a");
            EXPECT_TRUE(text == old || text == other) << text.size();
        }
        EXPECT_EQ("", write_whole_file(path, old));
        EXPECT_THAT(folder.files(), ElementsAre("a"));
    }
}

} // namespace
} // namespace reference_host

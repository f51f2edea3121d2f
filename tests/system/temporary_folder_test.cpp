#include "reference_host/system/temporary_folder.h"

#include "reference_host/system/process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

bool goes_away(const std::string& path)
{
    const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::filesystem::exists(path) && std::chrono::steady_clock::now() < patience)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return !std::filesystem::exists(path);
}

TEST(Temporary_folder, goes_away_with_its_files)
{
    std::string path;
    {
        const Temporary_folder folder;
        path = folder.path();
        ASSERT_TRUE(std::filesystem::is_directory(path));
        std::filesystem::create_directory(path + "/inner");
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(Temporary_folder, is_for_its_owner_alone)
{
    const Temporary_folder folder;
    struct stat status;
    ASSERT_EQ(0, stat(folder.path().c_str(), &status));
    EXPECT_EQ(0700U, status.st_mode & 0777U);
}

TEST(Temporary_folder, goes_away_whatever_signal_ends_the_program)
{
    for (const int signal : {SIGKILL, SIGTERM, SIGINT, SIGHUP, SIGSEGV}) {
        const Process_result result = run_in_own_process(
            [signal]() -> int {
                std::signal(signal, SIG_DFL); // a sanitizer's runtime turns a crash into an exit
                const Temporary_folder folder;
                std::ofstream(folder.path() + "/file") << "text";
                const std::string line = folder.path() + "\n";
                if (write(STDOUT_FILENO, line.data(), line.size()) > 0)
                    kill(0, signal); // the whole group, as a terminal does
                for (;;)
                    pause();
            },
            {20, 0, 0});
        ASSERT_EQ(Process_end::signal, result.end);
        const std::string path = result.output.substr(0, result.output.find('\n'));
        ASSERT_NE("", path);
        EXPECT_TRUE(goes_away(path)) << path << " after signal " << signal;
    }
}

TEST(Temporary_folder, goes_away_at_whatever_moment_the_program_is_killed)
{
    const QZ::TEST::Temporary_folder scratch;
    std::minstd_rand random(4711);
    for (int i = 0; i < 300; ++i) {
        const pid_t program = fork();
        if (program == 0) {
            setenv("TMPDIR", scratch.path().c_str(), 1);
            for (;;)
                const Temporary_folder folder;
        }
        usleep(random() % 3000);
        kill(program, SIGKILL);
        waitpid(program, nullptr, 0);
    }
    for (const auto& left : std::filesystem::directory_iterator(scratch.path()))
        ASSERT_TRUE(goes_away(left.path()));
}

} // namespace
} // namespace reference_host

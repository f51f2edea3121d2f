#include "reference_host/output/staged_files.h"

#include "reference_host/output/write_failure.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using QZ::TEST::Temporary_folder;
using reference_host::Staged_files;
using reference_host::Write_failure;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

namespace
{

namespace fs = std::filesystem;

enum class Fault { none, fails, kills };

// What the n-th renaming of this process does, counted from 1.
int faulty_rename = 0;
Fault fault = Fault::none;

class Staged_file : public testing::Test
{
protected:
    void TearDown() override { fault = Fault::none; }

    static void write(const Staged_files& stage, const std::string& name, const std::string& text)
    {
        std::ofstream(stage.staged(name), std::ios::binary) << text;
    }

    void write_pair(const std::string& text)
    {
        Staged_files stage(m_folder.path(), "x");
        write(stage, "x_f.gl", text);
        write(stage, "x_v.gl", text);
        stage.place();
    }

    // Writes "new" over the pair while the n-th renaming goes wrong.
    void write_pair_with_fault(Fault kind, int number)
    {
        Staged_files stage(m_folder.path(), "x");
        write(stage, "x_f.gl", "new");
        write(stage, "x_v.gl", "new");
        fault = kind;
        faulty_rename = number;
        stage.place();
    }

    struct stat status(const std::string& name) const
    {
        struct stat result = {};
        EXPECT_EQ(0, stat(m_folder.file(name).c_str(), &result));
        return result;
    }

    bool has_leftovers() const
    {
        for (const auto& entry : fs::directory_iterator(m_folder.file(".shader-export"))) {
            if (entry.path().extension() != ".hash")
                return true;
        }
        return false;
    }

    Temporary_folder m_folder;
};

} // namespace

// Replaces that of the C library in this program.
extern "C" int rename(const char* from, const char* to) noexcept
{
    static const auto original =
        reinterpret_cast<int (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "rename"));
    if (fault != Fault::none && --faulty_rename == 0) {
        if (fault == Fault::kills)
            raise(SIGKILL);
        fault = Fault::none;
        errno = EACCES;
        return -1;
    }
    return original(from, to);
}

TEST_F(Staged_file, changes_nothing_until_it_is_placed)
{
    m_folder.write("x.fx", "old");
    {
        Staged_files stage(m_folder.path(), "x");
        write(stage, "x.fx", "new");
        EXPECT_THAT(stage.names(), ElementsAre("x.fx"));
        EXPECT_EQ("old", m_folder.read("x.fx"));
    }
    EXPECT_EQ("old", m_folder.read("x.fx"));
    EXPECT_FALSE(fs::exists(m_folder.file(".shader-export"))) << "what failed leaves no trace";
}

TEST_F(Staged_file, replaces_the_old_one_and_keeps_its_permissions)
{
    chmod(m_folder.write("x.fx", "old").c_str(), 0640);
    Staged_files stage(m_folder.path(), "x");
    write(stage, "x.fx", "new");
    stage.place();
    EXPECT_EQ("new", m_folder.read("x.fx"));
    EXPECT_EQ(0640u, status("x.fx").st_mode & 07777u);
}

TEST_F(Staged_file, replaces_what_a_link_names)
{
    m_folder.write("elsewhere/x.fx", "old");
    fs::create_symlink("elsewhere/x.fx", m_folder.file("x.fx"));
    Staged_files stage(m_folder.path(), "x");
    write(stage, "x.fx", "new");
    stage.place();
    EXPECT_TRUE(fs::is_symlink(m_folder.file("x.fx")));
    EXPECT_EQ("new", m_folder.read("elsewhere/x.fx"));
}

TEST_F(Staged_file, of_a_pair_is_put_back_when_the_other_cannot_be_placed)
{
    write_pair("old");
    const struct stat before = status("x_f.gl");
    // The stage is renamed first, then each file.
    EXPECT_THAT([&] { write_pair_with_fault(Fault::fails, 3); },
                ThrowsMessage<Write_failure>(HasSubstr("x_v.gl': Permission denied")));
    EXPECT_EQ("old", m_folder.read("x_f.gl"));
    EXPECT_EQ("old", m_folder.read("x_v.gl"));
    EXPECT_EQ(before.st_mtim.tv_nsec, status("x_f.gl").st_mtim.tv_nsec);
    EXPECT_EQ(before.st_ino, status("x_f.gl").st_ino);
    EXPECT_FALSE(has_leftovers());
}

TEST_F(Staged_file, of_a_pair_goes_away_when_the_other_cannot_be_placed_and_there_was_none)
{
    EXPECT_THROW(write_pair_with_fault(Fault::fails, 3), Write_failure);
    EXPECT_THAT(m_folder.files(), ElementsAre());
}

TEST_F(Staged_file, of_a_pair_is_never_new_beside_an_old_one_after_a_kill_and_the_next_run)
{
    for (int number = 1; number <= 5; ++number) {
        write_pair("old");
        const pid_t child = fork();
        if (child == 0) {
            write_pair_with_fault(Fault::kills, number);
            _exit(0);
        }
        int result = 0;
        waitpid(child, &result, 0);
        ASSERT_TRUE(WIFSIGNALED(result)) << number;
        Staged_files next(m_folder.path(), "x");
        EXPECT_EQ(number == 1 ? "old" : "new", m_folder.read("x_f.gl")) << number;
        EXPECT_EQ(m_folder.read("x_f.gl"), m_folder.read("x_v.gl")) << number;
        EXPECT_FALSE(next.was_edited("x_f.gl")) << number;
    }
    EXPECT_FALSE(has_leftovers());
}

TEST_F(Staged_file, of_another_run_that_is_still_going_on_stays)
{
    Staged_files first(m_folder.path(), "x");
    write(first, "x.fx", "first");
    {
        Staged_files second(m_folder.path(), "y");
        EXPECT_TRUE(fs::exists(first.staged("x.fx")));
    }
    first.place();
    EXPECT_EQ("first", m_folder.read("x.fx"));
}

TEST_F(Staged_file, is_known_to_be_edited_since_it_was_placed)
{
    write_pair("ours");
    m_folder.write("x_f.gl", "theirs");
    m_folder.write("strange.gl", "never ours");
    const Staged_files stage(m_folder.path(), "x");
    EXPECT_TRUE(stage.was_edited("x_f.gl"));
    EXPECT_FALSE(stage.was_edited("x_v.gl"));
    EXPECT_FALSE(stage.was_edited("strange.gl"));
}

TEST_F(Staged_file, is_backed_up_under_the_next_free_number)
{
    m_folder.write("x.fx", "old");
    m_folder.write("x.fx.~1~", "older");
    const Staged_files stage(m_folder.path(), "x");
    EXPECT_EQ(m_folder.file("x.fx.~2~"), stage.back_up("x.fx"));
    EXPECT_EQ("old", m_folder.read("x.fx.~2~"));
    EXPECT_EQ("older", m_folder.read("x.fx.~1~"));
}

TEST_F(Staged_file, does_not_replace_what_is_not_a_file)
{
    fs::create_directory(m_folder.file("x.fx"));
    Staged_files stage(m_folder.path(), "x");
    write(stage, "x.fx", "new");
    EXPECT_THAT([&] { stage.place(); },
                ThrowsMessage<Write_failure>("cannot write '" + m_folder.file("x.fx") +
                                             "': Is a directory"));
}

TEST_F(Staged_file, names_the_reason_of_the_system_where_there_is_no_folder)
{
    EXPECT_THAT([&] { Staged_files(m_folder.file("none"), "none/x"); },
                ThrowsMessage<Write_failure>("cannot write 'none/x': No such file or directory"));
}

TEST_F(Staged_file, is_called_by_its_place_in_texts)
{
    const Staged_files stage(m_folder.path(), "x");
    EXPECT_EQ("[" + m_folder.file("x.fx") + "]", stage.for_user("[" + stage.staged("x.fx") + "]"));
}

// A signal at any moment ends the program without a trace: no process, no temporary folder and no
// half file stays behind, after SIGKILL at the latest when the program has run once more.
// TOVIRAEXPORT_SIGNALS sets how many there are; 100 take some minutes.
#include "tests/host/documents.h"
#include "tests/host/folder_tree.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;
using Files = std::map<std::string, std::string>;

constexpr const char* sample = SOURCE_FOLDER "/samples/wood_textured.mtlx";
constexpr const char* other_sample = SOURCE_FOLDER "/samples/marble_procedural.mtlx";

// What the program is asked for. It writes into the folder "out" of its working folder.
const std::vector<std::string> commands[] = {
    {"batch", sample, other_sample, "-o", "out", "--plugin", PLUGIN, "--overwrite", "yes",
     "--report", "out/all.json", "--junit", "out/all.xml"},
    {"export", sample, "-e", "Custom GLSL", "-o", "out/wood", "--plugin", PLUGIN, "--overwrite",
     "yes", "--depfile", "out/wood.d"},
    {"batch", sample, other_sample, "-o", "out", "--plugin", PLUGIN, "--overwrite", "yes", "--jobs",
     "3"},
    {"render", sample, "-o", "out/wood.png", "--size", "200"},
    {"panel", "-e", "5", "--screenshot", "out/panel.png", "--plugin", PLUGIN},
    {"check", PLUGIN, "--include", "faults.none", "--include", "interface.entries", "--jobs", "2"},
};

enum class Receiver { program, group };

class Signals : public testing::Test
{
protected:
    Signals()
    {
        fs::create_directory(m_folder.file("tmp"));
        fs::create_directory(m_folder.file("home"));
    }

    // Starts the program in a process group of its own. Everything that it starts inherits a
    // variable by which it is found.
    pid_t start(const std::vector<std::string>& arguments) const;

    // Whether the program ended by then.
    static bool ends_before(pid_t program, Clock::time_point time, int& status);

    // Runs it to its end.
    int run(const std::vector<std::string>& arguments) const;

    // The numbers of the processes that the program started, itself included, that still run.
    std::vector<std::string> processes() const;
    bool all_end() const;

    // An output folder in which some files are there already.
    void make_output(const Files& whole) const;

    // The files that the program is for; and what it may keep only while it runs.
    Files output() const;
    std::vector<std::string> unfinished() const;

    // Reports differ in times alone, and say at their end that they are whole.
    static bool is_whole(const std::string& name, const std::string& content, const Files& whole);

    void interrupt(const std::vector<std::string>& arguments, const Files& whole,
                   Clock::duration usual);

    Temporary_folder m_folder;
    std::string m_variable = "SIGNALS_TEST=" + m_folder.path();
    std::mt19937 m_random{1};
};

pid_t Signals::start(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> words = {"env",
                                      "-u",
                                      "DISPLAY",
                                      m_variable,
                                      "HOME=" + m_folder.file("home"),
                                      "TMPDIR=" + m_folder.file("tmp"),
                                      SHADER_EXPORT};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> command;
    for (std::string& word : words)
        command.push_back(word.data());
    command.push_back(nullptr);
    const pid_t program = fork();
    if (program != 0) {
        setpgid(program, program);
        return program;
    }
    setpgid(0, 0);
    const int silence = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(silence, stream);
    if (chdir(m_folder.path().c_str()) == 0)
        execvp(command[0], command.data());
    _exit(127);
}

bool Signals::ends_before(pid_t program, Clock::time_point time, int& status)
{
    do {
        if (waitpid(program, &status, WNOHANG) == program)
            return true;
        std::this_thread::sleep_for(Milliseconds(1));
    } while (Clock::now() < time);
    return false;
}

int Signals::run(const std::vector<std::string>& arguments) const
{
    int status = 0;
    const pid_t program = start(arguments);
    waitpid(program, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::vector<std::string> Signals::processes() const
{
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string environment = '\0' + read_file(entry.path().string() + "/environ");
        if (environment.find('\0' + m_variable + '\0') != std::string::npos)
            found.push_back(entry.path().filename().string() + " " +
                            read_file(entry.path().string() + "/comm"));
    }
    return found;
}

bool Signals::all_end() const
{
    const auto patience = Clock::now() + std::chrono::seconds(30);
    while (!processes().empty() && Clock::now() < patience)
        std::this_thread::sleep_for(Milliseconds(5));
    return processes().empty();
}

void Signals::make_output(const Files& whole) const
{
    fs::remove_all(m_folder.file("out"));
    fs::create_directory(m_folder.file("out"));
    bool is_there = false;
    for (const auto& [name, content] : whole) {
        if ((is_there = !is_there))
            m_folder.write("out/" + name, "old");
    }
}

Files Signals::output() const
{
    Files files;
    const std::string folder = m_folder.file("out");
    for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
        if (entry->path().filename() == ".shader-export")
            entry.disable_recursion_pending();
        else if (!entry->is_directory())
            files[entry->path().lexically_relative(folder).string()] =
                read_file(entry->path().string());
    }
    return files;
}

std::vector<std::string> Signals::unfinished() const
{
    std::vector<std::string> found;
    for (const auto& [path, what] : tree_of(m_folder.file("out"))) {
        const std::string name = fs::path(path).filename().string();
        const bool is_hidden = path.find(".shader-export/") != std::string::npos;
        const auto ends_with = [&name](const std::string& end) {
            return name.size() >= end.size() &&
                   name.compare(name.size() - end.size(), end.size(), end) == 0;
        };
        const bool is_finished = ends_with(".hash") || ends_with(".json");
        if (is_hidden && !is_finished)
            found.push_back(path);
    }
    return found;
}

bool Signals::is_whole(const std::string& name, const std::string& content, const Files& whole)
{
    const auto known = whole.find(name);
    if (known == whole.end())
        return false;
    const std::string end = name == "all.json"  ? "\n}\n"
                            : name == "all.xml" ? "</testsuites>\n"
                                                : known->second;
    return content == "old" || (content.size() >= end.size() &&
                                content.compare(content.size() - end.size(), end.size(), end) == 0);
}

void Signals::interrupt(const std::vector<std::string>& arguments, const Files& whole,
                        Clock::duration usual)
{
    const int signal = std::vector<int>{SIGINT, SIGTERM, SIGHUP, SIGKILL}[m_random() % 4];
    const Receiver receiver = m_random() % 2 == 0 ? Receiver::program : Receiver::group;
    const auto moment = usual * (m_random() % 1100) / 1000;
    SCOPED_TRACE(arguments[0] + ", signal " + std::to_string(signal) +
                 (receiver == Receiver::group ? " to all" : "") + " after " +
                 std::to_string(std::chrono::duration_cast<Milliseconds>(moment).count()) + " ms");
    make_output(whole);
    const pid_t program = start(arguments);
    int status = 0;
    if (!ends_before(program, Clock::now() + moment, status)) {
        kill(receiver == Receiver::group ? -program : program, signal);
        EXPECT_TRUE(ends_before(program, Clock::now() + std::chrono::seconds(30), status));
    }
    EXPECT_TRUE(all_end()) << testing::PrintToString(processes());
    EXPECT_TRUE(fs::is_empty(m_folder.file("tmp")));
    for (const auto& [name, content] : output())
        EXPECT_TRUE(is_whole(name, content, whole)) << name << " is not whole: " << content.size();
    if (signal == SIGKILL) {
        EXPECT_EQ(0, run(arguments));
        EXPECT_EQ(whole.size(), output().size());
    }
    EXPECT_THAT(unfinished(), testing::IsEmpty());
}

} // namespace

TEST_F(Signals, at_any_moment_leave_nothing_half_done)
{
    const char* wanted = std::getenv("TOVIRAEXPORT_SIGNALS");
    const std::size_t count = wanted ? std::strtoul(wanted, nullptr, 10) : 12;
    const std::size_t kinds = std::size(commands);
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        const std::vector<std::string>& arguments = commands[kind];
        make_output({});
        const auto begin = Clock::now();
        ASSERT_EQ(0, run(arguments)) << arguments[0];
        const auto usual = Clock::now() - begin;
        const Files whole = output();
        for (std::size_t round = kind; round < count; round += kinds)
            interrupt(arguments, whole, usual);
    }
}

#include "tests/host/program.h"

#include <algorithm>
#include <cstdlib>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

// The other end of a terminal that a program may have as its standard input.
class Terminal
{
public:
    Terminal() : m_descriptor(posix_openpt(O_RDWR | O_NOCTTY))
    {
        if (m_descriptor < 0 || grantpt(m_descriptor) != 0 || unlockpt(m_descriptor) != 0)
            std::abort();
    }
    ~Terminal() { close(m_descriptor); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void type(const std::string& text) const
    {
        if (write(m_descriptor, text.data(), text.size()) < 0)
            std::abort();
    }
    std::string name() const { return ptsname(m_descriptor); }

private:
    int m_descriptor;
};

std::string quoted(const std::vector<std::string>& arguments)
{
    std::string line;
    for (const std::string& argument : arguments)
        line += " '" + argument + "'";
    return line;
}

} // namespace

void Program::run(const std::vector<std::string>& arguments, const std::string& before)
{
    const std::string input = before.find_first_of("<|") == std::string::npos ? " </dev/null" : "";
    const std::string line = "cd '" + m_folder.path() + "'; " + before + " env -u DISPLAY '" +
                             m_program + "'" + quoted(arguments) + " >'" + m_folder.file(".out") +
                             "' 2>'" + m_folder.file(".err") + "'" + input;
    const int result = std::system(line.c_str());
    m_status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    m_output = read_file(m_folder.file(".out"));
    m_errors = read_file(m_folder.file(".err"));
}

void Program::run_at_terminal(const std::vector<std::string>& arguments, const std::string& answers)
{
    const Terminal terminal;
    terminal.type(answers);
    run(arguments, "exec </" + terminal.name().substr(1) + ";");
}

void Program::run_export(const std::string& exporter, const std::vector<std::string>& more)
{
    std::vector<std::string> arguments = {
        "export", sample("wood_textured"), "--plugin", PLUGIN, "--exporter", exporter};
    if (std::find(more.begin(), more.end(), "--output") == more.end())
        arguments.insert(arguments.end(), {"--output", output()});
    arguments.insert(arguments.end(), more.begin(), more.end());
    run(arguments);
}

std::string Program::sample(const std::string& name)
{
    return SOURCE_FOLDER "/samples/" + name + ".mtlx";
}

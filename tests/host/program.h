// The program as a user runs it: in a process of its own.
#ifndef TESTS_HOST_PROGRAM_H
#define TESTS_HOST_PROGRAM_H

#include "tests/host/documents.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class Program : public testing::Test
{
protected:
    // Runs shader-export without display and terminal, in the folder of the test. `before` are
    // shell commands.
    void run(const std::vector<std::string>& arguments, const std::string& before = {});

    // Runs shader-export with a terminal as standard input, where the user types `answers`.
    void run_at_terminal(const std::vector<std::string>& arguments, const std::string& answers);

    // Exports a sample through one exporter, to output() where `more` does not say otherwise.
    void run_export(const std::string& exporter, const std::vector<std::string>& more = {});

    static std::string sample(const std::string& name);

    std::string output() const { return m_folder.file("wood"); }

    Temporary_folder m_folder;
    std::string m_program = SHADER_EXPORT;
    int m_status = -1; // -1: ended by a signal
    std::string m_output;
    std::string m_errors;
};

#endif

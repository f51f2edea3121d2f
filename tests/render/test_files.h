// Files for the tests of the renderer.
#ifndef TESTS_RENDER_TEST_FILES_H
#define TESTS_RENDER_TEST_FILES_H

#include "tests/support/temporary_folder.h"

#include <string>

// The path of a file in tests/render/fixtures.
std::string fixture(const std::string& name);

// The contents of a fixture. The test fails when it cannot be read.
std::string fixture_text(const std::string& name);

// The contents of any file, likewise.
std::string file_text(const std::string& path);

// A fixture with one change. The test fails when `old_text` is not in it.
std::string changed_fixture(const std::string& name, const std::string& old_text,
                            const std::string& new_text);

// A folder that goes away with its files at the end of the test.
class Test_folder
{
public:
    // The path of a file in the folder, written with this text.
    std::string write(const std::string& name, const std::string& text) const
    {
        return m_folder.write(name, text);
    }
    std::string path(const std::string& name) const { return m_folder.file(name); }
    std::string path() const { return m_folder.path(); }

private:
    QZ::TEST::Temporary_folder m_folder;
};

#endif

#include "tests/render/test_files.h"

#include "reference_host/system/file_access.h"

#include <gtest/gtest.h>

std::string fixture(const std::string& name)
{
    return SOURCE_FOLDER "/tests/render/fixtures/" + name;
}

std::string fixture_text(const std::string& name)
{
    return file_text(fixture(name));
}

std::string file_text(const std::string& path)
{
    std::string reason;
    const auto text = reference_host::read_whole_file(path, 1 << 24, reason);
    EXPECT_TRUE(text) << path << ": " << reason;
    return text.value_or("");
}

std::string changed_fixture(const std::string& name, const std::string& old_text,
                            const std::string& new_text)
{
    std::string text = fixture_text(name);
    const std::size_t at = text.find(old_text);
    EXPECT_NE(at, std::string::npos) << "\"" << old_text << "\" in fixture " << name;
    if (at != std::string::npos)
        text.replace(at, old_text.size(), new_text);
    return text;
}

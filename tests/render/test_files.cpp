#include "tests/render/test_files.h"

#include "reference_host/render/text_file.h"

#include <gtest/gtest.h>

std::string fixture(const std::string& name)
{
    return SOURCE_FOLDER "/tests/render/fixtures/" + name;
}

std::string fixture_text(const std::string& name)
{
    const auto text = reference_host::read_text_file(fixture(name));
    EXPECT_TRUE(text) << "fixture " << name;
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

std::string Test_folder::write(const std::string& name, const std::string& text) const
{
    EXPECT_TRUE(reference_host::write_text_file(path(name), text)) << path(name);
    return path(name);
}

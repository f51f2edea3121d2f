#include "reference_host/render/reference_scenes.h"

#include "reference_host/render/image.h"
#include "tests/render/test_files.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace reference_host
{

namespace
{

class Reference_scenes : public testing::Test
{
protected:
    Reference_scenes() { std::filesystem::create_directories(m_folder.path("pictures")); }

    // A picture of one grey.
    void add_picture(const std::string& name, unsigned char grey)
    {
        Image image(16, 16);
        std::fill(image.pixels.begin(), image.pixels.end(), Pixel{grey, grey, grey, 255});
        ASSERT_TRUE(write_png(image, m_folder.path("pictures/" + name)));
    }

    // What is printed of a document whose material "m" is white; "false" when that fails.
    std::string compared()
    {
        const std::string text = "#version 130\nout vec4 color;\n"
                                 "void main() { color = vec4(1.0); }\n";
        const std::vector<std::string> files = {fixture("plain_v.gl"),
                                                m_folder.write("white_f.gl", text)};
        const auto exporter = [&](const Document_request&, const std::string&) {
            return std::vector<Exported_shader>{{"m", files}};
        };
        testing::internal::CaptureStdout();
        const bool found =
            compare_with_references({"folder/doc.mtlx", m_folder.path(), ""}, exporter);
        const std::string printed = testing::internal::GetCapturedStdout();
        return found ? printed : "false";
    }

    Test_folder m_folder;
};

} // namespace

TEST_F(Reference_scenes, a_picture_like_the_reference_differs_by_nothing)
{
    add_picture("doc.m.B.png", 255);
    EXPECT_EQ(compared(), "doc\tm\tB\t0.0000\t0.0000\n");
}

TEST_F(Reference_scenes, differences_are_those_of_light_not_of_the_file)
{
    add_picture("doc.m.B.png", 188); // half the light
    EXPECT_EQ(compared(), "doc\tm\tB\t0.4971\t0.4971\n");
}

TEST_F(Reference_scenes, a_material_that_is_not_drawn_has_no_number)
{
    add_picture("doc.other.B.png", 255);
    EXPECT_EQ(compared(), "doc\tother\tB\t-\t-\n");
}

TEST_F(Reference_scenes, without_pictures_of_the_document_there_is_nothing_to_compare)
{
    add_picture("document.m.B.png", 255);
    EXPECT_EQ(compared(), "false");
}

} // namespace reference_host

#include "reference_host/render/image.h"

#include "tests/render/test_files.h"

#include <gmock/gmock.h>

#include <zlib.h>

namespace reference_host
{

namespace
{

using testing::ElementsAre;

Image small_image()
{
    Image image(3, 2);
    for (int i = 0; i < 6; ++i)
        image.pixels[static_cast<std::size_t>(i)] = {static_cast<unsigned char>(40 * i), 7, 200,
                                                     255};
    return image;
}

TEST(Image_files, a_written_picture_reads_back_unchanged)
{
    const Test_folder folder;
    ASSERT_TRUE(write_png(small_image(), folder.path("a.png")));
    const auto image = read_image(folder.path("a.png"));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 3);
    EXPECT_EQ(image->height, 2);
    EXPECT_EQ(image->pixels, small_image().pixels);
}

TEST(Image_files, a_jpeg_is_read_whatever_its_name)
{
    const auto image = read_image(fixture("orange.jpg"));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 16);
    EXPECT_EQ(image->height, 8);
    EXPECT_NEAR(image->at(8, 4)[0], 240, 3);
    EXPECT_NEAR(image->at(8, 4)[1], 128, 3);
    EXPECT_NEAR(image->at(8, 4)[2], 16, 3);
}

TEST(Image_files, damaged_and_missing_files_give_no_image)
{
    const Test_folder folder;
    ASSERT_TRUE(write_png(small_image(), folder.path("whole.png")));
    const std::string png = file_text(folder.path("whole.png"));
    const std::string jpeg = fixture_text("orange.jpg");
    const std::string texts[] = {"",
                                 "no image",
                                 png.substr(0, png.size() / 2),
                                 std::string("\x89PNG\r\n\x1a\n", 8),
                                 jpeg.substr(0, 20),
                                 std::string(1000, '\0')};
    for (const std::string& text : texts)
        EXPECT_FALSE(read_image(folder.write("broken", text))) << text.size() << " bytes";
    EXPECT_FALSE(read_image(folder.path("missing.png")));
    EXPECT_FALSE(read_image(folder.path()));
    EXPECT_FALSE(read_image(""));
}

// The same file, except for the size in its header.
std::string with_size(std::string jpeg, unsigned height, unsigned width)
{
    const std::size_t frame = jpeg.find("\xff\xc0");
    for (const unsigned shift : {8U, 0U}) {
        const std::size_t at = frame + 5 + (shift == 0);
        jpeg.at(at) = static_cast<char>(height >> shift);
        jpeg.at(at + 2) = static_cast<char>(width >> shift);
    }
    return jpeg;
}

TEST(Image_files, an_image_of_very_many_pixels_is_refused_before_it_is_unpacked)
{
    const Test_folder folder;
    std::string reason;
    const std::string jpeg = with_size(fixture_text("orange.jpg"), 16384, 4097);
    EXPECT_FALSE(read_image(folder.write("large.jpg", jpeg), reason));
    EXPECT_EQ("larger than 64 million pixels", reason);
    std::string png = file_text(SOURCE_FOLDER "/samples/images/wood_color.png");
    png.replace(16, 8, std::string("\0\0\x40\0\0\0\x40\0", 8)); // 16384 x 16384
    const auto header = reinterpret_cast<const unsigned char*>(png.data() + 12);
    const auto sum = static_cast<unsigned>(crc32(0, header, 17));
    for (unsigned i = 0; i < 4; ++i)
        png[29 + i] = static_cast<char>(sum >> (24 - 8 * i));
    EXPECT_FALSE(read_image(folder.write("large.png", png), reason));
    EXPECT_EQ("larger than 64 million pixels", reason);
}

TEST(Image_files, a_picture_that_cannot_be_written_is_reported)
{
    EXPECT_FALSE(write_png(small_image(), "/nonexistent/a.png"));
}

TEST(Image, flipped_rows_stand_upside_down)
{
    Image image = small_image();
    flip_rows(image);
    EXPECT_EQ(image.at(0, 0), small_image().at(0, 1));
    EXPECT_EQ(image.at(2, 1), small_image().at(2, 0));
    flip_rows(image);
    EXPECT_EQ(image.pixels, small_image().pixels);
}

TEST(Image, is_flat_up_to_two_colors)
{
    Image image(8, 8);
    EXPECT_TRUE(is_flat(Image()));
    EXPECT_TRUE(is_flat(image));
    image.at(3, 3) = {1, 2, 3, 255};
    EXPECT_TRUE(is_flat(image));
    image.at(4, 4) = {1, 2, 4, 255};
    EXPECT_FALSE(is_flat(image));
}

TEST(Mean_difference, is_zero_for_equal_pictures_and_counts_each_channel_by_itself)
{
    Image changed = small_image();
    EXPECT_THAT(*mean_difference(small_image(), changed), ElementsAre(0, 0, 0));
    changed.at(1, 1)[1] = 7 + 60;
    changed.at(0, 0)[2] = 200 - 30;
    EXPECT_THAT(*mean_difference(small_image(), changed), ElementsAre(0, 10, 5));
    EXPECT_THAT(*mean_difference(changed, small_image()), ElementsAre(0, 10, 5));
}

TEST(Mean_difference, is_nothing_for_pictures_of_different_size)
{
    EXPECT_FALSE(mean_difference(Image(2, 3), Image(3, 2)));
    EXPECT_FALSE(mean_difference(Image(), Image()));
}

} // namespace

} // namespace reference_host

// Bytes at the host border: text in, text out, nothing changed.
#include "exporter_base/bytes.h"

#include <gtest/gtest.h>

#include <random>

namespace QZ
{
namespace TEST
{

using TOVIRAEXPORT::from_bytes;
using TOVIRAEXPORT::to_bytes;

std::string round_trip(const std::string& bytes)
{
    return to_bytes(from_bytes(bytes.c_str()));
}

TEST(Bytes, null_counts_as_empty)
{
    EXPECT_EQ(from_bytes(nullptr), wxString());
    EXPECT_STREQ(TOVIRAEXPORT::text_or_empty(nullptr), "");
    EXPECT_STREQ(TOVIRAEXPORT::text_or_empty("x"), "x");
}

TEST(Bytes, every_text_of_one_and_two_bytes_comes_back)
{
    for (int first = 1; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(round_trip(one), one) << first;
        for (int second = 1; second < 256; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(round_trip(two), two) << first << " " << second;
        }
    }
}

TEST(Bytes, random_texts_come_back)
{
    std::mt19937 generator(1);
    std::uniform_int_distribution<int> any_byte(1, 255);
    std::uniform_int_distribution<int> high_byte(0x80, 0xff); // near to multi-byte sequences
    std::uniform_int_distribution<int> length(0, 40);
    for (int round = 0; round < 200000; ++round) {
        std::string text;
        for (int left = length(generator); left > 0; --left)
            text += static_cast<char>(round % 2 ? any_byte(generator) : high_byte(generator));
        ASSERT_EQ(round_trip(text), text);
    }
}

TEST(Bytes, every_code_point_comes_back)
{
    for (unsigned int point = 0x80; point < 0x110000; ++point) {
        std::string text;
        const auto put = [&text](unsigned int byte) { text += static_cast<char>(byte); };
        if (point < 0x800) {
            put(0xc0 | point >> 6);
        } else if (point < 0x10000) {
            put(0xe0 | point >> 12);
            put(0x80 | (point >> 6 & 0x3f));
        } else {
            put(0xf0 | point >> 18);
            put(0x80 | (point >> 12 & 0x3f));
            put(0x80 | (point >> 6 & 0x3f));
        }
        put(0x80 | (point & 0x3f));
        ASSERT_EQ(round_trip(text), text) << point;
    }
}

TEST(Bytes, malformed_sequences_come_back)
{
    const char* const texts[] = {
        "\xc0\x80",                         // overlong
        "\xe0\x80\x80",                     // overlong
        "\xf0\x80\x80\x80",                 // overlong
        "\xed\xa0\x80\xed\xb0\x80",         // surrogates
        "\xf4\x90\x80\x80",                 // beyond the last code point
        "\xfe\x80\x80\x80\x80\x80\x80",     // a lead byte of no sequence
        "\xf4\x8f\xba\x80\xf4\x8f\xbb\xbf", // the code points that stand for single bytes
        "a\xe2\x82",                        // cut off
        "\xe2\x82\xac\xac\xe2",             // sound, stray, cut off
    };
    for (const char* text : texts)
        EXPECT_EQ(round_trip(text), text);
}

#if wxUSE_UNICODE
TEST(Bytes, valid_utf8_becomes_unicode)
{
    const wxString text = from_bytes("\xc3\xa9\xe2\x82\xac");
    ASSERT_EQ(text.length(), 2u);
    EXPECT_EQ(static_cast<int>(text[0].GetValue()), 0xe9);
    EXPECT_EQ(static_cast<int>(text[1].GetValue()), 0x20ac);
}

TEST(Bytes, first_and_last_sequences_of_each_length_become_unicode)
{
    const struct {
        const char* bytes;
        unsigned int code_point;
    } rows[] = {
        {"\xc2\x80", 0x80},
        {"\xdf\xbf", 0x7ff},
        {"\xe0\xa0\x80", 0x800},
        {"\xef\xbf\xbf", 0xffff},
        {"\xed\x9f\xbf", 0xd7ff},
        {"\xee\x80\x80", 0xe000},
        {"\xf0\x90\x80\x80", 0x10000},
        {"\xf4\x8f\xbf\xbf", 0x10ffff},
    };
    for (const auto& row : rows) {
        const wxString text = from_bytes(row.bytes);
        ASSERT_EQ(text.length(), 1u) << row.code_point;
        EXPECT_EQ(text[0].GetValue(), row.code_point);
    }
}
#endif

} // namespace TEST
} // namespace QZ

#include "reference_host/document/value_parser.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace reference_host;

namespace
{

struct Good_value {
    Value_type type;
    const char* text;
    std::vector<double> numbers;
};

struct Bad_value {
    Value_type type;
    const char* text;
};

} // namespace

TEST(Value_parser, reads_numbers_separated_by_commas_spaces_or_both)
{
    const Good_value rows[] = {
        {Value_type::float1, "0.5", {0.5}},
        {Value_type::float1, "-.5e1", {-5.0}},
        {Value_type::float1, "+2", {2.0}},
        {Value_type::float1, " \t7\n", {7.0}},
        {Value_type::integer, "-12", {-12.0}},
        {Value_type::boolean, "true", {1.0}},
        {Value_type::boolean, "false", {0.0}},
        {Value_type::vector2, "1,2", {1.0, 2.0}},
        {Value_type::color3, "0.1, 0.2 ,0.3", {0.1, 0.2, 0.3}},
        {Value_type::vector3, "1 2  3", {1.0, 2.0, 3.0}},
        {Value_type::matrix33, "1,0,0, 0,1,0, 0,0,1", {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    };
    for (const Good_value& row : rows) {
        const std::optional<Value> value = parse_value(row.type, row.text);
        ASSERT_TRUE(value) << row.text;
        EXPECT_EQ(row.type, value->type);
        for (size_t i = 0; i < row.numbers.size(); ++i)
            EXPECT_EQ(row.numbers[i], value->numbers[i]) << row.text;
    }
}

TEST(Value_parser, refuses_what_is_not_a_value_of_the_type)
{
    const Bad_value rows[] = {
        {Value_type::float1, ""},
        {Value_type::float1, "x"},
        {Value_type::float1, "1x"},
        {Value_type::float1, "1 2"},
        {Value_type::float1, "1,"},
        {Value_type::float1, ",1"},
        {Value_type::float1, "nan"},
        {Value_type::float1, "inf"},
        {Value_type::float1, "1e999"},
        {Value_type::float1, "+-1"},
        {Value_type::float1, "0x10"},
        {Value_type::integer, "1.5"},
        {Value_type::integer, "3000000000"},
        {Value_type::boolean, "True"},
        {Value_type::boolean, "1"},
        {Value_type::color3, "1, 2"},
        {Value_type::color3, "1, 2, 3, 4"},
        {Value_type::color3, "1,,2"},
        {Value_type::color3, "1;2;3"},
        {Value_type::surfaceshader, "1"},
        {Value_type::none, "1"},
    };
    for (const Bad_value& row : rows)
        EXPECT_FALSE(parse_value(row.type, row.text)) << row.text;
}

TEST(Value_parser, keeps_texts_as_they_are)
{
    EXPECT_EQ(" a, b ", parse_value(Value_type::string, " a, b ")->text);
    EXPECT_EQ("", parse_value(Value_type::filename, "")->text);
}

TEST(Value_parser, reads_the_decimal_point_in_every_locale)
{
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    const std::optional<Value> value = parse_value(Value_type::float1, "0.5");
    std::setlocale(LC_ALL, "C");
    ASSERT_TRUE(value);
    EXPECT_EQ(0.5, value->numbers[0]);
}

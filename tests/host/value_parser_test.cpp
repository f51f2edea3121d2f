#include "reference_host/document/value_parser.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace reference_host;

namespace
{

struct Good_value {
    Type type;
    const char* text;
    std::vector<double> numbers;
};

struct Bad_value {
    Type type;
    const char* text;
};

} // namespace

TEST(Value_parser, reads_numbers_separated_by_commas_blanks_or_both)
{
    const Good_value rows[] = {
        {Type::float1, "0.5", {0.5}},
        {Type::float1, "-.5e1", {-5.0}},
        {Type::float1, "+2", {2.0}},
        {Type::float1, " \t7\n", {7.0}},
        {Type::integer, "-12", {-12.0}},
        {Type::boolean, "true", {1.0}},
        {Type::boolean, "false", {0.0}},
        {Type::vector2, "1,2", {1.0, 2.0}},
        {Type::color3, "0.1, 0.2 ,0.3", {0.1, 0.2, 0.3}},
        {Type::vector3, "1 2  3", {1.0, 2.0, 3.0}},
        {Type::matrix33, "1,0,0, 0,1,0, 0,0,1", {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    };
    for (const Good_value& row : rows) {
        const std::optional<Value> value = parse_value(row.type, row.text);
        ASSERT_TRUE(value) << row.text;
        EXPECT_EQ(row.type, value->type);
        for (size_t i = 0; i < row.numbers.size(); ++i)
            EXPECT_EQ(row.numbers[i], value->numbers[i]) << row.text;
    }
}

TEST(Value_parser, refuses_what_is_no_value_of_the_type)
{
    const Bad_value rows[] = {
        {Type::float1, ""},
        {Type::float1, "x"},
        {Type::float1, "1x"},
        {Type::float1, "1 2"},
        {Type::float1, "1,"},
        {Type::float1, ",1"},
        {Type::float1, "nan"},
        {Type::float1, "inf"},
        {Type::float1, "1e999"},
        {Type::float1, "+-1"},
        {Type::float1, "0x10"},
        {Type::integer, "1.5"},
        {Type::integer, "3000000000"},
        {Type::boolean, "True"},
        {Type::boolean, "1"},
        {Type::color3, "1, 2"},
        {Type::color3, "1, 2, 3, 4"},
        {Type::color3, "1,,2"},
        {Type::color3, "1;2;3"},
        {Type::surfaceshader, "1"},
        {Type::none, "1"},
    };
    for (const Bad_value& row : rows)
        EXPECT_FALSE(parse_value(row.type, row.text)) << row.text;
}

TEST(Value_parser, keeps_texts_as_they_are)
{
    EXPECT_EQ(" a, b ", parse_value(Type::string, " a, b ")->text);
    EXPECT_EQ("", parse_value(Type::filename, "")->text);
}

TEST(Value_parser, reads_the_decimal_point_in_every_locale)
{
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    const std::optional<Value> value = parse_value(Type::float1, "0.5");
    std::setlocale(LC_ALL, "C");
    ASSERT_TRUE(value);
    EXPECT_EQ(0.5, value->numbers[0]);
}

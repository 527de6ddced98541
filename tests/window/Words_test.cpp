#include <apps/viewer/qt/Words.h>

#include <gmock/gmock.h>

namespace TOLVGraphing::app {

namespace {

TEST(Words, namesGoIntoOneLineAndBack)
{
    const struct {
        std::vector<std::string> names;
        const char* text;
    } rows[] = {
        {{}, ""},
        {{"a"}, "a"},
        {{"a", "column 3"}, "a, column 3"},
        {{"x, y", "b"}, "\"x, y\", b"},
        {{"5\" pipe"}, "\"5\"\" pipe\""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOfNames(row.names), row.text);
        EXPECT_EQ(namesOfText(row.text), row.names) << row.text;
    }
    EXPECT_THAT(namesOfText(" a ,, b,"), testing::ElementsAre("a", "b"));
}

TEST(Words, valuesAreNumbersOrDates)
{
    const struct {
        double value;
        bool isDate;
        const char* text;
    } rows[] = {
        {0.1, false, "0.1"},
        {-2500.0, false, "-2500"},
        {0.0, true, "1970-01-01"},
        {-1.0, true, "1969-12-31"},
        {1.25, true, "1970-01-02 06:00:00"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOfValue(row.value, row.isDate), row.text);
        EXPECT_EQ(valueOfText(row.text, row.isDate), row.value) << row.text;
    }
    EXPECT_EQ(valueOfText(" 7 ", false), 7.0);
    EXPECT_EQ(valueOfText("2026-01-01", false), std::nullopt);
    EXPECT_EQ(valueOfText("inf", false), std::nullopt);
    EXPECT_EQ(valueOfText("", true), std::nullopt);
}

TEST(Words, optionsAreSaidInPlainWords)
{
    EXPECT_EQ(plainText("--x-axis: found 'log', expected data"), "x axis: found 'log', expected data");
    EXPECT_EQ(plainText("--y: nothing"), "y columns: nothing");
    EXPECT_EQ(plainText("a.csv: broken"), "a.csv: broken");
}

} // namespace

} // namespace TOLVGraphing::app

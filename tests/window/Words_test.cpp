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
        std::optional<double> dateOrigin;
        const char* text;
    } rows[] = {
        {0.1, std::nullopt, "0.1"},
        {-2500.0, std::nullopt, "-2500"},
        {0.0, 0.0, "1970-01-01"},
        {-1.0, 0.0, "1969-12-31"},
        {1.25, 0.0, "1970-01-02 06:00:00"},
        {0.25, 20513.0, "2026-03-01 06:00:00"},
        {-20513.0, 20513.0, "1970-01-01"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOfValue(row.value, row.dateOrigin), row.text);
        EXPECT_EQ(valueOfText(row.text, row.dateOrigin), row.value) << row.text;
    }
    EXPECT_EQ(valueOfText(" 7 ", std::nullopt), 7.0);
    EXPECT_EQ(valueOfText(" 20514 ", 20513.0), 1.0) << "days since 1970";
    EXPECT_EQ(valueOfText("2026-01-01", std::nullopt), std::nullopt);
    EXPECT_EQ(valueOfText("inf", std::nullopt), std::nullopt);
    EXPECT_EQ(valueOfText("", 0.0), std::nullopt);
}

TEST(Words, optionsAreSaidInPlainWords)
{
    EXPECT_EQ(plainText("--x-axis: found 'log', expected data"), "x axis: found 'log', expected data");
    EXPECT_EQ(plainText("--y: nothing"), "y columns: nothing");
    EXPECT_EQ(plainText("a.csv: broken"), "a.csv: broken");
}

} // namespace

} // namespace TOLVGraphing::app

#include <desktop/input/MeasurementTable.h>

#include <desktop/input/MeasurementError.h>

#include <gtest/gtest.h>

#include <limits>

namespace TOLVGraphing::input {

namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();

MeasurementColumn column(std::size_t number, const std::string& name, std::vector<float> values)
{
    MeasurementColumn result;
    result.number = number;
    result.name = name;
    result.values = std::move(values);
    return result;
}

TEST(MeasurementTable, namesOfColumns)
{
    MeasurementTable table;
    table.columns = {column(1, "", {1}), column(2, "column 1", {2}), column(3, "V", {3}), column(4, "V", {4})};
    EXPECT_EQ(table.columns[0].displayName(), "column 1");
    EXPECT_EQ(table.indexOfColumn("column 1"), 1U);
    EXPECT_EQ(table.indexOfColumn("V"), 2U);
    EXPECT_EQ(table.indexOfColumn("column 3"), std::nullopt);
    EXPECT_EQ(table.indexOfColumn(""), std::nullopt);
    EXPECT_EQ(table.indexOfColumnOrNumber("V"), 2U);
    EXPECT_EQ(table.indexOfColumnOrNumber("4"), 3U);
    for (const char* unknown : {"0", "5", "-1", "+1", "1.0", " 1", "1 ", "", "v", "18446744073709551617"})
        EXPECT_EQ(table.indexOfColumnOrNumber(unknown), std::nullopt) << unknown;
    table.columns[3].name = "1";
    EXPECT_EQ(table.indexOfColumnOrNumber("1"), 3U) << "a name goes before a number";
    EXPECT_EQ(table.rowCount(), 1U);
    EXPECT_EQ(MeasurementTable().rowCount(), 0U);
}

TEST(MeasurementTable, text)
{
    MeasurementTable table;
    table.sourceName = "scope.csv";
    table.sampleRate = 44100;
    table.format = {"delimited text", '\t', ',', 1, 1};
    table.columns = {column(1, "t", {1, 2}), column(2, "", {2, kGap})};
    table.columns[0].unit = "s";
    table.columns[1].kind = ColumnKind::Date;
    table.columns[1].gapCount = 1;
    table.columns[1].wordCount = 1;
    EXPECT_EQ(table.text(),
        "scope.csv: delimited text, tab, decimal comma, 1 header row, 1 skipped line, 44100 samples per second\n"
        "1: t [s] number, 2 rows\n2: column 2 date, 2 rows, 1 gap, 1 word");
    table.format = {"npy 1.0 <f4", '\0', '.', 0, 0};
    EXPECT_EQ(table.format.text(), "npy 1.0 <f4");
    EXPECT_EQ(delimiterName(','), "comma");
    EXPECT_EQ(delimiterName(';'), "semicolon");
    EXPECT_EQ(delimiterName(' '), "blanks");
    EXPECT_EQ(delimiterName('|'), "'|'");
    EXPECT_EQ(columnKindName(ColumnKind::Text), "text");
}

TEST(MeasurementTable, equality)
{
    EXPECT_EQ(column(1, "a", {1, kGap}), column(1, "a", {1, kGap}));
    EXPECT_FALSE(column(1, "a", {1, kGap}) == column(1, "a", {1, 2}));
    EXPECT_FALSE(column(1, "a", {1}) == column(1, "a", {1, 2}));
    EXPECT_FALSE(column(1, "a", {1}) == column(1, "b", {1}));
    EXPECT_FALSE(column(1, "a", {1}) == column(2, "a", {1}));
}

TEST(MeasurementError, text)
{
    MeasurementError withLine("a.csv", 7, "a word", "expected a number");
    EXPECT_STREQ(withLine.what(), "a.csv:7: a word, expected a number");
    EXPECT_EQ(withLine.file(), "a.csv");
    EXPECT_EQ(withLine.line(), 7U);
    EXPECT_EQ(withLine.found(), "a word");
    EXPECT_EQ(withLine.expected(), "expected a number");
    EXPECT_STREQ(MeasurementError("-", 0, "an empty file", "expected a table").what(), "-: an empty file, expected a table");
    EXPECT_STREQ(ReadingCancelled("a.csv").what(), "a.csv: reading was cancelled");
}

TEST(MeasurementError, excerpts)
{
    EXPECT_EQ(quotedExcerpt("abc"), "'abc'");
    EXPECT_EQ(quotedExcerpt(""), "''");
    EXPECT_EQ(quotedExcerpt("a\x1B[31m\n\x7F"),
        "'a?[31m?"
        "?'");
    // Also the late ones, of Latin-1 and of UTF-8.
    EXPECT_EQ(quotedExcerpt("a\x9B"
                            "31m\x80\x9F\xA0\xB5"),
        "'a?31m??\u00A0\u00B5'");
    EXPECT_EQ(quotedExcerpt("a\xC2\x9B"
                            "31m\xC2\x80\xC2\x9F\u00A0\u00B5"),
        "'a?31m??\u00A0\u00B5'");
    EXPECT_EQ(quotedExcerpt(std::string(40, 'x')), "'" + std::string(40, 'x') + "'");
    EXPECT_EQ(quotedExcerpt(std::string(41, 'x')), "'" + std::string(40, 'x') + "...'");
    EXPECT_EQ(quotedExcerpt(std::string(39, 'x') + "\u00B5" + "y"), "'" + std::string(39, 'x') + "...'");
}

} // namespace

} // namespace TOLVGraphing::input

// Every kind of delimited text, listed and drawn by the command line.

#include "CommandLine.h"

#include <ostream>

namespace TOLVGraphing::testing_support {

namespace {

using namespace std::string_literals;

struct TextCase {
    const char* name;
    std::string content;
    /// Behind "FILE: delimited text, ".
    const char* listing;
    /// The titles of the axes, which are the last texts, and how many series there are. Columns without names give no titles.
    const char* titles;
    std::size_t seriesCount;
    /// On standard error, with "FILE" for the file's name and without the program's.
    const char* message = "";
};

std::ostream& operator<<(std::ostream& stream, const TextCase& textCase)
{
    return stream << textCase.name;
}

const TextCase kSeparators[] = {
    {"comma", "t,v\n1,2\n3,4.5\n", "comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4.5\n", "t | v", 1},
    {"semicolon", "t;v\n1;2\n3;4.5\n", "semicolon, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4.5\n", "t | v", 1},
    {"tab", "t\tv\n1\t2\n3\t4.5\n", "tab, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4.5\n", "t | v", 1},
    {"blanks", " t    v\n 1    2\n30    4.5\n", "blanks, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 30\n  2  v: number, 2 rows, 2 to 4.5\n", "t | v", 1},
    {"decimalCommaBetweenSemicolons", "t;v\n0,5;1,25\n1;-2,5e1\n",
        "semicolon, decimal comma, 1 header row\n  1  t: number, 2 rows, 0.5 to 1\n  2  v: number, 2 rows, -25 to 1.25\n", "t | v", 1},
    {"decimalCommaBetweenTabs", "t\tv\n0,5\t1,25\n1\t2\n", "tab, decimal comma, 1 header row\n  1  t: number, 2 rows, 0.5 to 1\n  2  v: number, 2 rows, 1.25 to 2\n", "t | v", 1},
    {"decimalCommaBetweenBlanks", "0,5 1,25\n1,5 2,25\n",
        "blanks, decimal comma, 0 header rows\n  1  column 1: number, 2 rows, 0.5 to 1.5\n  2  column 2: number, 2 rows, 1.25 to 2.25\n", "", 1},
};

const TextCase kHeaders[] = {
    {"noHeader", "1,2\n3,4\n", "comma, decimal point, 0 header rows\n  1  column 1: number, 2 rows, 1 to 3\n  2  column 2: number, 2 rows, 2 to 4\n", "", 1},
    {"unitsRow", "X,CH1,CH2,\nSecond,Volt,Volt,\n-1e-3,-1.28e+00,5.4e+00,\n1e-3,1,2,\n",
        "comma, decimal point, 2 header rows\n  1  X (Second): number, 2 rows, -0.001 to 0.001\n  2  CH1 (Volt): number, 2 rows, -1.28 to 1\n  3  CH2 (Volt): number, 2 rows, 2 to "
        "5.4\n",
        "X (Second) | Volt", 2},
    {"comments", "# taken in May\nt,v\n# first\n1,2\n3,4\n# last\n",
        "comma, decimal point, 1 header row, 3 skipped lines\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4\n", "t | v", 1},
    {"quotedFields", "\"time, s\",\"say \"\"hi\"\"\"\n\"1\",\"2\"\n\"3\",\"4\"\n",
        "comma, decimal point, 1 header row\n  1  time, s: number, 2 rows, 1 to 3\n  2  say \"hi\": number, 2 rows, 2 to 4\n", "time, s | say \"hi\"", 1},
    {"headerBlock", "\"Points =\",8192,\n\"Sampling Frequency (Hz)=\",500,\n\"Inverted = \",\"NO\",\"NO\"\n\"Time (s)\",\"Voltage (V)\"\n0,1.5\n2E-3,-4.5\n4E-3,2\n",
        "comma, decimal point, 1 header row, 3 skipped lines, 500 samples a second\n  1  Time (s): number, 3 rows, 0 to 0.004\n  2  Voltage (V): number, 3 rows, -4.5 to 2\n",
        "Time (s) | Voltage (V)", 1},
    {"byteOrderMark", "\xEF\xBB\xBFt,v\n1,2\n3,4\n", "comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4\n", "t | v", 1},
    {"sixteenBits",
        "\xFF\xFEt\0,\0\xB5\0\n\0"
        "1\0,\0"
        "2\0\n\0"
        "3\0,\0"
        "4\0\n\0"s,
        "comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  \xC2\xB5: number, 2 rows, 2 to 4\n", "t | \xC2\xB5", 1},
    {"windowsLineEnds", "t,v\r\n1,2\r\n3,4\r\n", "comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4\n", "t | v", 1},
    {"loneReturns", "t,v\r1,2\r3,4", "comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  v: number, 2 rows, 2 to 4\n", "t | v", 1},
};

const TextCase kContents[] = {
    {"emptyFields", "t,v\n1,2\n2,\n3,4\n", "comma, decimal point, 1 header row\n  1  t: number, 3 rows, 1 to 3\n  2  v: number, 3 rows, 1 gap, 2 to 4\n", "t | v", 1,
        "FILE: v: 1 sample without a number left out\n"},
    {"words", "t,v\n1,2\n2,overload\n3,overload\n4,4\n5,5\n", "comma, decimal point, 1 header row\n  1  t: number, 5 rows, 1 to 5\n  2  v: number, 5 rows, 2 gaps, 2 to 5\n",
        "t | v", 1, "FILE: v: 2 samples without a number left out\n"},
    {"wordColumn", "t,state,v\n1,on,2\n3,off,4\n",
        "comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 3\n  2  state: text, 2 rows, 2 gaps\n  3  v: number, 2 rows, 2 to 4\n", "t | v", 1},
    {"wordsFirst", "place,v\nOslo,2\nRome,4\nBern,3\n", "comma, decimal point, 1 header row\n  1  place: text, 3 rows, 3 gaps\n  2  v: number, 3 rows, 2 to 4\n", "sample | v", 1,
        "FILE: place: words, no numbers or dates, so that the row number is x\n"},
    {"oneColumn", "pressure\n3\n1\n2\n", "comma, decimal point, 1 header row\n  1  pressure: number, 3 rows, 1 to 3\n", "sample | pressure", 1},
    {"dates", "date,v\n2012-01-01,1\n2012-03-01,2\n",
        "comma, decimal point, 1 header row\n  1  date: date in days since 1970-01-01, 2 rows, 2012-01-01 to 2012-03-01\n  2  v: number, 2 rows, 1 to 2\n", "date | v", 1},
    {"daysBeforeYears", "Datum;v\n01.01.2012;1,5\n01.03.2012;2\n",
        "semicolon, decimal comma, 1 header row\n  1  Datum: date in days since 1970-01-01, 2 rows, 2012-01-01 to 2012-03-01\n  2  v: number, 2 rows, 1.5 to 2\n", "Datum | v", 1},
    {"secondsOfDates", "time,v\n2012-01-01 06:00:00,1\n2012-01-01 06:00:01,2\n2012-01-01 18:00:00,3\n",
        "comma, decimal point, 1 header row\n  1  time: date in days since 2012-01-01, 3 rows, 2012-01-01 06:00 to 2012-01-01 18:00\n  2  v: number, 3 rows, 1 to 3\n", "time | v",
        1},
    {"timesThatFallTogether", "time,v\n2012-01-01 06:00:00,1\n2112-01-01 06:00:00,2\n2112-01-01 06:00:01,3\n",
        "comma, decimal point, 1 header row\n  1  time: date in days since 2012-01-01, 3 rows, 2012-01-01 06:00 to 2112-01-01 06:00\n  2  v: number, 3 rows, 1 to 3\n", "time | v",
        1, "FILE: time: 1 time falls together with the one before: single precision does not tell them apart so far from 2012-01-01\n"},
    {"timesOfDay", "date,v\n2012-01-01T06:00:00Z,1\n2012-01-01T18:00:00Z,2\n",
        "comma, decimal point, 1 header row\n  1  date: date in days since 2012-01-01, 2 rows, 2012-01-01 06:00 to 2012-01-01 18:00\n  2  v: number, 2 rows, 1 to 2\n", "date | v",
        1},
    {"unsortedX", "t,v\n3,4\n1,2\n2,8\n", "comma, decimal point, 1 header row\n  1  t: number, 3 rows, 1 to 3\n  2  v: number, 3 rows, 2 to 8\n", "t | v", 1,
        "FILE: v: samples sorted by t, which does not ascend in the file\n"},
    {"oneSample", "t,v\n5,7\n", "comma, decimal point, 1 header row\n  1  t: number, 1 row, 5 to 5\n  2  v: number, 1 row, 7 to 7\n", "t | v", 1},
    {"sameValues", "t,v\n1,7\n2,7\n", "comma, decimal point, 1 header row\n  1  t: number, 2 rows, 1 to 2\n  2  v: number, 2 rows, 7 to 7\n", "t | v", 1},
    {"infinity", "t,v\n1,2\n2,inf\n3,4\n", "comma, decimal point, 1 header row\n  1  t: number, 3 rows, 1 to 3\n  2  v: number, 3 rows, 2 to inf\n", "t | v", 1,
        "FILE: v: 1 sample without a number left out\n"},
};

class TextFormats : public CommandLineTest, public testing::WithParamInterface<TextCase> {
protected:
    TextFormats() { folder().write("table.csv", GetParam().content); }

    /// The message that the case expects, as the program prints it.
    static std::string expectedMessage()
    {
        const std::string message = GetParam().message;
        return message.empty() ? "" : "tolvgraph: table.csv" + message.substr(4);
    }
};

/// The strokes that are neither frame nor grid: those in the colours of the series.
std::size_t seriesStrokes(const DrawnPage& page)
{
    return page.strokesOfColor("#0072b2").size() + page.strokesOfColor("#d55e00").size();
}

TEST_P(TextFormats, areListed)
{
    EXPECT_EQ(listing("table.csv"), std::string("table.csv: delimited text, ") + GetParam().listing);
}

TEST_P(TextFormats, areDrawn)
{
    std::string messages;
    const DrawnPage page = drawn({"table.csv"}, &messages);
    EXPECT_EQ(messages, expectedMessage());
    const std::string titles = GetParam().titles;
    if (titles.empty())
        EXPECT_EQ(page.allTexts().find_first_not_of("0123456789.-| "), std::string::npos) << page.allTexts();
    else
        EXPECT_TRUE(page.allTexts().ends_with(" | " + titles)) << page.allTexts();
    EXPECT_EQ(seriesStrokes(page), GetParam().seriesCount);
}

std::string caseName(const testing::TestParamInfo<TextCase>& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Separators, TextFormats, testing::ValuesIn(kSeparators), caseName);
INSTANTIATE_TEST_SUITE_P(Headers, TextFormats, testing::ValuesIn(kHeaders), caseName);
INSTANTIATE_TEST_SUITE_P(Contents, TextFormats, testing::ValuesIn(kContents), caseName);

class RaggedText : public CommandLineTest {};

TEST_F(RaggedText, shortAndLongRowsAreDrawnWithAWarning)
{
    std::string table = "t,v\n";
    for (int row = 0; row < 150; ++row)
        table += std::to_string(row) + (row == 40 || row == 50 ? "\n" : row == 60 ? ",1,7\n" : ",1\n");
    folder().write("ragged.csv", table);
    std::string messages;
    const DrawnPage page = drawn({"ragged.csv"}, &messages);
    EXPECT_EQ(messages,
        "tolvgraph: ragged.csv:42: 2 rows with fields missing, which are gaps\n"
        "tolvgraph: ragged.csv:62: 1 row with more fields than columns, which are ignored\n"
        "tolvgraph: ragged.csv: v: 2 samples without a number left out\n");
    EXPECT_EQ(curvePoints(page).size(), 149U);
}

class DrawnValues : public CommandLineTest {};

TEST_F(DrawnValues, standAtTheirPlaces)
{
    folder().write("steps.csv", "t,v\n0,0\n1,10\n2,5\n3,2\n4,0\n");
    const DrawnPage page = drawn({"steps.csv", "--margin", "20,40,30,60", "--size", "500x250", "--x-range", "0:4", "--y-range", "0:10"});
    // The data area is 40...440 by 20...220 points, y growing downwards. The first sample makes two vertices, and the last line ends 1.0625 points before the edge, under the frame.
    const std::vector<Point> expected{{40, 220}, {40, 220}, {140, 20}, {240, 120}, {340, 180}, {438.9375, 219.575}};
    const auto points = curvePoints(page);
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(points[i].x, expected[i].x, 1e-3) << i;
        EXPECT_NEAR(points[i].y, expected[i].y, 1e-3) << i;
    }
}

} // namespace

} // namespace TOLVGraphing::testing_support

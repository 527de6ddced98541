// Every wrong value of every option: status 2, and a message that names the option, what was found and what was expected.

#include "CommandLine.h"

#include <gmock/gmock.h>

#include <ostream>

namespace TOLVGraphing::testing_support {

namespace {

constexpr const char* kHint = "\nTry 'tolvgraph --help'.\n";

struct ValueCase {
    const char* option;
    std::vector<std::string> values;
    /// Behind "OPTION: found 'VALUE', expected ".
    const char* expected;
};

class WrongUsage : public CommandLineTest {
protected:
    WrongUsage()
    {
        folder().write("table.csv", "t,v\n1,2\n3,4\n");
        folder().write("dates.csv", "date,v\n2012-01-01,2\n2012-02-01,4\n");
    }

    void expectRefused(const ValueCase& valueCase, const std::string& file, const std::string& hint) const
    {
        for (const std::string& value : valueCase.values) {
            const std::string message = std::string("tolvgraph: ") + valueCase.option + ": found '" + value + "', expected " + valueCase.expected + hint;
            EXPECT_TRUE(endedWith(run({file, "-o", "picture.svg", std::string(valueCase.option) + "=" + value}), 2, message));
        }
        EXPECT_EQ(folder().read("picture.svg"), "");
    }
};

TEST_F(WrongUsage, valuesThatAnOptionCannotTake)
{
    const std::string longest(16, '9');
    const ValueCase cases[] = {
        {"--size", {"640", "640x", "x400", "640x400x2", "0x400", "640x-1", "axb", "640:400", "15000x400", "nanxnan", "infx400", "1e99x2", "640 x 400"},
            "WIDTHxHEIGHT in points, each from 1 to 14400, for example 640x400"},
        {"--scale", {"0", "-1", "two", "65", "nan", "inf", "2x", longest}, "a number greater than 0 and at most 64"},
        {"--x-range", {"5", "1-5", "1:2:3", "words"}, "FROM:TO, for example 0:10; an end may be left out"},
        {"--y-range", {"5", "1-5", "1:2:3", "words"}, "FROM:TO, for example 0:10; an end may be left out"},
        {"--draw", {"bars", "Curve", "dots"}, "one of curve, plain-curve, dotted"},
        {"--color", {"red", "12345", "1234567", "#12345g", "0x12", "##123456"}, "six hexadecimal digits RRGGBB, for example 0072B2"},
        {"--pattern", {"dash", "Solid", "1"}, "one of solid, dashed, dash-dot, dotted"},
        {"--thickness", {"0", "-2", "thick", "1001", "nan"}, "a number greater than 0 and at most 1000"},
        {"--margin", {"10", "1,2,3", "1,2,3,4,5", "1,2,3,-4", "1,2,3,x", "1,2,3,nan", "1,2,3,99999"}, "four distances in points, TOP,LEFT,BOTTOM,RIGHT, for example 15,30,15,15"},
    };
    for (const ValueCase& valueCase : cases)
        expectRefused(valueCase, "table.csv", kHint);
}

TEST_F(WrongUsage, emptyPartsOfLists)
{
    for (const char* option : {"--y", "--color", "--pattern", "--thickness", "--margin"})
        expectRefused({option, {",", "1,", ",1", "1,,2"}, "values separated by commas"}, "table.csv", kHint);
}

TEST_F(WrongUsage, onePartOfAListIsNamed)
{
    EXPECT_TRUE(endedWith(run({"table.csv", "-o", "picture.svg", "--color", "0072B2,blue"}), 2,
        std::string("tolvgraph: --color: found 'blue', expected six hexadecimal digits RRGGBB, for example 0072B2") + kHint));
}

TEST_F(WrongUsage, valuesThatDoNotFitTheData)
{
    const ValueCase numbers[] = {
        {"--marker", {"here", "", "1,5", "2012-01-01", "nan", "inf"}, "a number"},
    };
    for (const ValueCase& valueCase : numbers)
        expectRefused(valueCase, "table.csv", "\n");
    const ValueCase dates[] = {
        {"--marker", {"today", "2012-13-01", "2012-02-30"}, "a number or a date such as 2026-11-21"},
    };
    for (const ValueCase& valueCase : dates)
        expectRefused(valueCase, "dates.csv", "\n");
    const ValueCase ranges[] = {
        {"--x-range", {"3:1", "2:2", "5:", ":0", "16777216:16777217"}, "an end greater than the start"},
        {"--y-range", {"3:1", "2:2", "5:", ":0", "1e300:1e301"}, "an end greater than the start"},
    };
    for (const ValueCase& valueCase : ranges)
        expectRefused(valueCase, "table.csv", "\n");
}

TEST_F(WrongUsage, endsOfRangesThatAreNoNumbers)
{
    EXPECT_TRUE(endedWith(run({"table.csv", "-o", "picture.svg", "--x-range", "a:5"}), 2, "tolvgraph: --x-range: found 'a', expected a number\n"));
    EXPECT_TRUE(endedWith(run({"table.csv", "-o", "picture.svg", "--y-range", "0:b"}), 2, "tolvgraph: --y-range: found 'b', expected a number\n"));
    EXPECT_TRUE(endedWith(run({"dates.csv", "-o", "picture.svg", "--x-range", "2012-01-01:soon"}), 2,
        "tolvgraph: --x-range: found 'soon', expected a number or a date such as 2026-11-21\n"));
    EXPECT_TRUE(endedWith(run({"dates.csv", "-o", "picture.svg", "--y-range", "2012-01-01:2012-02-01"}), 2, "tolvgraph: --y-range: found '2012-01-01', expected a number\n"));
}

TEST_F(WrongUsage, missingArguments)
{
    EXPECT_TRUE(endedWith(run({}), 2, std::string("tolvgraph: FILE: found nothing, expected at least one measurement file, or - for standard input") + kHint));
    EXPECT_TRUE(endedWith(run({"-o", "picture.svg"}), 2, std::string("tolvgraph: FILE: found nothing, expected at least one measurement file, or - for standard input") + kHint));
    EXPECT_TRUE(endedWith(run({"table.csv"}), 2, std::string("tolvgraph: --output: found nothing, expected a file to write, for example -o graph.png, or --list-columns") + kHint));
}

TEST_F(WrongUsage, suffixesOfNoKind)
{
    for (const std::string name : {"picture", "picture.jpg", "picture.", "svg", ".png/picture", "picture.svg.txt", ""}) {
        const ProcessResult result = run({"table.csv", "--output=" + name});
        EXPECT_TRUE(endedWith(result, 2, "tolvgraph: --output: found '" + name + "', expected a name that ends in .pdf, .ps, .eps, .svg, .png, .tif or .tiff" + kHint));
    }
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"dates.csv", "table.csv"}));
}

TEST_F(WrongUsage, oneWrongSuffixWritesNoPictureAtAll)
{
    EXPECT_EQ(run({"table.csv", "-o", "good.svg", "-o", "bad.gif"}).status, 2);
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"dates.csv", "table.csv"}));
}

TEST_F(WrongUsage, optionsThatDoNotExistOrLackAValue)
{
    const std::vector<std::vector<std::string>> cases{
        {"table.csv", "-o", "picture.svg", "--colour", "0072B2"},
        {"table.csv", "-o", "picture.svg", "-q"},
        {"table.csv", "-o"},
        {"table.csv", "-o", "picture.svg", "--size"},
        {"table.csv", "-o", "picture.svg", "--marker"},
        {"table.csv", "-o", "picture.svg", "--legend=perhaps"},
        {"table.csv", "-o", "picture.svg", "--size", "10x10", "--size", "20x20"},
    };
    const char* const named[] = {"--colour", "-q", "--output", "--size", "--marker", "--legend", "--size"};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const ProcessResult result = run(cases[i]);
        EXPECT_EQ(result.status, 2) << result.text();
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, testing::StartsWith("tolvgraph: "));
        EXPECT_THAT(result.error, testing::HasSubstr(named[i]));
        EXPECT_THAT(result.error, testing::EndsWith(kHint));
    }
    EXPECT_EQ(folder().read("picture.svg"), "");
}

} // namespace

} // namespace TOLVGraphing::testing_support

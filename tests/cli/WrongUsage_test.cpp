// Every wrong value of every option: status 2, and a message that names the option, what was found and what was expected.

#include "CommandLine.h"

#include <gmock/gmock.h>

#include <ostream>
#include <utility>

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
        {"--channels", {"0", "-1", "two", "1025", "1.5", "+2", " 2", "2x", "99999999999999999999"}, "a whole number from 1 to 1024"},
        {"--x-range", {"5", "1-5", "1:2:3", "words"}, "FROM:TO, for example 0:10; an end may be left out"},
        {"--y-range", {"5", "1-5", "1:2:3", "words"}, "FROM:TO, for example 0:10; an end may be left out"},
        {"--draw", {"bars", "Curve", "dots"}, "one of curve, plain-curve, dotted, line, bar, x, impulse"},
        {"--x-axis", {"logarithmic", "Log", "bars", "category", "2"}, "one of linear, log, bar, line"},
        {"--y-axis", {"bar", "line", "lin", "log10"}, "one of linear, log"},
        {"--x-format", {"SI", "k", "iso", "0.00"}, "one of decimal, adaptive, si, scientific, date"},
        {"--y-format", {"dates", "sci", "plain"}, "one of decimal, adaptive, si, scientific, date"},
        {"--layout", {"layout", "layout.jso", "json", "layout.json.txt", "layout.svg"}, "a name that ends in .json"},
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
    EXPECT_TRUE(endedWith(
        run({"dates.csv", "-o", "picture.svg", "--x-range", "2012-01-01:soon"}), 2, "tolvgraph: --x-range: found 'soon', expected a number or a date such as 2026-11-21\n"));
    EXPECT_TRUE(endedWith(run({"dates.csv", "-o", "picture.svg", "--y-range", "2012-01-01:2012-02-01"}), 2, "tolvgraph: --y-range: found '2012-01-01', expected a number\n"));
}

struct CombinationCase {
    std::vector<std::string> options;
    const char* message;
};

TEST_F(WrongUsage, optionsThatDoNotGoTogether)
{
    constexpr const char* kLine = "--x-axis: found 'bar', expected line, the axis that --draw line needs";
    constexpr const char* kBar = "--x-axis: found 'log', expected bar or line, the axes that --draw bar needs";
    constexpr const char* kCategories = "--categories: found 't', expected an axis of categories with it: --x-axis bar or line, or --draw bar or line";
    constexpr const char* kFormat = "--x-format: found 'si', expected an axis of numbers with it, --x-axis linear or log: categories are texts";
    const CombinationCase cases[] = {
        {{"--draw", "line", "--x-axis", "bar"}, kLine},
        {{"--x-axis", "bar", "--draw", "line"}, kLine},
        {{"--draw", "line", "--x-axis", "linear"}, "--x-axis: found 'linear', expected line, the axis that --draw line needs"},
        {{"--draw", "line", "--x-axis", "log"}, "--x-axis: found 'log', expected line, the axis that --draw line needs"},
        {{"--draw", "bar", "--x-axis", "log"}, kBar},
        {{"--draw", "bar", "--x-axis", "linear"}, "--x-axis: found 'linear', expected bar or line, the axes that --draw bar needs"},
        {{"--draw", "curve", "--x-axis", "bar"}, "--draw: found 'curve', expected bar, line, x or impulse with --x-axis bar, whose categories it does not match"},
        {{"--draw", "dotted", "--x-axis", "bar"}, "--draw: found 'dotted', expected bar, line, x or impulse with --x-axis bar, whose categories it does not match"},
        {{"--draw", "plain-curve", "--x-axis", "line"}, "--draw: found 'plain-curve', expected bar, line, x or impulse with --x-axis line, whose categories it does not match"},
        {{"--categories", "t"}, kCategories},
        {{"--categories", "t", "--x-axis", "log"}, kCategories},
        {{"--categories", "t", "--draw", "x"}, kCategories},
        {{"--categories", "t", "--list-columns"}, kCategories},
        {{"--channels", "2"}, "--channels: found '2', expected a FILE with it that ends in .f32 or .f64: other files say themselves how many they have"},
        {{"--x-format", "si", "--draw", "bar"}, kFormat},
        {{"--x-format", "si", "--x-axis", "line", "--draw", "x"}, kFormat},
    };
    for (const CombinationCase& one : cases) {
        std::vector<std::string> arguments{"table.csv", "-o", "picture.svg"};
        arguments.insert(arguments.end(), one.options.begin(), one.options.end());
        EXPECT_TRUE(endedWith(run(arguments), 2, std::string("tolvgraph: ") + one.message + kHint)) << testing::PrintToString(one.options);
    }
    EXPECT_EQ(folder().read("picture.svg"), "");
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

TEST_F(WrongUsage, optionsThatDoNotExist)
{
    const std::pair<std::string, const char*> cases[]
        = {{"--leyend", "--legend"}, {"--colour", "--color"}, {"--out", "--output"}, {"--ouptut", "--output"}, {"-legend", "--legend"}, {"--list", "--list-columns"},
            {"--xrange", "--x-range"}, {"--y-axes", "--y-axis"}, {"--Title", "--title"}, {"--hel", "--help"}, {"--leyend=1", "--legend"},
            // Nothing is near.
            {"--verbose", nullptr}, {"-q", nullptr}, {"--grid", nullptr}, {"--z", nullptr}};
    for (const auto& [written, nearest] : cases) {
        const std::string expected = nearest ? std::string(nearest) + " perhaps, or another one that --help lists" : "one that --help lists";
        EXPECT_TRUE(endedWith(
            run({"table.csv", "-o", "picture.svg", written}), 2, "tolvgraph: " + written.substr(0, written.find('=')) + ": no option of this name, expected " + expected + kHint));
    }
    EXPECT_TRUE(endedWith(run({"--colour", "0072B2", "table.csv", "-o", "picture.svg", "--leyend"}), 2,
        std::string("tolvgraph: --colour: no option of this name, expected --color perhaps, or another one that --help lists") + kHint))
        << "the first one is named";
    EXPECT_EQ(folder().read("picture.svg"), "");
}

TEST_F(WrongUsage, optionsThatLackTheirValueOrHaveOneTooMany)
{
    const CombinationCase cases[] = {
        {{"-o"}, "-o: found nothing, expected its value, OUT"},
        {{"-o", "picture.svg", "--size"}, "--size: found nothing, expected its value, WxH"},
        {{"-o", "picture.svg", "--x", "--legend", "--y"}, "--y: found nothing, expected its value, COL,..."},
        {{"-o", "picture.svg", "--marker"}, "--marker: found nothing, expected its value, VALUE"},
        {{"-o", "picture.svg", "--x-axis"}, "--x-axis: found nothing, expected its value, KIND"},
        {{"-o", "picture.svg", "--categories"}, "--categories: found nothing, expected its value, COL"},
        {{"--layout"}, "--layout: found nothing, expected its value, OUT"},
        {{"-o", "picture.svg", "--legend=perhaps"}, "--legend: found 'perhaps', expected no value for it"},
        {{"-o", "picture.svg", "--list-columns=2"}, "--list-columns: found '2', expected no value for it"},
        {{"-o", "picture.svg", "--size", "10x10", "--size=20x20"}, "--size: found 2 times, expected once"},
        {{"-o", "picture.svg", "--title", "a", "--title", "b", "--title=c"}, "--title: found 3 times, expected once"},
        {{"--layout", "one.json", "--layout", "two.json"}, "--layout: found 2 times, expected once"},
    };
    for (const CombinationCase& one : cases) {
        std::vector<std::string> arguments{"table.csv"};
        arguments.insert(arguments.end(), one.options.begin(), one.options.end());
        EXPECT_TRUE(endedWith(run(arguments), 2, std::string("tolvgraph: ") + one.message + kHint)) << testing::PrintToString(one.options);
    }
    EXPECT_EQ(folder().names(), (std::vector<std::string>{"dates.csv", "table.csv"}));
}

} // namespace

} // namespace TOLVGraphing::testing_support

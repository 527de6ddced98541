// How the numbers along the axes are written.

#include "CommandLine.h"

#include <ostream>

namespace TOLVGraphing::testing_support {

namespace {

class NumberFormats : public CommandLineTest {
protected:
    NumberFormats()
    {
        folder().write("table.csv", "t,v\n0,0\n1000,0.0025\n2500,0.001\n4000,0.0005\n");
        folder().write("dates.csv", "date,v\n2012-01-01,1\n2012-02-01,4\n2012-03-01,2\n2012-03-31,3\n");
    }
};

struct FormatCase {
    const char* file;
    std::vector<std::string> options;
    /// Texts that are there, and one that is not.
    std::vector<std::string> shown;
    const char* missing;
};

TEST_F(NumberFormats, ofBothAxes)
{
    const FormatCase cases[] = {
        // x from 0 to 4,000 in steps of 1,000, y from 0 to 0.0025 in steps of 0.001.
        {"table.csv", {}, {"0", "1000", "3000", "0.001", "0.0004"}, "1k"},
        {"table.csv", {"--x-format", "adaptive", "--y-format", "adaptive"}, {"1000", "0.001", "0.0004"}, "1k"},
        {"table.csv", {"--x-format", "decimal", "--y-format", "decimal"}, {"1,000", "0.001", "0.002"}, "0.0004"},
        {"table.csv", {"--x-format", "si", "--y-format", "si"}, {"0", "1k", "3k", "1m", "400\xC2\xB5"}, "1,000"},
        {"table.csv", {"--x-format", "scientific", "--y-format", "scientific"},
            {"0",
                "1\xC3\x97"
                "10\xC2\xB3",
                "1\xC3\x97"
                "10\xE2\x81\xBB\xC2\xB3",
                "4\xC3\x97"
                "10\xE2\x81\xBB\xE2\x81\xB4"},
            "1,000"},
        {"table.csv", {"--x-format", "si"}, {"1k", "0.001"}, "1m"},
        {"table.csv", {"--y-format", "si"}, {"1000", "1m"}, "1k"},
        {"table.csv", {"--x-format", "date"}, {"1970", "1972", "1978"}, "1,000"},
        {"table.csv", {"--x-axis", "log", "--x-format", "si", "--x-range", "20:20000"}, {"20", "100", "200", "1k", "2k", "10k", "20k"}, "1,000"},
        {"table.csv", {"--x-axis", "log", "--x-format", "scientific", "--x-range", "20:20000"},
            {"1\xC3\x97"
             "10\xC2\xB2",
                "1\xC3\x97"
                "10\xE2\x81\xB4"},
            "100"},
        // Dates are written as dates unless something else is asked for.
        {"dates.csv", {}, {"2012-02", "1"}, "15,380"},
        {"dates.csv", {"--x-format", "date"}, {"2012-02", "2012-03"}, "15,380"},
        {"dates.csv", {"--x-format", "decimal"}, {"15,380"}, "2012-02"},
        {"dates.csv", {"--x-format", "adaptive"}, {"15,380"}, "2012-02"},
        {"dates.csv", {"--x", "v", "--y", "date", "--y-format", "date"}, {"2012-02-10"}, "15,380"},
    };
    for (const FormatCase& one : cases) {
        std::vector<std::string> arguments{one.file};
        arguments.insert(arguments.end(), one.options.begin(), one.options.end());
        std::string messages;
        const DrawnPage page = drawn(arguments, &messages);
        for (const std::string& text : one.shown)
            EXPECT_TRUE(page.hasText(text)) << text << " with " << testing::PrintToString(one.options) << ": " << page.allTexts();
        EXPECT_FALSE(page.hasText(one.missing)) << one.missing << " with " << testing::PrintToString(one.options) << ": " << page.allTexts();
    }
}

TEST_F(NumberFormats, tellTicksApart)
{
    // Steps of 0.00001, which three fraction digits cannot show.
    folder().write("fine.csv", "t,v\n0,0.10001\n1,0.10009\n2,0.10005\n");
    const DrawnPage page = drawn({"fine.csv"});
    EXPECT_TRUE(page.hasText("0.10002") && page.hasText("0.10008")) << page.allTexts();
}

TEST_F(NumberFormats, areThoseOfBadgesAndCallouts)
{
    const DrawnPage page = drawn({"table.csv", "--x-format", "si", "--y-format", "si", "--marker", "500"});
    std::string badge;
    std::string callout;
    for (const DrawnText& text : page.texts) {
        badge += text.color == "#ffffff" ? text.text : "";
        callout += text.color == "#0072b2" ? text.text : "";
    }
    EXPECT_EQ(badge, "500");
    EXPECT_EQ(callout, "1.25m");
}

TEST_F(NumberFormats, areThoseOfTheValuesOfLines)
{
    folder().write("bars.csv", "name,v\na,1500\nb,2500\n");
    const DrawnPage page = drawn({"bars.csv", "--draw", "line", "--y-format", "si"});
    EXPECT_TRUE(page.hasText("1.5k") && page.hasText("2.5k")) << page.allTexts();
}

} // namespace

} // namespace TOLVGraphing::testing_support

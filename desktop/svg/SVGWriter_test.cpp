#include "SVGWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace TOLVGraphing;
using namespace TOLVGraphing::svg;

TEST(SVGWriter, numbersAreShort)
{
    struct Case {
        double number;
        const char* expected;
    };
    const Case cases[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {1.0, "1"},
        {100.0, "100"},
        {-2.5, "-2.5"},
        {0.1234564, "0.123456"},
        {0.1234567, "0.123457"},
        {-0.0000001, "0"},
        {1234567.5, "1234567.5"},
        {1e300, "1000000000"},
        {-std::numeric_limits<double>::infinity(), "-1000000000"},
        {std::nan(""), "0"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(numberText(c.number), c.expected) << c.number;
}

TEST(SVGWriter, textIsEscaped)
{
    EXPECT_EQ(escapedText("a < b & c > \"d\" 'e'"), "a &lt; b &amp; c &gt; &quot;d&quot; 'e'");
    EXPECT_EQ(escapedText("µ∞ 漢\ttab\nline\rreturn"), "µ∞ 漢\ttab\nline&#13;return");
    EXPECT_EQ(escapedText(std::string("\x01 \x1F \0 \xFF", 7)), "\uFFFD \uFFFD \uFFFD \uFFFD");
    EXPECT_EQ(escapedText("\xEF\xBF\xBE|\xEF\xBF\xBF|\xEF\xBF\xBD"), "\uFFFD|\uFFFD|\uFFFD");
}

TEST(SVGWriter, coloursHaveEightBits)
{
    EXPECT_EQ(colorText(Color(0.0, 0.5, 1.0)), "#0080ff");
    EXPECT_EQ(colorText(Color(-1.0, 2.0, std::nan(""))), "#00ff00");
}

TEST(SVGWriter, pathsShareLetters)
{
    Path path;
    path.moveToX(0.0, 0.0);
    path.addLineToX(1.0, 0.5);
    path.addLineToX(-2.0, 0.0);
    path.addCurveToPoint({6.0, 5.0}, {1.0, 2.0}, {3.0, 4.0});
    path.addLineToX(7.0, 7.0);
    path.closeSubpath();
    EXPECT_EQ(pathData(path, {}), "M0 0L1 0.5 -2 0C1 2 3 4 6 5L7 7Z");
    EXPECT_EQ(pathData(path, {1.0, 0.0, 0.0, -1.0, 0.0, 10.0}), "M0 10L1 9.5 -2 10C1 8 3 6 6 5L7 3Z");
    EXPECT_EQ(pathData({}, {}), "");
}

TEST(SVGWriter, matricesKeepSmallEntries)
{
    EXPECT_EQ(matrixText({0.0, -1.0, 1.0, 6e-17, 10.0, 20.5}), "matrix(0 -1 1 0 10 20.5)");
    EXPECT_EQ(matrixText({1e-7, 0.0, 0.0, 1e-7, 0.0, 0.0}), "matrix(1e-07 0 0 1e-07 0 0)");
}

// Logarithmic axes: where samples stand, the ranges that fit them, what cannot be shown, and which ticks are labelled.

#include "CommandLine.h"

#include <gmock/gmock.h>

#include <cmath>

namespace TOLVGraphing::testing_support {

namespace {

/// A data area at 60...360 by 20...220 points in a picture of 400x250 points.
const std::vector<std::string> kKnownPlace{"--size", "400x250", "--margin", "20,60,30,40"};

std::vector<std::string> joined(std::vector<std::string> first, const std::vector<std::string>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// The middles of the crosses in a colour, in the order they were drawn.
std::vector<Point> crosses(const DrawnPage& page, const std::string& color = "#0072b2")
{
    std::vector<Point> middles;
    for (const DrawnPath& path : page.strokesOfColor(color)) {
        const auto points = path.points();
        if (points.size() == 4)
            middles.push_back({(points[0].x + points[1].x) * 0.5, (points[0].y + points[1].y) * 0.5});
    }
    return middles;
}

class LogarithmicAxis : public CommandLineTest {
protected:
    LogarithmicAxis()
    {
        folder().write("decades.csv", "f,v\n1,1\n10,100\n100,0.1\n1000,10\n");
        folder().write("mixed.csv", "f,CH1,CH2\n-1,1,5\n0,2,0\n1,-3,7\n10,0,8\n100,40,-2\n");
    }

    DrawnPage drawnInPlace(const std::string& file, const std::vector<std::string>& options, std::string* messages = nullptr) const
    {
        return drawn(joined(joined({file}, options), kKnownPlace), messages);
    }
};

TEST_F(LogarithmicAxis, placesSamplesByTheirLogarithms)
{
    // Three decades across 300 points, and four from 0.01 to 100 across 200.
    const auto marks = crosses(drawnInPlace("decades.csv", {"--x-axis", "log", "--y-axis", "log", "--x-range", "1:1000", "--y-range", "0.01:100", "--draw", "x"}));
    EXPECT_EQ(marks, (std::vector<Point>{{60, 120}, {160, 20}, {260, 170}, {360, 70}}));
    const auto linear = crosses(drawnInPlace("decades.csv", {"--x-axis", "log", "--y-axis", "linear", "--x-range", "1:1000", "--y-range", "0:100", "--draw", "x"}));
    EXPECT_EQ(linear, (std::vector<Point>{{60, 218}, {160, 20}, {260, 220}, {360, 200}}));
}

TEST_F(LogarithmicAxis, fitsCurvesByTheirLogarithms)
{
    const auto points = curvePoints(drawnInPlace("decades.csv", {"--x-axis", "log", "--y-axis", "log"}));
    // x: three decades and a hundredth more behind the last sample (4 of 400 points). y: three decades and a twentieth more on either side.
    const double xDecades = 3.0 * (1.0 + 4.0 / 400.0);
    const double yDecades = 3.0 * 1.1;
    const double logarithms[][2] = {{0, 0}, {0, 0}, {1, 2}, {2, -1}, {3, 1}};
    ASSERT_EQ(points.size(), 5U) << "the last sample is drawn";
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(points[i].x, 60.0 + 300.0 * logarithms[i][0] / xDecades, 1e-3) << i;
        EXPECT_NEAR(points[i].y, 220.0 - 200.0 * (logarithms[i][1] + 1.0 + 3.0 * 0.05) / yDecades, 1e-3) << i;
    }
}

TEST_F(LogarithmicAxis, leavesRoomAroundMarks)
{
    // 6 of 400 points on either side, in decades: 3 * 6 / 400 = 0.045.
    const auto marks = crosses(drawnInPlace("decades.csv", {"--x-axis", "log", "--draw", "x"}));
    ASSERT_EQ(marks.size(), 4U);
    for (std::size_t i = 0; i < marks.size(); ++i)
        EXPECT_EQ(marks[i].x, std::rint(60.0 + 300.0 * (static_cast<double>(i) + 0.045) / 3.09)) << i;
}

TEST_F(LogarithmicAxis, spreadsDotsEvenlyWhereTheDecadesAre)
{
    std::string messages;
    const DrawnPage even = drawnInPlace("decades.csv", {"--x-axis", "log", "--draw", "dotted"}, &messages);
    EXPECT_EQ(messages, "") << "even steps of a decade";
    // Four cells of a decade each: 10 is at three eighths of the data area.
    ASSERT_TRUE(even.hasText("10")) << even.allTexts();
    EXPECT_NEAR(even.textNamed("10")->x + even.textNamed("10")->length * 0.5, 60.0 + 300.0 * 3.0 / 8.0, 1.0);
    folder().write("linear.csv", "t,v\n1,1\n2,2\n3,3\n4,4\n");
    static_cast<void>(drawnInPlace("linear.csv", {"--x-axis", "log", "--draw", "dotted"}, &messages));
    EXPECT_EQ(messages, "tolvgraph: --draw dotted spreads the samples evenly, but their x values are not evenly spaced: the x axis does not tell where they are\n");
}

TEST_F(LogarithmicAxis, tellsWhatItCannotShow)
{
    const struct {
        std::vector<std::string> options;
        const char* messages;
    } cases[] = {
        {{"--y-axis", "log"},
            "tolvgraph: mixed.csv: --y-axis log: 2 of 5 samples of 'CH1' are not positive and cannot be shown\n"
            "tolvgraph: mixed.csv: --y-axis log: 2 of 5 samples of 'CH2' are not positive and cannot be shown\n"},
        {{"--x-axis", "log", "--y", "CH1"}, "tolvgraph: mixed.csv: --x-axis log: 2 of 5 samples of 'CH1' are not positive and cannot be shown\n"},
        {{"--x-axis", "log", "--y-axis", "log", "--y", "CH2"},
            "tolvgraph: mixed.csv: --x-axis log: 2 of 5 samples of 'CH2' are not positive and cannot be shown\n"
            "tolvgraph: mixed.csv: --y-axis log: 2 of 5 samples of 'CH2' are not positive and cannot be shown\n"},
        {{"--y-axis", "linear", "--x-axis", "linear"}, ""},
    };
    for (const auto& one : cases) {
        std::string messages;
        static_cast<void>(drawnInPlace("mixed.csv", one.options, &messages));
        EXPECT_EQ(messages, one.messages);
    }
    folder().write("one.csv", "t,v\n1,0\n2,5\n");
    std::string messages;
    static_cast<void>(drawnInPlace("one.csv", {"--y-axis", "log"}, &messages));
    EXPECT_EQ(messages, "tolvgraph: one.csv: --y-axis log: 1 of 2 samples of 'v' is not positive and cannot be shown\n");
}

TEST_F(LogarithmicAxis, fitsThePositiveSamplesOnly)
{
    std::string messages;
    // Positive abscissae from 1 to 100, and of the samples there the ordinates 40, 7 and 8: those at -1 and 0 do not count.
    const DrawnPage page = drawnInPlace("mixed.csv", {"--x-axis", "log", "--y-axis", "log", "--draw", "x"}, &messages);
    const auto second = crosses(page, "#d55e00");
    const double decades = std::log10(40.0 / 7.0);
    const auto xAt = [](double exponent) { return std::rint(60.0 + 300.0 * (exponent + 2.0 * 6.0 / 400.0) / (2.0 * 1.03)); };
    const auto yAt = [&](double value) { return std::rint(220.0 - 200.0 * (std::log10(value / 7.0) / decades + 0.05) / 1.1); };
    EXPECT_THAT(second, testing::IsSupersetOf(std::vector<Point>{{xAt(0.0), yAt(7.0)}, {xAt(1.0), yAt(8.0)}}));
    EXPECT_THAT(crosses(page), testing::Contains(Point{xAt(2.0), yAt(40.0)}));
}

TEST_F(LogarithmicAxis, givesASinglePositiveValueADecade)
{
    folder().write("single.csv", "t,v\n1,0\n2,5\n3,-1\n");
    std::string messages;
    const DrawnPage page = drawnInPlace("single.csv", {"--y-axis", "log", "--draw", "x"}, &messages);
    const auto marks = crosses(page);
    ASSERT_FALSE(marks.empty());
    EXPECT_THAT(marks, testing::Contains(testing::Field(&Point::y, 120.0))) << "in the middle";
    // From 1.6 to 16 and a little more: one power of ten, and some of the values between.
    for (const char* label : {"2", "5", "10"})
        EXPECT_TRUE(page.hasText(label)) << page.allTexts();
    folder().write("row.csv", "f,v\n50,7\n");
    const auto alone = crosses(drawnInPlace("row.csv", {"--x-axis", "log", "--y-axis", "log", "--draw", "x"}));
    EXPECT_EQ(alone, (std::vector<Point>{{210, 120}}));
}

TEST_F(LogarithmicAxis, needsAPositiveNumber)
{
    folder().write("negative.csv", "t,v\n-2,-1\n-1,0\n0,-3\n");
    EXPECT_TRUE(endedWith(run({"negative.csv", "-o", "p.svg", "--y-axis", "log"}), 2, "tolvgraph: --y-axis: found 'log', expected data with a number greater than 0\n"));
    EXPECT_TRUE(endedWith(run({"negative.csv", "-o", "p.svg", "--x-axis", "log"}), 2, "tolvgraph: --x-axis: found 'log', expected data with a number greater than 0\n"));
    EXPECT_TRUE(endedWith(run({"negative.csv", "-o", "p.svg", "--y-axis", "log", "--y-range", "1:10", "--draw", "bar"}), 2,
        "tolvgraph: --y-axis: found 'log', expected data with a number greater than 0\n"));
    // Positive ordinates, but none of them at a positive abscissa.
    folder().write("apart.csv", "t,v\n-1,5\n1,-5\n");
    EXPECT_TRUE(
        endedWith(run({"apart.csv", "-o", "p.svg", "--x-axis", "log", "--y-axis", "log"}), 2, "tolvgraph: --y-axis: found 'log', expected data with a number greater than 0\n"));
    EXPECT_EQ(folder().read("p.svg"), "");
}

TEST_F(LogarithmicAxis, refusesEndsThatAreNotPositive)
{
    for (const std::string axis : {"x", "y"}) {
        for (const std::string end : {"0", "-1", "1e-60", "-0"}) {
            const std::string message = "tolvgraph: --" + axis + "-range: found '" + end + "', expected a number greater than 0, as the axis is logarithmic\n";
            EXPECT_TRUE(endedWith(run({"decades.csv", "-o", "p.svg", "--" + axis + "-axis", "log", "--" + axis + "-range=" + end + ":10"}), 2, message));
            EXPECT_TRUE(endedWith(run({"decades.csv", "-o", "p.svg", "--" + axis + "-axis", "log", "--" + axis + "-range=:" + end}), 2, message));
        }
    }
    EXPECT_TRUE(
        endedWith(run({"decades.csv", "-o", "p.svg", "--x-axis", "log", "--x-range", "10:5"}), 2, "tolvgraph: --x-range: found '10:5', expected an end greater than the start\n"));
    EXPECT_EQ(folder().read("p.svg"), "");
    // The other axis is free.
    EXPECT_TRUE(succeededSilently(run({"decades.csv", "-o", "p.svg", "--x-axis", "log", "--y-range=-5:5"})));
}

TEST_F(LogarithmicAxis, labelsValuesBetweenPowersOfTenWhereThoseAreFew)
{
    const struct {
        const char* range;
        bool labelsBetween;
    } cases[] = {{"1:1000", true}, {"1:9999", true}, {"1:10000", false}, {"0.001:1000", false}, {"2:15", true}, {"20:20000", true}};
    for (const auto& one : cases) {
        const DrawnPage page = drawn({"decades.csv", "--x-axis", "log", "--x-range", one.range, "--y-axis", "linear", "--y-range", "0:0.5"});
        bool hasBetween = false;
        for (const char* label : {"2", "3", "5", "20", "30", "50", "200", "300", "500", "2,000"})
            hasBetween = hasBetween || page.hasText(label);
        EXPECT_EQ(hasBetween, one.labelsBetween) << one.range << ": " << page.allTexts();
        EXPECT_TRUE(page.hasText("10") || page.hasText("100")) << page.allTexts();
    }
}

TEST_F(LogarithmicAxis, showsTheWholeRangeOfFloats)
{
    folder().write("extreme.csv", "t,v\n1e-45,1e-45\n1,1\n3.4e38,3.4e38\n");
    const DrawnPage page = drawn({"extreme.csv", "--x-axis", "log", "--y-axis", "log", "--draw", "x"});
    EXPECT_EQ(crosses(page).size(), 3U);
    EXPECT_TRUE(page.hasText("10")
        && page.hasText("1\xC3\x97"
                        "10\xE2\x81\xBB\xC2\xB3\xC2\xB9"))
        << page.allTexts();
}

TEST_F(LogarithmicAxis, marksValues)
{
    const DrawnPage page = drawnInPlace("decades.csv", {"--x-axis", "log", "--x-range", "1:10000", "--marker", "100", "--marker", "0"});
    std::size_t badges = 0;
    for (const DrawnText& text : page.texts) {
        if (text.color != "#ffffff")
            continue;
        ++badges;
        EXPECT_EQ(text.text, "100");
        EXPECT_NEAR(text.x + text.length * 0.5, 210.0, 0.5);
    }
    EXPECT_EQ(badges, 1U) << "zero is nowhere on the axis";
}

} // namespace

} // namespace TOLVGraphing::testing_support

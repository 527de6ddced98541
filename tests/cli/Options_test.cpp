// Every option with values that it takes.

#include "CommandLine.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>

namespace TOLVGraphing::testing_support {

namespace {

/// Margins that put the data area of a picture of 400x250 points at 60...360 by 20...220 points.
const std::vector<std::string> kKnownPlace{"--size", "400x250", "--margin", "20,60,30,40"};

class Options : public CommandLineTest {
protected:
    Options()
    {
        folder().write("table.csv", "t,a,b,w\n0,0,5,no\n1,10,6,no\n2,5,7,no\n3,2,8,no\n4,0,9,no\n");
        folder().write("dates.csv", "date,v\n2012-01-01,1\n2012-02-01,4\n2012-03-01,2\n2012-03-31,3\n");
    }

    /// Draws the file with these options and the known place.
    DrawnPage drawnInPlace(const std::string& file, std::vector<std::string> options) const
    {
        options.insert(options.begin(), file);
        options.insert(options.end(), kKnownPlace.begin(), kKnownPlace.end());
        return drawn(options);
    }

    /// The series by the colours of the cycle that have a stroke.
    static std::size_t seriesCount(const DrawnPage& page)
    {
        std::size_t count = 0;
        for (const char* color : {"#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00", "#56b4e9"})
            count += page.strokesOfColor(color).empty() ? 0 : 1;
        return count;
    }
};

TEST_F(Options, helpNamesEveryOption)
{
    const ProcessResult result = run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    for (const char* name :
        {"FILE", "-o,--output", "--size", "--scale", "--x ", "--y ", "--x-range", "--y-range", "--title", "--x-label", "--y-label", "--draw", "--color", "--pattern", "--thickness",
            "--x-axis", "--y-axis", "--categories", "--x-format", "--y-format", "--marker", "--legend", "--layout", "--margin", "--list-columns", "--version", "-h,--help"})
        EXPECT_THAT(result.output, testing::HasSubstr(name));
    EXPECT_EQ(run({"-h"}).output, result.output);
    EXPECT_EQ(run({"-h", "missing.csv", "--size", "nonsense"}).output, result.output) << "help goes before everything else";
}

TEST_F(Options, version)
{
    const ProcessResult result = run({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output, "tolvgraph " TOLV_VERSION "\n");
}

TEST_F(Options, listColumnsTogetherWithAPicture)
{
    const ProcessResult result = run({"table.csv", "--list-columns", "-o", "picture.svg"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, testing::StartsWith("table.csv: delimited text"));
    EXPECT_EQ(seriesCount(DrawnPage::fromSVG(folder().read("picture.svg"))), 2U);
}

TEST_F(Options, size)
{
    EXPECT_EQ(drawn({"table.csv"}).size, (Size{640, 400}));
    EXPECT_EQ(drawn({"table.csv", "--size", "300x200"}).size, (Size{300, 200}));
    EXPECT_EQ(drawn({"table.csv", "--size", "300.5X1e2"}).size, (Size{300.5, 100}));
    EXPECT_EQ(drawn({"table.csv", "--size=14400x14400"}).size, (Size{14400, 14400}));
    EXPECT_EQ(drawn({"table.csv", "--size", "1x1"}).size, (Size{1, 1}));
}

struct ColumnCase {
    const char* title;
    std::vector<std::string> options;
    const char* xTitle;
    const char* yTitle;
    std::size_t seriesCount;
};

TEST_F(Options, columns)
{
    const ColumnCase cases[] = {
        {"all", {}, "t", "", 2},
        {"y by name", {"--y", "b"}, "t", "b", 1},
        {"y by number", {"--y", "3"}, "t", "b", 1},
        {"several y", {"--y", "b,2"}, "t", "", 2},
        {"y twice", {"--y", "b,b"}, "t", "", 2},
        {"x by name", {"--x", "a", "--y", "b"}, "a", "b", 1},
        {"x by number", {"--x", "2", "--y", "b"}, "a", "b", 1},
        {"x without y leaves the others", {"--x", "b"}, "b", "", 2},
        {"row numbers", {"--x", "index", "--y", "a"}, "sample", "a", 1},
        {"x is y", {"--x", "t", "--y", "t"}, "t", "t", 1},
        {"first column as y", {"--x", "index"}, "sample", "", 3},
    };
    for (const ColumnCase& columnCase : cases) {
        SCOPED_TRACE(columnCase.title);
        std::vector<std::string> arguments{"table.csv"};
        arguments.insert(arguments.end(), columnCase.options.begin(), columnCase.options.end());
        std::string messages;
        const DrawnPage page = drawn(arguments, &messages);
        EXPECT_EQ(seriesCount(page), columnCase.seriesCount);
        EXPECT_TRUE(page.hasText(columnCase.xTitle)) << page.allTexts();
        EXPECT_TRUE(!*columnCase.yTitle || page.hasText(columnCase.yTitle)) << page.allTexts();
    }
}

TEST_F(Options, rowNumberWhereNoColumnHasThatName)
{
    folder().write("index.csv", "t,index\n10,0\n11,5\n12,9\n13,9\n");
    const DrawnPage page = drawn({"index.csv", "--x", "index", "--y", "t"});
    EXPECT_TRUE(page.hasText("index")) << "the column goes before the row number";
}

struct RangeCase {
    const char* option;
    const char* range;
    /// Where the data area's left, right, bottom and top are in data units.
    double left;
    double right;
    double bottom;
    double top;
};

TEST_F(Options, ranges)
{
    // Without a range x fits the data and has 4 points of the picture's width more behind them, and y has a twentieth more on either side.
    const double fit = 4.0 + 4.0 * 4.0 / 400.0;
    const RangeCase cases[] = {
        {"--x-range", "0:4", 0, 4, -0.5, 10.5},
        {"--x-range", "-4:8", -4, 8, -0.5, 10.5},
        {"--x-range", ":8", 0, 8, -0.5, 10.5},
        {"--x-range", "-4:", -4, fit, -0.5, 10.5},
        {"--x-range", ":", 0, fit, -0.5, 10.5},
        {"--x-range", "-.5:+4.5", -0.5, 4.5, -0.5, 10.5},
        {"--x-range", "-1e0:5e0", -1, 5, -0.5, 10.5},
        {"--y-range", "0:10", 0, fit, 0, 10},
        {"--y-range", "-10:20", 0, fit, -10, 20},
        {"--y-range", ":20", 0, fit, -0.5, 20},
        {"--y-range", "-1:", 0, fit, -1, 10.5},
    };
    const double values[][2] = {{0, 0}, {0, 0}, {1, 10}, {2, 5}, {3, 2}, {4, 0}};
    for (const RangeCase& c : cases) {
        SCOPED_TRACE(std::string(c.option) + " " + c.range);
        const auto points = curvePoints(drawnInPlace("table.csv", {"--y", "a", c.option, c.range}));
        ASSERT_EQ(points.size(), 6U);
        // Where the last sample lies on the right edge, the line to it ends before the frame.
        const bool endsAtEdge = c.right == 4.0;
        if (endsAtEdge) {
            EXPECT_GT(points[5].x, 358.5);
            EXPECT_LT(points[5].x, 359.0);
        }
        for (std::size_t i = 0; i < (endsAtEdge ? 5U : 6U); ++i) {
            EXPECT_NEAR(points[i].x, 60.0 + 300.0 * (values[i][0] - c.left) / (c.right - c.left), 1e-3) << i;
            EXPECT_NEAR(points[i].y, 220.0 - 200.0 * (values[i][1] - c.bottom) / (c.top - c.bottom), 1e-3) << i;
        }
    }
}

TEST_F(Options, rangesAndMarkersOfDates)
{
    const DrawnPage page = drawnInPlace("dates.csv", {"--x-range", "2012-01-01:2012-03-31", "--y-range", "0:5", "--marker", "2012-02-02"});
    const auto points = curvePoints(page);
    ASSERT_EQ(points.size(), 5U);
    EXPECT_NEAR(points[2].x, 60.0 + 300.0 * 31.0 / 90.0, 1e-3);
    EXPECT_TRUE(page.hasText("2012-02-02")) << page.allTexts();
    // In days and with a time of day.
    EXPECT_EQ(curvePoints(drawnInPlace("dates.csv", {"--x-range", "15340:15430", "--y-range", "0:5"})).at(2).x, points[2].x);
    EXPECT_NEAR(curvePoints(drawnInPlace("dates.csv", {"--x-range", "2011-12-31T12:00:2012-02-02T12:00", "--y-range", "0:5"})).at(0).x, 60.0 + 300.0 * 0.5 / 33.0, 1e-3);
}

TEST_F(Options, secondsOfDates)
{
    folder().write("log.csv", "time,v\n2026-03-01 10:00:00,1\n2026-03-01 10:00:01,2\n2026-03-01 10:00:02,1\n2026-03-01 10:00:04,3\n2026-03-01 10:00:10,0\n");
    const DrawnPage page = drawnInPlace("log.csv", {"--x-range", "2026-03-01 10:00:00:2026-03-01 10:00:10", "--y-range", "0:5", "--marker", "2026-03-01 10:00:04"});
    const auto points = curvePoints(page);
    // The first sample makes two vertices.
    const double seconds[] = {0.0, 0.0, 1.0, 2.0, 4.0};
    ASSERT_GE(points.size(), std::size(seconds));
    for (std::size_t i = 0; i < std::size(seconds); ++i)
        EXPECT_NEAR(points[i].x, 60.0 + 300.0 * seconds[i] / 10.0, 0.05) << i;
    for (const char* text : {"2026-03-01 10:00:00", "10:00:04", "10:00:05"})
        EXPECT_TRUE(page.hasText(text)) << text << " in " << page.allTexts();
}

TEST_F(Options, filesOfDatesAreCountedFromOneDay)
{
    folder().write("first.csv", "time,v\n2026-03-01 12:00,1\n2026-03-02 12:00,2\n");
    folder().write("second.csv", "time,w\n2026-03-02 00:00,1\n2026-03-03 00:00,2\n");
    folder().write("days.csv", "time,u\n2026-03-01,1\n2026-03-03,2\n");
    const std::vector<std::string> range{"--x-range", "2026-03-01:2026-03-03", "--y-range", "0:5"};
    for (const char* other : {"second.csv", "days.csv"}) {
        for (const bool isFirst : {true, false}) {
            std::vector<std::string> arguments{isFirst ? other : "first.csv", isFirst ? "first.csv" : other, "--margin", "20,60,30,20", "--size", "380x250"};
            arguments.insert(arguments.end(), range.begin(), range.end());
            const DrawnPage page = drawn(arguments);
            const auto points = curvePoints(page, isFirst ? "#d55e00" : "#0072b2");
            ASSERT_FALSE(points.empty());
            EXPECT_NEAR(points[0].x, 60.0 + 300.0 * 0.25, 1e-3) << other << isFirst;
            const auto others = curvePoints(page, isFirst ? "#0072b2" : "#d55e00");
            ASSERT_FALSE(others.empty());
            EXPECT_NEAR(others[0].x, 60.0 + 300.0 * (other == std::string("days.csv") ? 0.0 : 0.5), 1e-3) << other << isFirst;
        }
    }
}

TEST_F(Options, titles)
{
    const DrawnPage named = drawn({"table.csv", "--y", "a", "--title", "A <title> & \"more\"", "--x-label", "Time (s)", "--y-label", "L\xC3\xA4nge (m)"});
    ASSERT_TRUE(named.hasText("A <title> & \"more\"")) << named.allTexts();
    EXPECT_TRUE(named.textNamed("A <title> & \"more\"")->isBold);
    EXPECT_EQ(named.title, "A <title> & \"more\"");
    EXPECT_EQ(named.description, "tolvgraph " TOLV_VERSION);
    ASSERT_TRUE(named.hasText("Time (s)"));
    ASSERT_TRUE(named.hasText("L\xC3\xA4nge (m)"));
    EXPECT_EQ(named.textNamed("Time (s)")->angle, 0.0);
    EXPECT_EQ(named.textNamed("L\xC3\xA4nge (m)")->angle, -90.0);
    EXPECT_FALSE(named.hasText("t"));
    EXPECT_FALSE(named.hasText("a"));
}

TEST_F(Options, emptyTitles)
{
    for (const std::vector<std::string>& options : {std::vector<std::string>{"--title", "", "--x-label", "", "--y-label", ""}, {"--title=", "--x-label=", "--y-label="}}) {
        std::vector<std::string> arguments{"table.csv", "--y", "a"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const DrawnPage page = drawn(arguments);
        EXPECT_EQ(page.title, "");
        EXPECT_FALSE(page.hasText("t")) << page.allTexts();
        EXPECT_FALSE(page.hasText("a")) << page.allTexts();
    }
}

TEST_F(Options, valuesThatStartWithAHyphen)
{
    const DrawnPage page = drawn({"table.csv", "--y", "a", "--title", "-draft-", "--x-label", "-", "--y-label=--y--", "--marker", "-.5", "--x-range", "-1:4"});
    for (const char* text : {"-draft-", "-", "--y--", "-0.5"})
        EXPECT_TRUE(page.hasText(text)) << page.allTexts();
}

TEST_F(Options, kindsOfDrawing)
{
    // Callouts with values belong to "curve" only; "dotted" has a dot for each sample.
    const DrawnPage curve = drawn({"table.csv", "--y", "a", "--marker", "1.5"});
    const DrawnPage named = drawn({"table.csv", "--y", "a", "--marker", "1.5", "--draw", "curve"});
    const DrawnPage plain = drawn({"table.csv", "--y", "a", "--marker", "1.5", "--draw", "plain-curve"});
    const DrawnPage dotted = drawn({"table.csv", "--y", "a", "--draw", "dotted"});
    EXPECT_EQ(curve.allTexts(), named.allTexts());
    EXPECT_TRUE(curve.hasText("7.5")) << curve.allTexts();
    const auto colored = [](const DrawnPage& page) {
        std::size_t count = 0;
        for (const DrawnText& text : page.texts)
            count += text.color == "#0072b2" ? 1 : 0;
        return count;
    };
    EXPECT_EQ(colored(curve), 1U);
    EXPECT_EQ(colored(plain), 0U);
    EXPECT_EQ(curvePoints(plain).size(), 6U);
    std::size_t dots = 0;
    for (const DrawnPath& path : dotted.paths)
        dots += path.fill == "#0072b2" ? 1 : 0;
    EXPECT_EQ(dots, 5U);
}

TEST_F(Options, kindsOfMarks)
{
    const DrawnPage crosses = drawnInPlace("table.csv", {"--draw", "x", "--y", "a", "--x-range", "0:4", "--y-range", "0:10"});
    const auto strokes = crosses.strokesOfColor("#0072b2");
    const Point middles[] = {{60, 220}, {135, 20}, {210, 120}, {285, 180}, {360, 220}};
    ASSERT_EQ(strokes.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        const auto points = strokes[i].points();
        ASSERT_EQ(points.size(), 4U);
        EXPECT_EQ(points[0].x, middles[i].x - 4.0);
        EXPECT_EQ(points[1].x, middles[i].x + 4.0);
        EXPECT_EQ((points[0].y + points[1].y) * 0.5, middles[i].y);
    }
    // Lines one point wide from the bottom; zero needs none. Without a range there is room beside the first and the last one, and zero is the bottom.
    const DrawnPage impulses = drawnInPlace("table.csv", {"--draw", "impulse", "--y", "b"});
    std::vector<double> heights;
    for (const DrawnPath& path : impulses.paths) {
        if (path.fill != "#0072b2")
            continue;
        const auto points = path.points();
        ASSERT_EQ(points.size(), 4U);
        const double x = 60.0 + 300.0 * (static_cast<double>(heights.size()) + 4.0 * 6.0 / 400.0) / (4.0 * (1.0 + 2.0 * 6.0 / 400.0));
        EXPECT_EQ(points[0].x, std::rint(x));
        EXPECT_EQ(points[1].x, std::rint(x) + 1.0);
        heights.push_back(points[0].y - points[2].y);
    }
    ASSERT_EQ(heights.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(heights[i], std::rint(200.0 * (5.0 + static_cast<double>(i)) / (9.0 * 1.05)));
}

TEST_F(Options, layoutCanBeTheOnlyOutput)
{
    EXPECT_TRUE(succeededSilently(run({"table.csv", "--layout", "place.json"})));
    EXPECT_TRUE(succeededSilently(run({"table.csv", "--layout", "PLACE.JSON", "-o", "picture.svg"})));
    EXPECT_EQ(run({"missing.csv", "--layout", "place.json"}).status, 1) << "the file is read";
}

TEST_F(Options, dottedTellsOfUnevenSamples)
{
    folder().write("uneven.csv", "t,v\n0,1\n1,2\n5,3\n");
    std::string messages;
    static_cast<void>(drawn({"uneven.csv", "--draw", "dotted"}, &messages));
    EXPECT_EQ(messages, "tolvgraph: --draw dotted spreads the samples evenly, but their x values are not evenly spaced: the x axis does not tell where they are\n");
}

TEST_F(Options, looks)
{
    const DrawnPage page = drawn({"table.csv", "--color", "ff0000,#00Ff00", "--pattern", "dashed,dotted", "--thickness", "2.5,0.25"});
    const auto first = page.strokesOfColor("#ff0000");
    const auto second = page.strokesOfColor("#00ff00");
    ASSERT_EQ(first.size(), 1U);
    ASSERT_EQ(second.size(), 1U);
    EXPECT_EQ(first[0].dashes, "5 2");
    EXPECT_EQ(second[0].dashes, "1 1");
    EXPECT_EQ(first[0].strokeWidth, 2.5);
    EXPECT_EQ(second[0].strokeWidth, 0.25);
}

TEST_F(Options, looksAreUsedInTurn)
{
    const DrawnPage page = drawn({"table.csv", "--x", "index", "--color", "0x112233,445566", "--pattern", "dash-dot", "--thickness", "3"});
    EXPECT_EQ(page.strokesOfColor("#112233").size(), 2U) << "the first and the third series";
    EXPECT_EQ(page.strokesOfColor("#445566").size(), 1U);
    for (const char* color : {"#112233", "#445566"}) {
        for (const DrawnPath& path : page.strokesOfColor(color)) {
            EXPECT_EQ(path.dashes, "5 5 1 5");
            EXPECT_EQ(path.strokeWidth, 3.0);
        }
    }
    const DrawnPage solid = drawn({"table.csv", "--y", "a", "--pattern", "solid"});
    ASSERT_EQ(solid.strokesOfColor("#0072b2").size(), 1U);
    EXPECT_EQ(solid.strokesOfColor("#0072b2")[0].dashes, "");
}

TEST_F(Options, manySeriesAreToldApartByPattern)
{
    std::string header = "t";
    std::string rows[3] = {"0", "1", "2"};
    for (int i = 0; i < 15; ++i) {
        header += ",s" + std::to_string(i);
        for (std::string& row : rows)
            row += "," + std::to_string(i);
    }
    folder().write("many.csv", header + "\n" + rows[0] + "\n" + rows[1] + "\n" + rows[2] + "\n");
    const DrawnPage page = drawn({"many.csv"});
    const auto blue = page.strokesOfColor("#0072b2");
    ASSERT_EQ(blue.size(), 3U);
    EXPECT_EQ(blue[0].dashes, "");
    EXPECT_EQ(blue[1].dashes, "5 2");
    EXPECT_EQ(blue[2].dashes, "5 5 1 5");
}

TEST_F(Options, markers)
{
    const DrawnPage page = drawnInPlace("table.csv", {"--y", "a", "--marker", "0.5", "--marker=2.5", "--y-range", "-5:15"});
    const std::pair<const char*, const char*> badgesAndCallouts[] = {{"0.5", "5"}, {"2.5", "3.5"}};
    for (const auto& [badge, value] : badgesAndCallouts) {
        std::size_t white = 0;
        std::size_t colored = 0;
        for (const DrawnText& text : page.texts) {
            white += text.text == badge && text.color == "#ffffff" ? 1 : 0;
            colored += text.text == value && text.color == "#0072b2" ? 1 : 0;
        }
        EXPECT_EQ(white, 1U) << badge;
        EXPECT_EQ(colored, 1U) << value;
    }
}

TEST_F(Options, markersBesideTheData)
{
    // Within the range but behind the samples: a badge without a value. Outside of the range: nothing.
    const DrawnPage page = drawn({"table.csv", "--y", "a", "--x-range", "0:10", "--marker", "7.25", "--marker", "40"});
    EXPECT_TRUE(page.hasText("7.25")) << page.allTexts();
    EXPECT_FALSE(page.hasText("40")) << page.allTexts();
    for (const DrawnText& text : page.texts)
        EXPECT_NE(text.color, "#0072b2") << text.text;
}

TEST_F(Options, legend)
{
    EXPECT_FALSE(drawn({"table.csv"}).hasText("b"));
    const DrawnPage page = drawn({"table.csv", "--legend", "--pattern", "solid,dashed"});
    ASSERT_TRUE(page.hasText("a"));
    ASSERT_TRUE(page.hasText("b"));
    EXPECT_EQ(page.textNamed("a")->size, 10.0);
    // The piece of line stands left of its name and is drawn as the series is.
    const auto strokes = page.strokesOfColor("#d55e00");
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[1].dashes, "5 2");
    EXPECT_LT(strokes[1].points().back().x, page.textNamed("b")->x);
    EXPECT_NEAR(strokes[1].points().back().y, page.textNamed("b")->y, 8.0);
}

TEST_F(Options, margin)
{
    const DrawnPage page = drawnInPlace("table.csv", {"--y", "a"});
    const Rect frame = frameOfDataArea(page);
    // It stands on the middles of points, half a point inside.
    EXPECT_EQ(frame, (Rect{60.5, 20.5, 299.0, 199.0})) << toString(frame);
    EXPECT_EQ(seriesCount(drawn({"table.csv", "--margin", "0,0,0,0"})), 2U);
}

TEST_F(Options, filesWithOddNames)
{
    const std::string table = folder().read("table.csv");
    folder().write("-x.csv", table);
    folder().write("--size", table);
    folder().write("a b;c's \"d\".csv", table);
    EXPECT_EQ(seriesCount(drawn({"a b;c's \"d\".csv"})), 2U);
    EXPECT_TRUE(succeededSilently(run({"-o", "one.svg", "--", "-x.csv"})));
    EXPECT_TRUE(succeededSilently(run({"--output=-two.svg", "--", "--size"})));
    EXPECT_TRUE(succeededSilently(run({"./-x.csv", "-o", "-three.svg"})));
    EXPECT_TRUE(succeededSilently(run({"-ofour.svg", "table.csv", "--legend"})));
    for (const char* name : {"one.svg", "-two.svg", "-three.svg", "four.svg"})
        EXPECT_TRUE(std::filesystem::exists(folder().path(name))) << name;
}

} // namespace

} // namespace TOLVGraphing::testing_support

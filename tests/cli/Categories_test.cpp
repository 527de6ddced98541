// Axes of categories: whose texts they have, where bars, lines and marks stand, gaps, markers, and what happens with many or few rows.

#include "CommandLine.h"
#include "MeasurementFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

namespace TOLVGraphing::testing_support {

namespace {

/// A data area at 60...360 by 20...220 points in a picture of 400x250 points.
const std::vector<std::string> kKnownPlace{"--size", "400x250", "--margin", "20,60,30,40"};

const char* const kFirstColor = "#0072b2";
const char* const kSecondColor = "#d55e00";

/// The rectangles around the paths that are filled in a colour without a stroke: bars and impulses, from left to right as they were drawn.
std::vector<Rect> barsOfColor(const DrawnPage& page, const std::string& color = kFirstColor)
{
    std::vector<Rect> bars;
    for (const DrawnPath& path : page.paths) {
        if (path.fill != color || path.isStroked())
            continue;
        const auto points = path.points();
        const auto [left, right] = std::minmax_element(points.begin(), points.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
        const auto [top, bottom] = std::minmax_element(points.begin(), points.end(), [](const Point& a, const Point& b) { return a.y < b.y; });
        bars.push_back({left->x, top->y, right->x - left->x, bottom->y - top->y});
    }
    return bars;
}

/// The texts below the data area, in the size of tick labels, from left to right; the axis title is larger and a legend smaller.
std::vector<std::string> categoryLabels(const DrawnPage& page)
{
    const Rect frame = frameOfDataArea(page);
    std::vector<DrawnText> labels;
    for (const DrawnText& text : page.texts) {
        if (text.y > frame.maxY() && text.x + text.length * 0.5 > frame.x() && text.size == 12.0 && text.color == "#000000")
            labels.push_back(text);
    }
    std::stable_sort(labels.begin(), labels.end(), [](const DrawnText& a, const DrawnText& b) { return a.x < b.x; });
    std::vector<std::string> texts;
    for (const DrawnText& label : labels)
        texts.push_back(label.text);
    return texts;
}

/// The texts of badges, which are white.
std::vector<std::string> badges(const DrawnPage& page)
{
    std::vector<std::string> texts;
    for (const DrawnText& text : page.texts) {
        if (text.color == "#ffffff")
            texts.push_back(text.text);
    }
    return texts;
}

/// The middle of a slot of the axis in the data area of the known place: slots are 20 points apart and from the ends.
double slotMiddle(std::size_t index, std::size_t count)
{
    return 60.0 + 10.0 + (static_cast<double>(index) + 0.5) * (300.0 - 20.0) / static_cast<double>(count);
}

using Texts = std::vector<std::string>;

class Categories : public CommandLineTest {
protected:
    Categories()
    {
        folder().write("countries.csv", "country,population,area\nChad,10,1000\nPeru,,500\nOman,5,250\n\"Trinidad, Tobago\",20,2000\n");
        folder().write("years.csv", "year,a,b\n2010,1,4\n2011,3,2\n2012,2,1\n");
    }

    DrawnPage drawnInPlace(const std::string& file, std::vector<std::string> options, std::string* messages = nullptr) const
    {
        options.insert(options.begin(), file);
        options.insert(options.end(), kKnownPlace.begin(), kKnownPlace.end());
        return drawn(options, messages);
    }

    /// The texts along the axis, with enough room for all of them.
    Texts labels(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.end(), {"--size", "2000x400"});
        std::string messages;
        return categoryLabels(drawn(arguments, &messages));
    }
};

TEST_F(Categories, areNamedByTheXColumnAsItIsWritten)
{
    folder().write("odd.csv", "n,v\n007,1\n2.50,2\n+3,3\n");
    folder().write("dates.csv", "date,v\n2012-03-01,1\n2012-03-02 12:00,4\n2012-03-05,2\n");
    folder().write("latin.csv", "ort,v\nZ\xFCrich,1\nGen\xE8ve,2\n");
    const struct {
        const char* title;
        std::vector<std::string> arguments;
        Texts expected;
    } cases[] = {
        {"words", {"countries.csv", "--draw", "bar"}, {"Chad", "Peru", "Oman", "Trinidad, Tobago"}},
        {"numbers", {"years.csv", "--draw", "bar"}, {"2010", "2011", "2012"}},
        {"numbers as written", {"odd.csv", "--draw", "bar"}, {"007", "2.50", "+3"}},
        {"dates as written", {"dates.csv", "--draw", "line"}, {"2012-03-01", "2012-03-02 12:00", "2012-03-05"}},
        {"Latin-1", {"latin.csv", "--draw", "bar"}, {"Z\xC3\xBCrich", "Gen\xC3\xA8ve"}},
        {"x by name", {"years.csv", "--draw", "bar", "--x", "a"}, {"1", "3", "2"}},
        {"x by number", {"countries.csv", "--draw", "bar", "--x", "3"}, {"1000", "500", "250", "2000"}},
        {"row numbers", {"years.csv", "--draw", "bar", "--x", "index"}, {"0", "1", "2"}},
        {"categories by name", {"countries.csv", "--draw", "bar", "--x", "area", "--categories", "country"}, {"Chad", "Peru", "Oman", "Trinidad, Tobago"}},
        {"categories by number", {"countries.csv", "--draw", "bar", "--x", "area", "--categories", "1"}, {"Chad", "Peru", "Oman", "Trinidad, Tobago"}},
        {"categories of numbers", {"countries.csv", "--draw", "bar", "--categories", "area"}, {"1000", "500", "250", "2000"}},
        {"categories of row numbers", {"countries.csv", "--draw", "bar", "--categories", "index"}, {"0", "1", "2", "3"}},
    };
    for (const auto& one : cases)
        EXPECT_EQ(labels(one.arguments), one.expected) << one.title;
}

TEST_F(Categories, ofFilesWithoutTextsAreNumbers)
{
    folder().write("one.npy", npyFile("<f4", "(3,)", elementBytes<float>({5, 6, 7})));
    folder().write("two.npy", npyFile("<f8", "(3, 2)", elementBytes<double>({0.5, 6, 1.25, 7, 1000, 8})));
    writeSound(folder().path("sound.wav"), 0x010002, 4, 1, {0.25F, 0.5F, -0.5F});
    EXPECT_EQ(labels({"one.npy", "--draw", "bar"}), (Texts{"0", "1", "2"}));
    EXPECT_EQ(labels({"two.npy", "--draw", "bar"}), (Texts{"0.5", "1.25", "1000"}));
    EXPECT_EQ(labels({"sound.wav", "--draw", "line"}), (Texts{"0", "0.25", "0.5"}));
}

TEST_F(Categories, comeFromStandardInputToo)
{
    ProcessSurroundings surroundings;
    surroundings.input = folder().read("years.csv");
    EXPECT_TRUE(succeededSilently(run({"-", "--draw", "bar", "-o", "p.svg"}, surroundings)));
    EXPECT_EQ(categoryLabels(DrawnPage::fromSVG(folder().read("p.svg"))), (Texts{"2010", "2011", "2012"}));
}

TEST_F(Categories, titlesAreThoseOfTheTexts)
{
    EXPECT_TRUE(drawn({"years.csv", "--draw", "bar"}).hasText("year"));
    EXPECT_TRUE(drawn({"years.csv", "--draw", "bar", "--categories", "index"}).hasText("sample"));
    EXPECT_TRUE(drawn({"years.csv", "--draw", "bar", "--categories", "b"}).hasText("b"));
    EXPECT_FALSE(drawn({"years.csv", "--draw", "bar", "--x-label", ""}).hasText("year"));
}

TEST_F(Categories, axesAndDrawingsImplyOneAnother)
{
    const DrawnPage bars = drawnInPlace("years.csv", {"--draw", "bar"});
    const DrawnPage sameBars = drawnInPlace("years.csv", {"--x-axis", "bar"});
    const DrawnPage lines = drawnInPlace("years.csv", {"--draw", "line"});
    const DrawnPage sameLines = drawnInPlace("years.csv", {"--x-axis", "line"});
    EXPECT_EQ(barsOfColor(bars), barsOfColor(sameBars));
    EXPECT_EQ(barsOfColor(bars).size(), 3U);
    EXPECT_EQ(lines.allTexts(), sameLines.allTexts());
    EXPECT_EQ(lines.strokesOfColor(kFirstColor).size(), sameLines.strokesOfColor(kFirstColor).size());
    EXPECT_TRUE(lines.hasText("2012") && sameLines.hasText("2012"));
}

TEST_F(Categories, barsStandOnZero)
{
    const DrawnPage page = drawnInPlace("years.csv", {"--draw", "bar"});
    const double values[2][3] = {{1, 3, 2}, {4, 2, 1}};
    for (std::size_t series = 0; series < 2; ++series) {
        const auto bars = barsOfColor(page, series == 0 ? kFirstColor : kSecondColor);
        ASSERT_EQ(bars.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(bars[i].maxY(), 220.0);
            // The largest value, 4, has a twentieth more above it.
            EXPECT_NEAR(bars[i].height(), 200.0 * values[series][i] / 4.2, 1e-3);
            // Groups share the data area less 1 % of the picture on either side, and keep that much from their neighbours' edges; each bar has 8 % of its place free on either side.
            const double group = 64.0 + static_cast<double>(i) * 292.0 / 3.0 + 4.0;
            const double place = (292.0 / 3.0 - 8.0) / 2.0;
            EXPECT_NEAR(bars[i].x(), group + place * (static_cast<double>(series) + 0.08), 1e-3);
            EXPECT_NEAR(bars[i].width(), place * 0.84, 1e-3);
        }
    }
}

TEST_F(Categories, rangesOfWhatStandsOnTheBottom)
{
    folder().write("negative.csv", "n,v\na,-2\nb,2\nc,1\n");
    folder().write("zeros.csv", "n,v\na,0\nb,0\n");
    folder().write("high.csv", "n,v\na,100\nb,101\n");
    const struct {
        const char* file;
        const char* drawing;
        std::vector<std::string> options;
        double from;
        double to;
    } cases[] = {
        {"high.csv", "bar", {}, 0, 101 * 1.05},
        {"high.csv", "impulse", {"--x-axis", "bar"}, 0, 101 * 1.05},
        {"high.csv", "impulse", {"--x", "index"}, 0, 101 * 1.05},
        {"high.csv", "bar", {"--y-range", "50:150"}, 50, 150},
        {"high.csv", "bar", {"--y-range", ":200"}, 0, 200},
        {"negative.csv", "bar", {}, -2.2, 2.2},
        {"negative.csv", "impulse", {"--x-axis", "line"}, -2.2, 2.2},
    };
    for (const auto& one : cases) {
        std::vector<std::string> options{"--draw", one.drawing};
        options.insert(options.end(), one.options.begin(), one.options.end());
        const auto bars = barsOfColor(drawnInPlace(one.file, options));
        const bool isHigh = std::string(one.file) == "high.csv";
        ASSERT_EQ(bars.size(), isHigh ? 2U : 3U) << one.file;
        const double height = 200.0 * ((isHigh ? 101.0 : 2.0) - one.from) / (one.to - one.from);
        // Impulses end on whole points.
        EXPECT_NEAR(bars[1].height(), std::string(one.drawing) == "bar" ? height : std::rint(height), 1e-3) << one.file << " " << one.drawing;
        EXPECT_EQ(bars[1].maxY(), 220.0);
    }
    const DrawnPage zeros = drawnInPlace("zeros.csv", {"--draw", "bar"});
    EXPECT_TRUE(zeros.hasText("0") && zeros.hasText("1")) << zeros.allTexts();
}

TEST_F(Categories, gapsStayEmptyAndRowsAligned)
{
    std::string messages;
    const DrawnPage page = drawnInPlace("countries.csv", {"--draw", "bar"}, &messages);
    EXPECT_EQ(messages, "tolvgraph: countries.csv: population: 1 row without a number is left empty\n");
    const auto first = barsOfColor(page, kFirstColor);
    const auto second = barsOfColor(page, kSecondColor);
    ASSERT_EQ(first.size(), 3U);
    ASSERT_EQ(second.size(), 4U);
    const double group = 292.0 / 4.0;
    EXPECT_NEAR(first[1].x() - first[0].x(), 2.0 * group, 1e-3) << "nothing stands in the second group";
    EXPECT_NEAR(first[2].x() - first[1].x(), group, 1e-3);
    EXPECT_NEAR(second[2].x() - first[1].x(), second[0].x() - first[0].x(), 1e-3) << "both series' bars of the third row are neighbours";
}

TEST_F(Categories, theFirstRowsMayBeGaps)
{
    folder().write("late.csv", "name,v\nA,\nB,n/a\nC,3\n");
    std::string messages;
    const DrawnPage page = drawnInPlace("late.csv", {"--draw", "bar"}, &messages);
    EXPECT_EQ(messages, "tolvgraph: late.csv: v: 2 rows without a number are left empty\n");
    EXPECT_EQ(categoryLabels(page), (Texts{"A", "B", "C"}));
    const auto bars = barsOfColor(page);
    ASSERT_EQ(bars.size(), 1U);
    EXPECT_GT(bars[0].x(), 60.0 + 300.0 * 2.0 / 3.0);
}

TEST_F(Categories, linesHaveADotAndAValueAtEachRow)
{
    std::string messages;
    const DrawnPage page = drawnInPlace("countries.csv", {"--draw", "line", "--y", "population"}, &messages);
    EXPECT_EQ(messages, "tolvgraph: countries.csv: population: 1 row without a number is left empty\n");
    std::vector<Point> line;
    for (const DrawnPath& path : page.strokesOfColor(kFirstColor)) {
        if (path.data.find_first_of("CZ") == std::string::npos)
            line = path.points();
    }
    // Half a point inside the frame, and the third row is where it is without a second one.
    const std::size_t rows[] = {0, 2, 3};
    const double values[] = {10, 5, 20};
    ASSERT_EQ(line.size(), 3U);
    // A callout of 26 points fits above the highest value.
    const double span = 15.0;
    const double from = 5.0 - span * 0.05;
    const double to = 20.0 + span * 26.0 / 250.0;
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(line[i].x, 60.5 + 10.0 + (static_cast<double>(rows[i]) + 0.5) * (299.0 - 20.0) / 4.0, 1e-3);
        EXPECT_NEAR(line[i].y, 220.0 - 200.0 * (values[i] - from) / (to - from), 1e-3);
    }
    std::size_t callouts = 0;
    for (const DrawnText& text : page.texts)
        callouts += text.size == 11.0 && (text.text == "10" || text.text == "5" || text.text == "20") ? 1 : 0;
    EXPECT_EQ(callouts, 3U) << page.allTexts();
    for (const DrawnText& text : page.texts)
        EXPECT_TRUE(text.size != 11.0 || text.capitalBox().y() > 20.0) << text.text << " is inside of the data area";
}

TEST_F(Categories, marksStandAtTheirSlots)
{
    for (const char* axis : {"bar", "line"}) {
        const DrawnPage crosses = drawnInPlace("years.csv", {"--x-axis", axis, "--draw", "x", "--y", "a"});
        const auto strokes = crosses.strokesOfColor(kFirstColor);
        ASSERT_EQ(strokes.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ((strokes[i].points()[0].x + strokes[i].points()[1].x) * 0.5, std::rint(slotMiddle(i, 3)));
        const auto impulses = barsOfColor(drawnInPlace("years.csv", {"--x-axis", axis, "--draw", "impulse", "--y", "a"}));
        ASSERT_EQ(impulses.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(impulses[i].x(), std::rint(slotMiddle(i, 3)));
            EXPECT_EQ(impulses[i].width(), 1.0);
        }
    }
}

TEST_F(Categories, areThinnedWhereTheyWouldCollide)
{
    std::string content = "name,v\n";
    for (int i = 0; i < 200; ++i)
        content += "category " + std::to_string(i) + "," + std::to_string(i % 7 + 1) + "\n";
    folder().write("many.csv", content);
    const DrawnPage page = drawnInPlace("many.csv", {"--draw", "bar"});
    EXPECT_EQ(barsOfColor(page).size(), 200U);
    const Texts texts = categoryLabels(page);
    ASSERT_GE(texts.size(), 3U);
    EXPECT_LT(texts.size(), 10U);
    EXPECT_EQ(texts.front(), "category 0") << "the earlier one stays";
    std::vector<DrawnText> shown;
    for (const DrawnText& text : page.texts) {
        if (text.text.starts_with("category "))
            shown.push_back(text);
    }
    for (std::size_t i = 1; i < shown.size(); ++i)
        EXPECT_GE(shown[i].x, shown[i - 1].x + shown[i - 1].length + 2.0);
}

TEST_F(Categories, oneRowIsEnough)
{
    folder().write("row.csv", "name,v\nonly,5\n");
    const DrawnPage bar = drawnInPlace("row.csv", {"--draw", "bar"});
    EXPECT_EQ(barsOfColor(bar).size(), 1U);
    EXPECT_EQ(categoryLabels(bar), (Texts{"only"}));
    EXPECT_NEAR(bar.textNamed("only")->x + bar.textNamed("only")->length * 0.5, 210.0, 0.1);
    const DrawnPage line = drawnInPlace("row.csv", {"--draw", "line"});
    EXPECT_EQ(categoryLabels(line), (Texts{"only"}));
    EXPECT_TRUE(line.hasText("5")) << line.allTexts();
}

TEST_F(Categories, areThoseOfTheFileWithTheLongestSeries)
{
    folder().write("short.csv", "name,v\nA,1\nB,2\n");
    folder().write("long.csv", "name,v\nP,1\nQ,2\nR,3\n");
    folder().write("same.csv", "name,v\nX,1\nY,2\nZ,3\n");
    EXPECT_EQ(labels({"short.csv", "long.csv", "same.csv", "--draw", "bar"}), (Texts{"P", "Q", "R"}));
    EXPECT_EQ(labels({"same.csv", "short.csv", "long.csv", "--draw", "bar"}), (Texts{"X", "Y", "Z"}));
    const DrawnPage page = drawn({"short.csv", "long.csv", "--draw", "bar", "--legend"});
    EXPECT_EQ(barsOfColor(page, kFirstColor).size(), 2U);
    EXPECT_EQ(barsOfColor(page, kSecondColor).size(), 3U);
    EXPECT_TRUE(page.hasText("short.csv") && page.hasText("long.csv")) << page.allTexts();
}

TEST_F(Categories, legendShowsTheColoursOfBars)
{
    // Bars have no line that could be dashed.
    const DrawnPage page = drawn({"years.csv", "--draw", "bar", "--legend", "--color", "112233,445566", "--pattern", "solid,dashed"});
    ASSERT_EQ(page.strokesOfColor("#112233").size(), 1U);
    ASSERT_EQ(page.strokesOfColor("#445566").size(), 1U);
    EXPECT_EQ(page.strokesOfColor("#445566")[0].dashes, "");
    EXPECT_EQ(page.strokesOfColor("#445566")[0].strokeWidth, 6.0);
    EXPECT_EQ(barsOfColor(page, "#112233").size(), 3U);
    const DrawnPage lines = drawn({"years.csv", "--draw", "impulse", "--x-axis", "bar", "--legend", "--color", "112233,445566", "--pattern", "solid,dashed"});
    ASSERT_EQ(lines.strokesOfColor("#445566").size(), 1U);
    EXPECT_EQ(lines.strokesOfColor("#445566")[0].dashes, "5 2");
}

TEST_F(Categories, labelsOfUnevenDistancesAreLeftOut)
{
    folder().write("uneven.csv", "city,v\nLund,12\nYstad,25\n");
    const DrawnPage uneven = drawn({"uneven.csv", "--draw", "bar", "--size", "400x260"});
    EXPECT_TRUE(uneven.hasText("10") && uneven.hasText("20")) << uneven.allTexts();
    EXPECT_FALSE(uneven.hasText("3") || uneven.hasText("13")) << uneven.allTexts();
    // With room for every second one they are even, and stay.
    const DrawnPage even = drawn({"uneven.csv", "--draw", "bar", "--size", "400x400"});
    EXPECT_TRUE(even.hasText("2") && even.hasText("14")) << even.allTexts();
}

TEST_F(Categories, areMarkedByTextOrAbscissa)
{
    folder().write("descending.csv", "year,v\n2012,1\n2011,2\n2010,3\n");
    folder().write("dates.csv", "date,v\n2012-03-01,1\n2012-03-02,4\n2012-03-05,2\n");
    const struct {
        const char* file;
        const char* marker;
        Texts badges;
        std::size_t slot;
        std::size_t count;
    } cases[] = {
        {"countries.csv", "Oman", {"Oman"}, 2, 4},
        {"countries.csv", "Trinidad, Tobago", {"Trinidad, Tobago"}, 3, 4},
        {"countries.csv", "1", {"Peru"}, 1, 4}, // the row number
        {"countries.csv", "1.2", {"Peru"}, 1, 4},
        {"years.csv", "2011", {"2011"}, 1, 3},
        {"descending.csv", "2010", {"2010"}, 2, 3}, // what can be read goes before the row number
        {"descending.csv", "1", {"2011"}, 1, 3},
        {"dates.csv", "2012-03-05", {"2012-03-05"}, 2, 3},
        {"dates.csv", "2012-03-04", {"2012-03-05"}, 2, 3},
        {"years.csv", "2013", {}, 0, 3},
        {"countries.csv", "-1", {}, 0, 4},
    };
    for (const auto& one : cases) {
        std::string messages;
        const DrawnPage page = drawnInPlace(one.file, {"--draw", "bar", std::string("--marker=") + one.marker}, &messages);
        EXPECT_EQ(badges(page), one.badges) << one.file << " " << one.marker;
        for (const DrawnText& text : page.texts) {
            const bool isBadge = text.color == "#ffffff";
            EXPECT_TRUE(!isBadge || std::abs(text.x + text.length * 0.5 - slotMiddle(one.slot, one.count)) < 0.5) << one.marker << " at " << text.x;
        }
    }
}

TEST_F(Categories, rangesChooseAmongThem)
{
    EXPECT_EQ(labels({"years.csv", "--draw", "bar", "--x-range", "2011:2012"}), (Texts{"2011", "2012"}));
    EXPECT_EQ(labels({"countries.csv", "--draw", "line", "--x-range", ":1"}), (Texts{"Chad", "Peru"}));
    EXPECT_EQ(barsOfColor(drawn({"years.csv", "--draw", "bar", "--x-range", "2010.5:2012"})).size(), 2U);
    folder().write("early.csv", "year,v\n2000,1\n2010,2\n");
    for (const char* range : {"3000:4000", "0:2009", "2010.2:2010.8"}) {
        const std::string message = std::string("tolvgraph: --x-range: found '") + range + "', expected a range with categories of every series\n";
        EXPECT_TRUE(endedWith(run({"years.csv", "--draw", "bar", "--x-range", range, "-o", "p.svg"}), 2, message));
    }
    EXPECT_EQ(run({"years.csv", "early.csv", "--draw", "bar", "--x-range", "2011:2012", "-o", "p.svg"}).status, 2) << "early.csv has none";
    EXPECT_EQ(folder().read("p.svg"), "");
    EXPECT_EQ(labels({"years.csv", "early.csv", "--draw", "bar", "--x-range", "2010:2012"}), (Texts{"2010", "2011", "2012"}));
}

TEST_F(Categories, onALogarithmicAxis)
{
    folder().write("zero.csv", "n,v\na,0\nb,10\nc,1000\n");
    std::string messages;
    const DrawnPage page = drawnInPlace("zero.csv", {"--draw", "bar", "--y-axis", "log"}, &messages);
    EXPECT_EQ(messages, "tolvgraph: zero.csv: --y-axis log: 1 of 3 samples of 'v' is not positive and cannot be shown\n");
    const auto bars = barsOfColor(page);
    ASSERT_GE(bars.size(), 2U);
    // Two decades, with a twentieth more on either side.
    EXPECT_NEAR(bars[bars.size() - 2].height(), 200.0 * 0.05 / 1.1, 1e-3);
    EXPECT_NEAR(bars[bars.size() - 1].height(), 200.0 * 1.05 / 1.1, 1e-3);
}

TEST_F(Categories, needColumnsAndNumbers)
{
    folder().write("words.csv", "n,w,v\na,x,1\nb,y,2\n");
    folder().write("empty.csv", "n,v,u\na,,1\nb,,2\n");
    EXPECT_TRUE(endedWith(run({"countries.csv", "-o", "p.svg", "--draw", "bar", "--categories", "name"}), 1,
        "tolvgraph: countries.csv: no column 'name', expected a number from 1 to 3 or one of 'country', 'population', 'area'\n"));
    EXPECT_TRUE(endedWith(run({"countries.csv", "-o", "p.svg", "--draw", "bar", "--categories", "4"}), 1,
        "tolvgraph: countries.csv: no column '4', expected a number from 1 to 3 or one of 'country', 'population', 'area'\n"));
    EXPECT_TRUE(endedWith(run({"words.csv", "-o", "p.svg", "--draw", "bar", "--y", "w"}), 1, "tolvgraph: words.csv: no number in column 'w', expected a column of numbers\n"));
    EXPECT_TRUE(endedWith(run({"empty.csv", "-o", "p.svg", "--draw", "bar", "--y", "v"}), 1, "tolvgraph: empty.csv: no number in column 'v', expected a column of numbers\n"));
    EXPECT_TRUE(endedWith(run({"words.csv", "-o", "p.svg", "--draw", "bar", "--x", "v"}), 1,
        "tolvgraph: words.csv: no column of numbers to draw among 'n', 'w', 'v', expected at least one besides x\n"));
    EXPECT_EQ(folder().read("p.svg"), "");
}

TEST_F(Categories, areAtMostTwentyThousand)
{
    writeSound(folder().path("long.wav"), 0x010002, 8000, 1, std::vector<float>(20'001, 0.5F));
    EXPECT_TRUE(endedWith(run({"long.wav", "-o", "p.svg", "--draw", "bar"}), 1, "tolvgraph: long.wav: 20001 rows to draw as categories, expected at most 20000\n"));
}

} // namespace

} // namespace TOLVGraphing::testing_support

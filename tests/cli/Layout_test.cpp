// Room for every label: nothing is cut off at the edges of a picture, and no two labels lie on one another.

#include "../desktop/PageWords.h"
#include "CommandLine.h"

#include <ostream>

namespace TOLVGraphing::testing_support {

namespace {

struct LayoutCase {
    const char* name;
    const char* content;
    std::vector<std::string> options;
    /// A text that has to be there, so that the case shows what it is about.
    const char* shown;
};

std::ostream& operator<<(std::ostream& stream, const LayoutCase& layoutCase)
{
    return stream << layoutCase.name;
}

constexpr const char* kMillions = "t,v\n0,0\n1,1000000\n2,500000\n3,900000\n";
constexpr const char* kBillions = "t,v\n0,-4000000000\n1,4000000000\n2,0\n3,0\n";
constexpr const char* kTiny = "t,v\n0,0\n1,0.0004\n2,0.0001\n3,0.0002\n";
constexpr const char* kTinyX = "t,v\n-0.0006,0\n0,1\n0.0002,0.5\n0.0006,0.25\n";
constexpr const char* kLargeX = "t,v\n1000000,0\n1500000,1\n2500000,3\n3000000,2\n";
constexpr const char* kYears = "date,v\n1958-03-01,315\n1990-01-01,354\n2010-01-01,390\n2020-03-31,416\n";
constexpr const char* kDays = "date,v\n2012-01-01,1\n2012-01-02,3\n2012-01-03,2\n2012-01-04,2\n";
constexpr const char* kHours = "date,v\n2012-01-01T00:00,1\n2012-01-01T08:00,3\n2012-01-01T16:00,2\n2012-01-02T00:00,2\n";
constexpr const char* kTwo = "t,first,second\n0,1,2\n1,2,3\n2,1,1\n3,2,2\n";

constexpr const char* kLongNames = "t,a name of a series so long that no row of a legend in a picture of usual size can hold it as a whole,b\n0,1,2\n1,2,3\n2,1,1\n3,2,2\n";

constexpr const char* kNames = "name,first,second\nquartz,1,2\ngypsum,2,3\na mineral with a rather long name,1,1\nmica,2,2\n";
constexpr const char* kLongName = "name,v\none category with a name that is wider than its slot,1\n";
constexpr const char* kAudio = "f,dB\n20,-3\n200,0\n2000,1\n20000,-6\n";
constexpr const char* kDecades = "f,v\n1e-12,1e12\n1,1\n1e12,1e-12\n";

const LayoutCase kCases[] = {
    {"millions", kMillions, {}, "1,000,000"},
    {"millionsWithTitle", kMillions, {"--title", "gypsum and quartz", "--y-label", "Pressure (Pa)"}, "gypsum and quartz"},
    {"billions", kBillions, {},
        "-4\xC3\x97"
        "10\xE2\x81\xB9"},
    {"billionsInDecimalStyle", kBillions, {"--y-format", "decimal"}, "-4,000,000,000"},
    {"billionsWithPrefixes", kBillions, {"--y-format", "si"}, "-4G"},
    {"tiny", kTiny, {}, "0.0001"},
    {"tinyX", kTinyX, {}, "-0.0006"},
    {"largeX", kLargeX, {}, "1,000,000"},
    {"largeXWithoutY", kLargeX, {"--y-label", ""}, "3,000,000"},
    {"largeXWithBadgeAtTheEnd", kLargeX, {"--marker", "3000000", "--marker", "1000000"}, "3,000,000"},
    {"years", kYears, {}, "1970"},
    {"daysAtTheEnds", kDays, {}, "2012-01-01"},
    {"hoursAtTheEnds", kHours, {}, "2012-01-02"},
    {"hoursWithBadges", kHours, {"--marker", "2012-01-01T03:30", "--marker", "2012-01-02"}, "03:30"},
    {"legend", kTwo, {"--legend"}, "second"},
    {"legendAndTitles", kTwo, {"--legend", "--title", "Two series", "--x-label", "gy (s)", "--y-label", "gy (V)"}, "second"},
    {"narrow", kMillions, {"--size", "160x400"}, "1,000,000"},
    {"low", kMillions, {"--size", "640x120", "--title", "low"}, "low"},
    {"small", kTwo, {"--size", "150x110", "--legend"}, "first"},
    {"large", kMillions, {"--size", "2000x1400", "--title", "large"}, "1,000,000"},
    {"longNames", kLongNames, {"--legend", "--y-label", "", "--size", "300x200"}, "b"},
    {"bars", kNames, {"--draw", "bar", "--legend"}, "gypsum"},
    {"barsInLittleRoom", kNames, {"--draw", "bar", "--legend", "--size", "200x150"}, "quartz"},
    {"barsWithLongBadge", kNames, {"--draw", "bar", "--marker", "a mineral with a rather long name", "--size", "300x200"}, "a mineral with a rather long name"},
    {"barsOfOneLongName", kLongName, {"--draw", "bar"}, "one category with a name that is wider than its slot"},
    {"lines", kNames, {"--draw", "line", "--legend", "--title", "Minerals"}, "quartz"},
    {"linesOfMillions", kMillions, {"--draw", "line"}, "1,000,000"},
    {"audio", kAudio, {"--x-axis", "log", "--x-format", "si", "--x-range", "20:20000"}, "20k"},
    {"audioInFull", kAudio, {"--x-axis", "log", "--x-format", "adaptive", "--size", "400x300"}, "10,000"},
    {"audioScientific", kAudio, {"--x-axis", "log", "--x-format", "scientific"},
        "1\xC3\x97"
        "10\xC2\xB2"},
    {"manyDecades", kDecades, {"--x-axis", "log", "--y-axis", "log"},
        "1\xC3\x97"
        "10\xE2\x81\xBB\xC2\xB9\xC2\xB2"},
    {"crosses", kTwo, {"--draw", "x", "--legend"}, "first"},
    {"impulses", kTiny, {"--draw", "impulse"}, "0.0001"},
    {"longLegend", kTwo, {"--legend", "--size", "120x200"}, "second"},
};

class Layout : public CommandLineTest, public testing::WithParamInterface<LayoutCase> {
protected:
    DrawnPage drawnCase() const
    {
        folder().write("table.csv", GetParam().content);
        std::vector<std::string> arguments{"table.csv"};
        arguments.insert(arguments.end(), GetParam().options.begin(), GetParam().options.end());
        return drawn(arguments);
    }
};

std::string described(const DrawnText& text)
{
    return "'" + text.text + "' at " + toString(text.capitalBox());
}

/// Letters that reach below the baseline take a fifth of the font's size there; digits, signs and commas at the edges of a page do not matter that much.
Rect boxWithDescender(const DrawnText& text)
{
    constexpr double kDescender = 0.21;
    Rect box = text.capitalBox();
    if (text.text.find_first_of("gjpqy(") == std::string::npos)
        return box;
    return text.angle == 0.0 ? Rect{box.x(), box.y(), box.width(), box.height() + kDescender * text.size}
                             : Rect{box.x(), box.y(), box.width() + kDescender * text.size, box.height()};
}

TEST_P(Layout, keepsEveryLabelOnThePage)
{
    const DrawnPage page = drawnCase();
    EXPECT_TRUE(page.hasText(GetParam().shown)) << page.allTexts();
    for (const DrawnText& text : page.texts) {
        const Rect box = boxWithDescender(text);
        EXPECT_TRUE(box.x() >= 0.0 && box.y() >= 0.0 && box.maxX() <= page.size.width && box.maxY() <= page.size.height) << described(text);
    }
}

TEST_P(Layout, keepsLabelsApart)
{
    const DrawnPage page = drawnCase();
    for (std::size_t i = 0; i < page.texts.size(); ++i) {
        for (std::size_t j = i + 1; j < page.texts.size(); ++j) {
            // A marker's badge covers the tick label below it.
            if (page.texts[i].color == "#ffffff" || page.texts[j].color == "#ffffff" || page.texts[j].color == "#0072b2")
                continue;
            const Rect one = boxWithDescender(page.texts[i]);
            const Rect other = boxWithDescender(page.texts[j]);
            const bool overlaps = one.x() < other.maxX() && other.x() < one.maxX() && one.y() < other.maxY() && other.y() < one.maxY();
            EXPECT_FALSE(overlaps) << described(page.texts[i]) << " and " << described(page.texts[j]);
        }
    }
}

TEST_P(Layout, keepsTickLabelsOutOfTheDataArea)
{
    const DrawnPage page = drawnCase();
    const Rect frame = frameOfDataArea(page);
    for (const DrawnText& text : page.texts) {
        const Rect box = text.capitalBox();
        const bool isTickLabel = text.size == 12.0 && !text.isBold && text.color == "#000000";
        EXPECT_TRUE(!isTickLabel || box.maxX() < frame.x() || box.y() > frame.maxY()) << described(text) << " beside " << toString(frame);
    }
}

TEST_P(Layout, isTheSameInPDF)
{
    TOLV_REQUIRE_PROGRAM("pdftotext");
    const DrawnPage page = drawnCase();
    std::vector<std::string> arguments{"table.csv", "-o", "picture.pdf"};
    arguments.insert(arguments.end(), GetParam().options.begin(), GetParam().options.end());
    EXPECT_TRUE(succeededSilently(run(arguments)));
    constexpr double kTolerance = 0.6;
    EXPECT_TRUE(standWhereDrawn(wordsOfPDF(folder().path("picture.pdf")), page, kTolerance));
}

INSTANTIATE_TEST_SUITE_P(Labels, Layout, testing::ValuesIn(kCases), [](const testing::TestParamInfo<LayoutCase>& caseInfo) { return caseInfo.param.name; });

class SmallPictures : public CommandLineTest {};

TEST_F(SmallPictures, ofAnySizeAreDrawn)
{
    folder().write("table.csv", kTwo);
    for (const char* size : {"1x1", "5x5", "20x400", "400x20", "30x30", "60x40", "100x14400"}) {
        const ProcessResult result
            = run({"table.csv", "--size", size, "--legend", "--title", "T", "--marker", "1", "-o", "p.svg", "-o", "p.pdf", "-o", "p.png", "-o", "p.eps", "--scale", "1"});
        EXPECT_TRUE(succeededSilently(result)) << size;
    }
}

} // namespace

} // namespace TOLVGraphing::testing_support

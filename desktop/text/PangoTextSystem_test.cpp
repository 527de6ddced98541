#include "PangoTextSystem.h"

#include "FontCatalog.h"
#include "TextLayout.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::text;

namespace {

AttributedString set(const std::string& string, const std::string& font, double size)
{
    return AttributedString(string, TextAttributes{Font{font, size}, std::nullopt});
}

Size sizeOf(const std::string& string, const std::string& font, double size)
{
    return PangoTextSystem::shared()->size(set(string, font, size));
}

} // namespace

TEST(PangoTextSystem, widthsAreThoseOfTheUnhintedFonts)
{
    struct Row {
        const char* font;
        const char* family;
        double line;
        double number;
    };
    const Row rows[] = {
        {"HelveticaNeue", "Nimbus Sans", 124.019, 36.695},
        {"HelveticaNeue-Light", "Nimbus Sans", 124.019, 36.695},
        {"Helvetica", "Nimbus Sans", 124.019, 36.695},
        {"Nimbus Sans", "Nimbus Sans", 124.019, 36.695},
        {"Liberation Sans", "Liberation Sans", 123.885, 36.703},
        {"LiberationSans-Bold", "Liberation Sans", 124.770, 36.703},
        {"DejaVu Sans", "DejaVu Sans", 140.959, 41.988},
    };
    int compared = 0;
    for (const Row& row : rows) {
        if (!FontconfigCatalog().hasFamily(row.family))
            continue;
        ++compared;
        EXPECT_NEAR(sizeOf("0123456789 Tj -20,000", row.font, 12.0).width, row.line, 0.0006) << row.font;
        EXPECT_NEAR(sizeOf("20,000", row.font, 12.0).width, row.number, 0.0006) << row.font;
    }
    if (compared == 0)
        GTEST_SKIP() << "none of the fonts is installed";
}

TEST(PangoTextSystem, heightsOfTheNamedFacesArePinned)
{
    EXPECT_DOUBLE_EQ(sizeOf("Tj", "HelveticaNeue", 12.0).height, 1.193 * 12.0);
    EXPECT_DOUBLE_EQ(sizeOf("Tj", "HelveticaNeue-Bold", 18.0).height, 1.193 * 18.0);
    EXPECT_DOUBLE_EQ(sizeOf("Tj\nx\n", "HelveticaNeue-Light", 11.0).height, 1.193 * 11.0 * 3.0);
    EXPECT_DOUBLE_EQ(sizeOf("Tj", "Helvetica", 10.0).height, 10.0);
    EXPECT_DOUBLE_EQ(sizeOf("∞ 漢字", "Helvetica", 10.0).height, 10.0);
    EXPECT_DOUBLE_EQ(sizeOf("", "Helvetica", 10.0).height, 10.0);
    for (const char* twoLines : {"T\nj", "T\rj", "T\r\nj", "T\u2028j", "T\u2029j"})
        EXPECT_DOUBLE_EQ(sizeOf(twoLines, "Helvetica", 10.0).height, 20.0) << twoLines;
    for (const char* font : {"HelveticaNeue", "HelveticaNeue-Light", "Helvetica", "", "DejaVu Sans", "No Such Font", "Helvetica\xFF"}) {
        for (const double size : {12.0, 0.5, 2000.0, 0.0, -1.0, std::numeric_limits<double>::quiet_NaN()})
            EXPECT_EQ(PangoTextSystem::shared()->lineHeight({font, size}), sizeOf("Tj", font, size).height) << font << " " << size;
    }
    EXPECT_DOUBLE_EQ(PangoTextSystem::shared()->ascender({"HelveticaNeue", 11.0}), 0.952 * 11.0);
    EXPECT_DOUBLE_EQ(PangoTextSystem::shared()->ascender({"Helvetica", 12.0}), 0.770 * 12.0);
}

TEST(PangoTextSystem, theWidthIsThatOfTheLongestLine)
{
    EXPECT_DOUBLE_EQ(sizeOf("1\n20,000\n30", "HelveticaNeue", 12.0).width, sizeOf("20,000", "HelveticaNeue", 12.0).width);
    EXPECT_EQ(sizeOf("", "HelveticaNeue", 12.0).width, 0.0);
    EXPECT_DOUBLE_EQ(sizeOf("", "HelveticaNeue", 12.0).height, 1.193 * 12.0);
    EXPECT_GT(sizeOf("a ", "HelveticaNeue", 12.0).width, sizeOf("a", "HelveticaNeue", 12.0).width);
}

TEST(PangoTextSystem, baselinesLeaveTheLeadingBelow)
{
    SharedLayouts::withLayout(set("first\nsecond", "HelveticaNeue", 10.0), [](const TextLayout& layout) {
        ASSERT_EQ(layout.lines.size(), 2U);
        EXPECT_EQ(layout.text.substr(layout.lines[1].start, layout.lines[1].length), "second");
        EXPECT_NEAR(layout.baseline(1), 2.13 + 0.28, 1e-12);
        EXPECT_NEAR(layout.baseline(0), 2.13 + 0.28 + 11.93, 1e-12);
    });
}

TEST(PangoTextSystem, sizesOutsidePangosNumbersAreScaled)
{
    const double width = sizeOf("20,000", "HelveticaNeue", 1000.0).width;
    EXPECT_NEAR(sizeOf("20,000", "HelveticaNeue", 1.0e9).width, width * 1.0e6, 1.0);
    EXPECT_NEAR(sizeOf("20,000", "HelveticaNeue", 1.0e-6).width, width * 1.0e-9, 1e-10);
    for (const double size : {0.0, -12.0, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(sizeOf("20,000", "HelveticaNeue", size), (Size{0.0, 0.0}));
    const std::string longText(20000, '8');
    EXPECT_NEAR(sizeOf(longText, "Nimbus Sans", 500.0).width / sizeOf("8", "Nimbus Sans", 500.0).width, 20000.0, 5.0);
}

TEST(PangoTextSystem, anyBytesCanBeMeasured)
{
    EXPECT_GT(sizeOf("\xFF\xC0 caf\xE9", "HelveticaNeue", 12.0).width, 0.0);
    EXPECT_GT(sizeOf(std::string("a\0b", 3), "HelveticaNeue", 12.0).width, sizeOf("ab", "HelveticaNeue", 12.0).width);
    EXPECT_GT(sizeOf("µ∞×10⁻³ 漢字", "HelveticaNeue", 12.0).width, 0.0);
    EXPECT_GT(sizeOf("x", "\xFF no font \n,", 12.0).width, 0.0);
}

TEST(PangoTextSystem, endlessTextsAreCut)
{
    EXPECT_NEAR(sizeOf(std::string(50000000, '8'), "HelveticaNeue", 12.0).width, sizeOf(std::string(200000, '8'), "HelveticaNeue", 12.0).width, 0.0);
    EXPECT_DOUBLE_EQ(sizeOf(std::string(50000000, '\n'), "Helvetica", 10.0).height, 200001.0 * 10.0);
    std::string accented = "x";
    for (int i = 0; i < 200000; ++i)
        accented += "é";
    SharedLayouts::withLayout(set(accented, "Helvetica", 10.0), [](const TextLayout& layout) { EXPECT_EQ(layout.text.size(), 199999U); });
}

TEST(PangoTextSystem, rememberedLayoutsAnswerAsFreshOnes)
{
    const PangoTextSystem fresh;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 3000; i += 7) {
            const AttributedString text = set(std::to_string(i), "HelveticaNeue", 11.0);
            ASSERT_EQ(fresh.size(text), PangoTextSystem::shared()->size(text));
        }
    }
}

TEST(PangoTextSystem, threadsTakeTurns)
{
    const double expected = sizeOf("20,000", "HelveticaNeue", 12.0).width;
    std::vector<std::thread> threads;
    std::atomic<int> wrong = 0;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 500; ++i) {
                if (sizeOf(std::to_string(i * (t + 1)), "Helvetica", 9.0).width <= 0.0 || sizeOf("20,000", "HelveticaNeue", 12.0).width != expected)
                    ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST(PangoTextSystem, installsItselfForTheProcess)
{
    const TextSystemScope scope(nullptr);
    installDesktopTextSystem();
    EXPECT_EQ(textSystem(), PangoTextSystem::shared());
    EXPECT_DOUBLE_EQ(set("Tj", "Helvetica", 10.0).size().height, 10.0);
    EXPECT_DOUBLE_EQ((Font{"HelveticaNeue", 12.0}).ascender(), 0.952 * 12.0);
}

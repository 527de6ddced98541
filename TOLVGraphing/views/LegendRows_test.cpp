#include "LegendRows.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/RecordingContext.h"
#include "../platform/text/TextSystem.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

// With the fixed text system a character of the 10 point font is 6 points wide and a line 12 points high.
class LegendRowsTest : public ::testing::Test {
protected:
    static std::vector<LegendEntry> entries(std::initializer_list<const char*> titles)
    {
        std::vector<LegendEntry> result;
        for (const char* title : titles)
            result.push_back({title, TOLVLineStyle::solidLineWithColor(Color(1.0, 0.0, 0.0), 2.0)});
        return result;
    }

    static std::vector<std::string> recorded(const LegendRows& rows, const Rect& rect)
    {
        RecordingContext context;
        const CurrentContextScope scope(context);
        rows.drawInRect(rect);
        EXPECT_EQ(context.depth(), 0);
        return context.calls();
    }

    TextSystemScope m_text{std::make_shared<FixedTextSystem>()};
};

TEST_F(LegendRowsTest, RowsBreakWhereTheNextEntryDoesNotFit)
{
    // Each entry is 20 + 5 + 12 = 37 wide, two with the gap of 16 between them 90.
    const struct {
        double width;
        std::size_t rows;
    } cases[] = {{90.0, 2}, {89.0, 3}, {143.0, 1}, {142.9, 2}, {10.0, 3}, {0.0, 3}, {-5.0, 3}};
    for (const auto& one : cases)
        EXPECT_EQ(LegendRows(entries({"ab", "cd", "ef"}), one.width, 9).rowCount(), one.rows) << one.width;
}

TEST_F(LegendRowsTest, NoEntriesTakeNoRoom)
{
    const LegendRows rows({}, 100.0, 3);
    EXPECT_EQ(rows.height(), 0.0);
    EXPECT_TRUE(recorded(rows, {0, 0, 100, 0}).empty());
}

TEST_F(LegendRowsTest, DrawsTheLineInItsStyleAndTheNameBehindIt)
{
    const LegendRows rows(entries({"ab"}), 100.0, 3);
    EXPECT_EQ(rows.height(), 14.0);
    EXPECT_EQ(recorded(rows, {10, 20, 100, 14}),
        (std::vector<std::string>{
            "save", "strokeColor (1, 0, 0, 1)", "lineWidth 2", "stroke M 10 27.5 L 30 27.5", "restore", "text \"ab\" Helvetica 10 (0, 0, 0, 1) at (35, 21)"}));
}

TEST_F(LegendRowsTest, TooManyRowsEndWithHowManyAreLeftOut)
{
    const LegendRows rows(entries({"ab", "cd", "ef", "gh", "ij", "kl"}), 95.0, 2);
    EXPECT_EQ(rows.rowCount(), 2U);
    const auto calls = recorded(rows, {0, 0, 95, 28});
    std::vector<std::string> texts;
    for (const std::string& call : calls)
        if (call.starts_with("text"))
            texts.push_back(call.substr(0, call.find(" Helvetica")));
    EXPECT_EQ(texts, (std::vector<std::string>{"text \"ab\"", "text \"cd\"", "text \"ef\"", "text \"and 3 more\""}));
}

TEST_F(LegendRowsTest, NamesWiderThanARowAreShortened)
{
    // Of 49 points 24 are left for a name: three characters and the ellipsis. Characters of several bytes stay whole.
    const LegendRows rows(entries({"abcdefgh", "abcd", "ab\xC3\xA4\xC3\xB6\xC3\xBC"}), 49.0, 9);
    EXPECT_EQ(rows.rowCount(), 3U);
    std::vector<std::string> texts;
    for (const std::string& call : recorded(rows, {0, 0, 49, 42}))
        if (call.starts_with("text"))
            texts.push_back(call.substr(0, call.find(" Helvetica")));
    EXPECT_EQ(texts, (std::vector<std::string>{"text \"abc\xE2\x80\xA6\"", "text \"abcd\"", "text \"ab\xC3\xA4\xE2\x80\xA6\""}));
    for (const double width : {30.0, 0.0, -5.0}) {
        const auto calls = recorded(LegendRows(entries({"abc"}), width, 9), {0, 0, 10, 14});
        EXPECT_TRUE(calls.back().starts_with("text \"\xE2\x80\xA6\"")) << width;
    }
}

} // namespace
} // namespace TOLVGraphing

#include "CommandLine.h"

#include <TestPaths.h>

#include <algorithm>

namespace TOLVGraphing::testing_support {

ProcessResult tolvgraph(std::vector<std::string> arguments, const ProcessSurroundings& surroundings)
{
    arguments.insert(arguments.begin(), TOLV_PROGRAM_TOLVGRAPH);
    return runProcess(arguments, surroundings);
}

ProcessResult CommandLineTest::run(const std::vector<std::string>& arguments, ProcessSurroundings surroundings) const
{
    surroundings.folder = m_folder.path();
    return tolvgraph(arguments, surroundings);
}

std::string CommandLineTest::listing(const std::string& file) const
{
    const ProcessResult result = run({"--list-columns", file});
    EXPECT_TRUE(result.status == 0 && result.error.empty()) << file << ": " << result.text();
    return result.output;
}

DrawnPage CommandLineTest::drawn(std::vector<std::string> arguments, std::string* messages) const
{
    arguments.insert(arguments.end(), {"-o", "picture.svg"});
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 0) << result.text();
    EXPECT_EQ(result.output, "");
    if (messages)
        *messages = result.error;
    else
        EXPECT_EQ(result.error, "");
    return result.status == 0 ? DrawnPage::fromSVG(m_folder.read("picture.svg")) : DrawnPage{};
}

testing::AssertionResult succeededSilently(const ProcessResult& result)
{
    if (result.status == 0 && result.output.empty() && result.error.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "expected success without a word, got " << result.text();
}

testing::AssertionResult endedWith(const ProcessResult& result, int status, const std::string& error)
{
    if (result.status == status && result.error == error && result.output.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "expected status " << status << " and: " << error << "got " << result.text();
}

std::vector<Point> curvePoints(const DrawnPage& page, const std::string& color)
{
    const auto strokes = page.strokesOfColor(color);
    EXPECT_EQ(strokes.size(), 1U) << "strokes in " << color;
    return strokes.empty() ? std::vector<Point>() : strokes.front().points();
}

Rect frameOfDataArea(const DrawnPage& page)
{
    for (const DrawnPath& path : page.strokesOfColor("#808080")) {
        if (!path.data.ends_with("Z"))
            continue;
        const auto points = path.points();
        const auto [left, right] = std::minmax_element(points.begin(), points.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
        const auto [top, bottom] = std::minmax_element(points.begin(), points.end(), [](const Point& a, const Point& b) { return a.y < b.y; });
        return {left->x, top->y, right->x - left->x, bottom->y - top->y};
    }
    ADD_FAILURE() << "no frame";
    return {};
}

} // namespace TOLVGraphing::testing_support

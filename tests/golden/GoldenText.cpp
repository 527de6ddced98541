#include "GoldenText.h"

#include "../support/TextLines.h"
#include "GoldenScenes.h"

#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>
#include <TOLVGraphing/platform/text/TextSystem.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace TOLVGraphing::testing_support {

namespace {

/// The first line that differs, with its number.
testing::AssertionResult sameLines(const std::string& got, const std::string& expected)
{
    if (got == expected)
        return testing::AssertionSuccess();
    const auto gotLines = linesOf(got);
    const auto expectedLines = linesOf(expected);
    const std::size_t common = std::min(gotLines.size(), expectedLines.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (gotLines[i] != expectedLines[i])
            return testing::AssertionFailure() << "line " << i + 1 << "\nexpected " << expectedLines[i] << "\ngot      " << gotLines[i];
    }
    return testing::AssertionFailure() << "expected " << expectedLines.size() << " lines, got " << gotLines.size();
}

} // namespace

std::string recordedText(const Size& size, const std::function<void(const Rect& rect)>& drawing)
{
    const TextSystemScope fixed(std::make_shared<FixedTextSystem>());
    RecordingContext context;
    {
        const CurrentContextScope scope(context);
        drawing({{}, size});
    }
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    return context.text();
}

testing::AssertionResult isTextOfFile(const std::string& text, const std::string& path)
{
    if (regeneratesGolden()) {
        std::ofstream file(path, std::ios::binary);
        file << text;
        return file.flush() ? testing::AssertionSuccess() : testing::AssertionFailure() << path << " cannot be written";
    }
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return testing::AssertionFailure() << path << " cannot be read";
    const std::string expected{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return sameLines(text, expected) << "\n" << path;
}

} // namespace TOLVGraphing::testing_support

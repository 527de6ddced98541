// The calls that whole drawings make, compared with the files in tests/golden. The text system is the fixed one, so that the files depend on no font.
// TOLV_REGENERATE_GOLDEN=1 writes the files anew; the differences are then read before they are kept.

#include "../golden/GoldenScenes.h"

#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>
#include <TOLVGraphing/platform/text/TextSystem.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace TOLVGraphing::testing_support {

namespace {

std::string recordedText(const GoldenScene& scene)
{
    const TextSystemScope fixed(std::make_shared<FixedTextSystem>());
    RecordingContext context;
    {
        const CurrentContextScope scope(context);
        scene.draw({{}, scene.size});
    }
    EXPECT_EQ(context.depth(), 0);
    EXPECT_FALSE(context.hasUnmatchedRestore());
    return context.text();
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

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

class GoldenCalls : public testing::TestWithParam<GoldenScene> {};

TEST_P(GoldenCalls, areThoseOfTheFile)
{
    const std::string path = goldenPath(GetParam().name + ".calls");
    const std::string got = recordedText(GetParam());
    if (regeneratesGolden()) {
        std::ofstream(path, std::ios::binary) << got;
        GTEST_SKIP() << "wrote " << path;
    }
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file) << path;
    const std::string expected{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_TRUE(sameLines(got, expected)) << path;
}

TEST_P(GoldenCalls, areTheSameEachTime)
{
    EXPECT_EQ(recordedText(GetParam()), recordedText(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Scenes, GoldenCalls, testing::ValuesIn(goldenScenes()), [](const testing::TestParamInfo<GoldenScene>& sceneInfo) { return sceneInfo.param.name; });

} // namespace

} // namespace TOLVGraphing::testing_support

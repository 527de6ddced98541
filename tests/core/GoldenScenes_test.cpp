// The calls that whole drawings make, compared with the files in tests/golden.

#include "../golden/GoldenScenes.h"
#include "../golden/GoldenText.h"

#include <gtest/gtest.h>

namespace TOLVGraphing::testing_support {

namespace {

class GoldenCalls : public testing::TestWithParam<GoldenScene> {
protected:
    static std::string drawnText() { return recordedText(GetParam().size, GetParam().draw); }
};

TEST_P(GoldenCalls, areThoseOfTheFile)
{
    EXPECT_TRUE(isTextOfFile(drawnText(), goldenPath(GetParam().name + ".calls")));
}

TEST_P(GoldenCalls, areTheSameEachTime)
{
    EXPECT_EQ(drawnText(), drawnText());
}

INSTANTIATE_TEST_SUITE_P(Scenes, GoldenCalls, testing::ValuesIn(goldenScenes()), [](const testing::TestParamInfo<GoldenScene>& sceneInfo) { return sceneInfo.param.name; });

} // namespace

} // namespace TOLVGraphing::testing_support

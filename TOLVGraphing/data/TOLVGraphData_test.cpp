#include "TOLVGraphData.h"

#include "../platform/foundation/Exception.h"
#include "../platform/foundation/Log.h"

#include <TOLVMath/TOLVRealVector.h>
#include <tests/support/ChangingSamples.h>
#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
const Color kRed(1.0, 0.0, 0.0);

TOLVGraphData::Samples samples(std::vector<float> numbers)
{
    return TOLVRealVector::vectorWithComponents(std::move(numbers));
}

std::shared_ptr<TOLVGraphData> seriesOf(std::vector<float> x, std::vector<float> y)
{
    return TOLVGraphData::graphDataWithX(samples(std::move(x)), samples(std::move(y)), kRed);
}

std::vector<float> elements(const TOLVGraphData::Samples& vector)
{
    return {vector->components(), vector->components() + vector->length()};
}

/// A host's own vector class.
class OneSample final : public TOLVAxisData {
public:
    std::size_t length() const override { return 1; }
    const float* components() const override { return &m_sample; }
    bool getMinimum(float*, std::size_t*) const override { return false; }
    bool getMaximum(float*, std::size_t*) const override { return false; }

private:
    float m_sample = 3.0F;
};

/// Collects the log lines that a piece of code writes.
template <typename Operation>
std::vector<std::string> logOf(Operation operation)
{
    std::vector<std::string> lines;
    const LogSinkScope scope([&](std::string_view line) { lines.emplace_back(line); });
    operation();
    return lines;
}

TEST(TOLVGraphData, StartsWithASolidBlackLineAndNothingElse)
{
    const TOLVGraphData data;
    EXPECT_FALSE(data.X());
    EXPECT_FALSE(data.Y());
    EXPECT_FALSE(data.name());
    EXPECT_FALSE(data.infoDictionary());
    EXPECT_EQ(*data.lineStyle(), *TOLVLineStyle::solidLineWithColor(Color::blackColor(), 1.0));
    EXPECT_EQ(data.color(), Color::blackColor());
}

TEST(TOLVGraphData, WithAColourTheLineIsSolidAndOnePointWide)
{
    const auto data = seriesOf({1.0F}, {2.0F});
    EXPECT_EQ(*data->lineStyle(), *TOLVLineStyle::solidLineWithColor(kRed, 1.0));
}

TEST(TOLVGraphData, SharesItsVectorsAndItsStyle)
{
    const auto x = samples({1.0F});
    const auto y = samples({2.0F});
    const auto style = TOLVLineStyle::dashedLineStyle();
    const auto data = TOLVGraphData::graphDataWithX(x, y, style);
    EXPECT_EQ(data->X(), x);
    EXPECT_EQ(data->Y(), y);
    EXPECT_EQ(data->lineStyle(), style);
}

TEST(TOLVGraphData, AGivenStyleKeepsItsOwnColour)
{
    const auto style = TOLVLineStyle::solidLineWithColor(Color::whiteColor(), 2.0);
    const auto data = TOLVGraphData::graphDataWithX(samples({1.0F}), samples({2.0F}), kRed, style);
    EXPECT_EQ(data->lineStyle(), style);
    EXPECT_EQ(style->color(), Color::whiteColor());
    EXPECT_EQ(data->color(), Color::whiteColor());
}

TEST(TOLVGraphData, SeriesThatShareAStyleShareTheColour)
{
    const auto style = TOLVLineStyle::dashedLineStyle();
    const auto first = TOLVGraphData::graphDataWithX(samples({}), samples({}), style);
    const auto second = TOLVGraphData::graphDataWithX(samples({}), samples({}), style);
    first->setColor(kRed);
    EXPECT_EQ(second->color(), kRed);
}

TEST(TOLVGraphData, WithoutAStyleThereIsNoColour)
{
    TOLVGraphData data;
    data.setLineStyle(nullptr);
    EXPECT_FALSE(data.color());
    data.setColor(kRed);
    EXPECT_FALSE(data.color());
}

TEST(TOLVGraphData, TakesTheFirstTwoVectorsOfAList)
{
    const std::vector<TOLVGraphData::Samples> list = {samples({1.0F}), samples({2.0F}), samples({3.0F})};
    const auto data = TOLVGraphData::graphDataWithDataArray(list);
    EXPECT_EQ(data->X(), list[0]);
    EXPECT_EQ(data->Y(), list[1]);
    EXPECT_EQ(data->color(), Color::blackColor());
    EXPECT_THROW((void)TOLVGraphData::graphDataWithDataArray(std::span(list).first(1)), Exception);
}

TEST(TOLVGraphData, TheDictionaryIsShared)
{
    TOLVGraphData data;
    const auto dictionary = std::make_shared<TOLVGraphData::InfoDictionary>();
    data.setInfoDictionary(dictionary);
    (*dictionary)["unit"] = std::string("V");
    EXPECT_EQ(std::any_cast<std::string>(data.infoDictionary()->at("unit")), "V");
}

TEST(TOLVGraphData, AnswersTheOrdinateOfTheNearestSample)
{
    const auto data = seriesOf({0.0F, 10.0F, 20.0F}, {5.0F, 6.0F, 7.0F});
    struct Case {
        float x;
        float expected;
        float actualX;
    };
    const Case cases[] = {
        {-100.0F, 5.0F, 0.0F},
        {4.0F, 5.0F, 0.0F},
        {5.0F, 5.0F, 0.0F}, // half-way: the earlier one
        {6.0F, 6.0F, 10.0F},
        {15.0F, 6.0F, 10.0F},
        {1000.0F, 7.0F, 20.0F},
    };
    for (const Case& one : cases) {
        float actualX = -1.0F;
        EXPECT_EQ(data->YValueAtX(one.x, &actualX), one.expected) << one.x;
        EXPECT_EQ(actualX, one.actualX) << one.x;
        EXPECT_EQ(data->YValueAtX(one.x), one.expected) << one.x;
    }
}

TEST(TOLVGraphData, OfEqualAbscissaeTheFirstAnswers)
{
    EXPECT_EQ(seriesOf({3.0F, 3.0F}, {1.0F, 2.0F})->YValueAtX(3.0F), 1.0F);
}

TEST(TOLVGraphData, WithoutANearestSampleTheAnswerIsZeroAndOneLineIsLogged)
{
    struct Case {
        const char* name;
        std::shared_ptr<TOLVGraphData> data;
        float x;
    };
    const Case cases[] = {
        {"empty", seriesOf({}, {}), 1.0F},
        {"no vectors", std::make_shared<TOLVGraphData>(), 1.0F},
        {"infinite x", seriesOf({1.0F}, {2.0F}), kInfinity},
        {"NaN x", seriesOf({1.0F}, {2.0F}), kNaN},
        {"distance too large", seriesOf({-3e38F}, {2.0F}), 3e38F},
        {"only NaN samples", seriesOf({kNaN, kNaN}, {2.0F, 3.0F}), 1.0F},
        {"no ordinates", seriesOf({1.0F, 2.0F}, {}), 1.0F},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        float actualX = 42.0F;
        float answer = -1.0F;
        const auto lines = logOf([&] { answer = one.data->YValueAtX(one.x, &actualX); });
        EXPECT_EQ(answer, 0.0F);
        EXPECT_EQ(actualX, 42.0F);
        EXPECT_EQ(lines, (std::vector<std::string>{"Could not obtain an x index!!"}));
    }
}

TEST(TOLVGraphData, NaNAbscissaeDoNotBlindTheRest)
{
    EXPECT_EQ(seriesOf({kNaN, 1.0F, kNaN, 5.0F}, {9.0F, 1.0F, 9.0F, 2.0F})->YValueAtX(4.0F), 2.0F);
    EXPECT_EQ(seriesOf({kNaN, 1.0F, kNaN, 5.0F}, {9.0F, 1.0F, 9.0F, 2.0F})->YValueAtX(0.0F), 1.0F);
}

TEST(TOLVGraphData, SearchesUpToTheShorterVector)
{
    EXPECT_EQ(seriesOf({1.0F, 2.0F, 3.0F}, {10.0F, 20.0F})->YValueAtX(3.0F), 20.0F);
}

TEST(TOLVGraphData, ARangeOfASeriesKeepsStyleAndColourOnly)
{
    const auto data = seriesOf({1.0F, 2.0F, 3.0F, 4.0F}, {10.0F, 20.0F, 30.0F, 40.0F});
    data->setName("name");
    data->setInfoDictionary(std::make_shared<TOLVGraphData::InfoDictionary>());
    const auto part = data->graphDataInRange({1, 2});
    EXPECT_EQ(elements(part->X()), (std::vector<float>{2.0F, 3.0F}));
    EXPECT_EQ(elements(part->Y()), (std::vector<float>{20.0F, 30.0F}));
    EXPECT_EQ(part->lineStyle(), data->lineStyle());
    EXPECT_EQ(part->color(), kRed);
    EXPECT_FALSE(part->name());
    EXPECT_FALSE(part->infoDictionary());
}

TEST(TOLVGraphData, ARangeOfAnEmptySeriesIsEmpty)
{
    const auto part = seriesOf({}, {})->graphDataInRange({0, 0});
    EXPECT_EQ(part->X()->length(), 0U);
    EXPECT_EQ(part->Y()->length(), 0U);
}

TEST(TOLVGraphDataDeathTest, ARangeNeedsTheVectorClassOfItsOwn)
{
    const auto foreign = std::make_shared<OneSample>();
    const char* message = "graphDataInRange only works for TOLVRealVector-based graph data";
    EXPECT_DEATH((void)TOLVGraphData::graphDataWithX(foreign, samples({1.0F}), kRed)->graphDataInRange({0, 1}), message);
    EXPECT_DEATH((void)TOLVGraphData::graphDataWithX(samples({1.0F}), foreign, kRed)->graphDataInRange({0, 1}), message);
    EXPECT_DEATH((void)TOLVGraphData().graphDataInRange({0, 1}), message);
}

TEST(TOLVGraphData, TheNearestOfAscendingSamplesIsTheOneThatLookingThroughAllFinds)
{
    testing_support::Generated random(11);
    const float special[] = {0.0F, -kInfinity, kInfinity, 3e38F, -3e38F, 2e19F, 1e-30F};
    for (int round = 0; round < 4000; ++round) {
        std::vector<float> xs(random.whole(30));
        const double width = random.whole(4) == 0 ? 1e-6 : 10.0;
        for (float& x : xs)
            x = random.whole(12) == 0 ? special[random.whole(std::size(special))] : static_cast<float>(1000.0 + random.number(0.0, width));
        std::sort(xs.begin(), xs.end());
        std::vector<float> ys(xs.size());
        std::iota(ys.begin(), ys.end(), 1.0F);
        // A host's own samples are looked through one by one.
        const auto plain
            = TOLVGraphData::graphDataWithX(std::make_shared<testing_support::ChangingSamples>(xs), std::make_shared<testing_support::ChangingSamples>(ys), Color::blackColor());
        const auto sorted = seriesOf(xs, ys);
        const float x = random.whole(10) == 0 ? special[random.whole(std::size(special))] : static_cast<float>(1000.0 + random.number(-1.0, width));
        float actual = -1.0F;
        float expected = -1.0F;
        float found = 0.0F;
        float wanted = 0.0F;
        const auto lines = logOf([&] { found = sorted->YValueAtX(x, &actual); });
        ASSERT_EQ(lines, logOf([&] { wanted = plain->YValueAtX(x, &expected); }));
        ASSERT_EQ(found, wanted) << x << " in round " << round;
        ASSERT_EQ(actual, expected);
    }
}

} // namespace
} // namespace TOLVGraphing

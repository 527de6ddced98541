#include "../support/Comparison.h"
#include "../support/JsonValues.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/data/TOLVCurve.h>
#include <TOLVGraphing/data/TOLVGraphData.h>
#include <TOLVGraphing/data/TOLVPointFunctions.h>
#include <TOLVGraphing/data/TOLVRealVector+Interpolation.h>
#include <TOLVGraphing/platform/foundation/Exception.h>
#include <TOLVGraphing/platform/foundation/Log.h>

#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

EXPECTED_VALUES_TEST(interpolation, valueAtFractionalIndex)
{
    const auto vector = vectorOf(testCase.input["vector"]);
    std::vector<float> values;
    for (const float index : floatsOf(testCase.input["indices"]))
        values.push_back(valueAtFractionalIndex(*vector, index));
    EXPECT_TRUE(same(values, floatsOf(testCase.expected["values"])));
}

EXPECTED_VALUES_TEST(interpolation, valueAtFractionalIndexAssertion)
{
    const Json& expected = testCase.expected;
    ASSERT_TRUE(expected["assertion"].boolean());
    const auto vector = vectorOf(testCase.input["vector"]);
    try {
        static_cast<void>(valueAtFractionalIndex(*vector, testCase.input["index"].singleNumber()));
        ADD_FAILURE() << "no assertion failure";
    } catch (const TOLVGraphing::AssertionFailure& failure) {
        EXPECT_EQ(failure.format(), expected["message"].text());
        EXPECT_EQ(failure.argument(), expected["argument"].text());
        EXPECT_EQ(failure.file(), expected["file"].text());
        EXPECT_EQ(failure.line(), expected["line"].integer());
    }
}

EXPECTED_VALUES_TEST(interpolation, fractionalIndexOfValue)
{
    const auto vector = vectorOf(testCase.input["vector"]);
    std::vector<float> indices;
    for (const float value : floatsOf(testCase.input["values"]))
        indices.push_back(fractionalIndexOfValue(*vector, value));
    EXPECT_TRUE(same(indices, floatsOf(testCase.expected["indices"])));
}

EXPECTED_VALUES_TEST(interpolation, YValueAtX)
{
    const auto series = seriesOf(testCase.input);
    const Json& queries = testCase.input["queries"];
    ASSERT_EQ(testCase.expected["values"].size(), queries.size());
    for (std::size_t i = 0; i < queries.size(); ++i) {
        SCOPED_TRACE("query " + std::to_string(i));
        std::vector<std::string> lines;
        const LogSinkScope log([&](std::string_view line) { lines.emplace_back(line); });
        constexpr float kUntouched = -12345.5F;
        float actualX = kUntouched;
        EXPECT_TRUE(same(series->YValueAtX(queries[i].singleNumber(), &actualX), testCase.expected["values"][i].singleNumber()));
        const Json& expectedX = testCase.expected["actualX"][i];
        EXPECT_TRUE(same(actualX, expectedX.isNull() ? kUntouched : expectedX.singleNumber()));
        const Json& expectedLine = testCase.expected["logged"][i];
        EXPECT_EQ(lines, expectedLine.isNull() ? std::vector<std::string>() : std::vector<std::string>{expectedLine.text()});
        EXPECT_TRUE(same(series->YValueAtX(queries[i].singleNumber()), testCase.expected["values"][i].singleNumber())) << "without an out parameter";
    }
}

EXPECTED_VALUES_TEST(interpolation, pointHelpers)
{
    const Point a = pointOf(testCase.input["a"]);
    const Point b = pointOf(testCase.input["b"]);
    EXPECT_TRUE(same(TOLVNSPointMidpoint(a, b), pointOf(testCase.expected["midpoint"])));
    EXPECT_TRUE(same(TOLVNSPointFractionalMidpoint(a, b, testCase.input["fraction"].singleNumber()), pointOf(testCase.expected["fractionalMidpoint"])));
    EXPECT_TRUE(same(TOLVNSPointSegmentLength(a, b), testCase.expected["segmentLength"].singleNumber()));
}

EXPECTED_VALUES_TEST(interpolation, curvePoints)
{
    TOLVCurve curve;
    const auto offered = pointsOf(testCase.input["points"]);
    ASSERT_EQ(testCase.expected["pointIdxAfterEach"].size(), offered.size());
    for (std::size_t i = 0; i < offered.size(); ++i) {
        curve.addPoint(offered[i]);
        EXPECT_EQ(curve.pointIdx(), testCase.expected["pointIdxAfterEach"][i].unsignedInteger()) << "after point " << i;
    }
    const Path& path = curve.path();
    EXPECT_TRUE(same(std::vector<Point>(path.points().begin(), path.points().end()), pointsOf(testCase.expected["points"])));
    std::string elements;
    for (const Path::Verb verb : path.verbs())
        elements += verb == Path::Verb::Move ? 'M' : verb == Path::Verb::Line ? 'L' : '?';
    EXPECT_EQ(elements, testCase.expected["elements"].text());
}

TEST(PointHelpers, SegmentLengthTakesTheRootInSinglePrecision)
{
    // The root of the unrounded sum of squares would be one step larger.
    EXPECT_TRUE(same(TOLVNSPointSegmentLength({0.0, 0.0}, {0.1, 0.1}), 0.14142135F));
    EXPECT_TRUE(same(TOLVNSPointSegmentLength({0.0, 0.0}, {0.1, 1.6}), 1.6031219F));
}

#include "../support/Comparison.h"
#include "../support/GraphSetup.h"
#include "../support/JsonValues.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

EXPECTED_VALUES_TEST(ticks, linear)
{
    const Json& expected = testCase.expected;
    const auto [graph, axis] = axisSetup("linear", testCase.input["vertical"].boolean(), extentsOf(testCase.input["extents"]));
    axis->prepareForDrawingInRect(rectOf(testCase.input["rect"]));
    const auto& linear = dynamic_cast<const TOLVLinearAxis&>(*axis);
    EXPECT_TRUE(same(linear.majorStep(), expected["majorStep"].number())) << "majorStep";
    EXPECT_TRUE(same(linear.minorStep(), expected["minorStep"].number())) << "minorStep";
    EXPECT_TRUE(same(axis->majorValues(), doublesOf(expected["major"]))) << "major";
    EXPECT_TRUE(same(axis->minorValues(), doublesOf(expected["minor"]))) << "minor";
}

EXPECTED_VALUES_TEST(ticks, linearWalk)
{
    const auto [graph, axis] = axisSetup("linear", false, extentsOf(testCase.input["extents"]));
    auto& linear = dynamic_cast<TOLVLinearAxis&>(*axis);
    linear.setMajorStep(testCase.input["majorStep"].number());
    linear.setMinorStep(testCase.input["minorStep"].number());
    TOLVAxis::Values major;
    TOLVAxis::Values minor;
    linear.getMajorValues(&major, &minor);
    EXPECT_TRUE(same(major, doublesOf(testCase.expected["major"]))) << "major";
    EXPECT_TRUE(same(minor, doublesOf(testCase.expected["minor"]))) << "minor";
}

EXPECTED_VALUES_TEST(ticks, logRange)
{
    const auto depth = static_cast<std::uint32_t>(testCase.input["depth"].unsignedInteger());
    const auto values = logRange(depth, testCase.input["min"].number(), testCase.input["max"].number());
    EXPECT_TRUE(withinRelative(values, doublesOf(testCase.expected["values"]), testCase.expected["relTol"].number()));
}

EXPECTED_VALUES_TEST(ticks, logarithmic)
{
    const Json& expected = testCase.expected;
    const auto [graph, axis] = axisSetup("logarithmic", testCase.input["vertical"].boolean(), extentsOf(testCase.input["extents"]));
    axis->prepareForDrawingInRect(rectOf(testCase.input["rect"]));
    EXPECT_EQ(dynamic_cast<const TOLVLogarithmicAxis&>(*axis).minorValuesDepth(), expected["minorValuesDepth"].unsignedInteger());
    const double tolerance = expected["relTol"].number();
    EXPECT_TRUE(withinRelative(axis->majorValues(), doublesOf(expected["major"]), tolerance)) << "major";
    EXPECT_TRUE(withinRelative(axis->minorValues(), doublesOf(expected["minor"]), tolerance)) << "minor";
}

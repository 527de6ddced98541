#include "../support/Comparison.h"
#include "../support/JsonValues.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/platform/geometry/AffineTransform.h>
#include <TOLVGraphing/platform/geometry/Rect.h>

#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

void applyStep(AffineTransform& transform, const Json& step)
{
    const std::string& operation = step[0].text();
    if (operation == "translateXBy")
        transform.translateXBy(step[1].number(), step[2].number());
    else if (operation == "scaleXBy")
        transform.scaleXBy(step[1].number(), step[2].number());
    else if (operation == "rotateRadians")
        transform.rotateRadians(step[1].number());
    else if (operation == "rotateDegrees" && step.size() == 2)
        transform.rotateDegrees(step[1].number());
    else if (operation == "rotateDegrees")
        transform.rotateDegrees(step[1].number(), {step[2].number(), step[3].number()});
    else
        throw JsonError("there is no step \"" + operation + "\"");
}

} // namespace

EXPECTED_VALUES_TEST(context, transform)
{
    AffineTransform transform;
    for (const Json& step : testCase.input["steps"].elements())
        applyStep(transform, step);
    const double tolerance = testCase.expected["tolAbs"].number();
    EXPECT_TRUE(within(transform, transformOf(testCase.expected["matrix"]), tolerance));
    std::vector<Point> mapped;
    for (const Point& point : pointsOf(testCase.input["points"]))
        mapped.push_back(transform.apply(point));
    EXPECT_TRUE(within(mapped, pointsOf(testCase.expected["mapped"]), tolerance, tolerance));
}

EXPECTED_VALUES_TEST(context, validNumber)
{
    EXPECT_EQ(valid(testCase.input["value"].number()), testCase.expected["valid"].boolean());
}

EXPECTED_VALUES_TEST(context, validRect)
{
    EXPECT_EQ(rectOf(testCase.input["rect"]).valid(), testCase.expected["valid"].boolean());
}

EXPECTED_VALUES_TEST(context, validPoint)
{
    EXPECT_EQ(pointOf(testCase.input["point"]).valid(), testCase.expected["valid"].boolean());
}

EXPECTED_VALUES_TEST(context, validSize)
{
    EXPECT_EQ(sizeOf(testCase.input["size"]).valid(), testCase.expected["valid"].boolean());
}

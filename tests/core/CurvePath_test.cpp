#include "../support/Comparison.h"
#include "../support/JsonValues.h"
#include "../support/VectorFile.h"

#include <TOLVGraphing/data/TOLVGraphCurve.h>
#include <TOLVGraphing/platform/foundation/Exception.h>

#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

std::shared_ptr<TOLVGraphCurve> curveOf(const Json& input)
{
    auto curve = TOLVGraphCurve::curveWithX(vectorOf(input["x"]), vectorOf(input["y"]), nullptr);
    curve->setXIsLog(input["xIsLog"].boolean());
    curve->setYIsLog(input["yIsLog"].boolean());
    if (!input["xMinimum"].isNull())
        curve->setXMinimum(input["xMinimum"].singleNumber());
    if (!input["xMaximum"].isNull())
        curve->setXMaximum(input["xMaximum"].singleNumber());
    if (!input["yMinimum"].isNull())
        curve->setYMinimum(input["yMinimum"].singleNumber());
    if (!input["yMaximum"].isNull())
        curve->setYMaximum(input["yMaximum"].singleNumber());
    return curve;
}

double toleranceOf(const Json& expected, const char* key)
{
    const Json* tolerance = expected.find(key);
    return tolerance ? tolerance->number() : 0.0;
}

void expectElements(const Path& path)
{
    for (std::size_t i = 0; i < path.verbs().size(); ++i)
        EXPECT_EQ(path.verbs()[i], i == 0 ? Path::Verb::Move : Path::Verb::Line) << "element " << i;
}

} // namespace

EXPECTED_VALUES_TEST(curve_path, build)
{
    const Json& expected = testCase.expected;
    const auto curve = curveOf(testCase.input);
    const Rect rect = rectOf(testCase.input["rect"]);
    if (const Json* name = expected.find("exception")) {
        try {
            curve->buildPathWithRect(rect, testCase.input["closed"].boolean());
            ADD_FAILURE() << "no exception";
        } catch (const Exception& exception) {
            EXPECT_EQ(exception.name(), name->text());
            EXPECT_EQ(exception.reason(), expected["reason"].text());
        }
        return;
    }
    // The second build shows that the first one leaves nothing behind.
    for (int build = 0; build < 2; ++build) {
        curve->buildPathWithRect(rect, testCase.input["closed"].boolean());
        const Path& path = curve->curve()->path();
        const std::vector<Point> points(path.points().begin(), path.points().end());
        EXPECT_TRUE(within(points, pointsOf(expected["points"]), toleranceOf(expected, "tolAbsX"), toleranceOf(expected, "tolAbsY")));
        expectElements(path);
        EXPECT_EQ(curve->curve()->pointIdx(), expected["pointIdx"].unsignedInteger());
        EXPECT_TRUE(same(curve->xMinimum(), expected["xMinimum"].singleNumber())) << "xMinimum";
        EXPECT_TRUE(same(curve->xMaximum(), expected["xMaximum"].singleNumber())) << "xMaximum";
        EXPECT_TRUE(same(curve->yMinimum(), expected["yMinimum"].singleNumber())) << "yMinimum";
        EXPECT_TRUE(same(curve->yMaximum(), expected["yMaximum"].singleNumber())) << "yMaximum";
    }
}

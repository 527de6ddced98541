#include "PathPoints.h"

#include <gtest/gtest.h>

namespace TOLVGraphing {
namespace {

TEST(PathPoints, AreThoseOfMovesAndLinesAndTheEndsOfCurves)
{
    Path path;
    path.moveToX(1.0, 2.0);
    path.addLineToX(3.0, 4.0);
    path.addCurveToPoint({9.0, 10.0}, {5.0, 6.0}, {7.0, 8.0});
    path.closeSubpath();
    path.moveToX(11.0, 12.0);
    path.addLineToX(13.0, 14.0);
    EXPECT_EQ(onPathPoints(path), (std::vector<Point>{{1.0, 2.0}, {3.0, 4.0}, {9.0, 10.0}, {11.0, 12.0}, {13.0, 14.0}}));
}

TEST(PathPoints, AnEmptyPathHasNone)
{
    EXPECT_TRUE(onPathPoints(Path()).empty());
}

} // namespace
} // namespace TOLVGraphing

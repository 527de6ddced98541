#include "LineDashRules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace TOLVGraphing;
using paint::usableDash;

TEST(LineDashRules, patternsThatCannotBePaintedBecomeSolid)
{
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    const double huge = std::numeric_limits<double>::max();
    const LineDash solid;
    for (const LineDash& dash : {LineDash{{}, 3.0}, LineDash{{0.0}, 0.0}, LineDash{{0.0, 0.0}, 1.0}, LineDash{{5.0, -1.0}, 0.0}, LineDash{{nan, 1.0}, 0.0},
             LineDash{{infinity}, 0.0}, LineDash{{huge, huge}, 0.0}})
        EXPECT_EQ(usableDash(dash), solid);
}

TEST(LineDashRules, phasesComeIntoOneTurn)
{
    EXPECT_EQ(usableDash({{5.0, 2.0}, 0.0}), (LineDash{{5.0, 2.0}, 0.0}));
    EXPECT_EQ(usableDash({{5.0, 2.0}, 8.0}), (LineDash{{5.0, 2.0}, 1.0}));
    EXPECT_EQ(usableDash({{5.0, 2.0}, -1.0}), (LineDash{{5.0, 2.0}, 6.0}));
    EXPECT_EQ(usableDash({{5.0, 2.0}, std::nan("")}), (LineDash{{5.0, 2.0}, 0.0}));
    EXPECT_EQ(usableDash({{0.0, 4.0}, 0.0}), (LineDash{{0.0, 4.0}, 0.0}));
}

TEST(LineDashRules, oddPatternsAreWrittenTwice)
{
    EXPECT_EQ(usableDash({{3.0}, 4.0}), (LineDash{{3.0, 3.0}, 4.0}));
    EXPECT_EQ(usableDash({{1.0, 2.0, 3.0}, 13.0}), (LineDash{{1.0, 2.0, 3.0, 1.0, 2.0, 3.0}, 1.0}));
}

TEST(LineDashRules, thePaintedPartIsThatOfPaintedLengths)
{
    EXPECT_EQ(paint::paintedPart({}), 1.0);
    EXPECT_EQ(paint::paintedPart({{3.0, 1.0}, 2.0}), 0.75);
    EXPECT_EQ(paint::paintedPart({{1.0, 2.0, 1.0, 4.0}, 0.0}), 0.25);
    EXPECT_EQ(paint::paintedPart({{0.0, 4.0}, 0.0}), 0.0);
}

TEST(LineDashRules, aMillionDashesAndGapsAreTooMany)
{
    const LineDash dash{{3.0, 1.0}, 0.0};
    EXPECT_FALSE(paint::hasTooManyDashes(dash, 1'999'999.0));
    EXPECT_TRUE(paint::hasTooManyDashes(dash, 2'000'000.0));
    EXPECT_TRUE(paint::hasTooManyDashes(dash, std::numeric_limits<double>::infinity()));
    EXPECT_TRUE(paint::hasTooManyDashes(dash, std::nan("")));
    EXPECT_FALSE(paint::hasTooManyDashes({}, std::numeric_limits<double>::infinity()));
}

TEST(LineDashRules, endsOfVeryWideLinesCloseTheGaps)
{
    EXPECT_FALSE(paint::hasGapsClosedByEnds({}, 1e9));
    EXPECT_FALSE(paint::hasGapsClosedByEnds({{1.0, 2.0}, 0.0}, 1999.0));
    EXPECT_TRUE(paint::hasGapsClosedByEnds({{1.0, 2.0}, 0.0}, 2000.0));
    // The longest gap counts, dashes do not.
    EXPECT_FALSE(paint::hasGapsClosedByEnds({{1.0, 0.5, 1.0, 3.0}, 0.0}, 2999.0));
    EXPECT_TRUE(paint::hasGapsClosedByEnds({{9000.0, 0.5}, 0.0}, 500.0));
}

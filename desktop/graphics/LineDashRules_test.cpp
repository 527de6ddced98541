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

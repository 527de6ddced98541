#include "CurrentContext.h"

#include "NullContext.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace TOLVGraphing {
namespace {

TEST(CurrentContext, IsNoneOutsideOfScopes)
{
    EXPECT_EQ(currentContext(), nullptr);
}

TEST(CurrentContext, ScopesNest)
{
    NullContext outer;
    NullContext inner;
    {
        const CurrentContextScope outerScope(outer);
        EXPECT_EQ(currentContext(), &outer);
        {
            const CurrentContextScope innerScope(inner);
            EXPECT_EQ(currentContext(), &inner);
        }
        EXPECT_EQ(currentContext(), &outer);
    }
    EXPECT_EQ(currentContext(), nullptr);
}

TEST(CurrentContext, IsRestoredWhenDrawingThrows)
{
    NullContext context;
    try {
        const CurrentContextScope scope(context);
        throw std::runtime_error("no");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(currentContext(), nullptr);
    }
}

TEST(CurrentContext, BelongsToItsThread)
{
    NullContext context;
    const CurrentContextScope scope(context);
    const DrawingContext* elsewhere = &context;
    std::thread([&] { elsewhere = currentContext(); }).join();
    EXPECT_EQ(elsewhere, nullptr);
}

TEST(FlippedCoordinates, AreNotInForceOutsideOfScopes)
{
    EXPECT_FALSE(coordinatesAreFlipped());
}

TEST(FlippedCoordinates, ScopesNest)
{
    {
        const FlippedCoordinatesScope flipped(true);
        EXPECT_TRUE(coordinatesAreFlipped());
        {
            const FlippedCoordinatesScope again(true);
            EXPECT_TRUE(coordinatesAreFlipped());
            const FlippedCoordinatesScope upright(false);
            EXPECT_FALSE(coordinatesAreFlipped());
        }
        EXPECT_TRUE(coordinatesAreFlipped());
    }
    EXPECT_FALSE(coordinatesAreFlipped());
}

TEST(FlippedCoordinates, EndForTheLifeOfAnotherCurrentContext)
{
    NullContext context;
    const FlippedCoordinatesScope flipped(true);
    {
        const CurrentContextScope scope(context);
        EXPECT_FALSE(coordinatesAreFlipped());
        const FlippedCoordinatesScope inner(true);
        EXPECT_TRUE(coordinatesAreFlipped());
    }
    EXPECT_TRUE(coordinatesAreFlipped());
}

TEST(FlippedCoordinates, AreRestoredWhenDrawingThrows)
{
    try {
        const FlippedCoordinatesScope flipped(true);
        throw std::runtime_error("no");
    } catch (const std::runtime_error&) {
        EXPECT_FALSE(coordinatesAreFlipped());
    }
}

TEST(FlippedCoordinates, BelongToTheirThread)
{
    const FlippedCoordinatesScope flipped(true);
    bool elsewhere = true;
    std::thread([&] { elsewhere = coordinatesAreFlipped(); }).join();
    EXPECT_FALSE(elsewhere);
}

} // namespace
} // namespace TOLVGraphing

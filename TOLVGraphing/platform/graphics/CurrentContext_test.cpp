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

} // namespace
} // namespace TOLVGraphing

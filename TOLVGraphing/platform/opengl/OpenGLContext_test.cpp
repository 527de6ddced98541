#include "OpenGLContext.h"

#include <tests/support/RecordingOpenGL.h>

#include <gtest/gtest.h>

#include <memory>

namespace TOLVGraphing {
namespace {

using namespace testing_support;

TEST(OpenGLSystem, IsTheInstalledOneOrNone)
{
    const auto former = openGLSystem();
    setOpenGLSystem(nullptr);
    EXPECT_EQ(openGLSystem(), nullptr);
    EXPECT_EQ(currentOpenGLContext(), nullptr);
    const auto own = std::make_shared<StubOpenGLSystem>();
    setOpenGLSystem(own);
    EXPECT_EQ(openGLSystem(), own);
    EXPECT_EQ(currentOpenGLContext(), nullptr);
    own->current = std::make_shared<RecordingOpenGLContext>("A");
    EXPECT_EQ(currentOpenGLContext(), own->current);
    setOpenGLSystem(former);
}

TEST(StringRasterizer, IsTheInstalledOneOrNone)
{
    const auto former = stringRasterizer();
    setStringRasterizer(nullptr);
    EXPECT_EQ(stringRasterizer(), nullptr);
    const auto own = std::make_shared<StubRasterizer>();
    setStringRasterizer(own);
    EXPECT_EQ(stringRasterizer(), own);
    setStringRasterizer(former);
}

} // namespace
} // namespace TOLVGraphing

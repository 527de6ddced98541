#include "StringTexture.h"

#include "../platform/foundation/Log.h"

#include <tests/support/RecordingOpenGL.h>
#include <tests/support/StubTextSystem.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace TOLVGraphing {
namespace {

using namespace testing_support;
using Lines = std::vector<std::string>;

constexpr const char* kFailureLine = "StringTexture -genTexture: Failure to get current OpenGL context";

/// Texts are 10 by 5 points, bitmaps come from a stub, and the context "A" is current.
class StringTextureTest : public testing::Test {
protected:
    StubTextScope m_text{Size{10.0, 5.0}};
    std::shared_ptr<StubRasterizer> m_rasterizer = std::make_shared<StubRasterizer>();
    RasterizerScope m_rasterizerScope{m_rasterizer};
    std::shared_ptr<Lines> m_lines = std::make_shared<Lines>();
    std::shared_ptr<RecordingOpenGLContext> m_context = std::make_shared<RecordingOpenGLContext>("A", m_lines);
    OpenGLScope m_openGL{m_context};
    Lines m_log;
    LogSinkScope m_logScope{[this](std::string_view line) { m_log.emplace_back(line); }};
};

/// The calls that make a texture of a bitmap of 12 by 7 pixels.
Lines uploadOf12By7(const std::string& context, const std::string& name)
{
    return {"perform " + context, "pixelStorei 3314 12", "pixelStorei 3317 1", "genTextures 1", "bindTexture 34037 " + name, "texParameteri 34037 10241 9729",
        "texImage2D 34037 0 6408 12 7 0 6408 5121", "done"};
}

Lines joined(Lines one, const Lines& other)
{
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

TEST_F(StringTextureTest, StartsWithoutATextureWithWhiteColoursAndMarginsOfOne)
{
    const TextAttributes attributes{Font{"Helvetica", 9.0}, Color(1.0, 0.0, 0.0)};
    const StringTexture texture("text", attributes);
    EXPECT_EQ(texture.texName(), 0U);
    EXPECT_EQ(texture.texSize(), Size());
    EXPECT_EQ(texture.string(), AttributedString("text", attributes));
    EXPECT_EQ(texture.textColor(), Color(1.0, 1.0, 1.0, 1.0));
    EXPECT_EQ(texture.boxColor(), Color(1.0, 1.0, 1.0, 0.0));
    EXPECT_EQ(texture.borderColor(), Color(1.0, 1.0, 1.0, 0.0));
    EXPECT_FALSE(texture.staticFrame());
    EXPECT_EQ(texture.marginSize(), (Size{1.0, 1.0}));
    EXPECT_EQ(texture.pixelsPerPoint(), 1.0);
    EXPECT_EQ(texture.frameSize(), (Size{12.0, 7.0}));
    EXPECT_TRUE(m_lines->empty());
}

TEST_F(StringTextureTest, EveryFormKeepsTextAndColours)
{
    const Color red(1.0, 0.0, 0.0);
    const Color green(0.0, 1.0, 0.0, 0.5);
    const Color blue(0.0, 0.0, 1.0, 0.25);
    const TextAttributes attributes{Font{"Helvetica", 9.0}, std::nullopt};
    const AttributedString string("text", attributes);
    const StringTexture plain(string);
    EXPECT_EQ(plain.string(), string);
    EXPECT_EQ(plain.textColor(), Color::whiteColor());
    const StringTexture colored(string, red, green, blue);
    const StringTexture coloredPlain("text", attributes, red, green, blue);
    for (const StringTexture* texture : {&colored, &coloredPlain}) {
        EXPECT_EQ(texture->string(), string);
        EXPECT_EQ(texture->textColor(), red);
        EXPECT_EQ(texture->boxColor(), green);
        EXPECT_EQ(texture->borderColor(), blue);
    }
}

TEST_F(StringTextureTest, MakingATextureIsThisSequenceOfCalls)
{
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    EXPECT_EQ(*m_lines, uploadOf12By7("A", "1"));
    EXPECT_EQ(texture.texName(), 1U);
    EXPECT_EQ(texture.texSize(), (Size{12.0, 7.0}));
    ASSERT_EQ(m_context->uploadedBytes().size(), 12U * 7U * 4U);
    EXPECT_EQ(m_context->uploadedBytes()[250], 250);
    EXPECT_TRUE(m_log.empty());
}

TEST_F(StringTextureTest, ABitmapWithoutAlphaIsUploadedAsThreeComponents)
{
    m_rasterizer->hasAlpha = false;
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    EXPECT_EQ(m_lines->at(6), "texImage2D 34037 0 6408 12 7 0 6407 5121");
}

TEST_F(StringTextureTest, TheTextIsDrawnAtTheMarginInItsFrameWithItsOwnColour)
{
    const AttributedString string("text", TextAttributes{std::nullopt, Color(1.0, 0.0, 0.0)});
    StringTexture texture(string, Color(0.0, 1.0, 0.0), Color(0.0, 0.0, 1.0), Color::blackColor());
    texture.setMargins({3.0, 2.0});
    texture.setPixelsPerPoint(2.0);
    texture.genTexture();
    ASSERT_EQ(m_rasterizer->requests.size(), 1U);
    EXPECT_EQ(m_rasterizer->requests[0].string, string);
    EXPECT_EQ(m_rasterizer->requests[0].frame.size, (Size{16.0, 9.0}));
    EXPECT_EQ(m_rasterizer->requests[0].frame.textOrigin, (Point{3.0, 2.0}));
    EXPECT_EQ(m_rasterizer->requests[0].frame.scale, 2.0);
    // Texels, not points.
    EXPECT_EQ(texture.texSize(), (Size{32.0, 18.0}));
}

TEST_F(StringTextureTest, DrawingBindsAndEmitsFourCornersFromTheLowerLeftClockwise)
{
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    m_lines->clear();
    texture.drawWithBounds({10.5, 20.0, 30.0, 40.25});
    EXPECT_EQ(*m_lines,
        (Lines{"perform A", "bindTexture 34037 1", "begin 7", "texCoord2f 0 7", "vertex2f 10.5 20", "texCoord2f 0 0", "vertex2f 10.5 60.25", "texCoord2f 12 0",
            "vertex2f 40.5 60.25", "texCoord2f 12 7", "vertex2f 40.5 20", "end", "done"}));
}

TEST_F(StringTextureTest, DrawingAtAPointTakesTheTexturesOwnSize)
{
    StringTexture texture{AttributedString("text")};
    texture.drawAtPoint({100.0, 200.0});
    const Lines quad{"perform A", "bindTexture 34037 1", "begin 7", "texCoord2f 0 7", "vertex2f 100 200", "texCoord2f 0 0", "vertex2f 100 207", "texCoord2f 12 0",
        "vertex2f 112 207", "texCoord2f 12 7", "vertex2f 112 200", "end", "done"};
    EXPECT_EQ(*m_lines, joined(uploadOf12By7("A", "1"), quad));
    m_lines->clear();
    texture.drawAtPoint({100.0, 200.0});
    EXPECT_EQ(*m_lines, quad);
}

TEST_F(StringTextureTest, CornersAreAddedInDoubleAndNarrowedOnce)
{
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    m_lines->clear();
    texture.drawWithBounds({16777217.0, 0.1, 2.0, 0.2});
    // 16777219 lies between two floats and goes to the even one; in single precision the sum would have been 16777218.
    EXPECT_EQ(m_lines->at(4), "vertex2f 16777216 0.1");
    EXPECT_EQ(m_lines->at(8), "vertex2f 16777220 0.3");
}

TEST_F(StringTextureTest, EverySetterFreesTheTextureAndTheNextDrawMakesItAnew)
{
    const std::pair<const char*, std::function<void(StringTexture&)>> setters[] = {
        {"setString", [](StringTexture& texture) { texture.setString(AttributedString("other")); }},
        {"setString withAttributes", [](StringTexture& texture) { texture.setString("other", TextAttributes()); }},
        {"setTextColor", [](StringTexture& texture) { texture.setTextColor(Color::blackColor()); }},
        {"setBoxColor", [](StringTexture& texture) { texture.setBoxColor(Color::blackColor()); }},
        {"setBorderColor", [](StringTexture& texture) { texture.setBorderColor(Color::blackColor()); }},
        {"setMargins",
            [](StringTexture& texture) {
                texture.setMargins({1.0, 1.0});
            }},
        {"useStaticFrame",
            [](StringTexture& texture) {
                texture.useStaticFrame({12.0, 7.0});
            }},
        {"setPixelsPerPoint", [](StringTexture& texture) { texture.setPixelsPerPoint(1.0); }},
        {"genTexture", [](StringTexture& texture) { texture.genTexture(); }},
    };
    for (const auto& [name, set] : setters) {
        SCOPED_TRACE(name);
        const auto context = std::make_shared<RecordingOpenGLContext>("A");
        m_openGL.makeCurrent(context);
        StringTexture texture{AttributedString("text")};
        texture.genTexture();
        (void)context->takenLines();
        set(texture);
        const bool isMadeAtOnce = std::string_view(name) == "genTexture";
        EXPECT_EQ(texture.texName(), isMadeAtOnce ? 2U : 0U);
        const Lines deletion{"perform A", "deleteTexture 1", "done"};
        EXPECT_EQ(context->takenLines(), isMadeAtOnce ? joined(deletion, uploadOf12By7("A", "2")) : deletion);
        texture.drawAtPoint({});
        EXPECT_EQ(texture.texName(), 2U);
        EXPECT_EQ(context->livingTextures(), (std::set<std::uint32_t>{2}));
    }
}

TEST_F(StringTextureTest, SettersStoreWhatTheyAreGiven)
{
    StringTexture texture{AttributedString("text")};
    texture.setString("other", TextAttributes{Font{"Helvetica", 20.0}, std::nullopt});
    EXPECT_EQ(texture.string(), AttributedString("other", TextAttributes{Font{"Helvetica", 20.0}, std::nullopt}));
    texture.setTextColor(Color(0.1, 0.2, 0.3));
    texture.setBoxColor(Color(0.4, 0.5, 0.6));
    texture.setBorderColor(Color(0.7, 0.8, 0.9));
    EXPECT_EQ(texture.textColor(), Color(0.1, 0.2, 0.3));
    EXPECT_EQ(texture.boxColor(), Color(0.4, 0.5, 0.6));
    EXPECT_EQ(texture.borderColor(), Color(0.7, 0.8, 0.9));
    texture.setMargins({4.0, 5.0});
    EXPECT_EQ(texture.marginSize(), (Size{4.0, 5.0}));
    EXPECT_TRUE(m_lines->empty());
}

TEST_F(StringTextureTest, ADynamicFrameIsMeasuredOnceUntilTextOrMarginsChange)
{
    StringTexture texture{AttributedString("text")};
    EXPECT_EQ(texture.frameSize(), (Size{12.0, 7.0}));
    m_text->setSize("text", {20.0, 5.0});
    EXPECT_EQ(texture.frameSize(), (Size{12.0, 7.0}));
    texture.setTextColor(Color::blackColor());
    EXPECT_EQ(texture.frameSize(), (Size{12.0, 7.0}));
    texture.setMargins({3.0, 2.0});
    EXPECT_EQ(texture.frameSize(), (Size{26.0, 9.0}));
    texture.setString(AttributedString("other"));
    EXPECT_EQ(texture.frameSize(), (Size{16.0, 9.0}));
}

TEST_F(StringTextureTest, AStaticFrameStaysUntilItIsDynamicAgain)
{
    m_text->setSize("a longer text", {90.0, 5.0});
    StringTexture texture{AttributedString("text")};
    texture.useStaticFrame({50.0, 20.0});
    EXPECT_TRUE(texture.staticFrame());
    texture.setString(AttributedString("a longer text"));
    texture.setMargins({2.0, 2.0});
    EXPECT_EQ(texture.frameSize(), (Size{50.0, 20.0}));
    texture.genTexture();
    EXPECT_EQ(texture.texSize(), (Size{50.0, 20.0}));
    m_lines->clear();
    texture.useDynamicFrame();
    EXPECT_EQ(*m_lines, (Lines{"perform A", "deleteTexture 1", "done"}));
    EXPECT_FALSE(texture.staticFrame());
    EXPECT_EQ(texture.frameSize(), (Size{94.0, 9.0}));
}

TEST_F(StringTextureTest, ADynamicFrameThatIsMadeDynamicKeepsItsTexture)
{
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    m_lines->clear();
    texture.useDynamicFrame();
    EXPECT_EQ(texture.texName(), 1U);
    EXPECT_TRUE(m_lines->empty());
}

TEST_F(StringTextureTest, AnEmptyStaticFrameIsNotMeasured)
{
    StringTexture texture{AttributedString("text")};
    texture.useStaticFrame({0.0, 0.0});
    EXPECT_EQ(texture.frameSize(), Size());
}

TEST_F(StringTextureTest, WithoutAContextEachAttemptLogsOnceAndDrawsNothing)
{
    m_openGL.makeCurrent(nullptr);
    StringTexture texture{AttributedString("text")};
    texture.drawAtPoint({1.0, 2.0});
    EXPECT_EQ(m_log, (Lines{kFailureLine}));
    texture.drawWithBounds({0.0, 0.0, 10.0, 10.0});
    EXPECT_EQ(m_log, (Lines{kFailureLine, kFailureLine}));
    texture.genTexture();
    EXPECT_EQ(m_log, (Lines{kFailureLine, kFailureLine, kFailureLine}));
    EXPECT_EQ(texture.texName(), 0U);
    EXPECT_EQ(texture.texSize(), (Size{12.0, 7.0}));
    EXPECT_TRUE(m_lines->empty());

    m_openGL.makeCurrent(m_context);
    texture.drawAtPoint({1.0, 2.0});
    EXPECT_EQ(texture.texName(), 1U);
    EXPECT_EQ(m_log.size(), 3U);
}

TEST_F(StringTextureTest, WithoutASystemNoContextIsCurrent)
{
    setOpenGLSystem(nullptr);
    StringTexture texture{AttributedString("text")};
    texture.drawAtPoint({1.0, 2.0});
    EXPECT_EQ(m_log, (Lines{kFailureLine}));
}

TEST_F(StringTextureTest, CallsGoToTheContextThatTheTextureWasMadeIn)
{
    const auto other = std::make_shared<RecordingOpenGLContext>("B", m_lines);
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    m_lines->clear();
    m_openGL.makeCurrent(other);
    texture.drawAtPoint({});
    EXPECT_EQ(m_lines->front(), "perform A");
    EXPECT_EQ(texture.texName(), 1U);
    m_openGL.makeCurrent(nullptr);
    m_lines->clear();
    texture.drawAtPoint({});
    EXPECT_EQ(m_lines->front(), "perform A");
    EXPECT_TRUE(m_log.empty());

    // Made anew it belongs to the one that is current then.
    m_openGL.makeCurrent(other);
    m_lines->clear();
    texture.genTexture();
    EXPECT_EQ(*m_lines, joined({"perform A", "deleteTexture 1", "done"}, uploadOf12By7("B", "1")));
}

TEST_F(StringTextureTest, DestructionFreesTheTextureWhereItWasMade)
{
    {
        StringTexture texture{AttributedString("text")};
        texture.genTexture();
        m_openGL.makeCurrent(nullptr);
        m_lines->clear();
    }
    EXPECT_EQ(*m_lines, (Lines{"perform A", "deleteTexture 1", "done"}));
    m_lines->clear();
    {
        const StringTexture unused{AttributedString("text")};
    }
    EXPECT_TRUE(m_lines->empty());
}

TEST_F(StringTextureTest, DeletingTwiceDeletesOnce)
{
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    m_lines->clear();
    texture.deleteTexture();
    texture.deleteTexture();
    EXPECT_EQ(*m_lines, (Lines{"perform A", "deleteTexture 1", "done"}));
    EXPECT_EQ(texture.texName(), 0U);
}

TEST_F(StringTextureTest, AContextThatCannotBecomeCurrentIsLeftAlone)
{
    StringTexture texture{AttributedString("text")};
    texture.genTexture();
    m_lines->clear();
    m_context->refuse();
    texture.drawAtPoint({});
    texture.deleteTexture();
    EXPECT_EQ(texture.texName(), 0U);
    texture.drawAtPoint({});
    EXPECT_EQ(texture.texName(), 0U);
    EXPECT_TRUE(m_lines->empty());
}

TEST_F(StringTextureTest, FramesWithoutPixelsAndAMissingRasterizerMakeNoTexture)
{
    StringTexture texture{AttributedString("text")};
    for (const Size& size : {Size{0.0, 0.0}, Size{-5.0, 10.0}, Size{10.0, 0.5}}) {
        texture.useStaticFrame(size);
        texture.drawAtPoint({});
        EXPECT_EQ(texture.texName(), 0U) << toString(size);
    }
    setStringRasterizer(nullptr);
    texture.useStaticFrame({12.0, 7.0});
    texture.drawAtPoint({});
    EXPECT_EQ(texture.texName(), 0U);
    EXPECT_EQ(texture.texSize(), Size());
    EXPECT_TRUE(m_lines->empty());
    EXPECT_TRUE(m_log.empty());
}

TEST_F(StringTextureTest, TenThousandGenerationsLeaveOneTexture)
{
    m_context->stopWriting();
    StringTexture texture{AttributedString("text")};
    for (int i = 0; i < 10'000; ++i) {
        if (i % 2 == 0)
            texture.setMargins({1.0, 1.0});
        else
            texture.genTexture();
        texture.drawAtPoint({});
        ASSERT_EQ(m_context->livingTextures().size(), 1U);
    }
    EXPECT_EQ(m_context->livingTextures(), (std::set<std::uint32_t>{texture.texName()}));
    texture.deleteTexture();
    EXPECT_TRUE(m_context->livingTextures().empty());
}

} // namespace
} // namespace TOLVGraphing

// Texts and curves in real contexts: the pixels are read back.

#include "CheckedOpenGL.h"
#include "PixelCanvas.h"
#include "TestContext.h"

#include <TOLVGraphing/data/TOLVGraphCurve.h>
#include <TOLVGraphing/opengl/StringTexture.h>
#include <TOLVGraphing/platform/foundation/Log.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/DrawingContext.h>
#include <TOLVGraphing/platform/text/TextSystem.h>
#include <desktop/output/DesktopStringRasterizer.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/RecordingOpenGL.h>

#include <gtest/gtest.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::testing_support;

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 60;
/// The largest difference of a component between a text in a scene and the image context's. Mesa 22.3 shows none; another version may round a blended component to the other side.
constexpr int kLargestDifference = 1;
constexpr const char* kFailureLine = "StringTexture -genTexture: Failure to get current OpenGL context";

AttributedString textOf(const std::string& text, const Color& color = Color(0.7, 0.1, 0.0))
{
    return AttributedString(text, TextAttributes{Font{"Helvetica", 14.0}, color});
}

/// What the image context draws on a page of the canvas's size.
Pixels imageOf(const std::function<void()>& drawing, double scale = 1.0)
{
    OutputSettings settings;
    settings.size = {kWidth / scale, kHeight / scale};
    settings.scale = scale;
    return pixelsOfPNG(renderToBytes(OutputKind::PNG, settings, [&](DrawingContext&, const Rect&) { drawing(); }));
}

testing::AssertionResult looksLike(const Pixels& got, const Pixels& expected)
{
    const PixelDifference difference = pixelDifference(got, expected, 0);
    if (difference.haveSameSize && difference.largest <= kLargestDifference)
        return testing::AssertionSuccess() << difference.text();
    return testing::AssertionFailure() << difference.text();
}

bool isBlank(const Pixels& pixels)
{
    return std::all_of(pixels.bytes.begin(), pixels.bytes.end(), [](std::uint8_t byte) { return byte == 255; });
}

std::string nameOf(const testing::TestParamInfo<Platform>& info)
{
    return info.param == Platform::EGL ? "EGL" : "GLX";
}

/// A context of the platform with a canvas is current.
class Scene : public testing::TestWithParam<Platform> {
protected:
    void SetUp() override
    {
        std::string whyNot;
        m_context = TestContext::make(GetParam(), whyNot);
        if (!m_context)
            GTEST_SKIP() << whyNot;
        ASSERT_TRUE(m_context->makeCurrent());
        m_canvas = std::make_unique<PixelCanvas>(kWidth, kHeight);
    }

    TextSystemScope m_text{text::PangoTextSystem::shared()};
    RasterizerScope m_rasterizer{std::make_shared<DesktopStringRasterizer>()};
    CheckedOpenGLScope m_openGL;
    std::vector<std::string> m_log;
    LogSinkScope m_logScope{[this](std::string_view line) { m_log.emplace_back(line); }};
    std::unique_ptr<TestContext> m_context;
    std::unique_ptr<PixelCanvas> m_canvas;
};

INSTANTIATE_TEST_SUITE_P(Platforms, Scene, testing::Values(Platform::EGL, Platform::GLX), nameOf);

/// What GLX does not promise.
class SceneOfEGL : public Scene {};

INSTANTIATE_TEST_SUITE_P(Platforms, SceneOfEGL, testing::Values(Platform::EGL), nameOf);

TEST_P(Scene, ATextLooksAsTheImageContextDrawsIt)
{
    for (const Color& color : {Color::blackColor(), Color(0.7, 0.1, 0.0), Color(0.0, 0.3, 0.9, 0.5)}) {
        const AttributedString string = textOf("Sphinx, 20 kHz", color);
        StringTexture texture(string);
        m_canvas->clear();
        texture.drawAtPoint({10.0, 20.0});
        EXPECT_TRUE(looksLike(m_canvas->pixels(), imageOf([&] { string.drawAtPoint({11.0, 21.0}); }))) << toString(color);
        EXPECT_FALSE(isBlank(m_canvas->pixels()));
    }
    EXPECT_GT(m_openGL.counts().checkedCalls, 20U);
}

TEST_P(Scene, BoundsOfItsOwnSizeDrawTheTextAtItsOwnSize)
{
    const AttributedString string = textOf("Level (dB)");
    StringTexture texture(string);
    texture.genTexture();
    texture.drawWithBounds({{10.0, 20.0}, texture.texSize()});
    EXPECT_TRUE(looksLike(m_canvas->pixels(), imageOf([&] { string.drawAtPoint({11.0, 21.0}); })));
}

TEST_P(Scene, OnAScreenWithTwoPixelsAPointTheTextIsAsSharp)
{
    const PixelCanvas fine(kWidth, kHeight, 2.0);
    const AttributedString string = textOf("20 kHz");
    StringTexture texture(string);
    texture.setPixelsPerPoint(2.0);
    texture.genTexture();
    texture.drawWithBounds({5.0, 4.0, texture.texSize().width / 2.0, texture.texSize().height / 2.0});
    EXPECT_TRUE(looksLike(fine.pixels(), imageOf([&] { string.drawAtPoint({6.0, 5.0}); }, 2.0)));
    EXPECT_FALSE(isBlank(fine.pixels()));
}

TEST_P(Scene, PremultipliedBitmapsSuitTheOtherBlendFunction)
{
    const RasterizerScope premultiplied(std::make_shared<DesktopStringRasterizer>(DesktopStringRasterizer::Components::Premultiplied));
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    const AttributedString string = textOf("20 kHz", Color(0.0, 0.3, 0.9, 0.5));
    StringTexture texture(string);
    texture.drawAtPoint({10.0, 20.0});
    EXPECT_TRUE(looksLike(m_canvas->pixels(), imageOf([&] { string.drawAtPoint({11.0, 21.0}); })));
}

TEST_P(Scene, BetweenPixelsAStraightTextGetsNoDarkEdges)
{
    // White on white stays white wherever the pixels are interpolated.
    StringTexture texture(textOf("20 kHz", Color::whiteColor()));
    texture.genTexture();
    texture.drawWithBounds({10.3, 20.6, texture.texSize().width * 1.37, texture.texSize().height * 0.81});
    EXPECT_TRUE(isBlank(m_canvas->pixels()));
    EXPECT_NE(texture.texName(), 0U);
}

TEST_P(Scene, EverySetterShowsInTheNextDraw)
{
    StringTexture texture(textOf("first"));
    struct Step {
        const char* name;
        std::function<void()> set;
        AttributedString string;
        Point textOrigin;
    };
    const Color blue(0.0, 0.2, 0.8);
    const Step steps[] = {
        {"at first", [] {}, textOf("first"), {11.0, 21.0}},
        {"setString", [&] { texture.setString(textOf("second")); }, textOf("second"), {11.0, 21.0}},
        {"setString withAttributes", [&] { texture.setString("third", textOf("", blue).attributes()); }, textOf("third", blue), {11.0, 21.0}},
        {"setTextColor", [&] { texture.setTextColor(Color::blackColor()); }, textOf("third", blue), {11.0, 21.0}},
        {"setBoxColor", [&] { texture.setBoxColor(Color::blackColor()); }, textOf("third", blue), {11.0, 21.0}},
        {"setBorderColor", [&] { texture.setBorderColor(Color::blackColor()); }, textOf("third", blue), {11.0, 21.0}},
        {"setMargins",
            [&] {
                texture.setMargins({5.0, 3.0});
            },
            textOf("third", blue), {15.0, 23.0}},
        {"useStaticFrame",
            [&] {
                texture.useStaticFrame({90.0, 30.0});
            },
            textOf("third", blue), {15.0, 23.0}},
        {"useDynamicFrame", [&] { texture.useDynamicFrame(); }, textOf("third", blue), {15.0, 23.0}},
    };
    std::size_t generated = 0;
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        step.set();
        EXPECT_EQ(texture.texName(), 0U);
        m_canvas->clear();
        texture.drawAtPoint({10.0, 20.0});
        EXPECT_TRUE(looksLike(m_canvas->pixels(), imageOf([&] { step.string.drawAtPoint(step.textOrigin); })));
        EXPECT_EQ(m_openGL.counts().generatedTextures, ++generated);
        EXPECT_TRUE(glIsTexture(texture.texName()));
    }
}

TEST_P(Scene, AStaticFrameCutsTheTextOff)
{
    const AttributedString string = textOf("Sphinx, 20 kHz");
    StringTexture texture(string);
    texture.useStaticFrame({40.0, 30.0});
    texture.drawAtPoint({10.0, 20.0});
    const Pixels cut = imageOf([&] {
        string.drawAtPoint({11.0, 21.0});
        Color::whiteColor().setFill();
        currentContext()->fillRect({50.0, 0.0, 200.0, 60.0});
    });
    EXPECT_TRUE(looksLike(m_canvas->pixels(), cut));
}

TEST_P(Scene, WithoutAContextEachAttemptLogsOnce)
{
    releaseCurrentContext();
    StringTexture texture(textOf("text"));
    texture.drawAtPoint({10.0, 20.0});
    EXPECT_EQ(m_log, (std::vector<std::string>{kFailureLine}));
    texture.drawWithBounds({10.0, 20.0, 30.0, 10.0});
    EXPECT_EQ(m_log, (std::vector<std::string>{kFailureLine, kFailureLine}));
    EXPECT_EQ(texture.texName(), 0U);
    TOLVCurve curve;
    curve.addPoint({1.0, 2.0});
    curve.stroke3DAtZ(0.0F);
    EXPECT_EQ(m_log.size(), 2U);

    ASSERT_TRUE(m_context->makeCurrent());
    texture.drawAtPoint({10.0, 20.0});
    EXPECT_FALSE(isBlank(m_canvas->pixels()));
    EXPECT_EQ(m_log.size(), 2U);
}

TEST_P(Scene, WithNothingCurrentATextureIsDrawnAndDeletedWhereItWasMade)
{
    const AttributedString string = textOf("text");
    auto texture = std::make_unique<StringTexture>(string);
    texture->genTexture();
    const std::uint32_t name = texture->texName();
    releaseCurrentContext();
    texture->drawAtPoint({10.0, 20.0});
    EXPECT_FALSE(m_context->isCurrent());
    ASSERT_TRUE(m_context->makeCurrent());
    EXPECT_TRUE(looksLike(m_canvas->pixels(), imageOf([&] { string.drawAtPoint({11.0, 21.0}); })));
    EXPECT_TRUE(glIsTexture(name));
    releaseCurrentContext();
    texture.reset();
    EXPECT_FALSE(m_context->isCurrent());
    ASSERT_TRUE(m_context->makeCurrent());
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_TRUE(m_log.empty());
}

/// What a text in one context does while a context of another platform, or of the same, is current.
void expectCallsReachTheirOwnContext(TestContext& own, TestContext& other)
{
    const AttributedString string = textOf("here");
    const AttributedString otherString = textOf("there");
    const Pixels expected = imageOf([&] { string.drawAtPoint({11.0, 21.0}); });
    ASSERT_TRUE(own.makeCurrent());
    const PixelCanvas canvas(kWidth, kHeight);
    auto texture = std::make_unique<StringTexture>(string);
    texture->genTexture();
    const std::uint32_t name = texture->texName();

    ASSERT_TRUE(other.makeCurrent());
    const PixelCanvas otherCanvas(kWidth, kHeight);
    StringTexture otherTexture(otherString);
    otherTexture.genTexture();
    // Contexts that share nothing count their textures by themselves, so a call that goes astray hits the other's.
    EXPECT_EQ(otherTexture.texName(), name);
    texture->drawAtPoint({10.0, 20.0});
    EXPECT_TRUE(other.isCurrent());
    EXPECT_TRUE(isBlank(otherCanvas.pixels()));
    otherTexture.drawAtPoint({10.0, 20.0});
    EXPECT_TRUE(looksLike(otherCanvas.pixels(), imageOf([&] { otherString.drawAtPoint({11.0, 21.0}); })));

    texture.reset();
    EXPECT_TRUE(other.isCurrent());
    EXPECT_TRUE(glIsTexture(otherTexture.texName()));
    ASSERT_TRUE(own.makeCurrent());
    EXPECT_TRUE(looksLike(canvas.pixels(), expected));
    EXPECT_FALSE(glIsTexture(name));
}

TEST_P(Scene, WhileAnotherContextIsCurrentCallsReachTheirOwnAndTheOtherStaysCurrent)
{
    for (const Platform otherPlatform : {Platform::EGL, Platform::GLX}) {
        SCOPED_TRACE(testing::PrintToString(otherPlatform));
        std::string whyNot;
        const auto own = TestContext::make(GetParam(), whyNot);
        const auto other = TestContext::make(otherPlatform, whyNot);
        if (own && other)
            expectCallsReachTheirOwnContext(*own, *other);
    }
}

TEST_P(SceneOfEGL, ATextureIsDeletedAlsoWhereTheSurfaceThatItWasMadeWithHasGone)
{
    std::string whyNot;
    const auto own = TestContext::makeEGLWithSurface(whyNot);
    if (!own)
        GTEST_SKIP() << whyNot;
    ASSERT_TRUE(own->makeCurrent());
    auto texture = std::make_unique<StringTexture>(textOf("text"));
    texture->genTexture();
    const std::uint32_t name = texture->texName();
    EXPECT_TRUE(own->isCurrent());
    ASSERT_TRUE(m_context->makeCurrent());
    texture->drawAtPoint({10.0, 20.0});
    EXPECT_TRUE(m_context->isCurrent());
    own->destroySurface();
    texture.reset();
    EXPECT_TRUE(m_context->isCurrent());
    EXPECT_EQ(m_openGL.counts().deletedTextures, 1U);
    ASSERT_TRUE(own->makeCurrent());
    EXPECT_FALSE(glIsTexture(name));
    ASSERT_TRUE(m_context->makeCurrent());
}

TEST_P(SceneOfEGL, AContextThatIsCurrentOnAnotherThreadIsLeftToIt)
{
    StringTexture texture(textOf("text"));
    texture.genTexture();
    std::string whyNot;
    const auto other = TestContext::make(GetParam(), whyNot);
    ASSERT_TRUE(other);
    std::thread([&] {
        EXPECT_TRUE(other->makeCurrent());
        texture.drawAtPoint({10.0, 20.0});
        EXPECT_TRUE(other->isCurrent());
        releaseCurrentContext();
    }).join();
    EXPECT_TRUE(m_context->isCurrent());
    EXPECT_TRUE(isBlank(m_canvas->pixels()));
}

TEST_P(Scene, TenThousandGenerationsLeaveOneTexture)
{
    StringTexture texture(AttributedString("1", TextAttributes{Font{"Helvetica", 6.0}, std::nullopt}));
    for (int i = 0; i < 10'000; ++i)
        texture.genTexture();
    texture.drawAtPoint({10.0, 20.0});
    EXPECT_EQ(m_openGL.counts().generatedTextures, 10'000U);
    EXPECT_EQ(m_openGL.counts().deletedTextures, 9'999U);
    std::size_t living = 0;
    for (GLuint name = 1; name <= m_openGL.counts().largestTextureName; ++name)
        living += glIsTexture(name) ? 1 : 0;
    EXPECT_EQ(living, 1U);
    texture.deleteTexture();
    EXPECT_EQ(m_openGL.counts().deletedTextures, 10'000U);
}

/// How far a point is from the polyline.
double distanceFromLine(const std::vector<Point>& line, Point point)
{
    double nearest = 1e9;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double dx = line[i].x - line[i - 1].x;
        const double dy = line[i].y - line[i - 1].y;
        const double along = std::clamp(((point.x - line[i - 1].x) * dx + (point.y - line[i - 1].y) * dy) / std::max(dx * dx + dy * dy, 1e-12), 0.0, 1.0);
        nearest = std::min(nearest, std::hypot(line[i - 1].x + along * dx - point.x, line[i - 1].y + along * dy - point.y));
    }
    return nearest;
}

/// A curve of 20 samples over the canvas that goes up and down.
std::shared_ptr<TOLVGraphCurve> zigzag()
{
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i < 20; ++i) {
        x.push_back(static_cast<float>(i));
        y.push_back(static_cast<float>((i * 7) % 5));
    }
    auto curve = TOLVGraphCurve::curveWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), nullptr);
    curve->buildForRect({10.0, 10.0, 140.0, 40.0});
    return curve;
}

TEST_P(Scene, ACurveIsOneLineAlongItsPath)
{
    const auto curve = zigzag();
    const std::vector<Point> path = curve->curve()->allPoints();
    ASSERT_GE(path.size(), 18U);
    glDisable(GL_TEXTURE_RECTANGLE);
    glColor4f(0.0F, 0.0F, 1.0F, 1.0F);
    curve->draw3DInRect({}, 0.25F);
    const Pixels pixels = m_canvas->pixels();
    std::size_t drawn = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const std::string color = pixels.colorAt(x, y);
            if (color == "#ffffff")
                continue;
            ++drawn;
            EXPECT_EQ(color, "#0000ff");
            // A pixel of a line one pixel wide has its centre at most half a pixel beside it along one of the axes.
            EXPECT_LE(distanceFromLine(path, {x + 0.5, kHeight - y - 0.5}), 0.75) << x << " " << y;
        }
    }
    // One pixel for each column or row of a piece, whichever are more.
    double expectedCount = 0.0;
    for (std::size_t i = 1; i < path.size(); ++i)
        expectedCount += std::max(std::abs(path[i].x - path[i - 1].x), std::abs(path[i].y - path[i - 1].y));
    EXPECT_NEAR(static_cast<double>(drawn), expectedCount, 2.0 * static_cast<double>(path.size()));
    EXPECT_GT(m_openGL.counts().checkedCalls, 0U);
}

TEST_P(Scene, ACurveStandsAtItsDepth)
{
    const auto curve = zigzag();
    glDisable(GL_TEXTURE_RECTANGLE);
    glEnable(GL_DEPTH_TEST);
    const auto drawWallAndCurve = [&](float curveZ) {
        m_canvas->clear();
        glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
        glBegin(GL_QUADS);
        for (const auto& [x, y] : {std::pair{0.0F, 0.0F}, {160.0F, 0.0F}, {160.0F, 60.0F}, {0.0F, 60.0F}})
            glVertex3f(x, y, 0.5F);
        glEnd();
        glColor4f(0.0F, 0.0F, 1.0F, 1.0F);
        curve->draw3DInRect({}, curveZ);
        return m_canvas->pixels();
    };
    EXPECT_TRUE(isBlank(drawWallAndCurve(0.4F)));
    EXPECT_FALSE(isBlank(drawWallAndCurve(0.6F)));
}

TEST(SceneES, AContextOfOpenGLESIsNone)
{
    std::string whyNot;
    const auto context = TestContext::makeES(whyNot);
    if (!context)
        GTEST_SKIP() << whyNot;
    ASSERT_TRUE(context->makeCurrent());
    EXPECT_EQ(EpoxyOpenGLSystem().currentContext(), nullptr);
    releaseCurrentContext();
    EXPECT_EQ(EpoxyOpenGLSystem().currentContext(), nullptr);
}

TEST(EpoxyOpenGLSystem, IsInstalledOnRequest)
{
    const auto former = openGLSystem();
    installEpoxyOpenGLSystem();
    EXPECT_NE(dynamic_cast<const EpoxyOpenGLSystem*>(openGLSystem().get()), nullptr);
    setOpenGLSystem(former);
}

} // namespace

#include "OpaqueContext.h"

#include "TOLVGraphing/platform/graphics/GraphicsStateSaver.h"
#include "TOLVGraphing/platform/graphics/RecordingContext.h"
#include "desktop/cairo/CairoContext.h"
#include "desktop/cairo/CairoPointers.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

using namespace TOLVGraphing;
using TOLVGraphing::paint::OpaqueContext;

namespace {

using Drawing = std::function<void(DrawingContext&)>;

constexpr int kSide = 40;

/// The pixels of a drawing on a page of 40 x 40 points, with or without true translucency.
std::vector<unsigned char> pixelsOf(const Drawing& drawing, const Color& page, bool isFlattened)
{
    const cairo::SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide));
    {
        const cairo::ContextPointer target(cairo_create(surface.get()));
        cairo::setUpwardCoordinates(target.get(), kSide, 1.0);
        cairo::CairoContext context(target.get());
        context.saveState();
        context.fill(Rect{0.0, 0.0, kSide, kSide}, page);
        context.restoreState();
        if (isFlattened) {
            OpaqueContext opaque(context, page);
            drawing(opaque);
        } else {
            drawing(context);
        }
        EXPECT_EQ(context.error(), "");
    }
    cairo_surface_flush(surface.get());
    const unsigned char* data = cairo_image_surface_get_data(surface.get());
    return {data, data + kSide * kSide * 4};
}

int largestDifference(const Drawing& drawing, const Color& page = Color::whiteColor())
{
    const auto expected = pixelsOf(drawing, page, false);
    const auto flattened = pixelsOf(drawing, page, true);
    int largest = 0;
    for (std::size_t i = 0; i < expected.size(); ++i)
        largest = std::max(largest, std::abs(expected[i] - flattened[i]));
    return largest;
}

/// The colours of the fills and strokes that reach the target.
std::string coloursOf(const Drawing& drawing)
{
    RecordingContext recording;
    OpaqueContext opaque(recording, Color::whiteColor());
    drawing(opaque);
    EXPECT_EQ(recording.depth(), 0);
    std::string colours;
    for (const std::string& call : recording.calls()) {
        if (call.starts_with("fillColor ") || call.starts_with("strokeColor "))
            colours += call + "\n";
    }
    return colours;
}

void pileOfAreas(DrawingContext& context)
{
    context.fill(Rect{5.0, 5.0, 30.0, 30.0}, Color(0.9, 0.8, 0.1));
    context.fill(Rect{10.0, 0.0, 10.0, 40.0}, Color(0.0, 0.0, 1.0, 0.3));
    context.setStrokeColor(Color(0.2, 0.0, 0.4));
    context.setLineWidth(3.0);
    Path line;
    line.moveToX(0.0, 20.5);
    line.addLineToX(40.0, 20.5);
    context.drawStrokedPath(line);
    context.fill(Rect{0.0, 15.0, 40.0, 15.0}, Color(1.0, 0.0, 0.0, 0.5));
    context.fill(Rect{15.0, 10.0, 20.0, 12.0}, Color(0.0, 1.0, 0.0, 0.25));
    context.fill(Rect{18.0, 2.0, 4.0, 30.0}, Color(1.0, 1.0, 1.0, 0.6));
}

} // namespace

TEST(OpaqueContext, opaqueDrawingsPassUnchanged)
{
    EXPECT_EQ(coloursOf([](DrawingContext& context) {
        context.fill(Rect{0.0, 0.0, 5.0, 5.0}, Color(0.5, 0.25, 0.0));
        context.setStrokeColor(Color(7.0, 0.0, 0.0));
        context.drawStrokedPath(Path::pathWithRect({0.0, 0.0, 5.0, 5.0}));
        context.fill(Rect{0.0, 0.0, 5.0, 5.0}, Color(0.0, 0.0, 0.0, 0.0));
    }),
        "fillColor (0.5, 0.25, 0, 1)\n"
        "strokeColor (1, 0, 0, 1)\n");
}

TEST(OpaqueContext, whatLiesBelowShinesThrough)
{
    EXPECT_EQ(coloursOf([](DrawingContext& context) {
        context.fill(Rect{0.0, 0.0, 5.0, 5.0}, Color(0.0, 0.0, 1.0));
        context.fill(Rect{50.0, 0.0, 5.0, 5.0}, Color(0.0, 1.0, 0.0));
        context.fill(Rect{2.0, 2.0, 5.0, 5.0}, Color(1.0, 0.0, 0.0, 0.5));
    }),
        "fillColor (0, 0, 1, 1)\n"
        "fillColor (0, 1, 0, 1)\n"
        "fillColor (1, 0.5, 0.5, 1)\n"
        "fillColor (0.5, 0, 0.5, 1)\n");
}

TEST(OpaqueContext, areasThatPileUpLookAsBlended)
{
    // One step of rounding for each of the areas above one another.
    EXPECT_LE(largestDifference(pileOfAreas), 3);
    EXPECT_LE(largestDifference(pileOfAreas, Color(0.1, 0.2, 0.3)), 3);
}

TEST(OpaqueContext, clipsAndTransformsHoldForWhatIsDrawnAgain)
{
    EXPECT_LE(largestDifference([](DrawingContext& context) {
        {
            const GraphicsStateSaver saver(context);
            context.clipToPath(Path::pathWithRect({0.0, 0.0, 20.0, 40.0}), FillRule::NonZero);
            context.concatenateTransform({2.0, 0.0, 0.0, 2.0, 4.0, 0.0});
            context.clipToPath(Path::pathWithRect({0.0, 2.0, 20.0, 10.0}), FillRule::NonZero);
            context.fill(Rect{0.0, 0.0, 20.0, 20.0}, Color(0.0, 0.0, 1.0));
        }
        const GraphicsStateSaver saver(context);
        context.concatenateTransform({0.0, 1.0, -1.0, 0.0, 40.0, 0.0});
        context.clipToPath(Path::pathWithRect({0.0, 0.0, 30.0, 40.0}), FillRule::NonZero);
        Path ring = Path::pathWithRect({2.0, 2.0, 36.0, 36.0});
        ring.addRect({10.0, 10.0, 10.0, 10.0});
        context.setFillColor(Color(1.0, 0.0, 0.0, 0.5));
        context.drawFilledPath(ring, FillRule::EvenOdd);
        context.fill(Rect{5.0, 5.0, 25.0, 12.0}, Color(0.0, 0.5, 0.0, 0.5));
    }),
        2);
}

TEST(OpaqueContext, statesThatAreNotBalancedAreHarmless)
{
    RecordingContext recording;
    OpaqueContext opaque(recording, Color::whiteColor());
    opaque.restoreState();
    opaque.saveState();
    opaque.restoreState();
    opaque.restoreState();
    EXPECT_FALSE(recording.hasUnmatchedRestore());
    opaque.concatenateTransform({0.0, 0.0, 0.0, 0.0, 0.0, 0.0});
    opaque.fill(Rect{0.0, 0.0, 5.0, 5.0}, Color(1.0, 0.0, 0.0, 0.5));
    opaque.fill(Rect{0.0, 0.0, 5.0, 5.0}, Color(1.0, 0.0, 0.0, 0.5));
    EXPECT_EQ(recording.depth(), 0);
}

TEST(OpaqueContext, theRepeatedPointsAreLimited)
{
    RecordingContext recording;
    OpaqueContext opaque(recording, Color::whiteColor());
    for (int i = 0; i < 3000; ++i)
        opaque.fill(Rect{0.0, 0.0, 5.0, 5.0}, Color(1.0, 0.0, 0.0, 0.5));
    const auto fills = std::count_if(recording.calls().begin(), recording.calls().end(), [](const std::string& call) { return call.starts_with("fill M"); });
    EXPECT_GT(fills, 3000 + 10000);
    EXPECT_LE(fills, 3000 + static_cast<long>(OpaqueContext::kMostRepeatedPoints / 4));
}

TEST(OpaqueContext, theRepeatedPointsOfClipsAreLimited)
{
    RecordingContext recording;
    OpaqueContext opaque(recording, Color::whiteColor());
    Path clip;
    for (int i = 0; i < 1000; ++i)
        clip.addLineToPoint({i % 2 == 0 ? 0.0 : 5.0, 0.005 * i});
    opaque.clipToPath(clip, FillRule::NonZero);
    for (int i = 0; i < 300; ++i)
        opaque.fill(Rect{0.0, 0.0, 5.0, 5.0}, Color(1.0, 0.0, 0.0, 0.5));
    std::size_t length = 0;
    for (const std::string& call : recording.calls())
        length += call.size();
    // No point is longer than "L 5 4.995 ", and what comes with a fill than a thousand characters.
    EXPECT_LE(length, 10 * OpaqueContext::kMostRepeatedPoints + 300'000);
    EXPECT_GT(length, 5 * OpaqueContext::kMostRepeatedPoints);
}

#include "PathStamps.h"

#include "CairoContext.h"
#include "CairoPointers.h"

#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::cairo;
using TOLVGraphing::testing_support::Generated;

namespace {

constexpr int kWidth = 90;
constexpr int kHeight = 70;
constexpr std::array kCaps{LineCap::Butt, LineCap::Round, LineCap::Square};
constexpr std::array kCairosCaps{CAIRO_LINE_CAP_BUTT, CAIRO_LINE_CAP_ROUND, CAIRO_LINE_CAP_SQUARE};
constexpr std::array kJoins{LineJoin::Miter, LineJoin::Round, LineJoin::Bevel};
constexpr std::array kCairosJoins{CAIRO_LINE_JOIN_MITER, CAIRO_LINE_JOIN_ROUND, CAIRO_LINE_JOIN_BEVEL};

/// An image of colours that may be translucent, the same for equal seeds; every fifth is as Cairo makes it.
SurfacePointer generatedImage(unsigned seed)
{
    SurfacePointer surface(cairo_image_surface_create(seed % 2 == 0 ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, kWidth, kHeight));
    const ContextPointer target(cairo_create(surface.get()));
    Generated generated(seed);
    for (int i = 0; i < 60 && seed % 5 != 0; ++i) {
        cairo_set_source_rgba(target.get(), generated.number(0.0, 1.0), generated.number(0.0, 1.0), generated.number(0.0, 1.0), generated.number(0.0, 1.0));
        cairo_rectangle(target.get(), generated.number(-9.0, kWidth), generated.number(-9.0, kHeight), 19.0, 17.0);
        cairo_fill(target.get());
    }
    return surface;
}

std::vector<unsigned char> bytesOf(cairo_surface_t* surface)
{
    cairo_surface_flush(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    return {data, data + static_cast<std::ptrdiff_t>(cairo_image_surface_get_stride(surface)) * kHeight};
}

/// Lines, curves and closed parts within some points of the origin; some of them upright and level, on whole points or far too large.
Path generatedPath(Generated& generated)
{
    const double reach = generated.whole(12) == 0 ? 80.0 : generated.number(1.0, 12.0);
    const double unit = generated.whole(2) == 0 ? 1.0 : 1.0 / 256.0;
    const auto coordinate = [&] { return std::floor(generated.number(-reach, reach) / unit) * unit; };
    const auto point = [&] { return Point{coordinate(), coordinate()}; };
    Path path;
    path.moveToPoint(point());
    const std::uint32_t count = 1 + generated.whole(6);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t kind = generated.whole(8);
        if (kind == 0)
            path.moveToPoint(point());
        else if (kind == 1)
            path.closeSubpath();
        else if (kind == 2)
            path.addCurveToPoint(point(), point(), point());
        else if (kind == 3)
            path.addLineToX(path.points().back().x, coordinate());
        else
            path.addLineToPoint(point());
    }
    return path;
}

/// Places in and around the image, many of them alike in their parts of a pixel.
std::vector<Point> generatedPlaces(Generated& generated)
{
    const double unit = std::array{1.0, 0.25, 1.0 / 256.0}[generated.whole(3)];
    std::vector<Point> places;
    for (int i = 0; i < 40; ++i)
        places.push_back({std::floor(generated.number(-30.0, kWidth + 30.0) / unit) * unit, std::floor(generated.number(-30.0, kHeight + 30.0) / unit) * unit});
    return places;
}

AffineTransform generatedTransform(Generated& generated)
{
    const std::array<AffineTransform, 6> transforms{AffineTransform{1.0, 0.0, 0.0, -1.0, 0.0, kHeight}, AffineTransform{1.0, 0.0, 0.0, 1.0, 0.0, 0.0},
        AffineTransform{1.25, 0.0, 0.0, -1.25, 0.0, kHeight}, AffineTransform{0.6, 0.0, 0.0, -0.7, 3.3, kHeight}, AffineTransform{0.8, 0.6, -0.6, 0.8, 30.0, -10.0},
        AffineTransform{1.0, 0.3, 0.1, 1.2, 0.0, -9.5}};
    return transforms[generated.whole(6)];
}

struct Scene {
    Path path;
    std::vector<Point> places;
    AffineTransform transform;
    Color color;
    bool isStroke = false;
    FillRule rule = FillRule::NonZero;
    double width = 1.0;
    std::uint32_t cap = 0;
    std::uint32_t join = 0;
    /// A clip of whole pixels, or one that cuts them, in pixels.
    Rect clip;
};

Scene generatedScene(unsigned seed)
{
    Generated generated(seed + 1000);
    Scene scene;
    scene.path = generatedPath(generated);
    scene.places = generatedPlaces(generated);
    scene.transform = generatedTransform(generated);
    scene.color = {generated.number(0.0, 1.0), generated.number(0.0, 1.0), generated.number(0.0, 1.0), generated.whole(2) == 0 ? 1.0 : generated.number(0.0, 1.0)};
    scene.isStroke = generated.whole(3) != 0;
    scene.rule = generated.whole(2) == 0 ? FillRule::NonZero : FillRule::EvenOdd;
    scene.width = generated.whole(2) == 0 ? 1.0 : generated.number(0.2, 5.0);
    scene.cap = generated.whole(3);
    scene.join = generated.whole(3);
    scene.clip = generated.whole(4) == 0 ? Rect(5.5, 3.25, 60.0, 50.0) : generated.whole(2) == 0 ? Rect(7.0, 4.0, 61.0, 50.0) : Rect(0.0, 0.0, kWidth, kHeight);
    return scene;
}

ContextPointer clippedTarget(cairo_surface_t* surface, const Scene& scene)
{
    ContextPointer target(cairo_create(surface));
    cairo_rectangle(target.get(), scene.clip.x(), scene.clip.y(), scene.clip.width(), scene.clip.height());
    cairo_clip(target.get());
    const AffineTransform& transform = scene.transform;
    const cairo_matrix_t matrix{transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty};
    cairo_set_matrix(target.get(), &matrix);
    return target;
}

std::vector<unsigned char> paintedOnce(const Scene& scene, unsigned seed)
{
    const SurfacePointer image = generatedImage(seed);
    const ContextPointer target = clippedTarget(image.get(), scene);
    {
        CairoContext context(target.get());
        context.setFillColor(scene.color);
        context.setStrokeColor(scene.color);
        context.setLineWidth(scene.width);
        context.setLineCap(kCaps[scene.cap]);
        context.setLineJoin(kJoins[scene.join]);
        if (scene.isStroke)
            context.drawStrokedRepeats(scene.path, scene.places);
        else
            context.drawFilledRepeats(scene.path, scene.rule, scene.places);
    }
    return bytesOf(image.get());
}

void addElements(cairo_t* target, const Path& path, Point place)
{
    std::size_t next = 0;
    const auto point = [&](std::size_t i) { return Point{path.points()[next + i].x + place.x, path.points()[next + i].y + place.y}; };
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::Close) {
            cairo_close_path(target);
        } else if (verb == Path::Verb::Move) {
            cairo_move_to(target, point(0).x, point(0).y);
        } else if (verb == Path::Verb::Line) {
            cairo_line_to(target, point(0).x, point(0).y);
        } else {
            cairo_curve_to(target, point(0).x, point(0).y, point(1).x, point(1).y, point(2).x, point(2).y);
        }
        next += verb == Path::Verb::Close ? 0 : verb == Path::Verb::Curve ? 3 : 1;
    }
}

std::vector<unsigned char> paintedByCairo(const Scene& scene, unsigned seed)
{
    const SurfacePointer image = generatedImage(seed);
    const ContextPointer target = clippedTarget(image.get(), scene);
    cairo_set_source_rgba(target.get(), scene.color.redComponent(), scene.color.greenComponent(), scene.color.blueComponent(), scene.color.alphaComponent());
    cairo_set_line_width(target.get(), scene.width);
    cairo_set_line_cap(target.get(), kCairosCaps[scene.cap]);
    cairo_set_line_join(target.get(), kCairosJoins[scene.join]);
    cairo_set_fill_rule(target.get(), scene.rule == FillRule::EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    for (const Point& place : scene.places) {
        addElements(target.get(), scene.path, place);
        if (scene.isStroke)
            cairo_stroke(target.get());
        else
            cairo_fill(target.get());
    }
    return bytesOf(image.get());
}

std::size_t differingBytes(const std::vector<unsigned char>& one, const std::vector<unsigned char>& other)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < one.size(); ++i)
        count += one[i] != other[i] ? 1 : 0;
    return count;
}

Path cross()
{
    Path path;
    path.moveToX(-4.0, -4.0);
    path.addLineToX(4.0, 4.0);
    path.moveToX(-4.0, 4.0);
    path.addLineToX(4.0, -4.0);
    return path;
}

class PathStampsTest : public ::testing::Test {
protected:
    void begin(const Path& path, const AffineTransform& toPixels = {}) { stamps.begin(target.get(), path, toPixels, StampKind::Stroke, Color::blackColor()); }

    SurfacePointer image{cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)};
    ContextPointer target{cairo_create(image.get())};
    PathStamps stamps;
};

} // namespace

TEST(PathStamps, PaintSmallPathsAtManyPlacesToTheByteAsCairoDoes)
{
    for (unsigned seed = 0; seed < 600; ++seed) {
        const Scene scene = generatedScene(seed);
        EXPECT_EQ(differingBytes(paintedOnce(scene, seed), paintedByCairo(scene, seed)), 0U)
            << "seed " << seed << ": " << toString(scene.path) << (scene.isStroke ? ", stroked, width " : ", filled, width ") << scene.width << ", alpha "
            << scene.color.alphaComponent();
    }
}

TEST_F(PathStampsTest, AreTheSameForPlacesWholePixelsApart)
{
    const Path path = cross();
    begin(path);
    const auto here = stamps.stampAt({20.0, 30.0});
    const auto there = stamps.stampAt({50.0, 10.0});
    const auto between = stamps.stampAt({50.5, 10.0});
    ASSERT_TRUE(here && there && between);
    EXPECT_EQ(here->stamp, there->stamp);
    EXPECT_NE(here->stamp, between->stamp);
    // The corners of a line of width 1 at 45 degrees stick out by a third of a pixel; ten columns make three groups of four.
    EXPECT_EQ(here->reach, (PixelRange{15, 25, 27, 35}));
    EXPECT_EQ(there->reach, (PixelRange{45, 5, 57, 15}));
    EXPECT_EQ(here->left, 15);
    EXPECT_EQ(here->top, 25);
}

TEST_F(PathStampsTest, HaveAnotherStampWhereAClipCutsThem)
{
    const Path path = cross();
    begin(path);
    const auto whole = stamps.stampAt({20.0, 30.0});
    ASSERT_TRUE(whole);
    const auto low = stamps.clippedStamp({0, 0, kWidth, 32});
    ASSERT_TRUE(low);
    EXPECT_NE(low->stamp, whole->stamp);
    EXPECT_EQ(low->reach, (PixelRange{15, 25, 27, 32}));
    ASSERT_TRUE(stamps.stampAt({40.0, 30.0}));
    const auto again = stamps.clippedStamp({0, 0, kWidth, 32});
    ASSERT_TRUE(again);
    EXPECT_EQ(again->stamp, low->stamp);
    EXPECT_EQ(again->left, 35);
    // Groups of four pixels would go beyond such a clip.
    EXPECT_FALSE(stamps.clippedStamp({0, 0, 44, kHeight}));
}

TEST_F(PathStampsTest, LeaveToCairoWhatItPaintsInAnotherWayAndWhatIsLarge)
{
    Path level;
    level.moveToX(0.0, 0.0);
    level.addLineToX(5.0, 0.0);
    level.addLineToX(5.0, 5.0);
    begin(level);
    EXPECT_FALSE(stamps.stampAt({20.0, 20.0}));
    Path large;
    large.moveToX(0.0, 0.0);
    large.addLineToX(70.0, 10.0);
    begin(large);
    EXPECT_FALSE(stamps.stampAt({20.0, 20.0}));
    Path winding;
    for (int i = 0; i < 33; ++i)
        winding.addLineToX(i % 2, i * 0.25);
    begin(winding);
    EXPECT_FALSE(stamps.stampAt({20.0, 20.0}));
    Path corner;
    corner.moveToX(0.0, 0.0);
    corner.addLineToX(5.0, 2.0);
    corner.addLineToX(5.0, 5.0);
    begin(corner);
    EXPECT_FALSE(stamps.stampAt({20.0, 20.0}));
    cairo_set_line_join(target.get(), CAIRO_LINE_JOIN_ROUND);
    begin(corner);
    EXPECT_TRUE(stamps.stampAt({20.0, 20.0}));
    const Path path = cross();
    begin(path);
    EXPECT_FALSE(stamps.stampAt({1e7, 20.0}));
    EXPECT_FALSE(stamps.stampAt({20.0, std::numeric_limits<double>::quiet_NaN()}));
    EXPECT_TRUE(stamps.stampAt({20.0, 20.0}));
    begin(path, {0.8, 0.6, -0.6, 0.8, 0.0, 0.0});
    EXPECT_FALSE(stamps.stampAt({20.0, 20.0}));
    const Path nothing;
    begin(nothing);
    EXPECT_FALSE(stamps.stampAt({20.0, 20.0}));
}

TEST_F(PathStampsTest, ForgetSoThatMemoryIsBounded)
{
    const Path path = cross();
    begin(path);
    const auto first = stamps.stampAt({20.0, 20.0});
    ASSERT_TRUE(first);
    const PixelRange reach = first->reach;
    // More than fit: each has some two thousand bytes, and there is room for four million.
    for (int x = 0; x < 64; ++x) {
        for (int y = 0; y < 64; ++y)
            EXPECT_TRUE(stamps.stampAt({20.0 + x / 64.0, 20.0 + y / 64.0}));
    }
    const auto again = stamps.stampAt({20.0, 20.0});
    ASSERT_TRUE(again);
    EXPECT_EQ(again->reach, reach);
}

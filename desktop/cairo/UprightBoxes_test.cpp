#include "UprightBoxes.h"

#include "CairoContext.h"
#include "CairoPointers.h"

#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

using namespace TOLVGraphing;
using namespace TOLVGraphing::cairo;
using TOLVGraphing::testing_support::Generated;

namespace {

constexpr int kWidth = 60;
constexpr int kHeight = 40;
constexpr AffineTransform kUpwards{1.0, 0.0, 0.0, -1.0, 0.0, kHeight};

/// Lines of two points each.
Path lines(std::initializer_list<std::pair<Point, Point>> ends)
{
    Path path;
    for (const auto& [from, to] : ends) {
        path.moveToPoint(from);
        path.addLineToPoint(to);
    }
    return path;
}

/// A white image with y growing upwards from its lower edge.
class Picture {
public:
    explicit Picture(double scale) : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)), m_target(cairo_create(m_surface.get()))
    {
        cairo_set_source_rgb(m_target.get(), 1.0, 1.0, 1.0);
        cairo_paint(m_target.get());
        setUpwardCoordinates(m_target.get(), kHeight, scale);
    }

    cairo_t* target() { return m_target.get(); }
    std::vector<unsigned char> bytes()
    {
        cairo_surface_flush(m_surface.get());
        const unsigned char* data = cairo_image_surface_get_data(m_surface.get());
        return {data, data + static_cast<std::ptrdiff_t>(cairo_image_surface_get_stride(m_surface.get())) * kHeight};
    }

private:
    SurfacePointer m_surface;
    ContextPointer m_target;
};

void layPath(cairo_t* target, const Path& path)
{
    std::size_t next = 0;
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::Close) {
            cairo_close_path(target);
            continue;
        }
        const Point point = path.points()[next++];
        verb == Path::Verb::Move ? cairo_move_to(target, point.x, point.y) : cairo_line_to(target, point.x, point.y);
    }
}

std::vector<unsigned char> strokedByUs(const Path& path, double width, double scale, const Rect& clip, double alpha)
{
    Picture picture(scale);
    {
        CairoContext context(picture.target());
        context.clipToPath(Path::pathWithRect(clip), FillRule::NonZero);
        context.setStrokeColor(Color(0.1, 0.4, 0.7, alpha));
        context.setLineWidth(width);
        context.drawStrokedPath(path);
    }
    return picture.bytes();
}

std::vector<unsigned char> strokedByCairo(const Path& path, double width, double scale, const Rect& clip, double alpha)
{
    Picture picture(scale);
    layPath(picture.target(), Path::pathWithRect(clip));
    cairo_clip(picture.target());
    cairo_set_source_rgba(picture.target(), 0.1, 0.4, 0.7, alpha);
    cairo_set_line_width(picture.target(), width);
    layPath(picture.target(), path);
    cairo_stroke(picture.target());
    return picture.bytes();
}

} // namespace

TEST(UprightBoxes, ofLinesAreAsWideAsTheLines)
{
    EXPECT_EQ(
        boxesOfStroke(lines({{{2.5, 1.0}, {2.5, 30.0}}, {{9.5, 30.0}, {9.5, 1.0}}}), kUpwards, 0.5), (std::vector<FixedBox>{{576, 2560, 704, 9984}, {2368, 2560, 2496, 9984}}));
    EXPECT_EQ(boxesOfStroke(lines({{{2.0, 1.5}, {50.0, 1.5}}}), kUpwards, 1.0), (std::vector<FixedBox>{{512, 38 * 256, 50 * 256, 39 * 256}}));
    EXPECT_EQ(boxesOfStroke(lines({{{2.0, 1.5}, {50.0, 1.5}}}), {3.0, 0.0, 0.0, 2.0, 0.0, 0.0}, 1.0), (std::vector<FixedBox>{{6 * 256, 2 * 256, 150 * 256, 4 * 256}}));
}

TEST(UprightBoxes, ofAFrameAreItsSides)
{
    EXPECT_EQ(boxesOfStroke(Path::pathWithRect({2.5, 3.5, 10.0, 20.0}), {1.0, 0.0, 0.0, 1.0, 0.0, 0.0}, 1.0),
        (std::vector<FixedBox>{{512, 768, 3328, 1024}, {512, 1024, 768, 5888}, {3072, 1024, 3328, 5888}, {512, 5888, 3328, 6144}}));
}

TEST(UprightBoxes, areNoneWhereCairoHasToStroke)
{
    const AffineTransform plain{1.0, 0.0, 0.0, 1.0, 0.0, 0.0};
    const std::pair<Point, Point> level{{2.0, 1.5}, {50.0, 1.5}};
    EXPECT_FALSE(boxesOfStroke(lines({level}), plain, 1.0).empty());
    EXPECT_TRUE(boxesOfStroke(lines({level}), {1.0, 0.1, 0.0, 1.0, 0.0, 0.0}, 1.0).empty()) << "sheared";
    EXPECT_TRUE(boxesOfStroke(lines({level}), {0.0, 1.0, -1.0, 0.0, 0.0, 0.0}, 1.0).empty()) << "turned";
    EXPECT_TRUE(boxesOfStroke(lines({level}), plain, 0.1).empty()) << "hardly visible";
    EXPECT_TRUE(boxesOfStroke(lines({{{2.0, 1.5}, {50.0, 2.5}}}), plain, 1.0).empty()) << "slanted";
    EXPECT_TRUE(boxesOfStroke(lines({{{2.0, 1.5}, {2.0, 1.5}}}), plain, 1.0).empty()) << "no length";
    EXPECT_TRUE(boxesOfStroke(lines({level, {{7.5, 3.0}, {7.5, 9.0}}}), plain, 1.0).empty()) << "two directions";
    EXPECT_TRUE(boxesOfStroke(lines({{{2.0, 1.5}, {9.0, 1.5}}, {{2.0, 2.0}, {9.0, 2.0}}}), plain, 0.5).empty()) << "in one pixel";
    EXPECT_TRUE(boxesOfStroke(lines({{{2.0, 1.5}, {9.0, 1.5}}, {{2.0, 9.5}, {9.0, 9.5}}, {{2.0, 5.5}, {9.0, 5.5}}}), plain, 0.5).empty()) << "in no order";
    EXPECT_TRUE(boxesOfStroke(Path::pathWithRect({2.3, 3.5, 10.0, 20.0}), plain, 1.0).empty()) << "corners that cover pixels in part";
    EXPECT_TRUE(boxesOfStroke(Path::pathWithRect({2.5, 3.5, 1.0, 20.0}), plain, 1.0).empty()) << "no inside";
    EXPECT_TRUE(boxesOfStroke(Path::pathWithOvalInRect({2.5, 3.5, 10.0, 20.0}), plain, 1.0).empty()) << "curves";
    EXPECT_TRUE(boxesOfStroke(Path(), plain, 1.0).empty()) << "nothing";
    Path bent = lines({level});
    bent.addLineToX(50.0, 9.5);
    EXPECT_TRUE(boxesOfStroke(bent, plain, 1.0).empty()) << "bent";
}

TEST(UprightBoxes, areNoneOfPathsWithFewerPointsThanElements)
{
    Path closedAtOnce;
    closedAtOnce.moveToPoint({5.0, 5.0});
    closedAtOnce.closeSubpath();
    Path twice = closedAtOnce;
    twice.addPath(closedAtOnce);
    Path alone;
    alone.moveToPoint({5.0, 5.0});
    for (const Path& path : {Path(), alone, closedAtOnce, twice})
        EXPECT_TRUE(boxesOfStroke(path, kUpwards, 1.0).empty()) << toString(path);
}

TEST(UprightBoxes, ofAPathAreThoseOfASingleRectangle)
{
    const AffineTransform plain{1.0, 0.0, 0.0, 1.0, 0.0, 0.0};
    EXPECT_EQ(boxOfPath(Path::pathWithRect({1.0, 2.0, 3.0, 4.0}), plain), (FixedBox{256, 512, 1024, 1536}));
    EXPECT_EQ(boxOfPath(Path::pathWithRect({1.0, 6.0, 3.0, -4.0}), plain), (FixedBox{256, 512, 1024, 1536}));
    EXPECT_EQ(boxOfPath(Path::pathWithRect({1.0, 2.0, 0.0, 4.0}), plain), (FixedBox{256, 512, 256, 1536}));
    EXPECT_EQ(boxOfPath(Path::pathWithRect({1.0, 2.0, 3.0, 4.0}), {0.5, 0.1, 0.0, 1.0, 0.0, 0.0}), std::nullopt);
    EXPECT_EQ(boxOfPath(Path::pathWithRoundedRect({1.0, 2.0, 3.0, 4.0}, 1.0, 1.0), plain), std::nullopt);
    EXPECT_EQ(boxOfPath(Path(), plain), std::nullopt);
    Path two = Path::pathWithRect({1.0, 2.0, 3.0, 4.0});
    two.addRect({1.0, 2.0, 3.0, 4.0});
    EXPECT_EQ(boxOfPath(two, plain), std::nullopt);
    Path kite;
    for (const Point point : {Point{1.0, 2.0}, Point{4.0, 2.0}, Point{5.0, 6.0}, Point{1.0, 6.0}})
        kite.addLineToPoint(point);
    kite.closeSubpath();
    EXPECT_EQ(boxOfPath(kite, plain), std::nullopt);
}

// Wide and thin, on the grid of pixels and between, close enough to share pixels and apart, under clips of whole pixels and others.
TEST(UprightBoxes, linesComeOutToTheByteAsCairos)
{
    Generated generated(3);
    int boxCount = 0;
    for (int i = 0; i < 400; ++i) {
        const double scale = i % 3 == 0 ? 1.0 : i % 3 == 1 ? 2.0 : 1.25;
        const double width = i % 4 == 0 ? 0.5 : i % 4 == 1 ? 1.0 : generated.number(0.01, 3.0);
        const bool isLevel = i % 2 == 0;
        const double length = (isLevel ? kHeight : kWidth) / scale;
        Path path;
        double place = generated.number(-2.0, 4.0);
        for (int line = 0; line < 8 && place < length; ++line) {
            const double along = i % 5 < 3 ? std::rint(place) + 0.5 : place;
            path.moveToX(isLevel ? 1.5 : along, isLevel ? along : 2.25);
            path.addLineToX(isLevel ? 70.0 : along, isLevel ? along : 25.5);
            place += generated.number(0.2, 9.0);
        }
        if (i % 9 == 0)
            path = Path::pathWithRect({std::rint(generated.number(0.0, 20.0)) + 0.5, 3.5, std::rint(generated.number(1.0, 20.0)), 9.0});
        const double edge = i % 7 == 0 ? 2.4 : 2.0;
        const Rect clip{edge, 2.0, kWidth / scale - 2.0 * edge, std::floor(kHeight / scale) - 4.0};
        const double alpha = i % 6 < 3 ? 1.0 : 0.4;
        EXPECT_EQ(strokedByUs(path, width, scale, clip, alpha), strokedByCairo(path, width, scale, clip, alpha)) << "case " << i << ", width " << width << ", scale " << scale;
        boxCount += static_cast<int>(boxesOfStroke(path, {scale, 0.0, 0.0, -scale, 0.0, kHeight}, width).size());
    }
    EXPECT_GT(boxCount, 500);
}

TEST(UprightBoxes, clipsHoldForBoxesAndText)
{
    for (const bool isOnGrid : {true, false}) {
        Picture picture(1.0);
        {
            CairoContext context(picture.target());
            context.clipToPath(Path::pathWithRect({10.0, 10.0, 20.0, 20.0}), FillRule::NonZero);
            context.saveState();
            context.clipToPath(isOnGrid ? Path::pathWithRect({15.0, 5.0, 20.0, 20.0}) : Path::pathWithOvalInRect({15.0, 10.0, 15.0, 15.0}), FillRule::NonZero);
            context.setFillColor(Color::blackColor());
            context.fillRect({0.0, 0.0, kWidth, kHeight});
            context.restoreState();
            context.setFillColor(Color(1.0, 0.0, 0.0));
            context.fillRect({0.0, 28.0, kWidth, kHeight});
        }
        const auto bytes = picture.bytes();
        const auto blue = [&](int x, int y) { return bytes.at(static_cast<std::size_t>(((kHeight - 1 - y) * kWidth + x) * 4)); };
        const auto red = [&](int x, int y) { return bytes.at(static_cast<std::size_t>(((kHeight - 1 - y) * kWidth + x) * 4 + 2)); };
        EXPECT_EQ(red(22, 17), 0) << "inside both";
        EXPECT_EQ(red(12, 17), 255) << "outside the inner";
        EXPECT_EQ(red(32, 17), 255) << "outside the outer";
        EXPECT_EQ(red(15, 10), isOnGrid ? 0 : 255) << "the inner one's corner";
        EXPECT_EQ(blue(10, 28), 0) << "the outer one's corner after restoring";
        EXPECT_EQ(blue(9, 28), 255) << "left of it";
    }
}

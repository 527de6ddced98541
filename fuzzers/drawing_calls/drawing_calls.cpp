// Any sequence of calls, with any numbers, on every kind of context of the desktop. What must hold: nothing fails, no pixel outside of the image or of a clip changes, and a document does not become longer than what was drawn can explain.

#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include <TOLVGraphing/drawing/PixelFills.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/DarkContext.h>
#include <TOLVGraphing/platform/graphics/NullContext.h>
#include <TOLVGraphing/platform/graphics/PixelAlignedContext.h>
#include <TOLVGraphing/platform/text/AttributedString.h>
#include <desktop/graphics/OpaqueContext.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/output/PixelDrawing.h>
#include <desktop/svg/SVGContext.h>
#include <desktop/text/PangoTextSystem.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace TOLVGraphing::fuzzing {

namespace {

constexpr int kWidth = 60;
constexpr int kHeight = 40;
/// Pixels that follow each row and stay as they are, and rows before and after the image.
constexpr int kGuard = 4;
constexpr std::uint32_t kGround = 0xFF204060U;
constexpr int kMostCalls = 100;
/// Of all paths and repeats together.
constexpr std::size_t kMostPoints = 12'000;
/// What a point, a text or another call may add to a document. A curve that has to be cut, which has three points, comes out as up to 20,000 short lines of some thirty bytes.
constexpr std::size_t kMostBytesOfPoint = 200'000;
constexpr std::size_t kMostBytesOfCall = 20'000;
constexpr std::size_t kBytesOfEmptyDocument = 100'000;
/// Where there is no translucency, what lies under areas is drawn once more.
constexpr std::size_t kMostBytesOfRepeats = paint::OpaqueContext::kMostRepeatedPoints * 100;

/// Makes calls of the bytes of an input. What is read stands in statements of its own, so that every compiler reads in the same order.
class Caller {
public:
    explicit Caller(InputReader& reader) : m_reader(reader) {}

    void drawInto(DrawingContext& context)
    {
        while (!m_reader.isEmpty() && m_calls < kMostCalls) {
            ++m_calls;
            call(context);
        }
        for (; m_depth > 0; --m_depth)
            context.restoreState();
    }

    [[nodiscard]] std::size_t mostBytes() const { return kBytesOfEmptyDocument + m_points * kMostBytesOfPoint + static_cast<std::size_t>(m_calls) * kMostBytesOfCall; }

private:
    /// A coordinate on or near the page, or any number.
    double coordinate()
    {
        switch (m_reader.below(4)) {
        case 0: return m_reader.interestingDouble();
        case 1: return static_cast<double>(m_reader.number<std::int8_t>());
        default: return static_cast<double>(m_reader.number<std::uint16_t>()) / 1024.0;
        }
    }

    Point point() { return {coordinate(), coordinate()}; }
    Rect rect() { return {coordinate(), coordinate(), coordinate(), coordinate()}; }

    Color color()
    {
        const auto component = [&] { return m_reader.yes() ? static_cast<double>(m_reader.number<std::uint8_t>()) / 255.0 : m_reader.interestingDouble(); };
        return {component(), component(), component(), m_reader.yes() ? 1.0 : component()};
    }

    std::size_t pointCount(std::size_t wanted)
    {
        const std::size_t count = std::min(wanted, kMostPoints - m_points);
        m_points += count;
        return count;
    }

    /// A line of many corners as data has them, which goes over the page or far beyond.
    Path longLine()
    {
        Path path;
        const Point start = point();
        const double step = coordinate();
        const double height = coordinate();
        const auto modulus = 2 + m_reader.below(250);
        const std::size_t count = pointCount(2 + m_reader.below(1024));
        for (std::size_t i = 0; i < count; ++i)
            path.addLineToPoint({start.x + static_cast<double>(i) * step / 64.0, start.y + height * static_cast<double>(i * i % modulus) / 64.0});
        if (m_reader.yes())
            path.closeSubpath();
        return path;
    }

    Path path()
    {
        const std::size_t kind = m_reader.below(6);
        if (kind == 0)
            return longLine();
        if (kind == 1)
            return Path::pathWithRect(rect());
        Path path;
        for (std::size_t i = pointCount(1 + m_reader.below(8)); i > 0; --i) {
            switch (m_reader.below(8)) {
            case 0: path.moveToPoint(point()); break;
            case 1: {
                const auto [control1, control2, end] = std::array{point(), point(), point()};
                path.addCurveToPoint(end, control1, control2);
                break;
            }
            case 2: path.closeSubpath(); break;
            case 3: path.addRect(rect()); break;
            case 4: path.addPath(Path::pathWithOvalInRect(rect())); break;
            case 5: {
                const Rect box = rect();
                const Point radii = point();
                path.addPath(Path::pathWithRoundedRect(box, radii.x, radii.y));
                break;
            }
            default: path.addLineToPoint(point()); break;
            }
        }
        return path;
    }

    LineDash dash()
    {
        LineDash dash;
        for (std::size_t i = m_reader.below(6); i > 0; --i)
            dash.lengths.push_back(m_reader.yes() ? coordinate() : static_cast<double>(m_reader.number<std::uint8_t>()) / 16.0);
        dash.phase = coordinate();
        return dash;
    }

    AffineTransform transform()
    {
        AffineTransform transform;
        switch (m_reader.below(4)) {
        case 0: {
            const Point distance = point();
            transform.translateXBy(distance.x, distance.y);
            break;
        }
        case 1: transform.rotateDegrees(coordinate()); break;
        case 2: transform = {coordinate(), 0.0, 0.0, coordinate(), coordinate(), coordinate()}; break;
        default: transform = {coordinate(), coordinate(), coordinate(), coordinate(), coordinate(), coordinate()}; break;
        }
        return transform;
    }

    /// Fewer for a path of many points.
    std::vector<Point> placesOf(const Path& path)
    {
        std::vector<Point> places(m_reader.below(40));
        for (Point& place : places)
            place = point();
        const std::size_t more = m_reader.yes() ? m_reader.below(600) : 0;
        for (std::size_t i = 0; i < more; ++i)
            places.push_back({static_cast<double>(i % 70), static_cast<double>(i * 7 % 45)});
        const std::size_t size = path.points().size() + 1;
        places.resize(pointCount(places.size() * size) / size);
        return places;
    }

    AttributedString text()
    {
        const std::string string = m_reader.yes() ? "12.5 Hz" : m_reader.text(24);
        static constexpr const char* kNames[] = {"HelveticaNeue", "Helvetica", "HelveticaNeue-Bold", "No Such Face", ""};
        const char* const name = m_reader.oneOf(kNames);
        const double size = m_reader.yes() ? 11.0 : m_reader.interestingDouble();
        return AttributedString(string, TextAttributes{Font{name, size}, color()});
    }

    FillRule rule() { return m_reader.yes() ? FillRule::EvenOdd : FillRule::NonZero; }

    /// Many fills that wait for one another.
    void fillPixels(DrawingContext& context)
    {
        const Rect area = rect();
        PixelFills fills(context, area, m_reader.yes() ? 100'000 : 0);
        const Color first = color();
        const Color second = color();
        const Point step = point();
        Rect filled = rect();
        for (std::size_t i = pointCount(m_reader.below(200)); i > 0; --i) {
            fills.fill(filled, i % 3 == 0 ? first : second);
            filled = offsetRect(filled, step.x, step.y);
        }
        fills.flush();
    }

    void call(DrawingContext& context)
    {
        switch (m_reader.below(20)) {
        case 0:
            context.saveState();
            ++m_depth;
            break;
        case 1:
            if (m_depth > 0) {
                context.restoreState();
                --m_depth;
            }
            break;
        case 2: context.concatenateTransform(transform()); break;
        case 3: {
            const Path clip = path();
            context.clipToPath(clip, rule());
            break;
        }
        case 4: context.setFillColor(color()); break;
        case 5: context.setStrokeColor(color()); break;
        case 6: context.setLineWidth(coordinate()); break;
        case 7: context.setLineDash(dash()); break;
        case 8: context.setLineCap(static_cast<LineCap>(m_reader.below(3))); break;
        case 9: context.setLineJoin(static_cast<LineJoin>(m_reader.below(3))); break;
        case 10: context.setMiterLimit(coordinate()); break;
        case 11: {
            const Path filled = path();
            context.drawFilledPath(filled, rule());
            break;
        }
        case 12:
        case 13: context.drawStrokedPath(path()); break;
        case 14: {
            const AttributedString drawn = text();
            context.drawText(drawn, point());
            break;
        }
        case 15: {
            const Path repeated = path();
            const FillRule filled = rule();
            context.drawFilledRepeats(repeated, filled, placesOf(repeated));
            break;
        }
        case 16: {
            const Path repeated = path();
            context.drawStrokedRepeats(repeated, placesOf(repeated));
            break;
        }
        case 17: fillPixels(context); break;
        case 18:
            // Out of the way of what came before, with ordinary settings.
            for (; m_depth > 0; --m_depth)
                context.restoreState();
            context.setLineWidth(1.5);
            context.setStrokeColor(Color(0.5, 0.0, 0.5));
            break;
        default: context.fillRect(rect()); break;
        }
    }

    InputReader& m_reader;
    int m_calls = 0;
    int m_depth = 0;
    std::size_t m_points = 0;
};

/// An image among pixels that nobody may touch.
class GuardedImage {
public:
    GuardedImage() : m_pixels(static_cast<std::size_t>(kRow * (kHeight + 2 * kGuard)), kGround) {}

    [[nodiscard]] PixelMemory memory() { return {reinterpret_cast<unsigned char*>(m_pixels.data() + kRow * kGuard), kWidth, kHeight, kRow * 4}; }

    /// Everything outside of the box of pixels is as it was.
    void requireUntouchedOutside(int left, int top, int right, int bottom) const
    {
        for (int row = -kGuard; row < kHeight + kGuard; ++row) {
            for (int column = 0; column < kRow; ++column) {
                const bool isInside = column >= left && column < right && row >= top && row < bottom;
                require(isInside || m_pixels[static_cast<std::size_t>((row + kGuard) * kRow + column)] == kGround, "pixels outside of the clip stay as they are");
            }
        }
    }

private:
    static constexpr int kRow = kWidth + kGuard;

    std::vector<std::uint32_t> m_pixels;
};

void drawOnImage(InputReader& reader)
{
    GuardedImage image;
    const double scale = reader.yes() ? 1.0 : 2.0;
    const std::size_t wrapping = reader.below(4);
    // In pixels, from the upper edge.
    const bool isClipped = reader.yes();
    const int left = isClipped ? 6 : 0;
    const int right = isClipped ? 50 : kWidth;
    const int top = isClipped ? 4 : 0;
    const int bottom = isClipped ? 34 : kHeight;
    drawOnPixels(image.memory(), scale, [&](DrawingContext& pixels) {
        if (isClipped)
            pixels.clipToPath(Path::pathWithRect({left / scale, (kHeight - bottom) / scale, (right - left) / scale, (bottom - top) / scale}), FillRule::NonZero);
        Caller caller(reader);
        if (wrapping == 1) {
            PixelAlignedContext aligned(pixels, scale);
            caller.drawInto(aligned);
        } else if (wrapping == 2) {
            DarkContext dark(pixels);
            caller.drawInto(dark);
        } else {
            caller.drawInto(pixels);
        }
    });
    image.requireUntouchedOutside(left, top, right, bottom);
}

void drawDocument(InputReader& reader, OutputKind kind)
{
    OutputSettings settings;
    settings.size = {60.0, 40.0};
    settings.scale = 1.0;
    Caller caller(reader);
    const auto bytes = renderToBytes(kind, settings, [&](DrawingContext& context, const Rect&) { caller.drawInto(context); });
    require(!bytes.empty(), "every drawing gives a document");
    require(bytes.size() <= caller.mostBytes() + (kind == OutputKind::EPS ? kMostBytesOfRepeats : 0), "a document is as long as what was drawn");
}

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    const TextSystemScope scope(text::PangoTextSystem::shared());
    InputReader reader(input);
    switch (reader.below(10)) {
    case 6: drawDocument(reader, OutputKind::SVG); break;
    case 7: drawDocument(reader, OutputKind::PDF); break;
    case 8: drawDocument(reader, OutputKind::EPS); break;
    case 9: drawDocument(reader, OutputKind::PNG); break;
    default: drawOnImage(reader); break;
    }
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing

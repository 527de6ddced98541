#include "IconDrawings.h"

#include <desktop/output/GraphicsOutput.h>

#include <cmath>
#include <numbers>

namespace TOLVGraphing::icons {

namespace {

const Color kPaper = Color(0.99, 0.99, 0.98);
const Color kFold = Color(0.83, 0.85, 0.87);
const Color kEdge = Color(0.36, 0.40, 0.45);
const Color kAxis = Color(0.17, 0.20, 0.24);
const Color kBand = Color(0.58, 0.79, 0.92);
const Color kCurve = Color(0.0, 0.45, 0.7);

/// Widths of lines in points. The axes fill whole pixels of the smallest image.
constexpr double kEdgeWidth = 3.0;
constexpr double kLineWidth = 4.0;
constexpr double kCurveWidth = 5.0;
constexpr double kStep = 1.0;

/// The width and the height that the functions below are made for.
constexpr double kCurveLength = 40.0;
constexpr double kCurveHeight = 42.0;

/// Around 0, in points.
double middle(double x)
{
    return 9.0 * std::sin(2.0 * std::numbers::pi * (x / 34.0 - 0.2));
}

double halfBand(double x)
{
    return 9.5 + 1.5 * std::sin(2.0 * std::numbers::pi * x / 19.0);
}

/// The curve in its band, to the right of the vertical axis and above the horizontal one.
void drawCurve(DrawingContext& context, const Rect& area)
{
    const double height = area.y() + area.height() / 2.0;
    const double scale = area.height() / kCurveHeight;
    const auto count = static_cast<int>(area.width() / kStep);
    Path curve;
    Path band;
    // One step further at either end, so that the ends are cut upright.
    for (int i = -1; i <= count + 1; ++i) {
        const double x = i * kStep * kCurveLength / area.width();
        curve.addLineToX(area.x() + i * kStep, height + middle(x) * scale);
        band.addLineToX(area.x() + i * kStep, height + (middle(x) + halfBand(x)) * scale);
    }
    for (int i = count + 1; i >= -1; --i) {
        const double x = i * kStep * kCurveLength / area.width();
        band.addLineToX(area.x() + i * kStep, height + (middle(x) - halfBand(x)) * scale);
    }
    band.closeSubpath();
    context.inIsolatedContext([&](DrawingContext& inside) {
        inside.addRect(area);
        inside.clip();
        inside.fill(&band, kBand);
        inside.setLineJoin(LineJoin::Round);
        inside.setLineWidth(kCurveWidth);
        inside.stroke(&curve, kCurve);
    });
}

/// The two axes, whose corner this is, and the curve between them.
void drawGraph(DrawingContext& context, Point corner, Size size)
{
    constexpr double kInset = kLineWidth / 2.0;
    drawCurve(context, Rect(corner.x + kInset, corner.y + kInset, size.width - kInset, size.height - kInset));
    Path axes;
    axes.moveToX(corner.x, corner.y + size.height);
    axes.addLineToX(corner.x, corner.y);
    axes.addLineToX(corner.x + size.width, corner.y);
    context.setLineWidth(kLineWidth);
    context.stroke(&axes, kAxis);
}

} // namespace

void drawProgram(DrawingContext& context)
{
    const Path tile = Path::pathWithRoundedRect(Rect(1.5, 1.5, 61.0, 61.0), 8.0, 8.0);
    context.fill(&tile, kPaper);
    drawGraph(context, {14.0, 14.0}, {42.0, 42.0});
    context.setLineWidth(kEdgeWidth);
    context.stroke(&tile, kEdge);
}

void drawDocument(DrawingContext& context)
{
    constexpr double kFoldSide = 16.0;
    constexpr double kLeft = 5.5;
    constexpr double kRight = 58.5;
    constexpr double kBottom = 1.5;
    constexpr double kTop = 62.5;
    Path sheet;
    sheet.moveToX(kLeft, kBottom);
    sheet.addLineToX(kRight, kBottom);
    sheet.addLineToX(kRight, kTop - kFoldSide);
    sheet.addLineToX(kRight - kFoldSide, kTop);
    sheet.addLineToX(kLeft, kTop);
    sheet.closeSubpath();
    context.fill(&sheet, kPaper);
    drawGraph(context, {14.0, 10.0}, {38.0, 34.0});
    Path fold;
    fold.moveToX(kRight, kTop - kFoldSide);
    fold.addLineToX(kRight - kFoldSide, kTop - kFoldSide);
    fold.addLineToX(kRight - kFoldSide, kTop);
    fold.closeSubpath();
    context.fill(&fold, kFold);
    context.setLineJoin(LineJoin::Round);
    context.setLineWidth(kEdgeWidth);
    context.stroke(&sheet, kEdge);
    context.setLineWidth(kEdgeWidth / 2.0);
    context.stroke(&fold, kEdge);
}

std::vector<Icon> allIcons()
{
    return {{"io.github.tolvgraphing.Viewer", "apps", &drawProgram}, {"application-x-tolvgraph", "mimetypes", &drawDocument}};
}

std::vector<std::byte> iconData(const Icon& icon, int side)
{
    OutputSettings settings;
    settings.size = {kSide, kSide};
    settings.scale = side > 0 ? side / kSide : 1.0;
    settings.background = std::nullopt;
    return renderToBytes(side > 0 ? OutputKind::PNG : OutputKind::SVG, settings, [&](DrawingContext& context, const Rect&) { icon.draw(context); });
}

std::string iconPath(const Icon& icon, int side)
{
    const std::string number = std::to_string(side);
    return (side > 0 ? number + "x" + number : "scalable") + "/" + icon.folder + "/" + icon.name + (side > 0 ? ".png" : ".svg");
}

} // namespace TOLVGraphing::icons

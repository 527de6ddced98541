#include "GraphCallout.h"

#include "../platform/foundation/Exception.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr double kPillHeight = 14.0;
constexpr double kPillSidePadding = 4.0;
/// How far the pointer's centre lies above the pill's lower edge.
constexpr double kPointerRise = 2.0;

/// A square with rounded corners around the origin, turned onto its corner and moved to the pointer's place.
Path pointerPath(double halfSide, double cornerRadius, Point center)
{
    Path path = Path::pathWithRoundedRect({-halfSide, -halfSide, 2.0 * halfSide, 2.0 * halfSide}, cornerRadius, cornerRadius);
    AffineTransform transform;
    transform.translateXBy(center.x, center.y);
    transform.rotateDegrees(45.0);
    path.transformUsingAffineTransform(transform);
    return path;
}

} // namespace

GraphCallout::GraphCallout(std::shared_ptr<TOLVLabel> calloutLabel, std::shared_ptr<TOLVLineStyle> style, double atXPosition)
    : label(std::move(calloutLabel))
    , lineStyle(std::move(style))
{
    if (!label)
        throw Exception("NullLabel", "A callout stands around a label");
    AttributedString text = label->label();
    text.setForegroundColor(lineStyle ? lineStyle->color() : std::nullopt);
    label->setLabel(text);

    const Rect placed = label->rect();
    const Rect around = insetRect(integralRect({placed.origin, text.size()}), -kPillSidePadding, 0.0);
    label->setRect({placed.x(), around.y(), placed.width(), placed.height()});

    const Rect box(around.x(), around.y(), around.width(), kPillHeight);
    const Point pointer{atXPosition, box.y() + kPointerRise};
    outerPath = Path::pathWithRoundedRect(box, 7.0, 7.0);
    outerPath.addPath(pointerPath(4.0, 2.0, pointer));
    innerPath = Path::pathWithRoundedRect(insetRect(box, 1.0, 1.0), 6.0, 6.0);
    innerPath.addPath(pointerPath(3.0, 1.0, pointer));
}

bool GraphCallout::intersectsCalloutInArray(std::span<const GraphCallout> callouts) const
{
    const Rect own = bounds();
    return std::any_of(callouts.begin(), callouts.end(), [&](const GraphCallout& other) { return intersectsRect(other.bounds(), own); });
}

void GraphCallout::draw() const
{
    if (!label->rect().valid())
        return;
    (lineStyle ? lineStyle->color() : std::nullopt).value_or(Color::blackColor()).setFill();
    outerPath.fill();
    Color::whiteColor().setFill();
    innerPath.fill();
    label->draw();
}

} // namespace TOLVGraphing

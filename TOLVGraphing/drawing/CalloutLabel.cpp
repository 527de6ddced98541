#include "CalloutLabel.h"

#include "RectIndex.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TOLVGraphing {

namespace {

/// How far a label's lower edge stands above its point; the dot there reaches 3 points up.
constexpr double kLabelRise = 3.5;
/// No digit is narrower, no line of text lower, at 8 points.
constexpr double kCoreWidth = 1.0;
constexpr double kCoreHeight = 6.0;

/// The labels that have been kept: their rectangles and their positions in the list of placements.
struct KeptLabels {
    RectIndex rects;
    std::vector<std::size_t> positions;
};

void decide(CalloutLabelPlacement& placement, const KeptLabels& kept, const RectIndex& dots)
{
    if (!placement.label.rect.valid()) {
        placement.fate = CalloutFate::NotFinite;
    } else if (const auto number = kept.rects.anyOverlapping(placement.label.rect)) {
        placement.fate = CalloutFate::CollidesWithCallout;
        placement.collidesWith = kept.positions[*number];
    } else if (dots.anyOverlapping(placement.label.rect)) {
        placement.fate = CalloutFate::CollidesWithDot;
    }
}

/// The positions of a category's labels, the highest first. Labels without a place come last.
std::vector<std::size_t> orderByHeight(const std::vector<CalloutLabel>& labels)
{
    std::vector<std::size_t> order(labels.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto withoutPlace = std::stable_partition(order.begin(), order.end(), [&](std::size_t i) { return labels[i].rect.valid(); });
    std::stable_sort(order.begin(), withoutPlace, [&](std::size_t a, std::size_t b) { return labels[a].rect.y() > labels[b].rect.y(); });
    return order;
}

} // namespace

bool CalloutLabel::overlapsRect(const Rect& other, double withPadding) const
{
    return intersectsRect(insetRect(rect, -withPadding, -withPadding), other);
}

Rect rectForCalloutLabel(const AttributedString& string, Point atPoint)
{
    const Size size = string.size();
    return {atPoint.x - 0.5 * size.width, atPoint.y + kLabelRise, size.width, size.height};
}

Rect coreOfCalloutLabel(Point atPoint)
{
    return {atPoint.x - 0.5 * kCoreWidth, atPoint.y + kLabelRise, kCoreWidth, kCoreHeight};
}

std::vector<CalloutLabelPlacement> placeCalloutLabels(std::span<const std::vector<CalloutLabel>> categories, std::span<const Rect> dots)
{
    RectIndex dotIndex;
    for (const Rect& dot : dots)
        dotIndex.add(dot);
    KeptLabels kept;
    std::vector<CalloutLabelPlacement> placements;
    for (std::size_t category = 0; category < categories.size(); ++category) {
        for (const std::size_t position : orderByHeight(categories[category])) {
            CalloutLabelPlacement placement{categories[category][position], category, position, CalloutFate::Kept, std::nullopt};
            decide(placement, kept, dotIndex);
            if (placement.fate == CalloutFate::Kept) {
                kept.rects.add(placement.label.rect);
                kept.positions.push_back(placements.size());
            }
            placements.push_back(std::move(placement));
        }
    }
    return placements;
}

void drawCalloutLabels(std::span<const CalloutLabel> labels)
{
    for (const CalloutLabel& label : labels)
        label.string.drawInRect(label.rect);
}

} // namespace TOLVGraphing

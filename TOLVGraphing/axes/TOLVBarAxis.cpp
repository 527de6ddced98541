#include "TOLVBarAxis.h"

#include "../graph/TOLVGraph.h"
#include "NearestIndex.h"

#include <cmath>
#include <limits>
#include <utility>

namespace TOLVGraphing {

namespace {

/// The space between slots, and before the first and behind the last one, in points.
constexpr double kSlotGap = 20.0;
/// The closest that category texts may come to each other sideways.
constexpr EdgeInsets kCategoryLabelInsets{0.0, 2.0, 0.0, 2.0};
/// The clear space between a vertical axis's texts and the data area.
constexpr double kVerticalLabelGap = 2.0;

} // namespace

std::shared_ptr<TOLVAxis> TOLVBarAxis::copy() const
{
    auto axis = std::make_shared<TOLVBarAxis>(graph());
    copyPropertiesInto(*axis);
    copyTickLabelsInto(*axis);
    return axis;
}

std::shared_ptr<TOLVBarAxis> TOLVBarAxis::initWithCoder(KeyedUnarchiver& coder)
{
    auto axis = std::make_shared<TOLVBarAxis>();
    axis->decodeFlags(coder);
    return axis;
}

void TOLVBarAxis::setTickLabels(std::optional<TickLabels> tickLabels)
{
    m_tickLabels = tickLabels ? std::make_shared<const TickLabels>(*std::move(tickLabels)) : nullptr;
}

// Categories.

const CategoryRanges& TOLVBarAxis::currentRanges() const
{
    const auto owner = graph();
    const auto range = extents();
    if (owner)
        m_ranges.update(*owner, range ? range->min() : 0.0, range ? range->max() : 0.0);
    else
        m_ranges.clear();
    return m_ranges;
}

std::optional<std::vector<IndexRange>> TOLVBarAxis::extentsConstrainedGraphDataRanges() const
{
    return currentRanges().ranges();
}

std::int64_t TOLVBarAxis::indexOfRepresentativeXData() const
{
    return currentRanges().representative();
}

std::shared_ptr<const TOLVRealVector> TOLVBarAxis::representativeXData() const
{
    return currentRanges().representativeX();
}

IndexRange TOLVBarAxis::representativeXDataRange() const
{
    return currentRanges().representativeRange();
}

double TOLVBarAxis::pointForDataAtIndex(std::uint64_t index, const Rect& inRect) const
{
    const auto count = static_cast<double>(m_dataPointCount);
    const double slotWidth = (inRect.width() - (count + 1.0) * kSlotGap) / count;
    return (slotWidth + kSlotGap) * static_cast<double>(index) + (0.5 * slotWidth + (inRect.x() + kSlotGap));
}

void TOLVBarAxis::getMajorValues(Values* majorValues, Values* minorValues) const
{
    if (majorValues)
        majorValues->clear();
    if (minorValues)
        minorValues->clear();
}

void TOLVBarAxis::updateStepsInRect(const Rect&)
{
    // The representative series is the longest.
    m_dataPointCount = currentRanges().representativeRange().length;
}

float TOLVBarAxis::pointForValue(float value, const Rect& inRect) const
{
    const CategoryRanges& categories = currentRanges();
    if (m_dataPointCount == 0 || !categories.representativeX() || categories.representativeX()->length() == 0)
        return 0.0F;
    const auto index = categories.indexNearestTo(value);
    return index ? static_cast<float>(pointForDataAtIndex(*index, labelRectInRect(inRect))) : std::numeric_limits<float>::quiet_NaN();
}

float TOLVBarAxis::valueForPoint(double point, const Rect& inRect) const
{
    if (m_dataPointCount == 0)
        return 0.0F;
    const auto distance = [&](std::size_t i) { return std::abs(pointForDataAtIndex(i, inRect) - point); };
    if (!std::isfinite(distance(0)) || !std::isfinite(distance(m_dataPointCount - 1)))
        return std::numeric_limits<float>::quiet_NaN();
    // In a rectangle narrower than the gap the slots run backwards.
    const bool ascends = pointForDataAtIndex(0, inRect) <= pointForDataAtIndex(m_dataPointCount - 1, inRect);
    const auto isReached = [&](std::size_t i) { return ascends ? pointForDataAtIndex(i, inRect) >= point : pointForDataAtIndex(i, inRect) <= point; };
    const std::size_t index = nearestIndexOfOrdered(m_dataPointCount, isReached, distance);
    const auto& x = currentRanges().representativeX();
    return x && index < x->length() ? x->components()[index] : 0.0F;
}

void TOLVBarAxis::zoomToPoints(double fromPoint, double toPoint, const Rect& inRect)
{
    updateStepsInRect(inRect);
    if (m_dataPointCount > 0)
        TOLVAxis::zoomToPoints(fromPoint, toPoint, inRect);
}

// Drawing.

void TOLVBarAxis::drawMajorLinesInRect(const Rect& rect) const
{
    drawFrameInRect(rect);
}

void TOLVBarAxis::drawMinorLinesInRect(const Rect&) const {}

std::shared_ptr<TOLVLabel> TOLVBarAxis::labelForCategory(const std::string& text, double centre, const Rect& strip) const
{
    const auto owner = graph();
    const double labelFontHeight = owner ? owner->labelFontHeight() : 0.0;
    AttributedString string(text, tickLabelAttributes());
    Rect rect({}, string.size());
    if (isVertical())
        rect.origin = {margin() - labelFontHeight + std::rint(strip.x()) + 0.5 - rect.width() - kVerticalLabelGap, centre - rect.height() * 0.5};
    else
        rect.origin = {centre - rect.width() * 0.5, std::rint(strip.y()) + 0.5 + labelFontHeight * 0.5 - rect.height() * 0.5};
    return TOLVLabel::labelWithAttributedString(std::move(string), rect);
}

LabelPlacements TOLVBarAxis::tickLabelPlacements(const Rect& inRect) const
{
    LabelPlacements result;
    if (!m_tickLabels || m_dataPointCount > m_tickLabels->size())
        return result;
    const CategoryRanges& categories = currentRanges();
    const auto& x = categories.representativeX();
    if (!x)
        return result;
    const Rect strip = tickLabelRectInRect(inRect);
    const bool vertical = isVertical();
    const std::uint64_t first = categories.representativeRange().location;
    Labels kept;
    for (std::size_t i = 0; i < x->length() && first + i < m_tickLabels->size(); ++i) {
        LabelPlacement placement;
        placement.value = static_cast<double>(x->components()[i]);
        placement.label = labelForCategory((*m_tickLabels)[first + i], pointForDataAtIndex(i, inRect), strip);
        const Rect& rect = placement.label->rect();
        const double middle = vertical ? rect.y() + rect.height() * 0.5 : rect.x() + rect.width() * 0.5;
        if (middle > (vertical ? strip.maxY() : strip.maxX()))
            break;
        if (!rect.valid())
            placement.fate = LabelFate::NotFinite;
        else if (middle < (vertical ? strip.y() : strip.x()))
            placement.fate = LabelFate::Outside;
        else if ((placement.collidesWith = firstOverlappedLabel(*placement.label, kept, kCategoryLabelInsets)))
            placement.fate = LabelFate::Collides;
        else
            kept.push_back(placement.label);
        result.push_back(std::move(placement));
    }
    return result;
}

void TOLVBarAxis::drawTickLabelsInRect(const Rect& rect) const
{
    for (const auto& label : keptLabels(tickLabelPlacements(rect)))
        label->draw();
}

} // namespace TOLVGraphing

#include "TOLVAxis.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "../platform/graphics/Path.h"

#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

/// The part of the length that one zoom step adds or removes; single precision on purpose.
constexpr float kZoomFraction = 0.15F;
constexpr double kBadgeSidePadding = 4.0;
constexpr double kBadgeHeight = 12.0;
constexpr double kBadgeCornerRadius = 6.0;
/// The clear space between a vertical axis's labels and the data area.
constexpr double kVerticalLabelGap = 2.0;

const ArchiveClassRegistration registration("TOLVAxis", &TOLVAxis::initWithCoder);

/// The middle of the point that a coordinate falls into.
double pointCenter(double coordinate)
{
    return std::rint(coordinate) + 0.5;
}

double pointCenter(float coordinate)
{
    return static_cast<double>(std::rint(coordinate)) + 0.5;
}

TOLVAxis::Values valuesOfMarkers(const TOLVAxis::Markers& markers)
{
    TOLVAxis::Values values;
    for (const auto& marker : markers) {
        if (marker)
            values.push_back(marker->value());
    }
    return values;
}

} // namespace

TOLVAxis::TOLVAxis() : TOLVAxis(std::weak_ptr<TOLVGraph>()) {}

TOLVAxis::TOLVAxis(std::weak_ptr<TOLVGraph> graph) : m_graph(std::move(graph)), m_tickLabelFormatter(std::make_shared<NumberFormatter>()) {}

TOLVAxis::~TOLVAxis() = default;

std::shared_ptr<TOLVAxis> TOLVAxis::copy() const
{
    auto axis = std::make_shared<TOLVAxis>(m_graph);
    copyPropertiesInto(*axis);
    return axis;
}

void TOLVAxis::copyPropertiesInto(TOLVAxis& axis) const
{
    axis.m_drawsMajorLabels = m_drawsMajorLabels;
    axis.m_drawsMajorLines = m_drawsMajorLines;
    axis.m_drawsMinorLabels = m_drawsMinorLabels;
    axis.m_drawsMinorLines = m_drawsMinorLines;
    axis.m_drawsLabelAtEnd = m_drawsLabelAtEnd;
    axis.m_label = m_label;
}

void TOLVAxis::encodeWithCoder(KeyedArchiver& coder) const
{
    coder.encodeBool(m_drawsMajorLines, "drawsMajorLines");
    coder.encodeBool(m_drawsMinorLines, "drawsMinorLines");
}

void TOLVAxis::decodeFlags(KeyedUnarchiver& coder)
{
    // As with any number that an archive lacks, a missing flag reads as zero.
    m_drawsMajorLines = coder.decodeBool("drawsMajorLines").value_or(false);
    m_drawsMinorLines = coder.decodeBool("drawsMinorLines").value_or(false);
}

std::shared_ptr<TOLVAxis> TOLVAxis::initWithCoder(KeyedUnarchiver& coder)
{
    auto axis = std::make_shared<TOLVAxis>();
    axis->decodeFlags(coder);
    return axis;
}

void TOLVAxis::setTickLabelFormatter(const std::shared_ptr<const NumberFormatter>& formatter)
{
    m_tickLabelFormatter = formatter ? formatter->copy() : nullptr;
}

SharedTextAttributes TOLVAxis::tickLabelAttributes() const
{
    const auto owner = graph();
    return owner ? owner->tickLabelAttributes() : nullptr;
}

bool TOLVAxis::isVertical() const
{
    const auto owner = graph();
    return owner && owner->verticalAxis().get() == this;
}

std::shared_ptr<TOLVAxisExtents> TOLVAxis::extents() const
{
    const auto owner = graph();
    if (!owner || !owner->extents())
        return nullptr;
    return isVertical() ? owner->extents()->y() : owner->extents()->x();
}

void TOLVAxis::setExtents(const std::shared_ptr<const TOLVAxisExtents>& extents)
{
    const auto owner = graph();
    if (!owner || !owner->extents())
        return;
    if (isVertical())
        owner->extents()->setY(extents);
    else
        owner->extents()->setX(extents);
}

// Layout.

double TOLVAxis::lengthOfRect(const Rect& rect) const
{
    return isVertical() ? rect.height() : rect.width();
}

Rect TOLVAxis::dataRectInRect(const Rect& rect) const
{
    if (isVertical())
        return {rect.x() + m_padding + m_margin, rect.y(), rect.width() - m_padding - m_margin, rect.height()};
    return {rect.x(), rect.y() + m_padding + m_margin, rect.width(), rect.height() - m_padding - m_margin};
}

Rect TOLVAxis::tickLabelRectInRect(const Rect& rect) const
{
    const auto owner = graph();
    if (isVertical()) {
        const double labelFontHeight = owner->labelFontHeight();
        return {rect.x() + m_padding + labelFontHeight - m_tickLabelPadding, rect.y(), m_margin - labelFontHeight, rect.height()};
    }
    const double tickLabelFontHeight = owner ? owner->tickLabelFontHeight() : 0.0;
    return {rect.x(), rect.y() + m_padding + m_margin - tickLabelFontHeight - m_tickLabelPadding, rect.width(), tickLabelFontHeight};
}

Rect TOLVAxis::labelRectInRect(const Rect& rect) const
{
    const auto owner = graph();
    const double labelFontHeight = owner ? owner->labelFontHeight() : 0.0;
    if (isVertical())
        return {rect.x() + m_padding, rect.y(), labelFontHeight, rect.height()};
    return {rect.x(), rect.y() + m_padding, rect.width(), labelFontHeight};
}

// Drawing.

void TOLVAxis::prepareForDrawingInRect(const Rect& rect)
{
    updateStepsInRect(rect);
    Values major;
    Values minor;
    getMajorValues(&major, &minor);
    setMajorValues(std::move(major));
    setMinorValues(std::move(minor));
}

void TOLVAxis::drawFrameInRect(const Rect& rect) const
{
    const Rect dataRect = dataRectInRect(rect);
    const auto owner = graph();
    const auto style = owner ? owner->majorLineStyle() : nullptr;
    if (style && style->color())
        style->color()->set();
    if (!dataRect.isEmpty() && dataRect.valid())
        Path::pathWithRect(insetRect(integralRect(dataRect), 0.5, 0.5)).stroke();
}

void TOLVAxis::drawMajorLinesInRect(const Rect& rect) const
{
    drawFrameInRect(rect);
    const auto owner = graph();
    const auto style = owner ? owner->majorLineStyle() : nullptr;
    drawLinesForValues(m_majorValues, dataRectInRect(rect), style.get());
}

void TOLVAxis::drawMinorLinesInRect(const Rect& rect) const
{
    const auto owner = graph();
    const auto style = owner ? owner->minorLineStyle() : nullptr;
    drawLinesForValues(m_minorValues, dataRectInRect(rect), style.get());
}

void TOLVAxis::drawLinesForValues(const Values& values, const Rect& inRect, const TOLVLineStyle* withStyle) const
{
    DrawingContext* context = currentContext();
    if (!context || values.empty())
        return;
    const auto mapping = mappingForRect(inRect);
    const bool vertical = isVertical();
    const GraphicsStateSaver saver(*context);
    Path lines;
    lines.reserve(2 * values.size());
    if (withStyle) {
        lines.setLineWidth(withStyle->thickness());
        if (withStyle->color())
            withStyle->color()->set();
    }
    for (const double value : values) {
        const float point = mapping->pointForValue(static_cast<float>(value));
        if (!std::isfinite(point))
            continue;
        const double along = pointCenter(point);
        if (vertical) {
            lines.moveToX(pointCenter(inRect.x()), along);
            lines.addLineToX(pointCenter(inRect.maxX()), along);
        } else {
            lines.moveToX(along, pointCenter(inRect.y()));
            lines.addLineToX(along, pointCenter(inRect.maxY()));
        }
    }
    Path::pathWithRect(insetRect(inRect, 1.0, 1.0)).addClip();
    lines.stroke();
}

Rect TOLVAxis::titleRectInRect(const Rect& rect) const
{
    const Rect labelRect = labelRectInRect(rect);
    const auto owner = graph();
    const Size size = m_label ? AttributedString(*m_label, owner ? owner->labelAttributes() : nullptr).size() : Size();
    return {labelRect.x() + labelRect.width() * 0.5 - size.width * 0.5, labelRect.y() + labelRect.height() * 0.5 - size.height * 0.5, size.width, size.height};
}

void TOLVAxis::drawLabelInRect(const Rect& rect) const
{
    DrawingContext* context = currentContext();
    if (!m_label || !context)
        return;
    const auto owner = graph();
    const Rect strip = labelRectInRect(rect);
    const AttributedString title(*m_label, owner ? owner->labelAttributes() : nullptr);
    const Rect textRect = titleRectInRect(rect);
    const Size& size = textRect.size;
    const GraphicsStateSaver saver(*context);
    if (isVertical()) {
        AffineTransform upwards;
        upwards.translateXBy(strip.x(), strip.y());
        upwards.translateXBy(size.height * 0.5 + strip.width() * 0.5, strip.height() * 0.5 - size.width * 0.5);
        upwards.rotateDegrees(90.0);
        upwards.translateXBy(-textRect.x(), -textRect.y());
        context->concatenateTransform(upwards);
    }
    title.drawInRect(textRect);
}

void TOLVAxis::drawTickLabelsInRect(const Rect& rect) const
{
    Labels major;
    Labels minor;
    getMajorLabels(major, m_majorValues, minor, m_minorValues, tickLabelRectInRect(rect));
    for (const auto& label : major)
        label->draw();
    for (const auto& label : minor)
        label->draw();
}

LabelPlacements TOLVAxis::tickLabelPlacements(const Rect& inRect) const
{
    const Rect strip = tickLabelRectInRect(inRect);
    LabelPlacements result = placements(m_majorValues, strip);
    const Labels major = keptLabels(result);
    if (major.size() < 2 || m_drawsMinorLabels) {
        for (LabelPlacement& placement : placements(m_minorValues, strip, major)) {
            placement.isMajor = false;
            result.push_back(std::move(placement));
        }
    }
    return result;
}

LabelPlacements TOLVAxis::markerLabelPlacements(const Markers& markers, const Rect& inRect) const
{
    return placements(valuesOfMarkers(markers), tickLabelRectInRect(inRect));
}

Rect TOLVAxis::badgeRectForLabel(const TOLVLabel& label)
{
    Rect badge = integralRect({label.rect().origin, label.label().size()});
    badge = offsetRect(insetRect(badge, -kBadgeSidePadding, 0.0), 0.0, 1.0);
    badge.size.height = kBadgeHeight;
    return badge;
}

void TOLVAxis::drawMarkers(const Markers& markers, const Rect& inRect) const
{
    Labels labels;
    getLabels(&labels, valuesOfMarkers(markers), tickLabelRectInRect(inRect));
    for (const auto& label : labels) {
        AttributedString text = label->label();
        // There is nothing to put a badge around.
        if (text.string().empty())
            continue;
        text.setForegroundColor(Color::whiteColor());
        label->setLabel(text);
        Color::blackColor().set();
        Path::pathWithRoundedRect(badgeRectForLabel(*label), kBadgeCornerRadius, kBadgeCornerRadius).fill();
        label->draw();
    }
}

// Conversion and zoom.

float TOLVAxis::valueForPoint(double, const Rect&) const
{
    throw UnrecognizedOperation("TOLVAxis", "valueForPoint");
}

float TOLVAxis::pointForValue(float, const Rect&) const
{
    throw UnrecognizedOperation("TOLVAxis", "pointForValue");
}

void TOLVAxis::updateStepsInRect(const Rect&)
{
    throw UnrecognizedOperation("TOLVAxis", "updateStepsInRect");
}

std::shared_ptr<TOLVMapping> TOLVAxis::mappingForRect(const Rect&) const
{
    throw UnrecognizedOperation("TOLVAxis", "mappingForRect");
}

void TOLVAxis::getMajorValues(Values*, Values*) const
{
    throw UnrecognizedOperation("TOLVAxis", "getMajorValues");
}

void TOLVAxis::configureMapping(TOLVMapping& mapping, const Rect& rect) const
{
    const bool vertical = isVertical();
    const auto range = extents();
    mapping.setMinPoint(static_cast<float>(vertical ? rect.y() : rect.x()));
    mapping.setMaxPoint(static_cast<float>(vertical ? rect.maxY() : rect.maxX()));
    mapping.setMinValue(static_cast<float>(range ? range->min() : 0.0));
    mapping.setMaxValue(static_cast<float>(range ? range->max() : 0.0));
}

bool TOLVAxis::canEndRangeAt(float value) const
{
    return std::isfinite(value);
}

void TOLVAxis::zoomToPoints(double fromPoint, double toPoint, const Rect& inRect)
{
    const float min = valueForPoint(fromPoint, inRect);
    const float max = valueForPoint(toPoint, inRect);
    if (canEndRangeAt(min) && canEndRangeAt(max))
        setExtents(TOLVAxisExtents::extentsWithMin(static_cast<double>(min), static_cast<double>(max)));
}

void TOLVAxis::zoomOutCenteredAtPoint(double point, const Rect& inRect)
{
    const double origin = isVertical() ? inRect.y() : inRect.x();
    const double length = lengthOfRect(inRect);
    if (!(length > 0.0))
        return;
    const double t = (point - origin) / length;
    const double d = length * static_cast<double>(kZoomFraction);
    zoomToPoints(origin - d * t, (origin + length) + (1.0 - t) * d, inRect);
}

void TOLVAxis::zoomInCenteredAtPoint(double point, const Rect& inRect)
{
    const double origin = isVertical() ? inRect.y() : inRect.x();
    const double length = lengthOfRect(inRect);
    if (!(length > 0.0))
        return;
    const double t = (point - origin) / length;
    const double d = length * static_cast<double>(kZoomFraction);
    zoomToPoints(origin + d * t, (origin + length) - (1.0 - t) * d, inRect);
}

void TOLVAxis::zoomOutInRect(const Rect& rect)
{
    zoomOutCenteredAtPoint((isVertical() ? rect.y() : rect.x()) + lengthOfRect(rect) * 0.5, rect);
}

void TOLVAxis::zoomInInRect(const Rect& rect)
{
    zoomInCenteredAtPoint((isVertical() ? rect.y() : rect.x()) + lengthOfRect(rect) * 0.5, rect);
}

// Ticks and labels.

AttributedString TOLVAxis::attributedStringForValue(float value, const SharedTextAttributes& withAttributes) const
{
    std::optional<std::string> text;
    if (m_tickLabelFormatter)
        text = labelTextFromNumber(*m_tickLabelFormatter, static_cast<double>(value));
    return AttributedString(text.value_or(std::string()), withAttributes);
}

std::shared_ptr<TOLVLabel> TOLVAxis::labelForValue(float value, const Rect& inRect) const
{
    const auto owner = graph();
    const SharedTextAttributes attributes = tickLabelAttributes();
    const double labelFontHeight = owner ? owner->labelFontHeight() : 0.0;
    const auto point = static_cast<double>(pointForValue(value, inRect));
    AttributedString text = attributedStringForValue(value, attributes);
    const double width = text.size().width;
    const double ascender = text.attributes().fontOrDefault().ascender();
    Rect rect(0.0, 0.0, width, ascender);
    if (isVertical())
        rect.origin = {m_margin - labelFontHeight + pointCenter(inRect.x()) - width - kVerticalLabelGap, point - ascender * 0.5};
    else
        rect.origin = {point - width * 0.5, pointCenter(inRect.y()) + labelFontHeight * 0.5 - ascender * 0.5};
    return TOLVLabel::labelWithAttributedString(std::move(text), rect);
}

LabelPlacements TOLVAxis::placements(const Values& forValues, const Rect& inStrip, Labels placedBefore) const
{
    const bool vertical = isVertical();
    LabelPlacements result;
    result.reserve(forValues.size());
    for (const double value : forValues) {
        LabelPlacement placement;
        placement.value = value;
        placement.label = labelForValue(static_cast<float>(value), inStrip);
        if (!placement.label->rect().valid())
            placement.fate = LabelFate::NotFinite;
        else if ((placement.collidesWith = firstOverlappedLabel(*placement.label, placedBefore)))
            placement.fate = LabelFate::Collides;
        else if (placement.label->liesOutsideRect(inStrip, vertical))
            placement.fate = LabelFate::Outside;
        else
            placedBefore.push_back(placement.label);
        result.push_back(std::move(placement));
    }
    return result;
}

void TOLVAxis::getLabels(Labels* labels, const Values& forValues, const Rect& inRect) const
{
    if (labels)
        *labels = keptLabels(placements(forValues, inRect));
}

void TOLVAxis::getMajorLabels(Labels& majorLabels, const Values& forMajorValues, Labels& minorLabels, const Values& forMinorValues, const Rect& inRect) const
{
    minorLabels.clear();
    getLabels(&majorLabels, forMajorValues, inRect);
    if (majorLabels.size() < 2 || m_drawsMinorLabels)
        minorLabels = keptLabels(placements(forMinorValues, inRect, majorLabels));
}

void TOLVAxis::getPoints(std::vector<Point>& points, const Values& forValues, const Rect& inRect) const
{
    const auto mapping = mappingForRect(inRect);
    const bool vertical = isVertical();
    for (const double value : forValues) {
        const auto along = static_cast<double>(mapping->pointForValue(static_cast<float>(value)));
        points.push_back(vertical ? Point{inRect.maxX(), along} : Point{along, inRect.maxY()});
    }
}

void TOLVAxis::getMajorPoints(
    std::vector<Point>& majorPoints, const Values& forMajorValues, std::vector<Point>& minorPoints, const Values& forMinorValues, const Rect& inRect) const
{
    getPoints(majorPoints, forMajorValues, inRect);
    getPoints(minorPoints, forMinorValues, inRect);
}

} // namespace TOLVGraphing

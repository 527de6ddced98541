#pragma once

#include "../data/TOLVAxisExtents.h"
#include "../data/TOLVLabel.h"
#include "../data/TOLVLineStyle.h"
#include "../data/TOLVMarker.h"
#include "../mapping/TOLVMapping.h"
#include "../platform/geometry/Rect.h"
#include "../platform/text/NumberFormatter.h"
#include "LabelPlacement.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace TOLVGraphing {

class TOLVGraph;

/// One edge of a graph: it chooses tick values through its subclass, draws grid lines across the data area, places tick labels so that they do not collide, draws its
/// title and the badges of its markers, converts between values and coordinates and zooms its own range.
///
/// An axis belongs to one graph and is its vertical axis when the graph says so; every other axis, also one without a graph, is horizontal. It keeps no range of its own:
/// the range is the graph's. Layout and drawing take this axis's own rectangle, as the graph computes it. Conversion, zoom and ticks take the data area, of which only the extent along the axis counts: the ends of the
/// range stand at its ends. Coordinates are points, y growing upwards. Values are single precision, tick values and ranges double, narrowed to single precision where they are placed. The horizontal axis owns the strip below the data area, the
/// vertical axis the strip to its left. Used from the thread that draws.
///
/// On a range that is reversed or not finite a numeric axis has no ticks and no labels, and a linear one neither on an empty range; positions may then be anything the mapping answers. Labels and lines whose position is
/// not finite are left out.
///
/// This class is abstract in five operations, which throw UnrecognizedOperation: updateStepsInRect, getMajorValues, mappingForRect, valueForPoint and pointForValue. A graph with an axis of this class itself throws it when it is prepared or drawn.
/// Nothing else throws of its own, for whatever rectangle.
class TOLV_EXPORT TOLVAxis : public Codable {
public:
    /// Tick values in data units.
    using Values = std::vector<double>;
    /// Labels with their places in points.
    using Labels = std::vector<std::shared_ptr<TOLVLabel>>;
    /// Markers in the order they were placed.
    using Markers = std::vector<std::shared_ptr<TOLVMarker>>;

    /// Without a graph.
    TOLVAxis();
    /// For a graph, which is referred to weakly; none is allowed.
    explicit TOLVAxis(std::weak_ptr<TOLVGraph> graph);
    ~TOLVAxis() override;
    TOLVAxis(const TOLVAxis&) = delete;
    TOLVAxis& operator=(const TOLVAxis&) = delete;

    /// A new axis of the same class for the same graph with the five drawing flags and the title. Paddings and margin are 0 again and the formatter is a new
    /// decimal one.
    [[nodiscard]] virtual std::shared_ptr<TOLVAxis> copy() const;

    /// Keys "drawsMajorLines" and "drawsMinorLines"; nothing else of an axis is archived.
    void encodeWithCoder(KeyedArchiver& coder) const override;
    /// A missing key reads as false.
    [[nodiscard]] static std::shared_ptr<TOLVAxis> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVAxis"; }

    // Properties.

    /// Grid lines at the major values. True by default.
    [[nodiscard]] bool drawsMajorLines() const { return m_drawsMajorLines; }
    void setDrawsMajorLines(bool draws) { m_drawsMajorLines = draws; }
    /// Grid lines at the minor values. True by default.
    [[nodiscard]] bool drawsMinorLines() const { return m_drawsMinorLines; }
    void setDrawsMinorLines(bool draws) { m_drawsMinorLines = draws; }
    /// Labels at the minor values too. False by default; an axis on which at most one major label fits shows minor labels anyway.
    [[nodiscard]] bool drawsMinorLabels() const { return m_drawsMinorLabels; }
    void setDrawsMinorLabels(bool draws) { m_drawsMinorLabels = draws; }
    /// Kept for hosts; major values are always labelled. True by default.
    [[nodiscard]] bool drawsMajorLabels() const { return m_drawsMajorLabels; }
    void setDrawsMajorLabels(bool draws) { m_drawsMajorLabels = draws; }
    /// Kept for hosts; nothing looks at it. False by default.
    [[nodiscard]] bool drawsLabelAtEnd() const { return m_drawsLabelAtEnd; }
    void setDrawsLabelAtEnd(bool draws) { m_drawsLabelAtEnd = draws; }
    /// Weak. The graph that owns the axis, or null.
    [[nodiscard]] std::shared_ptr<TOLVGraph> graph() const { return m_graph.lock(); }
    void setGraph(std::weak_ptr<TOLVGraph> graph) { m_graph = std::move(graph); }
    /// The gap between tick labels and data area in points. 0 by default. Any number will do, as for margin and padding; what is not finite puts labels where they are left out.
    [[nodiscard]] double tickLabelPadding() const { return m_tickLabelPadding; }
    void setTickLabelPadding(double padding) { m_tickLabelPadding = padding; }
    /// The thickness in points of the strip for tick labels and title. The graph writes its own inset here before each drawing.
    [[nodiscard]] double margin() const { return m_margin; }
    void setMargin(double margin) { m_margin = margin; }
    /// Extra points between the outer edge and the title; written by the graph like the margin.
    [[nodiscard]] double padding() const { return m_padding; }
    void setPadding(double padding) { m_padding = padding; }
    /// Copied. The title; nothing by default.
    [[nodiscard]] const std::optional<std::string>& label() const { return m_label; }
    void setLabel(std::optional<std::string> label) { m_label = std::move(label); }
    /// Copied (by NumberFormatter::copy). Turns tick values into text; decimal style by default, null gives empty texts.
    [[nodiscard]] const std::shared_ptr<NumberFormatter>& tickLabelFormatter() const { return m_tickLabelFormatter; }
    void setTickLabelFormatter(const std::shared_ptr<const NumberFormatter>& formatter);
    /// The tick values of the last preparation, in ascending order, in data units; none before the first. Those set are drawn until the next preparation; callers keep them ascending.
    [[nodiscard]] const Values& majorValues() const { return m_majorValues; }
    void setMajorValues(Values values) { m_majorValues = std::move(values); }
    [[nodiscard]] const Values& minorValues() const { return m_minorValues; }
    void setMinorValues(Values values) { m_minorValues = std::move(values); }
    /// The graph's attributes for tick labels; null without a graph.
    [[nodiscard]] SharedTextAttributes tickLabelAttributes() const;

    /// True when this very object is its graph's vertical axis.
    [[nodiscard]] bool isVertical() const;
    /// Copied on setting. The graph's range for this axis: y when the axis is vertical, else x. It is the graph's own object: changing its ends changes what is shown. Null without a graph; setting does nothing then.
    [[nodiscard]] std::shared_ptr<TOLVAxisExtents> extents() const;
    void setExtents(const std::shared_ptr<const TOLVAxisExtents>& extents);

    // Layout.

    /// The part of the axis rectangle that data is drawn in.
    [[nodiscard]] virtual Rect dataRectInRect(const Rect& rect) const;
    /// The strip of the tick labels: on the horizontal axis one tick label's line height directly below the data area, on the vertical axis right of the title strip.
    [[nodiscard]] virtual Rect tickLabelRectInRect(const Rect& rect) const;
    /// The strip of the title.
    [[nodiscard]] virtual Rect labelRectInRect(const Rect& rect) const;
    /// The title's own rectangle, centred in its strip, before a vertical axis turns it upwards about that centre; empty at the centre without a title.
    [[nodiscard]] Rect titleRectInRect(const Rect& rect) const;

    // Drawing into the current context. Nothing is drawn without one. Preparation comes first; rectangles are the axis's own.

    /// Chooses the steps and the tick values for the rectangle.
    virtual void prepareForDrawingInRect(const Rect& rect);
    /// The frame around the data area and the grid lines of the major values. No frame is drawn around an empty area.
    virtual void drawMajorLinesInRect(const Rect& rect) const;
    /// The grid lines of the minor values, in the graph's minor line style.
    virtual void drawMinorLinesInRect(const Rect& rect) const;
    /// The title, centred in its strip; on the vertical axis it reads upwards.
    virtual void drawLabelInRect(const Rect& rect) const;
    /// The labels of the tick values, those that are kept (see `tickLabelPlacements`).
    virtual void drawTickLabelsInRect(const Rect& rect) const;
    /// Each label that `drawTickLabelsInRect` thinks of, in the order in which it chooses, with what becomes of it; those that are kept are what it draws. A subclass that chooses otherwise overrides both.
    [[nodiscard]] virtual LabelPlacements tickLabelPlacements(const Rect& inRect) const;
    /// Black badges with white texts at the markers' values on the tick label strip; a badge that would collide with an earlier one, or that the
    /// formatter has no text for, is left out. Nulls are passed over, and the markers' axis indexes are not looked at.
    virtual void drawMarkers(const Markers& markers, const Rect& inRect) const;
    /// The labels that the markers' badges are drawn around, in order, with what becomes of them. Nulls have none.
    [[nodiscard]] LabelPlacements markerLabelPlacements(const Markers& markers, const Rect& inRect) const;
    /// The badge around a marker's label: whole points, 4 more than the text on either side, 12 high.
    [[nodiscard]] static Rect badgeRectForLabel(const TOLVLabel& label);
    /// One stroke for the grid lines of all values (data units); rect is the data area. Lines stand on the middle of a point. The style's dash is not used; null strokes as the context is set.
    virtual void drawLinesForValues(const Values& values, const Rect& inRect, const TOLVLineStyle* withStyle) const;

    // Conversion and zoom.

    /// The value (data units) at a coordinate (points) along the axis, computed in single precision. Over an empty range, or a rectangle without length, infinite or NaN, on a logarithmic axis also 0.
    [[nodiscard]] virtual float valueForPoint(double point, const Rect& inRect) const;
    /// The coordinate (points) of a value (data units) along the axis, computed in single precision and not limited to the rectangle. NaN for NaN, and for a value below zero on a logarithmic axis, where 0 lies far below any range. Over an
    /// empty range every value stands at the rectangle's lower end.
    [[nodiscard]] virtual float pointForValue(float value, const Rect& inRect) const;
    /// A step out of or into the range about the middle of the rectangle or about a coordinate (points), which keeps its value: 15 % of the length is added or removed. Ignored
    /// over a length that is not positive, about a coordinate that is not finite, without a range, or when an end of the new range would be no number that the axis can show. Where a range has become as narrow as
    /// neighbouring floats, steps no longer change it.
    virtual void zoomOutInRect(const Rect& rect);
    virtual void zoomInInRect(const Rect& rect);
    virtual void zoomOutCenteredAtPoint(double point, const Rect& inRect);
    virtual void zoomInCenteredAtPoint(double point, const Rect& inRect);
    /// Sets the range to that between the values at two coordinates (points), which may lie outside the rectangle and in reverse, for a reversed range; ignored when an end is no number that the axis can show.
    virtual void zoomToPoints(double fromPoint, double toPoint, const Rect& inRect);

    // Ticks and labels.

    /// Chooses the tick steps for the rectangle and the range.
    virtual void updateStepsInRect(const Rect& rect);
    /// The conversion for the rectangle and the range (0 to 0 without one), never null. It may be the axis's own object, which the next call changes.
    [[nodiscard]] virtual std::shared_ptr<TOLVMapping> mappingForRect(const Rect& rect) const;
    /// The tick values for the current steps and range, ascending, in place of what the targets have; null targets are skipped.
    virtual void getMajorValues(Values* majorValues, Values* minorValues) const;
    /// The formatter's text for the value, widened to double, with the attributes. What would read "-0" reads "0".
    [[nodiscard]] virtual AttributedString attributedStringForValue(float value, const SharedTextAttributes& withAttributes) const;
    /// The label of one value, never null; rect is the tick label strip. Its height is the font's ascender. Its rectangle is not finite where the value has no place.
    [[nodiscard]] virtual std::shared_ptr<TOLVLabel> labelForValue(float value, const Rect& inRect) const;
    /// The labels of the values, in order, without those that overlap an earlier one, lie outside the strip or have no finite place. They replace what the list had; a null list is skipped.
    virtual void getLabels(Labels* labels, const Values& forValues, const Rect& inRect) const;
    /// Both kinds of labels: minor ones only when the axis draws them or fewer than two major ones fit, and none that overlaps a major one.
    virtual void getMajorLabels(Labels& majorLabels, const Values& forMajorValues, Labels& minorLabels, const Values& forMinorValues, const Rect& inRect) const;
    /// Appends the values' points, also those that are not finite, on the far side of the rectangle, that is its upper edge on the horizontal axis and its right edge on the vertical one.
    virtual void getPoints(std::vector<Point>& points, const Values& forValues, const Rect& inRect) const;
    /// The same for major and minor values.
    virtual void getMajorPoints(
        std::vector<Point>& majorPoints, const Values& forMajorValues, std::vector<Point>& minorPoints, const Values& forMinorValues, const Rect& inRect) const;

protected:
    /// Copies what every axis copies into a new axis of a subclass.
    void copyPropertiesInto(TOLVAxis& axis) const;
    /// Sets points and values of a mapping from the rectangle and the range, narrowed to single precision, in this order.
    void configureMapping(TOLVMapping& mapping, const Rect& rect) const;
    /// Whether zoom and pan may end a range at the value: when it is finite.
    [[nodiscard]] virtual bool canEndRangeAt(float value) const;
    /// The length of the rectangle along this axis, in points.
    [[nodiscard]] double lengthOfRect(const Rect& rect) const;
    /// The frame around the data area, in the colour of the graph's major line style; none around an empty area.
    void drawFrameInRect(const Rect& rect) const;
    /// What a class archived by this one writes is read back into a new axis.
    void decodeFlags(KeyedUnarchiver& coder);

private:
    [[nodiscard]] LabelPlacements placements(const Values& forValues, const Rect& inStrip, Labels placedBefore = {}) const;

    bool m_drawsMajorLines = true;
    bool m_drawsMinorLines = true;
    bool m_drawsMinorLabels = false;
    bool m_drawsMajorLabels = true;
    bool m_drawsLabelAtEnd = false;
    std::weak_ptr<TOLVGraph> m_graph;
    double m_tickLabelPadding = 0.0;
    double m_margin = 0.0;
    double m_padding = 0.0;
    std::optional<std::string> m_label;
    std::shared_ptr<NumberFormatter> m_tickLabelFormatter;
    Values m_majorValues;
    Values m_minorValues;
};

} // namespace TOLVGraphing

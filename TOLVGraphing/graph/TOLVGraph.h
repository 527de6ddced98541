#pragma once

#include "../axes/TOLVAxis.h"
#include "../data/TOLVGraphData.h"
#include "../data/TOLVGraphExtents.h"
#include "../data/TOLVLineStyle.h"
#include "../data/TOLVMarker.h"
#include "../drawing/TOLVGraphDrawing.h"
#include "../platform/foundation/IndexSet.h"
#include "../platform/foundation/KeyedArchiver.h"
#include "../platform/foundation/Observable.h"
#include "../platform/foundation/PropertyValue.h"
#include "../platform/foundation/UndoManager.h"
#include "../platform/geometry/EdgeInsets.h"
#include "../platform/geometry/Rect.h"
#include "../platform/text/TextAttributes.h"
#include "GraphLayout.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

/// One plot: it owns the series, the two axes, the visible ranges, the markers and the looks, and draws them into a rectangle of the current drawing context.
///
/// Coordinates are points with y growing upwards; rectangles are the graph rectangle, the one that is drawn into, unless an operation says otherwise. Extents, marker values and
/// rectangles are double precision; conversions take and return single precision. The text system should be installed before graphs are made, because their font heights come
/// from it. Used from the thread that draws.
///
/// Every property announces its changes under its name; a change of the extents, whole or of one end, also announces "canDraw". Adding series announces nothing.
///
/// A graph without series, or whose ranges are still the empty-data sentinels, cannot be drawn usefully (`canDraw`), but drawing it is harmless. Ranges that are empty or NaN give
/// axes without ticks. What becomes of samples that are NaN, or not positive on a logarithmic axis, its strategy says. With an axis of the class TOLVAxis itself preparing and drawing throw UnrecognizedOperation; otherwise they throw nothing of their own.
class TOLV_EXPORT TOLVGraph final : public Codable, public Observable, public std::enable_shared_from_this<TOLVGraph> {
    struct ConstructionKey {
        explicit ConstructionKey() = default;
    };

public:
    /// A list of series in the order in which they are drawn.
    using Series = std::vector<std::shared_ptr<TOLVGraphData>>;
    /// Markers in the order they were placed.
    using Markers = TOLVAxis::Markers;

    /// A new graph with linear axes, a curve strategy and the default looks.
    [[nodiscard]] static std::shared_ptr<TOLVGraph> graph();
    /// For `graph()` only.
    explicit TOLVGraph(ConstructionKey);
    ~TOLVGraph() override;
    TOLVGraph(const TOLVGraph&) = delete;
    TOLVGraph& operator=(const TOLVGraph&) = delete;

    /// A graph with the same series, line styles and strategy (shared), and its own axes, extents and looks. Its marker list is a snapshot that cannot be edited until it is set anew. Font
    /// heights are those of the default attributes; the undo manager is not carried over.
    [[nodiscard]] std::shared_ptr<TOLVGraph> copy() const;

    /// Keys "horizontalAxis", "verticalAxis", "extents", "markers".
    void encodeWithCoder(KeyedArchiver& coder) const override;
    /// Each key that is present replaces a new graph's default; also a "drawingStrategy", which a host may have stored. Never null. Throws ArchiveError for values of another class.
    [[nodiscard]] static std::shared_ptr<TOLVGraph> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVGraph"; }

    // Properties.

    /// Horizontal zoom steps are allowed. True by default.
    [[nodiscard]] bool canZoomX() const { return m_canZoomX; }
    void setCanZoomX(bool canZoom) { setProperty(m_canZoomX, canZoom, "canZoomX"); }
    /// Vertical zoom steps are allowed. True by default.
    [[nodiscard]] bool canZoomY() const { return m_canZoomY; }
    void setCanZoomY(bool canZoom) { setProperty(m_canZoomY, canZoom, "canZoomY"); }
    /// True from creation until `reloadData`.
    [[nodiscard]] bool needsReloadData() const { return m_needsReloadData; }
    void setNeedsReloadData(bool needs) { setProperty(m_needsReloadData, needs, "needsReloadData"); }
    /// Copied. Drawn above the data area, left-aligned with it; nothing by default.
    [[nodiscard]] const std::optional<std::string>& title() const { return m_title; }
    void setTitle(std::optional<std::string> title) { setProperty(m_title, std::move(title), "title"); }
    /// Copied; the copy belongs to this graph. Null draws neither axis.
    [[nodiscard]] const std::shared_ptr<TOLVAxis>& horizontalAxis() const { return m_horizontalAxis; }
    void setHorizontalAxis(const std::shared_ptr<const TOLVAxis>& axis);
    [[nodiscard]] const std::shared_ptr<TOLVAxis>& verticalAxis() const { return m_verticalAxis; }
    void setVerticalAxis(const std::shared_ptr<const TOLVAxis>& axis);
    /// Copied. Major grid lines and the frame: solid, gray, 1 point by default.
    [[nodiscard]] const std::shared_ptr<TOLVLineStyle>& majorLineStyle() const { return m_majorLineStyle; }
    void setMajorLineStyle(const std::shared_ptr<const TOLVLineStyle>& style);
    /// Copied. Minor grid lines: solid, light gray, half a point by default.
    [[nodiscard]] const std::shared_ptr<TOLVLineStyle>& minorLineStyle() const { return m_minorLineStyle; }
    void setMinorLineStyle(const std::shared_ptr<const TOLVLineStyle>& style);
    /// The line heights in points of axis titles and tick labels: those of "Tj" in the attributes, measured when the attributes are set, which replaces a height set here.
    [[nodiscard]] double labelFontHeight() const { return m_labelFontHeight; }
    void setLabelFontHeight(double height) { setProperty(m_labelFontHeight, height, "labelFontHeight"); }
    [[nodiscard]] double tickLabelFontHeight() const { return m_tickLabelFontHeight; }
    void setTickLabelFontHeight(double height) { setProperty(m_tickLabelFontHeight, height, "tickLabelFontHeight"); }
    /// Shared. HelveticaNeue-Bold 12 without a colour by default. Null, as for the two below, is plain text: Helvetica 12 in black.
    [[nodiscard]] const SharedTextAttributes& titleAttributes() const { return m_titleAttributes; }
    void setTitleAttributes(SharedTextAttributes attributes) { setProperty(m_titleAttributes, std::move(attributes), "titleAttributes"); }
    /// Shared. Axis titles: HelveticaNeue 14 in black by default.
    [[nodiscard]] const SharedTextAttributes& labelAttributes() const { return m_labelAttributes; }
    void setLabelAttributes(SharedTextAttributes attributes) { setProperty(m_labelAttributes, std::move(attributes), "labelAttributes"); }
    /// Shared. Tick labels: HelveticaNeue-Light 12 in black by default.
    [[nodiscard]] const SharedTextAttributes& tickLabelAttributes() const { return m_tickLabelAttributes; }
    void setTickLabelAttributes(SharedTextAttributes attributes) { setProperty(m_tickLabelAttributes, std::move(attributes), "tickLabelAttributes"); }
    /// Shared. Draws the series; a CurveGraphDrawing by default. Null draws none.
    [[nodiscard]] const std::shared_ptr<TOLVGraphDrawing>& drawingStrategy() const { return m_drawingStrategy; }
    void setDrawingStrategy(std::shared_ptr<TOLVGraphDrawing> strategy) { setProperty(m_drawingStrategy, std::move(strategy), "drawingStrategy"); }
    /// Copied, unless it is the object already held. The visible ranges, from 0 to 0 by default; the object held points back at this graph, one that is replaced no longer does. With null the axes have no ranges, and nothing can be drawn.
    [[nodiscard]] const std::shared_ptr<TOLVGraphExtents>& extents() const { return m_extents; }
    void setExtents(const std::shared_ptr<TOLVGraphExtents>& extents);
    /// Shared. Receives the inverse of every marker edit; null by default and then nothing is registered.
    [[nodiscard]] const std::shared_ptr<UndoManager>& undoManager() const { return m_undoManager; }
    /// Gives the graph its undo manager; null takes it away. What was registered before stays with the former one.
    void attachUndoManager(std::shared_ptr<UndoManager> undoManager) { setProperty(m_undoManager, std::move(undoManager), "undoManager"); }
    /// The markers of both axes, shared objects, in the order they were placed.
    [[nodiscard]] const Markers& markers() const { return m_markers; }
    /// Replaces the whole list, which can be edited afterwards. No undo step is registered. Throws Exception "NullMarker" for a null.
    void setMarkers(Markers markers);
    /// The outer space around the axis areas, in points: top 15, left 30, bottom 15, right 15 by default. Any numbers will do, as for the padding: too large ones leave no data area.
    [[nodiscard]] const EdgeInsets& margin() const { return m_margin; }
    void setMargin(const EdgeInsets& margin) { setProperty(m_margin, margin, "margin"); }
    /// Inner space added to the margin on each side. 0 by default.
    [[nodiscard]] const EdgeInsets& padding() const { return m_padding; }
    void setPadding(const EdgeInsets& padding) { setProperty(m_padding, padding, "padding"); }
    /// The tick label padding of the axes in points; without the axis it is 0 and setting does nothing.
    [[nodiscard]] double verticalTickLabelPadding() const;
    void setVerticalTickLabelPadding(double padding);
    [[nodiscard]] double horizontalTickLabelPadding() const;
    void setHorizontalTickLabelPadding(double padding);

    // Series.

    /// Appends a series (shared); null is passed over. Announces nothing.
    void addGraphData(std::shared_ptr<TOLVGraphData> data);
    /// Removes all series. Announces nothing.
    void clearGraphData();
    /// A snapshot of the list; the series are shared.
    [[nodiscard]] Series graphData() const { return m_graphDataArray; }
    /// Marks the data as loaded.
    void reloadData() { setNeedsReloadData(false); }

    // Extremes and visible ranges. Without data a minimum is FLT_MAX and a maximum -FLT_MAX.

    /// The smallest first and the largest last abscissa of the series: x is taken as sorted. A last one that is NaN is passed over; a first one that is NaN is the minimum unless a series with samples follows.
    [[nodiscard]] float minXValue() const;
    [[nodiscard]] float maxXValue() const;
    /// The extremes of the ordinates. NaN is passed over, infinite ones count, and so do ordinates without an abscissa.
    [[nodiscard]] float minYValue() const;
    [[nodiscard]] float maxYValue() const;
    /// New extents from the minima to the maxima above, with nothing added around them, which are the sentinels without data; z is 0 to 0. The graph's own are not touched.
    [[nodiscard]] std::shared_ptr<TOLVGraphExtents> extentsFittingGraphData() const;
    /// True when the axis is of the class TOLVLogarithmicAxis itself; subclasses do not count.
    [[nodiscard]] bool XIsLog() const;
    [[nodiscard]] bool YIsLog() const;
    /// Checks and corrects a value proposed for "x.min", "x.max", "y.min" or "y.max": false when it is no number; an end that would empty or reverse the range is replaced by the
    /// current one, and any other end that is not positive on a logarithmic axis by 1. NaN, and any number for another key path, is accepted as it is. The error is never filled and may be null. Sets nothing.
    bool validateExtentsValue(PropertyValue& value, std::string_view forKeyPath, std::string* error = nullptr) const;
    /// For each series the index range of its samples in the visible x range; nothing at all when one series has no sample between two visible ones. A series wholly to
    /// the left keeps its full range; one without samples has the range (0, 0).
    [[nodiscard]] std::optional<std::vector<IndexRange>> xExtentsConstrainedGraphDataRanges() const;
    /// The same ranges; stops the program when there are none. Ask the operation above first.
    [[nodiscard]] std::vector<IndexRange> graphDataRangesConstrainedByXExtents() const;
    /// The series cut to those ranges; stops the program likewise, and for a series that is not made of TOLVRealVectors.
    [[nodiscard]] Series graphDataConstrainedByXExtents() const;

    // Announcements.

    /// The properties whose change a view answers by drawing again: "canDraw".
    [[nodiscard]] static std::vector<std::string> keyPathsOfPropertiesAffectingDisplay();
    /// None.
    [[nodiscard]] static std::vector<std::string> keyPathsOfPropertiesAffectingReloadData();
    [[nodiscard]] std::vector<std::string> keysAffectingValueOfKey(std::string_view key) const override;

    // Layout.

    /// The graph rectangle less margin and padding: what data is drawn in.
    [[nodiscard]] Rect dataRectInRect(const Rect& rect) const;
    /// The horizontal axis's own rectangle: the data area's width, from the lower edge of the graph rectangle to the top of the data area.
    [[nodiscard]] Rect horizontalAxisRectInRect(const Rect& rect) const;
    /// The vertical axis's own rectangle: the data area's height, from the left edge of the graph rectangle to the right end of the data area.
    [[nodiscard]] Rect verticalAxisRectInRect(const Rect& rect) const;
    /// The band between the top of the data area and the top of the graph rectangle.
    [[nodiscard]] Rect titleBandInRect(const Rect& rect) const;
    /// Prepares the graph and tells where everything comes to stand in the rectangle: ticks, labels with what becomes of them, badges, titles, callouts. Nothing is drawn, and no context is needed.
    [[nodiscard]] GraphLayout layoutInRect(const Rect& rect);

    // Drawing into the current context. Nothing is drawn without one. Any rectangle will do: those smaller than the insets, empty and negative ones pass through.

    /// True when there are series and no end of the extents is an empty-data sentinel.
    [[nodiscard]] bool canDraw() const;
    /// The whole pass: preparation, axes, data, title, markers.
    void drawInRect(const Rect& rect);
    /// Writes margin and padding into the axes and has them choose their ticks. Does nothing without both axes.
    void prepareForDrawingInRect(const Rect& rect);
    /// Minor lines, major lines, tick labels, marker badges, titles. Does nothing without both axes.
    void drawAxesInRect(const Rect& rect);
    /// The series, by the drawing strategy; nothing without one.
    void drawDataInRect(const Rect& rect);
    /// The title above the data area; nothing without one.
    void drawTitleInRect(const Rect& rect);
    /// The strategy's own drawing of markers, for strategies that have one.
    void drawMarkersInRect(const Rect& rect);

    // Conversion between points and values. Without the axis the answer is 0.

    /// The value (data units) at a coordinate (points) along an axis: see TOLVAxis::valueForPoint.
    [[nodiscard]] float valueForX(float x, const Rect& inRect) const;
    [[nodiscard]] float valueForY(float y, const Rect& inRect) const;
    /// The coordinate (points) of a value (data units) along an axis: see TOLVAxis::pointForValue. Not finite where the axis has no place for the value.
    [[nodiscard]] float XForValue(float value, const Rect& inRect) const;
    [[nodiscard]] float YForValue(float value, const Rect& inRect) const;
    /// The difference in value (data units, single precision) of a distance in points; linear also on logarithmic axes. 0 without the range; over a data area of no size not finite.
    [[nodiscard]] float deltaForX(float dx, const Rect& inRect) const;
    [[nodiscard]] float deltaForY(float dy, const Rect& inRect) const;

    // Zoom and pan. Steps keep the value at the coordinate and do nothing while canZoomX or canZoomY forbids them, over an empty data area, or where the new range would
    // not be finite, not be positive on a logarithmic axis, or have no slots on a category axis.

    /// A step in or out about the middle of the data area, or about a coordinate in points, in one direction: see TOLVAxis::zoomInInRect.
    void zoomInXInRect(const Rect& rect);
    void zoomOutXInRect(const Rect& rect);
    void zoomInYInRect(const Rect& rect);
    void zoomOutYInRect(const Rect& rect);
    void zoomInXCenteredAtPoint(float x, const Rect& inRect);
    void zoomOutXCenteredAtPoint(float x, const Rect& inRect);
    void zoomInYCenteredAtPoint(float y, const Rect& inRect);
    void zoomOutYCenteredAtPoint(float y, const Rect& inRect);
    /// Sets the visible range to the extremes of all data, which are the sentinels without data and may not be positive on a logarithmic axis; the rectangle is not looked at, and neither is canZoomX or canZoomY. Does nothing without the range.
    void zoomToFitXInRect(const Rect& rect);
    void zoomToFitYInRect(const Rect& rect);
    /// Sets the visible range (data units) of an axis as it is given, whatever canZoomX and canZoomY are; does nothing without the axis.
    void zoomXToFixedMin(float min, float max);
    void zoomYToFixedMin(double min, double max);
    /// Moves the visible ranges by a distance in points: a positive one shows larger values, of x or y. To follow a drag, pass its negative. A direction in which the distance is not finite stays.
    void offsetDisplayByX(float dx, float Y, const Rect& inRect);
    /// The same.
    void offsetDisplayByDeltaX(float dx, float deltaY, const Rect& inRect);

    // Markers. Each edit registers its inverse with the undo manager and announces "markers" with the positions. Positions outside the list, or counts that differ, throw
    // Exception "IndexOutOfRange" and a null marker throws Exception "NullMarker"; nothing is changed then. Editing the snapshot of a copied graph throws Exception "ImmutableMarkers".

    /// The number of markers of both axes.
    [[nodiscard]] std::size_t countOfMarkers() const { return m_markers.size(); }
    /// The markers (shared) at the positions, in ascending order.
    [[nodiscard]] Markers markersAtIndexes(const IndexSet& indexes) const;
    /// The positions are those after the insertion.
    void insertMarkers(const Markers& markers, const IndexSet& atIndexes);
    /// Takes the markers at the positions out of the list.
    void removeMarkersAtIndexes(const IndexSet& indexes);
    /// Puts other markers (shared) at the positions.
    void replaceMarkersAtIndexes(const IndexSet& indexes, const Markers& withMarkers);
    /// Appends a new marker of the horizontal axis with the value (data units), or with that at the coordinate (points; narrowed to single precision), and answers it. A value that is not finite is kept: it has no badge.
    std::shared_ptr<TOLVMarker> placeHorizontalAxisMarkerWithValue(double value);
    std::shared_ptr<TOLVMarker> placeHorizontalAxisMarkerAtPoint(double x, const Rect& inRect);
    /// Always null: there is no search by value.
    [[nodiscard]] std::shared_ptr<TOLVMarker> horizontalAxisMarkerWithValue(double value, double tolerance) const;
    /// The first marker nearer to the coordinate than the radius (both in points), whatever its axis; null when there is none.
    [[nodiscard]] std::shared_ptr<TOLVMarker> horizontalAxisMarkerAtPoint(double x, double inRadius, const Rect& inRect) const;
    /// Its position in the list, or kNotFoundIndex.
    [[nodiscard]] std::int64_t indexOfHorizontalAxisMarkerAtPoint(double x, double inRadius, const Rect& inRect) const;

private:
    /// The axis indexes of markers.
    static constexpr std::int64_t kHorizontalAxisIndex = 0;
    static constexpr std::int64_t kVerticalAxisIndex = 1;

    void initialize();
    void observeExtents();
    void stopObservingExtents();
    void installAxis(std::shared_ptr<TOLVAxis>& axis, const std::shared_ptr<const TOLVAxis>& newAxis, std::string_view key);
    [[nodiscard]] Point titlePointInRect(const Rect& rect) const;
    [[nodiscard]] Markers markersWithAxisIndex(std::int64_t axisIndex) const;
    void requireEditableMarkers() const;
    static void requireMarkers(const Markers& markers, std::size_t count);
    static void requireMarkerIndexes(const IndexSet& indexes, std::size_t end);
    template <typename Operation>
    void registerUndo(Operation operation);

    bool m_canZoomX = true;
    bool m_canZoomY = true;
    bool m_needsReloadData = true;
    std::optional<std::string> m_title;
    std::shared_ptr<TOLVAxis> m_horizontalAxis;
    std::shared_ptr<TOLVAxis> m_verticalAxis;
    std::shared_ptr<TOLVLineStyle> m_majorLineStyle;
    std::shared_ptr<TOLVLineStyle> m_minorLineStyle;
    double m_labelFontHeight = 0.0;
    double m_tickLabelFontHeight = 0.0;
    SharedTextAttributes m_titleAttributes;
    SharedTextAttributes m_labelAttributes;
    SharedTextAttributes m_tickLabelAttributes;
    std::shared_ptr<TOLVGraphDrawing> m_drawingStrategy;
    std::shared_ptr<TOLVGraphExtents> m_extents;
    std::shared_ptr<UndoManager> m_undoManager;
    Series m_graphDataArray;
    Markers m_markers;
    bool m_markersAreEditable = true;
    EdgeInsets m_margin{15.0, 30.0, 15.0, 15.0};
    EdgeInsets m_padding;
    std::vector<ObserverToken> m_extentsTokens;
};

} // namespace TOLVGraphing

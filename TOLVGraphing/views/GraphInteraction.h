#pragma once

#include "../data/TOLVAxisExtents.h"
#include "../data/TOLVMarker.h"
#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing {

class MarginsOnlyGrow;
class TOLVAxis;
class TOLVGraph;
class TOLVGraphView;

/// The button that a gesture is made with.
enum class PointerButton : std::uint8_t {
    Primary,   ///< mostly the left one
    Secondary, ///< mostly the right one
};

/// The keys held during a gesture.
struct KeyModifiers {
    /// The key is held.
    bool shift = false;
    bool control = false;
};

/// The keys that a graph answers.
enum class GraphKey : std::uint8_t {
    Left,           ///< pans, or moves the selected marker, to smaller x
    Right,          ///< pans, or moves the selected marker, to larger x
    Up,             ///< pans to larger y
    Down,           ///< pans to smaller y
    ZoomIn,         ///< zooms in about the middle
    ZoomOut,        ///< zooms out about the middle
    Fit,            ///< shows all data; with Shift in y only, with Control in x only
    PlaceMarker,    ///< at the pointer, or in the middle
    NextMarker,     ///< selects the marker placed after the selected one, or the first
    PreviousMarker, ///< selects the marker placed before the selected one, or the last
    Delete,         ///< removes the selected marker
    Cancel,         ///< ends a drag without its effect, or a selection
    Undo,           ///< takes the last edit of a marker back
    Redo,           ///< does the last undone edit again
};

/// What the pointer should look like where it is.
enum class PointerLook : std::uint8_t {
    Plain,       ///< as elsewhere
    Crosshair,   ///< over the data area
    Moving,      ///< the graph is dragged
    MovesMarker, ///< over a marker, or dragging one
    SelectsBox,  ///< a box is drawn
};

/// The sample of a series nearest to the pointer's abscissa.
struct SampleReadout {
    /// The position of the series in the graph's list, and its name, empty without one.
    std::size_t series = 0;
    std::string name;
    /// The sample, in data units.
    float x = 0.0F;
    float y = 0.0F;
    /// Where the sample is drawn, in points of the view; not finite where it has no place.
    Point position;

    friend bool operator==(const SampleReadout&, const SampleReadout&) = default;
};

/// The gestures of a graph view, without any toolkit: a host hands over pointer, wheel and key events in the view's coordinates (points, y growing upwards) and draws what this object says besides the graph: a box, a
/// read-out, the look of the pointer.
///
/// - Wheel: zooms x about the pointer; with Shift y, with Control both.
/// - Primary button: drags the graph; on a marker, drags the marker. A double click in the data area places a marker, on the strip of an axis it fits that axis to the data.
/// - Secondary button: drags a box; the ranges become those of the box when it is let go. A box that is thin in one direction changes the other one only.
/// - Keys: arrows pan by a tenth of the data area, or by a point with Shift; with a marker selected Left and Right move it likewise. Zoom in and out about the middle (Shift: y only, Control: x only), fit both axes, place a marker at
///   the pointer or in the middle, select markers in turn, delete the selected one, undo and redo, cancel a drag or a selection.
///
/// Zooming stops before a range has become so narrow that single precision could not tell its ends apart, because no step would lead out again. The flags canZoomX and canZoomY forbid zooming by wheel, keys and box.
/// Marker edits go through the graph, so that its undo manager has one step for each; a dragged marker is one step. A key that edits or selects markers while one is dragged puts that one down first. A view without a graph answers nothing.
///
/// A position that is not finite is over nothing. What the graph throws passes through, as for markers that are a copied graph's.
///
/// Positions are those in the margins that the view has; where the view fits them to the labels, they only grow while something is dragged.
class TOLV_EXPORT GraphInteraction {
public:
    /// The view is shared. Throws Exception "NullView" for null.
    explicit GraphInteraction(std::shared_ptr<TOLVGraphView> view);

    /// Shared. The view whose gestures these are.
    [[nodiscard]] const std::shared_ptr<TOLVGraphView>& view() const { return m_view; }

    // Events.

    /// The pointer has come to this position, with or without a button held.
    void pointerMoved(Point position);
    /// The pointer has left the view; a drag goes on.
    void pointerLeft();
    /// The button was pressed, or let go, at this position.
    void pointerPressed(Point position, PointerButton button);
    void pointerReleased(Point position, PointerButton button);
    /// The primary button was clicked twice at this position.
    void pointerDoubleClicked(Point position);
    /// Positive steps zoom in. Parts of a step, as touch pads have them, are collected; more than 20 at once count as 20, and what is not finite as none.
    void wheelTurned(double steps, Point position, KeyModifiers modifiers);
    /// False when the key has no meaning now, so that the host may use it.
    bool keyPressed(GraphKey key, KeyModifiers modifiers);

    /// Selects the marker at this place of the graph's list; none there does nothing.
    void selectMarkerAtIndex(std::size_t index);

    // What a host shows.

    /// True from the press that takes hold of the graph or of a marker, or begins a box, until the button is let go, the drag is cancelled or a key puts the marker down.
    [[nodiscard]] bool isDragging() const { return m_drag != Drag::None; }
    /// The box that is being drawn; nothing otherwise.
    [[nodiscard]] std::optional<Rect> selectionBox() const;
    /// What the pointer should look like now.
    [[nodiscard]] PointerLook pointerLook() const;
    /// The marker that keys go to; null for none.
    [[nodiscard]] const std::shared_ptr<TOLVMarker>& selectedMarker() const { return m_selectedMarker; }
    /// The value of x under the pointer; nothing unless it is over the data area, and nothing while the graph is dragged along with it.
    [[nodiscard]] std::optional<float> valueUnderPointer() const;
    /// For each series with samples the one nearest to that value; a series without a nearest one, as of NaN abscissae only, is left out.
    [[nodiscard]] std::vector<SampleReadout> samplesUnderPointer() const;
    /// The pointer's abscissa with its axis's title or "x" (without one, or with an empty one), for example "Time 0.25", and a sample's ordinate with its series' name or "y", for example "level 3.5": numbers as the axes' formatters write them.
    /// The first is empty unless the pointer is over the data area.
    [[nodiscard]] std::string abscissaText() const;
    [[nodiscard]] std::string ordinateText(const SampleReadout& readout) const;
    /// The read-out as text, for example "Time 0.25, level 3.5": axis title or "x", then the series' names (or "y") with the values as the axes' formatters write them. Empty unless the pointer is over the data area.
    [[nodiscard]] std::string readoutText() const;

private:
    enum class Drag : std::uint8_t { None, Pan, Marker, Box };

    [[nodiscard]] std::shared_ptr<TOLVGraph> graph() const;
    [[nodiscard]] Rect rect() const;
    [[nodiscard]] Rect dataRect() const;
    [[nodiscard]] bool isInDataArea(Point position) const;
    [[nodiscard]] std::optional<std::size_t> markerAt(Point position) const;
    [[nodiscard]] std::optional<std::size_t> indexOfSelectedMarker() const;
    [[nodiscard]] Rect dragBox() const;
    void beginDrag(Drag drag);
    /// The drag that has ended.
    Drag endDrag();
    void restoreRanges();
    void panTo(Point position);
    void finishMarkerDrag();
    /// Ends the drag of a marker as letting the button go does.
    void putMarkerDown();
    void zoomToBox(const Rect& box);
    void zoom(bool zoomsIn, bool inX, bool inY, Point center);
    void fit(bool x, bool y);
    void moveMarkerTo(double x);
    void moveMarkerBy(double distance);
    void selectMarker(bool next);
    bool panByKey(GraphKey key, KeyModifiers modifiers);
    bool zoomByKey(bool zoomsIn, KeyModifiers modifiers);
    bool deleteSelectedMarker();
    bool cancel();

    std::shared_ptr<TOLVGraphView> m_view;
    std::optional<Point> m_pointer;
    Drag m_drag = Drag::None;
    /// For the length of a drag.
    std::shared_ptr<const MarginsOnlyGrow> m_marginsOnlyGrow;
    Point m_dragStart;
    Point m_dragEnd;
    /// The ranges when a drag of the graph began.
    std::shared_ptr<TOLVAxisExtents> m_startX;
    std::shared_ptr<TOLVAxisExtents> m_startY;
    std::shared_ptr<TOLVMarker> m_selectedMarker;
    double m_markerStart = 0.0;
    double m_wheelSteps = 0.0;
};

} // namespace TOLVGraphing

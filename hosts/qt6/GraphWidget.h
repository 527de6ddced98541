#pragma once

#include <TOLVGraphing/platform/ui/PrintInfo.h>
#include <TOLVGraphing/views/GraphInteraction.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <TOLVMath/Export.h>

#include <QPointF>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class QAction;
class QMenu;

namespace TOLVGraphing {

class GraphDisplayObserver;
class GraphPicture;
class TOLVGraph;

/// Whether a widget shows its graph dark on light (Light) or light on dark (Dark), or as the palette's own texts stand on their windows (FollowsPalette). What is copied and printed is always dark on white.
enum class GraphAppearance : std::uint8_t { FollowsPalette, Light, Dark };

/// The commands of a widget, each with an action for menus and tool bars: GraphWidget::action. ZoomIn and ZoomOut zoom both axes about the middle, Fit shows all data, PlaceMarker places a marker at the pointer or
/// in the middle, NextMarker and PreviousMarker select markers in turn and DeleteMarker removes the selected one.
enum class GraphCommand : std::uint8_t { Copy, Print, Undo, Redo, ZoomIn, ZoomOut, Fit, PlaceMarker, DeleteMarker, NextMarker, PreviousMarker };

/// Shows a graph view in a window and lets people work with it:
///
///     GraphWidget widget;
///     widget.addSeries(x, y, "Voltage");
///     widget.show();
///
/// - Wheel: zooms x about the pointer; with Shift y, with Control both. Left button: drags the graph, or a marker. Double click: places a marker, or fits an axis when it hits one. Right button: a box to zoom to, or the
///   menu of all commands when it is not dragged.
/// - Keys: arrows pan (with Shift by a point; left and right move the selected marker), + and - zoom (Shift: y only, Control: the standard zoom), Home fits, M places a marker, N and Shift+N select markers in turn, Delete
///   removes the selected one, Escape cancels; copy, print, undo, redo and zoom have their standard shortcuts.
/// - Under the pointer: the nearest sample of each series, with its values.
///
/// A point of the view is a logical pixel; the view's y grows upwards from the lower edge of the widget. Straight lines fall on whole device pixels at every device pixel ratio. The graph is drawn anew when it announces a change that shows, when the size or the device pixel ratio
/// changes and when light turns dark; pointer moves draw only what lies above it. Accessible as a chart with the graph's title, axes, series, ranges and the values under the pointer.
///
/// The graph itself is changed through `graph()`: what it announces (see GraphDisplayObserver) is drawn by itself, for the rest, such as series added or a line style changed in place, the host calls `view()->setNeedsDisplay()`. Nothing is
/// drawn of a graph without series or ranges but the background.
///
/// The first widget of a process installs what the library needs of the desktop (see installQtServices). Errors of copying and printing are shown in a dialog; an exception while the graph is drawn stands in place of the graph as text. Lives,
/// as all widgets, in the thread of the application. Not final: a subclass that answers an event calls the handler of this class for the rest.
class TOLV_EXPORT GraphWidget : public QWidget {
    Q_OBJECT

public:
    /// A widget with a view of a new graph, whose margins fit its labels, which draws its curves whole (WholeCurveGraphDrawing), and which has an undo manager. Needs a QApplication.
    explicit GraphWidget(QWidget* parent = nullptr);
    /// A widget with this view (shared, not null), which is as it is; its graph, if any, gets an undo manager where it has none. The view belongs to this widget alone as long as the widget lives, which takes the view's redisplay handler and
    /// takes it away at its end; whether the view draws its background is decided before.
    explicit GraphWidget(std::shared_ptr<TOLVGraphView> view, QWidget* parent = nullptr);
    ~GraphWidget() override;

    /// Shared, never null. The widget sets its frame, to its own size in logical pixels, and listens to its requests for redisplay: `view()->setNeedsDisplay()` has the graph drawn again. Another graph is set by the widget's setGraph.
    [[nodiscard]] const std::shared_ptr<TOLVGraphView>& view() const { return m_view; }
    /// The view's graph, shared; may be null.
    [[nodiscard]] std::shared_ptr<TOLVGraph> graph() const { return m_view->graph(); }
    /// Shows another graph (shared), which gets an undo manager where it has none; null shows the background only. Drag, box and selected marker of the former one are forgotten.
    void setGraph(const std::shared_ptr<TOLVGraph>& graph);

    /// What gestures and keys have led to: the pointer, the nearest samples, the box. Valid until `setGraph`.
    [[nodiscard]] const GraphInteraction& interaction() const { return *m_interaction; }

    /// Adds a series (the vectors are taken over; of different lengths, the longer one is cut to the shorter) in the next colour of `seriesColor` and shows all data, as the command Fit does. Abscissae ascend; samples that are NaN are left out where the strategy does so, as the widget's own graph does for up to 16,384 samples in range. An empty name is none. Does nothing without a graph.
    void addSeries(std::vector<float> x, std::vector<float> y, const QString& name = {});
    /// The same with copies, each number rounded to the nearest float; beyond the range of float it is an infinity.
    void addSeries(std::span<const double> x, std::span<const double> y, const QString& name = {});

    /// Dark on light or light on dark, or as the palette has it: light text on a dark window is dark. FollowsPalette by default.
    [[nodiscard]] GraphAppearance appearance() const { return m_appearance; }
    void setAppearance(GraphAppearance appearance);
    /// Whether the widget shows light on dark now.
    [[nodiscard]] bool isDark() const;
    /// The values under the pointer are shown beside it. True by default. `readoutText` and `readoutChanged` tell them in any case.
    [[nodiscard]] bool showsReadout() const { return m_showsReadout; }
    void setShowsReadout(bool shows);
    /// What the print command starts with (copied); it keeps what the user has chosen. A4 in portrait by default.
    [[nodiscard]] const PrintInfo& printInfo() const { return m_printInfo; }
    void setPrintInfo(const PrintInfo& printInfo) { m_printInfo = printInfo; }

    /// Called before each drawing of the graph (not for what lies above it), so that a host can lay out what depends on the visible ranges and the size. It may change the graph, which asks for no further drawing; what it throws is shown in place of the graph. It may not end the
    /// widget. Empty, the default, for none.
    void setPreparation(std::function<void()> prepare) { m_prepare = std::move(prepare); }
    /// Shows all data when the user asks for both axes, in place of the interaction's fit; an empty one brings that back. Also addSeries calls it. It must not throw, because events call it.
    void setFitting(std::function<void()> fit) { m_fit = std::move(fit); }

    /// The marker that keys go to (shared with the graph); null for none.
    [[nodiscard]] std::shared_ptr<TOLVMarker> selectedMarker() const;
    /// Selects the marker at this place of the graph's list; none there does nothing.
    void selectMarker(std::size_t index);

    /// The command's action for menus and tool bars, never null: enabled while the command can be carried out; the widget's own, with text and standard shortcuts that hold while the widget has the keyboard.
    [[nodiscard]] QAction* action(GraphCommand command) const;
    /// Carries the command out as its action does, whether that is enabled or not. Copy and Print of a graph without series have an empty one; the other commands do nothing where they have no meaning now. Copy and Print show their errors in a dialog; Print waits for the user.
    void carryOut(GraphCommand command);
    /// Enables the actions anew. Only after what the graph does not announce, such as an undo step of the host's own.
    void updateActions();
    /// The values under the pointer as text, for example "Time 0.25, level 3.5"; empty while it is elsewhere.
    [[nodiscard]] QString readoutText() const;
    /// How often the graph has been drawn. For tests and benchmarks.
    [[nodiscard]] std::uint64_t drawCount() const { return m_drawCount; }

    /// 640 x 400 logical pixels.
    [[nodiscard]] QSize sizeHint() const override;
    /// 120 x 80 logical pixels.
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// The values under the pointer are other ones. Told after they have been painted.
    void readoutChanged(const QString& text);
    /// The graph has asked for redisplay: ranges, series, markers or looks have changed. Told once for all changes between two drawings, with the first of them.
    void displayChanged();
    /// A marker was placed, moved or removed, or such an edit was undone.
    void markersChanged();
    /// Another marker is selected, or none.
    void selectedMarkerChanged();

protected:
    /// Keeps the keys that work on the graph from being shortcuts of the window.
    bool event(QEvent* event) override;
    /// Draws the graph where it has to be drawn, and what lies above it.
    void paintEvent(QPaintEvent* event) override;
    /// Makes the view's frame the widget's size.
    void resizeEvent(QResizeEvent* event) override;
    /// Begins a drag of the graph, a marker or a box.
    void mousePressEvent(QMouseEvent* event) override;
    /// Goes on with a drag, or shows the values under the pointer.
    void mouseMoveEvent(QMouseEvent* event) override;
    /// Ends a drag; the right button opens the menu where it has moved less than 4 logical pixels.
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Places a marker, or fits the axis that was hit.
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    /// There are no values under the pointer any more; a drag goes on.
    void leaveEvent(QEvent* event) override;
    /// Zooms about the pointer.
    void wheelEvent(QWheelEvent* event) override;
    /// Answers the keys that are no shortcuts of an action; others go on to the base class.
    void keyPressEvent(QKeyEvent* event) override;
    /// Opens the menu of all commands where the keyboard asks for it.
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// The view becomes what the keyboard goes to.
    void focusInEvent(QFocusEvent* event) override;
    /// The view is no longer what the keyboard goes to.
    void focusOutEvent(QFocusEvent* event) override;
    /// Draws anew where the palette has changed.
    void changeEvent(QEvent* event) override;

private:
    void initialize();
    void createActions();
    void observeGraph();
    void stopObservingGraph();
    void redisplay();
    /// What every pointer and key event ends with: actions and the look of the pointer are those of the moment, and a paint that shows the rest is asked for.
    void finishEvent();
    void announceReadout();
    void copy();
    void print();
    void press(GraphKey key, KeyModifiers modifiers = {});
    bool answerKey(GraphKey key, KeyModifiers modifiers);
    void announceSelection();
    void forgetRemovedMarker();
    void showMenu(const QPoint& globalPosition);
    [[nodiscard]] Point pointInView(const QPointF& position) const;
    [[nodiscard]] static std::optional<GraphKey> graphKey(const QKeyEvent& event);

    std::shared_ptr<TOLVGraphView> m_view;
    std::unique_ptr<GraphInteraction> m_interaction;
    std::unique_ptr<GraphPicture> m_picture;
    std::map<GraphCommand, QAction*> m_actions;
    std::shared_ptr<TOLVGraph> m_observedGraph;
    std::unique_ptr<GraphDisplayObserver> m_displayObserver;
    ObserverToken m_markersToken = 0;
    PrintInfo m_printInfo;
    GraphAppearance m_appearance = GraphAppearance::FollowsPalette;
    QString m_readout;
    QPointF m_secondaryPress;
    bool m_showsReadout = true;
    std::uint64_t m_drawCount = 0;
    std::function<void()> m_prepare;
    std::function<void()> m_fit;
    bool m_isPreparing = false;
    std::shared_ptr<TOLVMarker> m_announcedMarker;
};

} // namespace TOLVGraphing

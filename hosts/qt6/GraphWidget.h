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
#include <vector>

class QAction;
class QMenu;

namespace TOLVGraphing {

class GraphDisplayObserver;
class GraphPicture;
class TOLVGraph;

/// Whether a widget shows its graph dark on light or light on dark. What is copied and printed is always dark on white.
enum class GraphAppearance : std::uint8_t { FollowsPalette, Light, Dark };

/// The commands of a widget, each with an action for menus and tool bars.
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
/// A point of the view is a logical pixel. Straight lines fall on whole device pixels at every device pixel ratio. The graph is drawn anew when it announces a change that shows, when the size or the device pixel ratio
/// changes and when light turns dark; pointer moves draw only what lies above it. Accessible as a chart with the graph's title, axes, series, ranges and the values under the pointer.
///
/// The first widget of a process installs what the library needs of the desktop (see installQtServices). Errors of copying and printing are shown in a dialog. Lives, as all widgets, in the thread of the application.
class TOLV_EXPORT GraphWidget : public QWidget {
    Q_OBJECT

public:
    /// A widget with a view of a new graph, whose margins fit its labels.
    explicit GraphWidget(QWidget* parent = nullptr);
    /// A widget with this view (shared, not null), which is as it is; its graph gets an undo manager where it has none.
    explicit GraphWidget(std::shared_ptr<TOLVGraphView> view, QWidget* parent = nullptr);
    ~GraphWidget() override;

    /// Shared. The widget sets its frame and listens to its requests for redisplay.
    [[nodiscard]] const std::shared_ptr<TOLVGraphView>& view() const { return m_view; }
    /// The view's graph, shared; may be null.
    [[nodiscard]] std::shared_ptr<TOLVGraph> graph() const { return m_view->graph(); }
    /// Shows another graph (shared), which gets an undo manager where it has none.
    void setGraph(const std::shared_ptr<TOLVGraph>& graph);

    /// What gestures and keys have led to.
    [[nodiscard]] const GraphInteraction& interaction() const { return *m_interaction; }

    /// Adds a series (the vectors are taken over; the shorter one counts) in the next colour of `seriesColor` and shows all data. Abscissae ascend.
    void addSeries(std::vector<float> x, std::vector<float> y, const QString& name = {});
    void addSeries(const std::vector<double>& x, const std::vector<double>& y, const QString& name = {});

    [[nodiscard]] GraphAppearance appearance() const { return m_appearance; }
    void setAppearance(GraphAppearance appearance);
    /// Whether the widget shows light on dark now.
    [[nodiscard]] bool isDark() const;
    /// The values under the pointer are shown beside it. True by default.
    [[nodiscard]] bool showsReadout() const { return m_showsReadout; }
    void setShowsReadout(bool shows);
    /// What the print command starts with; it keeps what the user has chosen.
    [[nodiscard]] const PrintInfo& printInfo() const { return m_printInfo; }
    void setPrintInfo(const PrintInfo& printInfo) { m_printInfo = printInfo; }

    /// Called before each drawing of the graph (not for what lies above it), so that a host can lay out what depends on the visible ranges and the size. It may change the graph; what it throws is shown in place of the graph.
    void setPreparation(std::function<void()> prepare) { m_prepare = std::move(prepare); }
    /// Shows all data when the user asks for both axes, in place of the interaction's fit; an empty one brings that back.
    void setFitting(std::function<void()> fit) { m_fit = std::move(fit); }

    /// The marker that keys go to; null for none.
    [[nodiscard]] std::shared_ptr<TOLVMarker> selectedMarker() const;
    /// Selects the marker at this place of the graph's list; none there does nothing.
    void selectMarker(std::size_t index);

    /// Enabled while the command can be carried out; the widget's own, with text and standard shortcuts that hold while the widget has the keyboard.
    [[nodiscard]] QAction* action(GraphCommand command) const;
    void carryOut(GraphCommand command);
    /// Enables the actions anew. Only after what the graph does not announce, such as an undo step of the host's own.
    void updateActions();
    /// The values under the pointer as text, empty while it is elsewhere.
    [[nodiscard]] QString readoutText() const;
    /// How often the graph has been drawn. For tests and benchmarks.
    [[nodiscard]] std::uint64_t drawCount() const { return m_drawCount; }

    [[nodiscard]] QSize sizeHint() const override;
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
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
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

#include "GraphWidget.h"

#include "GraphOverlay.h"
#include "GraphPicture.h"
#include "GraphPrinting.h"
#include "ProblemDialog.h"
#include "QtServices.h"

#include <TOLVGraphing/data/SeriesColors.h>
#include <TOLVGraphing/drawing/WholeCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/GraphDisplayObserver.h>
#include <TOLVMath/TOLVRealVector.h>

#include <QAccessible>
#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TOLVGraphing {

namespace {

/// What one notch of a wheel turns, in the unit of wheel events.
constexpr double kWheelNotch = 120.0;
/// A right button that moved less than this, in logical pixels, was a click.
constexpr double kClickDistance = 4.0;

/// What an action of the widget is: the key of the interaction that carries it out, where one does, and its shortcuts.
struct CommandDescription {
    GraphCommand command;
    const char* text;
    std::optional<GraphKey> key;
    QKeySequence::StandardKey standardKey;
    const char* furtherKey;
};

const std::vector<CommandDescription>& commandDescriptions()
{
    static const std::vector<CommandDescription> kDescriptions{
        {GraphCommand::Undo, QT_TRANSLATE_NOOP("GraphWidget", "&Undo"), GraphKey::Undo, QKeySequence::Undo, ""},
        {GraphCommand::Redo, QT_TRANSLATE_NOOP("GraphWidget", "&Redo"), GraphKey::Redo, QKeySequence::Redo, ""},
        {GraphCommand::Copy, QT_TRANSLATE_NOOP("GraphWidget", "&Copy"), std::nullopt, QKeySequence::Copy, ""},
        {GraphCommand::Print, QT_TRANSLATE_NOOP("GraphWidget", "&Print…"), std::nullopt, QKeySequence::Print, ""},
        {GraphCommand::ZoomIn, QT_TRANSLATE_NOOP("GraphWidget", "Zoom &In"), GraphKey::ZoomIn, QKeySequence::ZoomIn, "Ctrl+="},
        {GraphCommand::ZoomOut, QT_TRANSLATE_NOOP("GraphWidget", "Zoom &Out"), GraphKey::ZoomOut, QKeySequence::ZoomOut, ""},
        {GraphCommand::Fit, QT_TRANSLATE_NOOP("GraphWidget", "Show &All Data"), GraphKey::Fit, QKeySequence::UnknownKey, "Ctrl+0"},
        {GraphCommand::PlaceMarker, QT_TRANSLATE_NOOP("GraphWidget", "Place &Marker"), GraphKey::PlaceMarker, QKeySequence::UnknownKey, "M"},
        {GraphCommand::DeleteMarker, QT_TRANSLATE_NOOP("GraphWidget", "&Delete Marker"), GraphKey::Delete, QKeySequence::Delete, ""},
        {GraphCommand::NextMarker, QT_TRANSLATE_NOOP("GraphWidget", "&Next Marker"), GraphKey::NextMarker, QKeySequence::UnknownKey, "N"},
        {GraphCommand::PreviousMarker, QT_TRANSLATE_NOOP("GraphWidget", "Pre&vious Marker"), GraphKey::PreviousMarker, QKeySequence::UnknownKey, "Shift+N"},
    };
    return kDescriptions;
}

KeyModifiers modifiersOf(Qt::KeyboardModifiers modifiers)
{
    return {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier)};
}

Qt::CursorShape cursorFor(PointerLook look)
{
    switch (look) {
    case PointerLook::Plain: break;
    case PointerLook::Crosshair: return Qt::CrossCursor;
    case PointerLook::Moving: return Qt::ClosedHandCursor;
    case PointerLook::MovesMarker: return Qt::SplitHCursor;
    case PointerLook::SelectsBox: return Qt::CrossCursor;
    }
    return Qt::ArrowCursor;
}

std::vector<float> narrowed(std::span<const double> values)
{
    std::vector<float> floats(values.size());
    std::transform(values.begin(), values.end(), floats.begin(), [](double value) { return static_cast<float>(value); });
    return floats;
}

std::shared_ptr<TOLVGraphView> newView()
{
    installQtServices();
    auto view = TOLVGraphView::initWithFrame({});
    view->setFitsMarginsToLabels(true);
    view->graph()->setDrawingStrategy(std::make_shared<WholeCurveGraphDrawing>());
    return view;
}

} // namespace

GraphWidget::GraphWidget(QWidget* parent) : QWidget(parent), m_view(newView())
{
    initialize();
}

GraphWidget::GraphWidget(std::shared_ptr<TOLVGraphView> view, QWidget* parent) : QWidget(parent), m_view(std::move(view))
{
    installQtServices();
    initialize();
}

GraphWidget::~GraphWidget()
{
    m_view->setRedisplayHandler(nullptr);
    stopObservingGraph();
}

void GraphWidget::initialize()
{
    m_interaction = std::make_unique<GraphInteraction>(m_view);
    m_picture = std::make_unique<GraphPicture>();
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent, m_view->drawsBackground());
    createActions();
    m_view->setFrame({0.0, 0.0, static_cast<double>(width()), static_cast<double>(height())});
    m_view->setRedisplayHandler([this] { redisplay(); });
    observeGraph();
    updateActions();
}

// The graph.

void GraphWidget::setGraph(const std::shared_ptr<TOLVGraph>& graph)
{
    m_view->setGraph(graph);
    // What was selected or dragged was the former graph's.
    m_interaction = std::make_unique<GraphInteraction>(m_view);
    observeGraph();
    updateActions();
}

void GraphWidget::observeGraph()
{
    stopObservingGraph();
    m_observedGraph = m_view->graph();
    if (!m_observedGraph)
        return;
    if (!m_observedGraph->undoManager())
        m_observedGraph->attachUndoManager(std::make_shared<UndoManager>());
    m_displayObserver = std::make_unique<GraphDisplayObserver>(m_observedGraph, [this] { m_view->setNeedsDisplay(); });
    m_markersToken = m_observedGraph->addObserver("markers", [this](const PropertyChange&) {
        forgetRemovedMarker();
        // Of several requests for redisplay only the first is told, and this may be a later one.
        updateActions();
        emit markersChanged();
    });
}

void GraphWidget::stopObservingGraph()
{
    m_displayObserver.reset();
    if (m_observedGraph)
        m_observedGraph->removeObserver(m_markersToken);
    m_observedGraph.reset();
}

void GraphWidget::addSeries(std::vector<float> x, std::vector<float> y, const QString& name)
{
    const auto shown = graph();
    if (!shown)
        return;
    const std::size_t count = std::min(x.size(), y.size());
    x.resize(count);
    y.resize(count);
    auto series = TOLVGraphData::graphDataWithX(
        TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), seriesColor(shown->graphData().size()));
    if (!name.isEmpty())
        series->setName(name.toStdString());
    shown->addGraphData(std::move(series));
    press(GraphKey::Fit);
    m_view->setNeedsDisplay();
}

void GraphWidget::addSeries(std::span<const double> x, std::span<const double> y, const QString& name)
{
    addSeries(narrowed(x), narrowed(y), name);
}

// Looks.

void GraphWidget::setAppearance(GraphAppearance appearance)
{
    m_appearance = appearance;
    update();
}

bool GraphWidget::isDark() const
{
    if (m_appearance == GraphAppearance::FollowsPalette)
        return palette().color(QPalette::Window).lightnessF() < palette().color(QPalette::WindowText).lightnessF();
    return m_appearance == GraphAppearance::Dark;
}

void GraphWidget::setShowsReadout(bool shows)
{
    m_showsReadout = shows;
    update();
}

QSize GraphWidget::sizeHint() const
{
    return {640, 400};
}

QSize GraphWidget::minimumSizeHint() const
{
    return {120, 80};
}

// Drawing.

void GraphWidget::redisplay()
{
    // What is prepared for a drawing asks for no other one.
    if (m_isPreparing)
        return;
    update();
    updateActions();
    emit displayChanged();
}

void GraphWidget::paintEvent(QPaintEvent*)
{
    // The widget's edges on the screen, in device pixels: at broken ratios they lie between pixels, and a picture that does not start on a whole one would be blurred.
    const qreal ratio = devicePixelRatioF();
    const QPointF corner = QPointF(mapTo(window(), QPoint())) * ratio;
    const QPointF start(std::round(corner.x()), std::round(corner.y()));
    const QSize size(static_cast<int>(std::round(corner.x() + width() * ratio) - start.x()), static_cast<int>(std::round(corner.y() + height() * ratio) - start.y()));
    QPainter painter(this);
    try {
        const GraphPicture::Target target{size, ratio, isDark()};
        if (m_prepare && m_picture->needsUpdate(*m_view, target)) {
            const QScopedValueRollback preparing(m_isPreparing, true);
            m_prepare();
        }
        if (m_picture->update(*m_view, target))
            ++m_drawCount;
    } catch (const std::exception& problem) {
        // The request that was not carried out must not keep the next one from coming.
        m_view->setRedisplayHandler([this] { redisplay(); });
        painter.fillRect(rect(), palette().base());
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, QString::fromStdString(problem.what()));
        return;
    }
    painter.save();
    painter.translate((start - corner) / ratio);
    painter.scale(1.0 / ratio, 1.0 / ratio);
    painter.drawImage(0, 0, m_picture->image());
    painter.restore();

    const auto shown = graph();
    GraphOverlay overlay(painter, *this, *m_interaction, shown ? shown->dataRectInRect(m_view->bounds()) : Rect(), isDark());
    overlay.paintSelectedMarker();
    if (m_showsReadout)
        overlay.paintReadout();
    overlay.paintSelectionBox();
    overlay.paintFocus();
    // Only now do the axes have the ticks that tell how many digits a number needs. Listeners are told when the painting is over.
    QMetaObject::invokeMethod(this, &GraphWidget::announceReadout, Qt::QueuedConnection);
}

void GraphWidget::resizeEvent(QResizeEvent*)
{
    m_view->setFrame({0.0, 0.0, static_cast<double>(width()), static_cast<double>(height())});
}

void GraphWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        update();
    QWidget::changeEvent(event);
}

// Pointer.

Point GraphWidget::pointInView(const QPointF& position) const
{
    return {position.x(), static_cast<double>(height()) - position.y()};
}

QString GraphWidget::readoutText() const
{
    return QString::fromStdString(m_interaction->readoutText());
}

void GraphWidget::finishEvent()
{
    updateActions();
    setCursor(cursorFor(m_interaction->pointerLook()));
    update();
}

void GraphWidget::announceReadout()
{
    const QString text = readoutText();
    if (text == m_readout)
        return;
    m_readout = text;
    emit readoutChanged(m_readout);
    QAccessibleValueChangeEvent event(this, m_readout);
    QAccessible::updateAccessibility(&event);
}

void GraphWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_interaction->pointerPressed(pointInView(event->position()), PointerButton::Primary);
    } else if (event->button() == Qt::RightButton) {
        m_secondaryPress = event->position();
        m_interaction->pointerPressed(pointInView(event->position()), PointerButton::Secondary);
    } else {
        QWidget::mousePressEvent(event);
        return;
    }
    finishEvent();
}

void GraphWidget::mouseMoveEvent(QMouseEvent* event)
{
    m_interaction->pointerMoved(pointInView(event->position()));
    finishEvent();
}

void GraphWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_interaction->pointerReleased(pointInView(event->position()), PointerButton::Primary);
    } else if (event->button() == Qt::RightButton) {
        m_interaction->pointerReleased(pointInView(event->position()), PointerButton::Secondary);
        const QPointF way = event->position() - m_secondaryPress;
        if (std::max(std::abs(way.x()), std::abs(way.y())) < kClickDistance)
            showMenu(event->globalPosition().toPoint());
    } else {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    finishEvent();
}

void GraphWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_interaction->pointerDoubleClicked(pointInView(event->position()));
    else
        mousePressEvent(event);
    finishEvent();
}

void GraphWidget::leaveEvent(QEvent*)
{
    m_interaction->pointerLeft();
    finishEvent();
}

void GraphWidget::wheelEvent(QWheelEvent* event)
{
    // Some desktops turn a wheel sideways while a key is held.
    const QPoint turn = event->angleDelta();
    const double steps = (turn.y() != 0 ? turn.y() : turn.x()) / kWheelNotch;
    m_interaction->wheelTurned(steps, pointInView(event->position()), modifiersOf(event->modifiers()));
    event->accept();
    finishEvent();
}

void GraphWidget::contextMenuEvent(QContextMenuEvent* event)
{
    // With the mouse the menu comes when the button is let go, because it may be about to drag a box.
    if (event->reason() == QContextMenuEvent::Keyboard)
        showMenu(mapToGlobal(rect().center()));
}

// Keys.

std::optional<GraphKey> GraphWidget::graphKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Left: return GraphKey::Left;
    case Qt::Key_Right: return GraphKey::Right;
    case Qt::Key_Up: return GraphKey::Up;
    case Qt::Key_Down: return GraphKey::Down;
    case Qt::Key_Plus:
    case Qt::Key_Equal: return GraphKey::ZoomIn;
    case Qt::Key_Minus:
    case Qt::Key_Underscore: return GraphKey::ZoomOut;
    case Qt::Key_Home: return GraphKey::Fit;
    case Qt::Key_Backspace: return GraphKey::Delete;
    case Qt::Key_Escape: return GraphKey::Cancel;
    default: return std::nullopt;
    }
}

bool GraphWidget::answerKey(GraphKey key, KeyModifiers modifiers)
{
    const bool fitsBoth = key == GraphKey::Fit && !modifiers.shift && !modifiers.control;
    if (!fitsBoth || !m_fit)
        return m_interaction->keyPressed(key, modifiers);
    m_fit();
    return true;
}

void GraphWidget::press(GraphKey key, KeyModifiers modifiers)
{
    answerKey(key, modifiers);
    finishEvent();
}

void GraphWidget::keyPressEvent(QKeyEvent* event)
{
    const auto key = graphKey(*event);
    if (!key || !answerKey(*key, modifiersOf(event->modifiers()))) {
        QWidget::keyPressEvent(event);
        return;
    }
    finishEvent();
}

bool GraphWidget::event(QEvent* event)
{
    // Keys that work on the graph are not shortcuts of the window meanwhile.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        const bool isPlain = (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
        if (isPlain && graphKey(key) && key.key() != Qt::Key_Escape)
            event->accept();
    }
    return QWidget::event(event);
}

void GraphWidget::focusInEvent(QFocusEvent*)
{
    m_view->becomeFirstResponder();
}

void GraphWidget::focusOutEvent(QFocusEvent*)
{
    m_view->resignFirstResponder();
}

// The selected marker.

std::shared_ptr<TOLVMarker> GraphWidget::selectedMarker() const
{
    return m_interaction->selectedMarker();
}

void GraphWidget::selectMarker(std::size_t index)
{
    m_interaction->selectMarkerAtIndex(index);
    updateActions();
    update();
}

void GraphWidget::forgetRemovedMarker()
{
    const auto& markers = m_observedGraph->markers();
    const auto selected = m_interaction->selectedMarker();
    // Without a drag there is only the selection to cancel; a marker that was dragged is replaced when the drag is over.
    if (selected && std::find(markers.begin(), markers.end(), selected) == markers.end())
        m_interaction->keyPressed(GraphKey::Cancel, {});
}

void GraphWidget::announceSelection()
{
    if (m_interaction->selectedMarker() == m_announcedMarker)
        return;
    m_announcedMarker = m_interaction->selectedMarker();
    emit selectedMarkerChanged();
}

// Commands.

void GraphWidget::createActions()
{
    for (const CommandDescription& description : commandDescriptions()) {
        auto* action = new QAction(tr(description.text), this);
        QList<QKeySequence> keys = description.standardKey == QKeySequence::UnknownKey ? QList<QKeySequence>() : QKeySequence::keyBindings(description.standardKey);
        if (*description.furtherKey)
            keys << QKeySequence(QString(description.furtherKey));
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, [this, command = description.command] { carryOut(command); });
        addAction(action);
        m_actions[description.command] = action;
    }
}

QAction* GraphWidget::action(GraphCommand command) const
{
    return m_actions.at(command);
}

void GraphWidget::updateActions()
{
    const auto shown = graph();
    const auto& undoManager = shown ? shown->undoManager() : nullptr;
    const bool hasMarkers = shown && shown->countOfMarkers() > 0;
    const bool hasSeries = m_view->validateUserInterfaceItem({"copy"});
    m_actions[GraphCommand::Undo]->setEnabled(undoManager && undoManager->canUndo());
    m_actions[GraphCommand::Redo]->setEnabled(undoManager && undoManager->canRedo());
    m_actions[GraphCommand::Copy]->setEnabled(hasSeries);
    for (const GraphCommand command : {GraphCommand::Print, GraphCommand::ZoomIn, GraphCommand::ZoomOut, GraphCommand::Fit, GraphCommand::PlaceMarker})
        m_actions[command]->setEnabled(hasSeries);
    m_actions[GraphCommand::NextMarker]->setEnabled(hasMarkers);
    m_actions[GraphCommand::PreviousMarker]->setEnabled(hasMarkers);
    m_actions[GraphCommand::DeleteMarker]->setEnabled(m_interaction->selectedMarker() != nullptr);
    announceSelection();
}

void GraphWidget::carryOut(GraphCommand command)
{
    if (command == GraphCommand::Copy)
        return copy();
    if (command == GraphCommand::Print)
        return print();
    for (const CommandDescription& description : commandDescriptions()) {
        if (description.command == command)
            press(*description.key);
    }
}

void GraphWidget::copy()
{
    attempt(this, tr("The graph could not be copied."), [this] { m_view->copy(nullptr); });
}

void GraphWidget::print()
{
    attempt(this, tr("The graph could not be printed."), [this] { printWithDialog(*m_view, m_printInfo, this); });
}

void GraphWidget::showMenu(const QPoint& globalPosition)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const CommandDescription& description : commandDescriptions()) {
        if (description.command == GraphCommand::ZoomIn || description.command == GraphCommand::PlaceMarker)
            menu->addSeparator();
        menu->addAction(m_actions.at(description.command));
    }
    menu->popup(globalPosition);
}

} // namespace TOLVGraphing

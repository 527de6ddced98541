#include "WidgetSetup.h"

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <cmath>

namespace TOLVGraphing::testing_support {

ShownWidget::ShownWidget() : m_widget(std::make_unique<GraphWidget>())
{
    std::vector<float> x;
    std::vector<float> y;
    for (int i = 0; i <= 10; ++i) {
        x.push_back(static_cast<float>(i));
        y.push_back(static_cast<float>(10 * i));
    }
    m_widget->addSeries(std::move(x), std::move(y), "level");
    m_widget->resize(400, 300);
    m_widget->show();
    waitUntil([this] { return m_widget->windowHandle() && m_widget->windowHandle()->isExposed(); });
    m_widget->activateWindow();
    m_widget->setFocus();
    // Keys of actions reach a window only once the display has made it the active one.
    waitUntil([this] { return m_widget->isActiveWindow() && m_widget->hasFocus(); });
    waitUntil([this] { return m_widget->drawCount() > 0; });
    settle();
}

QPoint ShownWidget::at(double x, double y)
{
    const Rect bounds = m_widget->view()->bounds();
    const auto px = static_cast<double>(graph().XForValue(static_cast<float>(x), bounds));
    const auto py = static_cast<double>(graph().YForValue(static_cast<float>(y), bounds));
    return {static_cast<int>(std::lround(px)), static_cast<int>(std::lround(bounds.height() - py))};
}

void ShownWidget::wheel(QPoint place, int notches, Qt::KeyboardModifiers modifiers)
{
    QWheelEvent event(place, m_widget->mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_widget.get(), &event);
}

void ShownWidget::drag(QPoint from, QPoint to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QTest::mousePress(m_widget.get(), button, modifiers, from);
    // Moves with a button held; the test library's own have none.
    for (const QPoint& place : {(from + to) / 2, to}) {
        QMouseEvent event(QEvent::MouseMove, place, m_widget->mapToGlobal(place), Qt::NoButton, button, modifiers);
        QApplication::sendEvent(m_widget.get(), &event);
    }
    QTest::mouseRelease(m_widget.get(), button, modifiers, to);
}

void ShownWidget::settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds patience)
{
    return QTest::qWaitFor(condition, static_cast<int>(patience.count()));
}

} // namespace TOLVGraphing::testing_support

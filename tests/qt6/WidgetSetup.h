#pragma once

#include <hosts/qt6/GraphWidget.h>

#include <QPoint>

#include <chrono>
#include <functional>
#include <memory>

namespace TOLVGraphing::testing_support {

/// A widget of 400 by 300 points in a window, shown, with one series (0, 0), (1, 10) … (10, 100), whose ranges are x 0…10 and y 0…100.
class ShownWidget {
public:
    ShownWidget();

    [[nodiscard]] GraphWidget& widget() { return *m_widget; }
    [[nodiscard]] TOLVGraph& graph() { return *m_widget->graph(); }
    [[nodiscard]] const GraphInteraction& interaction() const { return m_widget->interaction(); }
    /// The pixel of the widget at a value of x and y.
    [[nodiscard]] QPoint at(double x, double y);
    /// Turns the wheel by notches at a place.
    void wheel(QPoint place, int notches, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void drag(QPoint from, QPoint to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Lets pending paints happen.
    static void settle();

private:
    std::unique_ptr<GraphWidget> m_widget;
};

/// Runs the event loop until the condition holds. False when it does not within the patience.
bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds patience = std::chrono::seconds(20));

} // namespace TOLVGraphing::testing_support

#pragma once

#include <TOLVGraphing/platform/geometry/Rect.h>
#include <TOLVGraphing/platform/graphics/Color.h>

#include <QColor>

#include <optional>

class QPainter;
class QWidget;

namespace TOLVGraphing {

class GraphInteraction;

/// What lies above the graph in a window and is in no copy: the box that is being dragged, the selected marker's light, the line under the pointer with the nearest samples and their values, the frame of a widget that has the
/// keyboard.
class GraphOverlay {
public:
    /// Paints for the widget, whose font and highlight colour it takes; `dataRect` is the graph's data area in the view's coordinates. Light on dark with `isDark`, whatever the widget's palette.
    GraphOverlay(QPainter& painter, const QWidget& widget, const GraphInteraction& interaction, const Rect& dataRect, bool isDark);

    void paintSelectedMarker();
    void paintSelectionBox();
    void paintReadout();
    void paintFocus();

private:
    [[nodiscard]] double widgetY(double y) const;
    [[nodiscard]] QColor groundColor() const;
    [[nodiscard]] QColor inkColor() const;
    [[nodiscard]] QColor shownColor(const std::optional<Color>& color) const;

    QPainter& m_painter;
    const QWidget& m_widget;
    const GraphInteraction& m_interaction;
    Rect m_dataRect;
    bool m_isDark;
};

} // namespace TOLVGraphing

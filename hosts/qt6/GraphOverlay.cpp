#include "GraphOverlay.h"

#include <TOLVGraphing/data/TOLVMarker.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/DarkContext.h>
#include <TOLVGraphing/views/GraphInteraction.h>
#include <TOLVGraphing/views/TOLVGraphView.h>

#include <QFontMetricsF>
#include <QPainter>
#include <QPalette>
#include <QPen>
#include <QStringList>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace TOLVGraphing {

namespace {

/// The most series that are read out beside the pointer; the others are counted.
constexpr std::size_t kMostLines = 12;
constexpr double kDotRadius = 3.0;
constexpr double kBoxPadding = 6.0;
/// How far the read-out stands from the line under the pointer.
constexpr double kBoxDistance = 12.0;
constexpr double kSwatchSize = 8.0;

/// One line of the read-out; without a colour it has no swatch.
struct Line {
    QString text;
    std::optional<QColor> color;
};

double widthOf(const std::vector<Line>& lines, const QFontMetricsF& metrics)
{
    double width = 0.0;
    for (const Line& line : lines)
        width = std::max(width, metrics.horizontalAdvance(line.text) + (line.color ? kSwatchSize + kBoxPadding : 0.0));
    return width;
}

} // namespace

GraphOverlay::GraphOverlay(QPainter& painter, const QWidget& widget, const GraphInteraction& interaction, const Rect& dataRect, bool isDark)
    : m_painter(painter)
    , m_widget(widget)
    , m_interaction(interaction)
    , m_dataRect(dataRect)
    , m_isDark(isDark)
{
}

QColor GraphOverlay::groundColor() const
{
    return m_isDark ? QColor(52, 52, 52) : QColor(255, 255, 255);
}

QColor GraphOverlay::inkColor() const
{
    return m_isDark ? QColor(235, 235, 235) : QColor(20, 20, 20);
}

QColor GraphOverlay::shownColor(const std::optional<Color>& color) const
{
    const Color ink = color.value_or(Color::blackColor()).clamped();
    const Color shown = m_isDark ? colorOnDarkGround(ink, darkBackgroundColor()) : ink;
    return QColor::fromRgbF(static_cast<float>(shown.redComponent()), static_cast<float>(shown.greenComponent()), static_cast<float>(shown.blueComponent()));
}

double GraphOverlay::widgetY(double y) const
{
    return static_cast<double>(m_widget.height()) - y;
}

void GraphOverlay::paintSelectedMarker()
{
    const auto& marker = m_interaction.selectedMarker();
    const auto& view = m_interaction.view();
    if (!marker || !view->graph() || !view->graph()->horizontalAxis())
        return;
    const auto x = static_cast<double>(view->graph()->XForValue(static_cast<float>(marker->value()), view->bounds()));
    if (!(x >= m_dataRect.x() && x <= m_dataRect.maxX()))
        return;
    QColor light = m_widget.palette().color(QPalette::Highlight);
    light.setAlphaF(0.35F);
    m_painter.fillRect(QRectF(x - 3.0, widgetY(m_dataRect.maxY()), 6.0, m_dataRect.height()), light);
}

void GraphOverlay::paintSelectionBox()
{
    const auto box = m_interaction.selectionBox();
    if (!box)
        return;
    const QRectF rect(box->x(), widgetY(box->maxY()), box->width(), box->height());
    QColor color = m_widget.palette().color(QPalette::Highlight);
    m_painter.setPen(QPen(color, 1.0));
    color.setAlphaF(0.2F);
    m_painter.setBrush(color);
    m_painter.drawRect(rect);
}

void GraphOverlay::paintReadout()
{
    const auto samples = m_interaction.samplesUnderPointer();
    const auto value = m_interaction.valueUnderPointer();
    if (!value || samples.empty() || m_interaction.selectionBox())
        return;
    const auto& view = m_interaction.view();
    const TOLVGraph& graph = *view->graph();
    const auto series = graph.graphData();
    const auto pointer = static_cast<double>(graph.XForValue(*value, view->bounds()));
    QColor faint = inkColor();
    faint.setAlphaF(0.6F);
    m_painter.setPen(QPen(faint, 1.0, Qt::DotLine));
    m_painter.drawLine(QPointF(pointer, widgetY(m_dataRect.maxY())), QPointF(pointer, widgetY(m_dataRect.y())));

    std::vector<Line> lines{{QString::fromStdString(m_interaction.abscissaText()), std::nullopt}};
    m_painter.setRenderHint(QPainter::Antialiasing);
    for (const SampleReadout& sample : samples) {
        const QColor color = shownColor(series[sample.series]->color());
        if (lines.size() <= kMostLines)
            lines.push_back({QString::fromStdString(m_interaction.ordinateText(sample)), color});
        const bool isVisible
            = sample.position.x >= m_dataRect.x() && sample.position.x <= m_dataRect.maxX() && sample.position.y >= m_dataRect.y() && sample.position.y <= m_dataRect.maxY();
        if (!isVisible)
            continue;
        m_painter.setPen(QPen(groundColor(), 1.0));
        m_painter.setBrush(color);
        m_painter.drawEllipse(QPointF(sample.position.x, widgetY(sample.position.y)), kDotRadius, kDotRadius);
    }
    if (samples.size() > kMostLines)
        lines.push_back({QStringLiteral("+ %1").arg(samples.size() - kMostLines), std::nullopt});

    const QFontMetricsF metrics(m_widget.font());
    const double lineHeight = metrics.height();
    const double width = widthOf(lines, metrics) + 2.0 * kBoxPadding;
    const double height = lineHeight * static_cast<double>(lines.size()) + 2.0 * kBoxPadding;
    // On the side of the pointer with more room, at the top of the data area.
    const bool isOnRight = pointer - m_dataRect.x() < m_dataRect.width() * 0.5;
    const double left = isOnRight ? pointer + kBoxDistance : pointer - kBoxDistance - width;
    const QRectF box(left, widgetY(m_dataRect.maxY()) + kBoxDistance, width, height);
    QColor ground = groundColor();
    ground.setAlphaF(0.92F);
    m_painter.setPen(QPen(faint, 1.0));
    m_painter.setBrush(ground);
    m_painter.drawRoundedRect(box, 3.0, 3.0);
    double top = box.top() + kBoxPadding;
    for (const Line& line : lines) {
        double x = box.left() + kBoxPadding;
        if (line.color) {
            m_painter.setPen(Qt::NoPen);
            m_painter.setBrush(*line.color);
            m_painter.drawRect(QRectF(x, top + (lineHeight - kSwatchSize) * 0.5, kSwatchSize, kSwatchSize));
            x += kSwatchSize + kBoxPadding;
        }
        m_painter.setPen(inkColor());
        m_painter.drawText(QPointF(x, top + metrics.ascent()), line.text);
        top += lineHeight;
    }
    m_painter.setRenderHint(QPainter::Antialiasing, false);
}

void GraphOverlay::paintFocus()
{
    constexpr double kFrameWidth = 2.0;
    if (!m_widget.hasFocus())
        return;
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QPen(m_widget.palette().color(QPalette::Highlight), kFrameWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    m_painter.drawRect(QRectF(m_widget.rect()).adjusted(1.0, 1.0, -1.0, -1.0));
}

} // namespace TOLVGraphing

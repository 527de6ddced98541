#include "ProgramIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace TOLVGraphing::app {

namespace {

/// The side of the drawing below; as desktop/tolvgraph-viewer.svg.
constexpr double kSide = 64.0;

QPixmap drawnIcon(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / kSide, side / kSide);
    painter.setPen(QPen(QColor(0x5A, 0x64, 0x70), 2.0));
    painter.setBrush(QColor(0xFD, 0xFD, 0xFB));
    painter.drawRoundedRect(QRectF(4.0, 4.0, 56.0, 56.0), 9.0, 9.0);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0xC8, 0xCD, 0xD2), 1.5));
    for (const double y : {20.5, 32.5})
        painter.drawLine(QPointF(14.0, y), QPointF(54.0, y));
    for (const double x : {26.5, 40.5})
        painter.drawLine(QPointF(x, 12.0), QPointF(x, 50.0));
    painter.setPen(QPen(QColor(0x3B, 0x44, 0x4D), 2.5, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawPolyline(QPolygonF({{14.0, 12.0}, {14.0, 50.0}, {54.0, 50.0}}));
    QPainterPath curve({15.0, 44.0});
    curve.cubicTo(22.0, 44.0, 22.0, 17.0, 29.0, 17.0);
    curve.cubicTo(36.0, 17.0, 36.0, 39.0, 42.0, 39.0);
    curve.cubicTo(48.0, 39.0, 48.0, 27.0, 54.0, 27.0);
    painter.setPen(QPen(QColor(0x00, 0x72, 0xB2), 4.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(curve);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xD5, 0x5E, 0x00));
    painter.drawEllipse(QPointF(29.0, 17.0), 4.5, 4.5);
    return pixmap;
}

} // namespace

QIcon programIcon()
{
    QIcon drawn;
    for (const int side : {16, 32, 48, 64, 128})
        drawn.addPixmap(drawnIcon(side));
    return QIcon::fromTheme(QStringLiteral("tolvgraph-viewer"), drawn);
}

} // namespace TOLVGraphing::app

#include "Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>

#include <algorithm>

namespace TOLVGraphing::app {

namespace {

const QString kKey = QStringLiteral("appearance");

/// The ground's and the text's colours; those between them follow.
QPalette paletteWith(const QColor& window, const QColor& base, const QColor& text, const QColor& faint)
{
    QPalette palette(window, window);
    const QColor highlight(0x2A, 0x6F, 0xB5);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, text.lightness() > 128 ? highlight.lighter(170) : highlight);
    palette.setColor(QPalette::BrightText, Qt::red);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

} // namespace

GraphAppearance chosenAppearance()
{
    const int stored = QSettings().value(kKey, 0).toInt();
    return static_cast<GraphAppearance>(std::clamp(stored, 0, static_cast<int>(GraphAppearance::Dark)));
}

void storeAppearance(GraphAppearance appearance)
{
    QSettings().setValue(kKey, static_cast<int>(appearance));
}

void applyAppearance(GraphAppearance appearance)
{
    switch (appearance) {
    case GraphAppearance::FollowsPalette: QApplication::setPalette(QPalette()); break;
    case GraphAppearance::Light: QApplication::setPalette(paletteWith(QColor(0xEF, 0xEF, 0xEF), Qt::white, Qt::black, QColor(0x80, 0x80, 0x80))); break;
    case GraphAppearance::Dark:
        QApplication::setPalette(paletteWith(QColor(0x38, 0x3A, 0x3E), QColor(0x22, 0x23, 0x26), QColor(0xE6, 0xE6, 0xE6), QColor(0x8C, 0x8C, 0x8C)));
        break;
    }
}

} // namespace TOLVGraphing::app

#include "Words.h"

#include <apps/plotting/OptionValues.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cmath>
#include <utility>

namespace TOLVGraphing::app {

namespace {

constexpr double kMillisecondsOfDay = 86'400'000.0;
/// About 270,000 years around 1970; beyond it dates are written as their number of days.
constexpr double kMostDays = 1e8;

QString translated(const char* text)
{
    return QCoreApplication::translate("Words", text);
}

} // namespace

QString nameOf(DrawingKind kind)
{
    switch (kind) {
    case DrawingKind::Curve: return translated("Curve with values at markers");
    case DrawingKind::PlainCurve: return translated("Curve");
    case DrawingKind::Dotted: return translated("Dots, evenly spaced");
    case DrawingKind::Line: return translated("Line between categories");
    case DrawingKind::Bar: return translated("Bars");
    case DrawingKind::X: return translated("Crosses");
    case DrawingKind::Impulse: return translated("Impulses");
    }
    return {};
}

QString nameOf(AxisKind kind)
{
    switch (kind) {
    case AxisKind::Linear: return translated("Linear");
    case AxisKind::Logarithmic: return translated("Logarithmic");
    case AxisKind::Bar: return translated("Categories for bars");
    case AxisKind::Line: return translated("Categories for lines");
    }
    return {};
}

QString nameOf(NumberStyle style)
{
    switch (style) {
    case NumberStyle::Decimal: return translated("Decimal (1,234.5)");
    case NumberStyle::Adaptive: return translated("As the ticks need it");
    case NumberStyle::SI: return translated("With prefixes (2.5k)");
    case NumberStyle::Scientific: return translated("Scientific (2.5 × 10³)");
    case NumberStyle::Date: return translated("Date");
    }
    return {};
}

QString nameOf(LinePattern pattern)
{
    switch (pattern) {
    case LinePattern::Solid: return translated("Solid");
    case LinePattern::Dashed: return translated("Dashed");
    case LinePattern::DashDot: return translated("Dash-dot");
    case LinePattern::Dotted: return translated("Dotted");
    }
    return {};
}

QString plainText(const std::string& sentence)
{
    static const std::pair<const char*, QString> kNames[] = {{"--x-axis", translated("x axis")}, {"--y-axis", translated("y axis")}, {"--x-range", translated("x range")},
        {"--y-range", translated("y range")}, {"--x-format", translated("numbers of x")}, {"--y-format", translated("numbers of y")}, {"--draw dotted", translated("drawing dots")},
        {"--draw line", translated("drawing lines")}, {"--draw bar", translated("drawing bars")}, {"--draw", translated("drawing")}, {"--categories", translated("categories")},
        {"--marker", translated("marker")}, {"--x", translated("x column")}, {"--y", translated("y columns")}};
    QString text = QString::fromStdString(sentence);
    for (const auto& [option, name] : kNames)
        text.replace(QLatin1String(option), name);
    return text;
}

QString textOfValue(double value, std::optional<double> dateOrigin)
{
    const double days = value + dateOrigin.value_or(0.0);
    if (!dateOrigin || !(std::abs(days) < kMostDays))
        return QLocale::c().toString(value, 'g', QLocale::FloatingPointShortest);
    const double seconds = std::round(days * kMillisecondsOfDay / 1000.0);
    const QDateTime time = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds), Qt::UTC);
    return time.toString(time.time().msecsSinceStartOfDay() == 0 ? QStringLiteral("yyyy-MM-dd") : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

std::optional<double> valueOfText(const QString& text, std::optional<double> dateOrigin)
{
    const QString trimmed = text.trimmed();
    try {
        return parseNumberOrDate("value", trimmed.toStdString(), dateOrigin);
    } catch (const UsageError&) {
        bool isNumber = false;
        const double number = QLocale().toDouble(trimmed, &isNumber);
        return isNumber && std::isfinite(number) ? std::optional<double>(number - dateOrigin.value_or(0.0)) : std::nullopt;
    }
}

QString textOfNames(const std::vector<std::string>& names)
{
    QStringList parts;
    for (const std::string& name : names) {
        QString part = QString::fromStdString(name);
        if (part.contains(u',') || part.contains(u'"'))
            part = u'"' + part.replace(u'"', QLatin1String("\"\"")) + u'"';
        parts << part;
    }
    return parts.join(QStringLiteral(", "));
}

std::vector<std::string> namesOfText(const QString& text)
{
    std::vector<std::string> names;
    QString part;
    bool isQuoted = false;
    const auto finish = [&] {
        if (!part.trimmed().isEmpty())
            names.push_back(part.trimmed().toStdString());
        part.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isDoubled = isQuoted && text[i] == u'"' && i + 1 < text.size() && text[i + 1] == u'"';
        if (isDoubled)
            part += text[++i];
        else if (text[i] == u'"')
            isQuoted = !isQuoted;
        else if (text[i] == u',' && !isQuoted)
            finish();
        else
            part += text[i];
    }
    finish();
    return names;
}

} // namespace TOLVGraphing::app

#pragma once

#include <apps/plotting/Options.h>

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

// What people read in menus, panels and dialogs.

inline constexpr std::array kDrawingKinds{
    DrawingKind::Curve, DrawingKind::PlainCurve, DrawingKind::Dotted, DrawingKind::X, DrawingKind::Impulse, DrawingKind::Line, DrawingKind::Bar};
inline constexpr std::array kXAxisKinds{AxisKind::Linear, AxisKind::Logarithmic, AxisKind::Bar, AxisKind::Line};
inline constexpr std::array kYAxisKinds{AxisKind::Linear, AxisKind::Logarithmic};
inline constexpr std::array kNumberStyles{NumberStyle::Decimal, NumberStyle::Adaptive, NumberStyle::SI, NumberStyle::Scientific, NumberStyle::Date};
inline constexpr std::array kLinePatterns{LinePattern::Solid, LinePattern::Dashed, LinePattern::DashDot, LinePattern::Dotted};

[[nodiscard]] QString nameOf(DrawingKind kind);
[[nodiscard]] QString nameOf(AxisKind kind);
[[nodiscard]] QString nameOf(NumberStyle style);
[[nodiscard]] QString nameOf(LinePattern pattern);

/// A sentence of the model, in which options of the command line ("--x-axis") become what the window calls them ("x axis").
[[nodiscard]] QString plainText(const std::string& sentence);

/// The shortest number that reads back as the same, or with a `dateOrigin` (in days since 1970) the ISO date of days since that origin, with the time of day where it is not midnight, to the second.
[[nodiscard]] QString textOfValue(double value, std::optional<double> dateOrigin);
/// What such a text means; also numbers with the decimal sign of the user's language. Nothing for other texts.
[[nodiscard]] std::optional<double> valueOfText(const QString& text, std::optional<double> dateOrigin);

/// Column names in one line, separated by commas; a name with a comma or a quotation mark is put in quotation marks, its own ones doubled.
[[nodiscard]] QString textOfNames(const std::vector<std::string>& names);
[[nodiscard]] std::vector<std::string> namesOfText(const QString& text);

} // namespace TOLVGraphing::app

#pragma once

#include <TOLVGraphing/platform/geometry/EdgeInsets.h>
#include <TOLVGraphing/platform/geometry/Point.h>
#include <TOLVGraphing/platform/graphics/Color.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// How the series are drawn.
enum class DrawingKind { Curve, PlainCurve, Dotted, Line, Bar, X, Impulse };

/// What an axis shows: numbers on a linear or logarithmic scale, or categories with room for bars or for the points of lines. Categories are for x only.
enum class AxisKind { Linear, Logarithmic, Bar, Line };

/// The kind shows categories.
[[nodiscard]] constexpr bool isCategorical(AxisKind kind)
{
    return kind == AxisKind::Bar || kind == AxisKind::Line;
}

/// How the numbers along an axis are written.
enum class NumberStyle { Decimal, Adaptive, SI, Scientific, Date };

/// How a line is broken up.
enum class LinePattern { Solid, Dashed, DashDot, Dotted };

/// The ends of a range as they were written; an empty end fits the data.
struct RangeText {
    std::string from;
    std::string to;

    friend bool operator==(const RangeText&, const RangeText&) = default;
};

/// What a graph is asked to look like. Texts whose meaning depends on the data (ranges, markers, columns) are kept as they were written.
struct Options {
    std::vector<std::string> files;
    std::vector<std::string> outputs;
    Size size{640.0, 400.0};
    double scale = 2.0;
    std::optional<std::string> x;
    std::vector<std::string> y;
    /// Channels side by side in files of raw numbers.
    std::size_t channels = 1;
    /// What dates along x are counted from, in days since 1970-01-01: nothing until the first file with dates has been read, which says it for all others.
    std::optional<double> dateOrigin;
    std::optional<RangeText> xRange;
    std::optional<RangeText> yRange;
    std::optional<std::string> title;
    std::optional<std::string> xLabel;
    std::optional<std::string> yLabel;
    DrawingKind drawing = DrawingKind::Curve;
    AxisKind xAxis = AxisKind::Linear;
    AxisKind yAxis = AxisKind::Linear;
    std::optional<std::string> categoryColumn;
    std::optional<NumberStyle> xFormat;
    std::optional<NumberStyle> yFormat;
    std::vector<Color> colors;
    std::vector<LinePattern> patterns;
    std::vector<double> thicknesses;
    std::vector<std::string> markers;
    std::optional<EdgeInsets> margin;
    bool legend = false;
    bool listsColumns = false;
    /// A file for the layout of the graph as JSON.
    std::optional<std::string> layout;

    /// The x axis shows categories; the drawing is then one that places its samples by them.
    [[nodiscard]] bool hasCategories() const { return isCategorical(xAxis); }
    /// Something of the graph is asked for, not only a list of columns.
    [[nodiscard]] bool needsGraph() const { return !outputs.empty() || layout; }

    friend bool operator==(const Options&, const Options&) = default;
};

} // namespace TOLVGraphing::app

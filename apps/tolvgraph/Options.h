#pragma once

#include <TOLVGraphing/platform/geometry/EdgeInsets.h>
#include <TOLVGraphing/platform/geometry/Point.h>
#include <TOLVGraphing/platform/graphics/Color.h>

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// How the series are drawn.
enum class DrawingKind { Curve, PlainCurve, Dotted };

/// How a line is broken up.
enum class LinePattern { Solid, Dashed, DashDot, Dotted };

/// The ends of a range as they were written; an empty end fits the data.
struct RangeText {
    std::string from;
    std::string to;
};

/// What the command line asks for. Texts whose meaning depends on the data (ranges, markers, columns) are kept as they were written.
struct Options {
    std::vector<std::string> files;
    std::vector<std::string> outputs;
    Size size{640.0, 400.0};
    double scale = 2.0;
    std::optional<std::string> x;
    std::vector<std::string> y;
    std::optional<RangeText> xRange;
    std::optional<RangeText> yRange;
    std::optional<std::string> title;
    std::optional<std::string> xLabel;
    std::optional<std::string> yLabel;
    DrawingKind drawing = DrawingKind::Curve;
    std::vector<Color> colors;
    std::vector<LinePattern> patterns;
    std::vector<double> thicknesses;
    std::vector<std::string> markers;
    std::optional<EdgeInsets> margin;
    bool legend = false;
    bool listsColumns = false;
};

/// Reads the command line. Answers the options, or the exit status when there is nothing more to do: 0 after --help and --version, 2 after a message about wrong usage.
struct ParsedOptions {
    std::optional<Options> options;
    int status = 0;
};
[[nodiscard]] ParsedOptions parseOptions(int argumentCount, const char* const* arguments, std::ostream& out, std::ostream& error);

} // namespace TOLVGraphing::app

#pragma once

#include <TOLVGraphing/platform/geometry/Rect.h>

#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// One line of text of an SVG picture. Coordinates are points from the upper left corner, y growing downwards.
struct DrawnText {
    std::string text;
    /// Where the baseline starts.
    double x = 0.0;
    double y = 0.0;
    /// The advance width, and the size of the font.
    double length = 0.0;
    double size = 0.0;
    /// Clockwise, in degrees; -90 reads from below.
    double angle = 0.0;
    std::string color;
    bool isBold = false;

    /// The box of baseline, advance width and capital height (0.73 em, that of the library's faces) above the baseline.
    [[nodiscard]] Rect capitalBox() const;
};

/// One path of an SVG picture.
struct DrawnPath {
    std::string data;
    /// "none" or "#rrggbb".
    std::string fill;
    std::string stroke;
    double strokeWidth = 1.0;
    std::string dashes;

    [[nodiscard]] bool isStroked() const { return stroke != "none"; }
    /// The points of the data, control points too.
    [[nodiscard]] std::vector<Point> points() const;
};

/// What an SVG picture of this library shows.
struct DrawnPage {
    Size size;
    std::string title;
    std::string description;
    std::vector<DrawnText> texts;
    std::vector<DrawnPath> paths;

    /// Throws std::runtime_error where the document is not such a picture.
    [[nodiscard]] static DrawnPage fromSVG(const std::string& document);

    [[nodiscard]] bool hasText(const std::string& text) const { return textNamed(text).has_value(); }
    /// The first text that reads so.
    [[nodiscard]] std::optional<DrawnText> textNamed(const std::string& text) const;
    /// The texts in order, separated by " | ".
    [[nodiscard]] std::string allTexts() const;
    /// The stroked paths of this colour, "#rrggbb".
    [[nodiscard]] std::vector<DrawnPath> strokesOfColor(const std::string& color) const;
};

} // namespace TOLVGraphing::testing_support

#pragma once

#include "../data/TOLVLabel.h"
#include "../data/TOLVLineStyle.h"
#include "../platform/graphics/Path.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <span>

namespace TOLVGraphing {

/// A value shown beside a curve: a white pill with a coloured outline and a pointer below it, and a text in the series' colour. A value that refers to its label and line style.
struct TOLV_EXPORT GraphCallout {
    /// Shared, never null. The text and where it stands; making the callout recolours the text and moves it to a whole point vertically.
    std::shared_ptr<TOLVLabel> label;
    /// Shared. The series' style, whose colour is used.
    std::shared_ptr<TOLVLineStyle> lineStyle;
    /// The white inside.
    Path innerPath;
    /// The coloured shape under it.
    Path outerPath;

    /// A callout for a label that has been placed, whose pointer stands at the coordinate x (points). The pill is 14 points high whatever the font. Null styles give black. Throws Exception "NullLabel" for a null label.
    GraphCallout(std::shared_ptr<TOLVLabel> label, std::shared_ptr<TOLVLineStyle> lineStyle, double atXPosition);

    /// The outer shape's bounding box, in points.
    [[nodiscard]] Rect bounds() const { return outerPath.bounds(); }
    /// True when the bounds overlap those of one of the callouts with positive area.
    [[nodiscard]] bool intersectsCalloutInArray(std::span<const GraphCallout> callouts) const;
    /// Draws into the current context; nothing when the label's rectangle is not finite.
    void draw() const;
};

} // namespace TOLVGraphing

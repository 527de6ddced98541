#pragma once

#include "../data/TOLVLineStyle.h"
#include "../platform/geometry/Rect.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace TOLVGraphing {

/// One line of a legend: a name and the style that its series is drawn in (shared; null draws no sample).
struct LegendEntry {
    /// In UTF-8.
    std::string title;
    /// Shared.
    std::shared_ptr<const TOLVLineStyle> lineStyle;
};

/// Legend entries set in rows from left to right, each a short piece of its line followed by its name, in Helvetica at 10 points. A row breaks where the next entry does not fit; a name wider than
/// a row has a row of its own, shortened by an ellipsis.
class TOLV_EXPORT LegendRows {
public:
    /// The height of one row in points.
    static constexpr double kRowHeight = 14.0;

    /// Sets the entries (copied; their styles are shared) in rows of at most the width, in points. Of more rows than `maximumRows` (0 counts as 1) the last one ends with how many entries are left out. A width that is NaN, or too small for
    /// an ellipsis, shortens every name to that.
    LegendRows(const std::vector<LegendEntry>& entries, double width, std::size_t maximumRows);

    /// The height of all rows in points; 0 without entries.
    [[nodiscard]] double height() const;
    /// The number of rows; 0 without entries.
    [[nodiscard]] std::size_t rowCount() const { return m_rows.size(); }
    /// Draws into the current context, the first row at the top of the rectangle (y growing upwards), from its left edge. Nothing is cut off at its other edges.
    void drawInRect(const Rect& rect) const;

private:
    struct Row {
        std::vector<LegendEntry> entries;
        double width = 0.0;
    };

    void dropRowsBeyond(std::size_t maximumRows);

    std::vector<Row> m_rows;
};

} // namespace TOLVGraphing

#pragma once

#include "../geometry/Point.h"
#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// The settings of a print job. Lengths are points, 1/72 inch. A value; nothing is enforced: where the margins leave no room nothing is printed.
struct PrintInfo {
    /// The sheet as it is printed: wider than high for landscape. A4 in portrait by default.
    Size paperSize{595.0, 842.0};
    /// What stays empty at the edges.
    double leftMargin = 72.0;
    double rightMargin = 72.0;
    double topMargin = 90.0;
    double bottomMargin = 90.0;
    /// What the print queue shows, in UTF-8.
    std::string jobTitle = "Graph";
    /// How many copies are printed.
    int copies = 1;

    /// The sheet is wider than high.
    [[nodiscard]] bool isLandscape() const { return paperSize.width > paperSize.height; }

    friend bool operator==(const PrintInfo&, const PrintInfo&) = default;
};

} // namespace TOLVGraphing

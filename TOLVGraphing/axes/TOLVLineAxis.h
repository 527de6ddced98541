#pragma once

#include "TOLVBarAxis.h"
#include <TOLVMath/Export.h>

namespace TOLVGraphing {

/// The horizontal axis of a line chart over categories: a bar axis with a grid line through each slot's centre.
class TOLV_EXPORT TOLVLineAxis final : public TOLVBarAxis {
public:
    using TOLVBarAxis::TOLVBarAxis;

    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override;
    /// The keys that every axis has.
    [[nodiscard]] static std::shared_ptr<TOLVLineAxis> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVLineAxis"; }
    [[nodiscard]] std::vector<std::string> archiveBaseClassNames() const override { return {"TOLVBarAxis", "TOLVAxis"}; }

    /// The frame, and one stroke in the graph's major line style for the grid lines. There are at most a million of them. They stand half a point left of the centres and end a point short of the frame.
    void drawMajorLinesInRect(const Rect& rect) const override;
};

} // namespace TOLVGraphing
